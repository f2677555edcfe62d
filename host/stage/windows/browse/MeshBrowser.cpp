#include "host/stage/windows/browse/MeshBrowser.h"

#include "host/stage/windows/browse/ModelPicture.h"
#include "host/stage/windows/ThemeColors.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

namespace stage {

namespace {

constexpr int kIndexRole = Qt::UserRole;
constexpr int kNameRole = Qt::UserRole + 1; ///< as bytes: what is shown may be put in other words
constexpr QSize kSize(780, 540);
constexpr int kListWidth = 330;

} // namespace

MeshBrowser::MeshBrowser(const BrowsedObject& browsed, const QString& title, const QString& key,
                         QWidget* parent)
    : BrowserFrame(key, parent), search(new QLineEdit(this)), list(new QTreeWidget(this)),
      picture(new ModelPicture(browsed.mesh, this)), note(new QLabel(this)), object(browsed) {
    setWindowTitle(browsed.exists ? tr("%1 of %2").arg(title, browsed.name) : title);
    Fill(MakeListSide(), MakePictureSide(), kSize, kListWidth);
    Connect();
    search->setFocus();
    RestorePlaces();
    UpdateState();
}

MeshBrowser::~MeshBrowser() {
    list->disconnect(this); // it goes later than what it tells
}

QWidget* MeshBrowser::MakeListSide() {
    auto* side = new QWidget(this);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 4, 0);
    search->setPlaceholderText(tr("Search"));
    search->setClearButtonEnabled(true);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(false);
    list->setMouseTracking(true);
    list->setIndentation(14);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    list->header()->setHighlightSections(false);
    ConnectKeys(search, list);
    list->viewport()->installEventFilter(this);
    note->setProperty("role", "hint");
    note->setWordWrap(true);
    note->hide();
    layout->addWidget(search);
    layout->addWidget(list, 1);
    layout->addWidget(note);
    return side;
}

QWidget* MeshBrowser::MakePictureSide() {
    auto* side = new QWidget(this);
    pictureSide = new QVBoxLayout(side);
    pictureSide->setContentsMargins(4, 0, 0, 0);
    auto* mesh = new QLabel(object.meshName, side);
    mesh->setVisible(!object.meshName.isEmpty());
    mesh->setProperty("role", "hint");
    mesh->setToolTip(tr("Drag turns the model, the wheel comes nearer, a double click shows all of it."));
    picture->message = WhyNoPicture(object);
    if (!object.pose.empty()) {
        picture->SetPose(object.pose);
    }
    pictureSide->addWidget(picture, 1);
    pictureSide->addWidget(mesh);
    return side;
}

void MeshBrowser::Connect() {
    connect(search, &QLineEdit::textChanged, this, &MeshBrowser::Filter);
    connect(list, &QTreeWidget::currentItemChanged, this, [this] {
        UpdateState();
        CurrentChanged();
    });
    connect(list, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* row) {
        if (row == list->currentItem()) {
            accept();
        }
    });
    list->setExpandsOnDoubleClick(false);
}

QString MeshBrowser::WhyNoPicture(const BrowsedObject& browsed) {
    if (!browsed.exists) {
        return tr("There is no object to look at.");
    }
    if (browsed.mesh != nullptr) {
        return {};
    }
    return browsed.meshError.isEmpty() ? tr("%1 has no mesh.").arg(browsed.name)
                                       : tr("The mesh can't be used.\n%1").arg(browsed.meshError);
}

QTreeWidgetItem* MeshBrowser::AddRow(QTreeWidgetItem* above, const QString& text, const std::string& name,
                                     int index) {
    auto* row = above != nullptr ? new QTreeWidgetItem(above) : new QTreeWidgetItem(list);
    row->setText(0, text);
    row->setData(0, kIndexRole, index);
    row->setData(0, kNameRole, QByteArray::fromStdString(name));
    return row;
}

int MeshBrowser::IndexOf(const QTreeWidgetItem* row) {
    return row != nullptr ? row->data(0, kIndexRole).toInt() : -1;
}

