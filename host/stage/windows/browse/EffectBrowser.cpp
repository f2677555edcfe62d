#include "host/stage/windows/browse/EffectBrowser.h"

#include "host/stage/windows/browse/EffectPicture.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace stage {

namespace {

constexpr int kNameRole = Qt::UserRole;
constexpr QSize kSize(780, 500);
constexpr int kListWidth = 260;
constexpr std::uint32_t kSeed = 1;

QString NameOf(const QListWidgetItem& row) {
    return row.data(kNameRole).toString();
}

QString TitleOf(int kindCode) {
    switch (kindCode) {
    case 1:
        return EffectBrowser::tr("Sequence effect");
    case 2:
        return EffectBrowser::tr("Particle effect");
    case 3:
        return EffectBrowser::tr("Trace effect");
    case 4:
        return EffectBrowser::tr("Flare effect");
    case 5:
        return EffectBrowser::tr("Rain effect");
    case 6:
        return EffectBrowser::tr("Blind effect");
    default:
        return EffectBrowser::tr("Effect");
    }
}

} // namespace

EffectBrowser::EffectBrowser(EffectLibrary effects, int kindCode, const std::string& present, QWidget* parent)
    : BrowserFrame("effect", parent), search(new QLineEdit(this)), list(new QListWidget(this)),
      picture(new EffectPicture(this)), about(new QLabel(this)), library(std::move(effects)),
      hasKind(EffectKindOf(kindCode, kind)), presentName(QString::fromStdString(present)),
      presentBytes(present) {
    setWindowTitle(TitleOf(kindCode));
    Fill(MakeListSide(), MakePictureSide(), kSize, kListWidth);
    FillList();
    connect(search, &QLineEdit::textChanged, this, &EffectBrowser::Filter);
    connect(list, &QListWidget::currentItemChanged, this, &EffectBrowser::ShowCurrent);
    connect(list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    RestorePlaces();
    Filter(QString());
    search->setFocus();
}

EffectBrowser::~EffectBrowser() {
    // The list's end takes rows away, which is told while the rest of this object is gone already.
    list->disconnect(this);
}

QWidget* EffectBrowser::MakeListSide() {
    auto* side = new QWidget(this);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 4, 0);
    search->setPlaceholderText(tr("Search, or type a name"));
    search->setClearButtonEnabled(true);
    list->setUniformItemSizes(true);
    ConnectKeys(search, list);
    layout->addWidget(search);
    layout->addWidget(list, 1);
    return side;
}

QWidget* EffectBrowser::MakePictureSide() {
    auto* side = new QWidget(this);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(4, 0, 0, 0);
    about->setProperty("role", "hint");
    about->setTextFormat(Qt::PlainText);
    about->setWordWrap(true);
    layout->addWidget(picture, 1);
    layout->addWidget(about);
    return side;
}

void EffectBrowser::FillList() {
    if (!hasKind) {
        return;
    }
    for (const std::string& name : library.Names(kind)) {
        auto* row = new QListWidgetItem(QString::fromStdString(name), list);
        row->setData(kNameRole, row->text());
    }
}

void EffectBrowser::OfferName(const QString& name) {
    delete offered;
    offered = nullptr;
    if (name.isEmpty()) {
        return;
    }
    for (int i = 0; i < list->count(); ++i) {
        if (NameOf(*list->item(i)) == name) {
            return;
        }
    }
    offered = new QListWidgetItem(tr("%1  (no file)").arg(name), list);
    offered->setData(kNameRole, name);
    QFont font = offered->font();
    font.setItalic(true);
    offered->setFont(font);
}

QListWidgetItem* EffectBrowser::BestRow(const QString& text) const {
    QListWidgetItem* best = nullptr;
    int bestRank = 0;
    for (int i = 0; i < list->count(); ++i) {
        QListWidgetItem* row = list->item(i);
        const QString name = NameOf(*row);
        const int rank = row == offered                                 ? 1
                         : name.compare(text, Qt::CaseInsensitive) == 0 ? 4
                         : name.startsWith(text, Qt::CaseInsensitive)   ? 3
                         : name.contains(text, Qt::CaseInsensitive)     ? 2
                                                                        : 0;
        if (rank > bestRank) {
            best = row;
            bestRank = rank;
        }
    }
    return best;
}

void EffectBrowser::Filter(const QString& text) {
    const QString typed = text.trimmed();
    OfferName(typed.isEmpty() ? presentName : typed);
    for (int i = 0; i < list->count(); ++i) {
        QListWidgetItem* row = list->item(i);
        row->setHidden(row != offered && !NameOf(*row).contains(typed, Qt::CaseInsensitive));
    }
    QListWidgetItem* row = nullptr;
    if (!typed.isEmpty()) {
        row = BestRow(typed);
    } else if (offered != nullptr) {
        row = offered;
    } else {
        for (int i = 0; i < list->count() && row == nullptr; ++i) {
            row = NameOf(*list->item(i)) == presentName ? list->item(i) : nullptr;
        }
    }
    list->setCurrentItem(row);
    if (row != nullptr) {
        list->scrollToItem(row, QAbstractItemView::EnsureVisible);
    }
    ShowCurrent();
}

void EffectBrowser::ShowCurrent() {
    const QListWidgetItem* row = list->currentItem();
    ok->setEnabled(row != nullptr);
    about->clear();
    if (row == nullptr) {
        picture->Show(std::nullopt, list->count() == 0 ? tr("There are no effects of this kind.")
                                                       : tr("Choose an effect to see it."));
        return;
    }
    if (row == offered || !hasKind) {
        picture->Show(std::nullopt,
                      tr("No file has an effect of this name.\nThe key takes the name all the same."));
        return;
    }
    try {
        Effect effect = library.Load(kind, NameOf(*row).toStdString());
        about->setText(QString::fromStdString(effect.about));
        picture->Show(EffectSimulation(std::move(effect), kSeed));
    } catch (const EffectFileError& error) {
        picture->Show(std::nullopt, tr("The effect can't be shown.\n%1").arg(error.what()));
    }
}

std::string EffectBrowser::Chosen() const {
    if (list->currentItem() == nullptr) {
        return {};
    }
    const QString name = NameOf(*list->currentItem());
    // A level may hold bytes that are no text; they come back as they were.
    return name == presentName ? presentBytes : name.toStdString();
}

std::optional<std::string> EffectBrowser::Pick(EffectLibrary effects, int kindCode,
                                               const std::string& present, QWidget* parent) {
    // The window that it belongs to may go while it runs, and takes it along.
    const QPointer<EffectBrowser> browser = new EffectBrowser(std::move(effects), kindCode, present, parent);
    const int result = browser->exec();
    if (browser == nullptr) {
        return std::nullopt;
    }
    const std::string chosen = result == Accepted ? browser->Chosen() : std::string();
    delete browser.data();
    return chosen.empty() ? std::nullopt : std::optional(chosen);
}

} // namespace stage
