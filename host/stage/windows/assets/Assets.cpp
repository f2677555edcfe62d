#include "host/stage/windows/assets/Assets.h"

#include "host/stage/host/AssetUses.h"
#include "host/stage/windows/assets/AssetPanel.h"
#include "host/stage/windows/assets/AssetPictures.h"
#include "host/stage/windows/assets/FileWatch.h"
#include "host/stage/windows/assets/MissingDialog.h"
#include "host/stage/windows/assets/ModelWatch.h"
#include "host/stage/windows/CreateMenu.h"
#include "host/stage/windows/ImportFiles.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/Notice.h"
#include "host/stage/windows/QuietMoments.h"
#include "host/stage/windows/ViewArea.h"

#include <filesystem>
#include <QAbstractButton>
#include <QAction>
#include <QDockWidget>
#include <QDropEvent>
#include <QFileInfo>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <set>

namespace stage {

namespace {

constexpr int kMostLines = 15; ///< as many as a box has room for

int KeyKindOf(EffectKind kind) {
    switch (kind) {
    case EffectKind::Sequence:
        return KeyKind::FxSequence;
    case EffectKind::Particle:
        return KeyKind::FxParticle;
    case EffectKind::Trace:
        return KeyKind::FxTrace;
    case EffectKind::Flare:
        return KeyKind::FxFlare;
    case EffectKind::Rain:
        return KeyKind::FxRain;
    case EffectKind::Blind:
        return KeyKind::FxBlind;
    }
    return KeyKind::None;
}

/// By the file behind the name: a name may be spelled in several ways, and lack its ending.
bool IsUseOf(const AssetUse& use, const Asset& asset, const std::string& folder) {
    if (use.kind != asset.kind) {
        return false;
    }
    if (asset.kind == AssetKind::Effect) {
        return use.name == asset.name && use.key->kind == KeyKindOf(asset.effect);
    }
    namespace fs = std::filesystem;
    const auto path = [&](const std::string& name) { return (fs::path(folder) / name).lexically_normal(); };
    const fs::path wanted = path(asset.name);
    return path(use.name) == wanted || (asset.kind == AssetKind::Model && path(use.name + ".glb") == wanted);
}

} // namespace

Assets::Assets(MainWindow& mainWindow, CreateMenu& createMenu, ImportFiles& importFiles)
    : QObject(&mainWindow), dock(new QDockWidget(tr("Assets"), &mainWindow)),
      panel(new AssetPanel(&mainWindow)), window(mainWindow), create(createMenu), watch(new FileWatch(this)),
      models(new ModelWatch(mainWindow)) {
    dock->setObjectName("AssetsDock");
    dock->setWidget(panel);
    dock->toggleViewAction()->setObjectName("ViewAssets");
    connect(dock->toggleViewAction(), &QAction::triggered, dock, [this](bool isShown) {
        if (isShown) {
            dock->raise(); // it may be a tab behind others
        }
    });
    panel->Pictures().mayWork = [this] { return window.quiet->IsQuiet(); };
    connect(panel, &AssetPanel::PlaceRequested, this,
            [this](const Asset& asset) { Place(asset.name, window.views->PlaceForNew(asset.name)); });
    connect(panel, &AssetPanel::UsesRequested, this, &Assets::ShowUses);
    connect(panel, &AssetPanel::ImportRequested, &importFiles, &ImportFiles::Ask);
    connect(watch, &FileWatch::Changed, this, &Assets::Rescan);
    connect(watch, &FileWatch::Changed, models,
            &ModelWatch::Request); // files may be others under their names
    connect(models, &ModelWatch::Changed, this, &Assets::Rescan);
    window.views->setAcceptDrops(true);
    window.views->installEventFilter(this);
    Rescan();
}

void Assets::FollowLevel() {
    if (folder != window.host.level.Folder()) {
        Rescan();
    }
}

void Assets::Rescan() {
    folder = window.host.level.Folder();
    std::vector<std::string> folders;
    std::vector<Asset> assets = FindAssets(folder, EffectsOf(window.host), folders);
    panel->Show(std::move(assets), folder);
    QStringList paths;
    for (const std::string& path : folders) {
        paths.append(QString::fromStdString(path));
    }
    watch->Watch(paths);
}

void Assets::Place(const std::string& name, const Vector3& place) {
    if (window.host.level.Data() != nullptr) {
        const int id = create.CreateMesh(QString::fromStdString(name), place);
        window.session.History().Tell({Deed::Kind::Place, {id}});
    }
}

void Assets::ShowUses(const Asset& asset) {
    const engine::LevelData* level = window.host.level.Data();
    QStringList lines;
    std::set<int> objects;
    for (const AssetUse& use : level != nullptr ? UsesOf(*level) : std::vector<AssetUse>()) {
        if (IsUseOf(use, asset, folder)) {
            lines.append(QString::fromStdString(use.user));
            objects.insert(use.objectId);
        }
    }
    objects.erase(0);
    const int count = static_cast<int>(lines.size());
    if (count > kMostLines) {
        lines = lines.mid(0, kMostLines) << tr("... and %1 more").arg(count - kMostLines);
    }
    const QString name = QString::fromStdString(asset.name);
    QMessageBox box(QMessageBox::Information, tr("Assets"),
                    count == 0 ? tr("The level does not use %1.").arg(name)
                               : tr("The level uses %1 here:").arg(name),
                    QMessageBox::Close, &window);
    box.setObjectName("AssetUses");
    box.setInformativeText(lines.join('\n'));
    const QPushButton* select =
        objects.empty() ? nullptr : box.addButton(tr("Select the objects"), QMessageBox::AcceptRole);
    box.exec();
    if (select == nullptr || box.clickedButton() != select) {
        return;
    }
    ObjectList chosen;
    for (const int id : objects) {
        if (EditorObject* object = window.host.level.FindObject(id)) { // the box ran a loop of its own
            chosen.push_back(object);
        }
    }
    window.host.Select(chosen);
}

void Assets::ShowMissing() {
    if (FindMissing(window.host).empty()) {
        window.Report(tr("All files that the level names are there").toStdString());
        return;
    }
    MissingDialog(window.host, window.session, &window).exec();
}

void Assets::OfferMissing() {
    const std::size_t count = FindMissing(window.host).size();
    if (count > 0) {
        window.notice->Show(count == 1 ? tr("A file of this level is missing.")
                                       : tr("%1 files of this level are missing.").arg(count),
                            tr("Show..."), [this] { ShowMissing(); });
    } else {
        window.notice->Withdraw();
    }
}

bool Assets::CanPlace(const QMimeData& data) const {
    const std::string path = data.data(AssetModel::kMime).toStdString();
    return !folder.empty() && path.starts_with(folder);
}

QString Assets::WordsFor(const QMimeData& data) const {
    if (CanPlace(data)) {
        return tr("Drop to place %1 here, on what is under the mouse. Escape gives up.")
            .arg(QFileInfo(QString::fromUtf8(data.data(AssetModel::kMime))).completeBaseName());
    }
    if (data.hasFormat(AssetModel::kMime)) { // of another Stage, with another level
        return tr("This model is in another level's folder: Create > Import brings it here.");
    }
    if (data.hasFormat(AssetModel::kSoundMime)) {
        return tr("Sounds can't stand in a view: Films > Add key at the cursor brings them into a film.");
    }
    return data.hasFormat(AssetModel::kEffectMime)
               ? tr("Effects can't stand in a view: Films > Add key at the cursor brings them into a film.")
               : QString();
}

bool Assets::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
        return QObject::eventFilter(watched, event);
    }
    auto* drop = static_cast<QDropEvent*>(event);
    const QString words = WordsFor(*drop->mimeData());
    if (words.isEmpty()) {
        return false;
    }
    window.views->TellDrop(type == QEvent::Drop ? QString() : words);
    if (!CanPlace(*drop->mimeData())) {
        ViewArea::Refuse(*drop);
        return true;
    }
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (type == QEvent::Drop) {
        const std::string path = drop->mimeData()->data(AssetModel::kMime).toStdString();
        const Vector3 place = window.views->PlaceUnder(window.views->mapToGlobal(drop->position().toPoint()));
        // After the drop, which runs in a loop of the list's own.
        QMetaObject::invokeMethod(
            this, [this, name = path.substr(folder.size()), place] { Place(name, place); },
            Qt::QueuedConnection);
    }
    return true;
}

} // namespace stage