std::string MeshBrowser::NameOf(const QTreeWidgetItem* row) {
    return row != nullptr ? row->data(0, kNameRole).toByteArray().toStdString() : std::string();
}

int MeshBrowser::CurrentIndex() const {
    return IndexOf(list->currentItem());
}

std::optional<std::string> MeshBrowser::Chosen() const {
    if (gone || list->currentItem() == nullptr) {
        return std::nullopt;
    }
    return NameOf(list->currentItem());
}

void MeshBrowser::ShowPresent(QTreeWidgetItem* row, const std::string& name) {
    presentRow = row;
    list->setCurrentItem(row);
    if (row != nullptr) {
        list->scrollToItem(row, QAbstractItemView::PositionAtCenter);
    } else if (!name.empty() && object.mesh != nullptr) {
        presentNote = tr("This mesh has no \"%1\".").arg(QString::fromStdString(name));
    }
    UpdateState();
}

void MeshBrowser::SetPlaceholder(const QString& text) {
    placeholder = text;
    UpdateState();
}

void MeshBrowser::UpdateState() {
    ok->setEnabled(list->currentItem() != nullptr);
    QString text = presentNote;
    if (list->topLevelItemCount() == 0) {
        text = placeholder;
    } else if (list->currentItem() != nullptr) {
        text.clear();
    } else if (!search->text().isEmpty()) {
        text = tr("Nothing is called \"%1\".").arg(search->text());
    }
    note->setText(text);
    note->setVisible(!text.isEmpty());
}

bool MeshBrowser::FilterRow(QTreeWidgetItem* row, const QString& text, QTreeWidgetItem*& firstMatch) {
    const bool matches = row->text(0).contains(text, Qt::CaseInsensitive);
    if (matches && firstMatch == nullptr) {
        firstMatch = row;
    }
    bool shown = matches;
    for (int i = 0; i < row->childCount(); ++i) {
        shown = FilterRow(row->child(i), text, firstMatch) || shown;
    }
    if (row->isHidden() == shown) {
        row->setHidden(!shown);
    }
    const QBrush ink = matches ? palette().text() : QBrush(QColor::fromRgb(Color::kMuted));
    if (row->foreground(0) != ink) {
        row->setForeground(0, ink);
    }
    return shown;
}

void MeshBrowser::Filter(const QString& text) {
    QTreeWidgetItem* first = nullptr;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        FilterRow(list->topLevelItem(i), text, first);
    }
    QTreeWidgetItem* current = list->currentItem();
    if (text.isEmpty()) {
        current = current != nullptr ? current : presentRow;
    } else if (current == nullptr || !current->text(0).contains(text, Qt::CaseInsensitive)) {
        current = first;
    }
    list->setCurrentItem(current);
    if (current != nullptr) {
        list->scrollToItem(current);
    }
    UpdateState();
}

/// To the next row that is found, past those that only lead to one.
bool MeshBrowser::Step(bool down) {
    if (search->text().isEmpty() || list->currentItem() == nullptr) {
        return false;
    }
    QTreeWidgetItemIterator row(list->currentItem(), QTreeWidgetItemIterator::NotHidden);
    do {
        down ? ++row : --row;
    } while (*row != nullptr && !(*row)->text(0).contains(search->text(), Qt::CaseInsensitive));
    if (*row != nullptr) {
        list->setCurrentItem(*row);
    }
    return true;
}

void MeshBrowser::ObjectGone() {
    gone = true;
    reject();
}

std::optional<std::string> MeshBrowser::Run(MeshBrowser* browser) {
    // The window that it belongs to may go while it runs, and takes it along.
    const QPointer<MeshBrowser> watched = browser;
    const int result = browser->exec();
    if (watched == nullptr) {
        return std::nullopt;
    }
    std::optional<std::string> chosen = result == Accepted ? browser->Chosen() : std::nullopt;
    delete browser;
    return chosen;
}

} // namespace stage
