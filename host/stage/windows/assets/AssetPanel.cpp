#include "host/stage/windows/assets/AssetPanel.h"

#include "host/stage/windows/assets/AssetPictures.h"
#include "host/stage/windows/assets/AssetPlayer.h"

#include <QButtonGroup>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

namespace stage {

namespace {

constexpr QSize kGrid(AssetPictures::kSide + 16, AssetPictures::kSide + 28); ///< with the name below

/// The panel stays as low as the list of objects, with which it shares its place.
constexpr int kLeastHeight = 30;

struct KindEntry {
    AssetKind kind;
    const char* text;
    const char* name;
};

constexpr KindEntry kKinds[] = {
    {AssetKind::None, QT_TRANSLATE_NOOP("stage::AssetPanel", "All"), "AssetsAll"},
    {AssetKind::Model, QT_TRANSLATE_NOOP("stage::AssetPanel", "Models"), "AssetsModels"},
    {AssetKind::Sound, QT_TRANSLATE_NOOP("stage::AssetPanel", "Sounds"), "AssetsSounds"},
    {AssetKind::Effect, QT_TRANSLATE_NOOP("stage::AssetPanel", "Effects"), "AssetsEffects"},
};

} // namespace

AssetPanel::AssetPanel(QWidget* parent)
    : QWidget(parent), search(new QLineEdit(this)), list(new QListView(this)), hint(new QLabel(this)),
      player(new AssetPlayer(this)), pictures(new AssetPictures(this)),
      model(new AssetModel(*pictures, this)), filter(new AssetFilter(*model)), kinds(new QButtonGroup(this)) {
    setObjectName("AssetPanel");
    openFolder = [](const QString& folder) { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); };
    search->setObjectName("AssetSearch");
    search->setPlaceholderText(tr("Search"));
    search->setClearButtonEnabled(true);
    hint->setObjectName("AssetHint");
    hint->setWordWrap(true);
    hint->setProperty("role", "hint");
    MakeList();
    auto* import = new QPushButton(tr("Import..."), this);
    import->setToolTip(tr("Copies models and sounds into the level's folder"));
    connect(import, &QPushButton::clicked, this, &AssetPanel::ImportRequested);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    auto* top = new QHBoxLayout;
    top->addWidget(search, 1);
    top->addWidget(import);
    layout->addLayout(top);
    layout->addWidget(MakeKinds());
    layout->addWidget(hint);
    layout->addWidget(list, 1);
    layout->addWidget(player);
    connect(search, &QLineEdit::textChanged, this, [this](const QString& text) {
        filter->SetSearch(text);
        UpdateHint();
    });
    UpdateHint();
}

QWidget* AssetPanel::MakeKinds() {
    auto* bar = new QWidget(this);
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    for (const KindEntry& entry : kKinds) {
        auto* button = new QToolButton(bar);
        button->setObjectName(entry.name);
        button->setText(tr(entry.text));
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setChecked(entry.kind == AssetKind::None);
        kinds->addButton(button, static_cast<int>(entry.kind));
        layout->addWidget(button);
    }
    layout->addStretch();
    connect(kinds, &QButtonGroup::idClicked, this, [this](int kind) {
        filter->SetKind(static_cast<AssetKind>(kind));
        UpdateHint();
    });
    return bar;
}

void AssetPanel::MakeList() {
    list->setObjectName("AssetList");
    list->setMinimumHeight(kLeastHeight);
    list->setModel(filter);
    list->setViewMode(QListView::IconMode);
    list->setMovement(QListView::Static);
    list->setResizeMode(QListView::Adjust);
    list->setUniformItemSizes(true);
    list->setIconSize(QSize(AssetPictures::kSide, AssetPictures::kSide));
    list->setGridSize(kGrid);
    list->setTextElideMode(Qt::ElideMiddle);
    list->setWordWrap(false);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setDragEnabled(true);
    list->setDragDropMode(QAbstractItemView::DragOnly);
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(list, &QListView::activated, this, &AssetPanel::Activate); // a double click, or Enter
    connect(list, &QWidget::customContextMenuRequested, this, &AssetPanel::ShowMenu);
}

const Asset* AssetPanel::AssetAt(const QModelIndex& index) const {
    return index.isValid() ? &model->At(filter->mapToSource(index)) : nullptr;
}

void AssetPanel::Show(std::vector<Asset> assets, const std::string& levelFolder) {
    const Asset* current = AssetAt(list->currentIndex());
    const std::string chosen = current != nullptr ? current->path : std::string();
    hasFolder = !levelFolder.empty();
    pictures->Refresh();
    model->Set(std::move(assets), levelFolder);
    for (int row = 0; row < filter->rowCount() && !list->currentIndex().isValid(); ++row) {
        const QModelIndex index = filter->index(row, 0);
        if (AssetAt(index)->path == chosen) {
            list->setCurrentIndex(index);
        }
    }
    UpdateHint();
}

void AssetPanel::UpdateHint() {
    const bool isEmpty = filter->rowCount() == 0;
    const bool wantsEffects = kinds->checkedId() == static_cast<int>(AssetKind::Effect);
    QString text;
    if (!hasFolder && !wantsEffects) {
        text = tr("Save the level first: models and sounds are found in its folder.");
    } else if (isEmpty && !search->text().isEmpty()) {
        text = tr("Nothing of this kind is called so.");
    } else if (isEmpty) {
        text = wantsEffects
                   ? tr("There are no effects here: they lie in the folder \"effects\" of the level.")
                   : tr("There is nothing yet. Import models and sounds, or drop files onto a view.");
    }
    hint->setText(text);
    hint->setVisible(!text.isEmpty());
}

void AssetPanel::Activate(const QModelIndex& index) {
    const Asset* found = AssetAt(index);
    if (found == nullptr) {
        return;
    }
    const Asset asset = *found; // what is asked for may bring another list
    if (asset.kind == AssetKind::Model) {
        player->Close();
        emit PlaceRequested(asset);
    } else {
        player->Play(asset);
    }
}

void AssetPanel::ShowMenu(const QPoint& place) {
    const QModelIndex index = list->indexAt(place);
    const Asset* found = AssetAt(index);
    if (found == nullptr) {
        return;
    }
    const Asset asset = *found;
    const QPointer<QMenu> menu = new QMenu(this); // the menu's loop may end Stage, and the panel with it
    const QAction* first =
        menu->addAction(asset.kind == AssetKind::Model ? tr("&Place in the view") : tr("&Play"));
    const QAction* folder = menu->addAction(tr("Show in &folder"));
    const QAction* uses = menu->addAction(tr("Where is it &used?"));
    const QAction* chosen = menu->exec(list->viewport()->mapToGlobal(place));
    if (menu == nullptr) {
        return;
    }
    menu->deleteLater();
    if (chosen == folder) {
        openFolder(QFileInfo(QString::fromStdString(asset.path)).absolutePath());
    } else if (chosen == uses) {
        emit UsesRequested(asset);
    } else if (chosen == first && asset.kind == AssetKind::Model) {
        emit PlaceRequested(asset);
    } else if (chosen == first) {
        player->Play(asset);
    }
}

} // namespace stage
