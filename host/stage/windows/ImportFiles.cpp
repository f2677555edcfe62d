#include "host/stage/windows/ImportFiles.h"

#include "host/engine/Units.h"
#include "host/stage/host/AssetImport.h"
#include "host/stage/windows/CreateMenu.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/ViewArea.h"

#include <QDropEvent>
#include <QFileDialog>
#include <QMimeData>
#include <QUrl>

namespace stage {

namespace {

constexpr float kBeside = engine::Metres(2.0f); ///< from one imported model to the next

QStringList FilesOf(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile() && AssetKindOf(url.toLocalFile().toStdString()) != AssetKind::None) {
            paths.append(url.toLocalFile());
        }
    }
    return paths;
}

} // namespace

ImportFiles::ImportFiles(MainWindow& mainWindow, CreateMenu& createMenu)
    : QObject(&mainWindow), window(mainWindow), create(createMenu) {
    window.views->setAcceptDrops(true);
    window.views->installEventFilter(this);
}

void ImportFiles::Ask() {
    const QStringList paths =
        QFileDialog::getOpenFileNames(&window, tr("Import models and sounds"), QString(),
                                      tr("Models and sounds (*.glb *.gltf *.wav *.ogg *.flac)"));
    if (!paths.isEmpty()) {
        Import(paths, window.views->PlaceForNew());
    }
}

int ImportFiles::Import(const QStringList& paths, const Vector3& place) {
    int count = 0;
    Deed deed{Deed::Kind::Import, {}};
    QStringList refused;
    Vector3 next = place;
    for (const QString& path : paths) {
        const ImportedAsset asset = ImportAsset(path.toStdString(), window.host.level.Folder());
        if (!asset.error.empty()) {
            refused.append(QString::fromStdString(asset.error));
            continue;
        }
        ++count;
        if (asset.kind == AssetKind::Model) {
            deed.objects.push_back(create.CreateMesh(QString::fromStdString(asset.name), next));
            next.x += kBeside;
        }
    }
    if (!deed.objects.empty()) {
        window.session.History().Tell(std::move(deed));
    }
    if (count > 0) {
        window.Report(tr("Imported into the level's folder: %1").arg(count).toStdString());
    }
    if (!refused.isEmpty()) {
        window.ReportError(tr("Not imported:\n%1").arg(refused.join('\n')).toStdString());
    }
    return count;
}

bool ImportFiles::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove &&
        event->type() != QEvent::Drop) {
        return QObject::eventFilter(watched, event);
    }
    auto* drop = static_cast<QDropEvent*>(event);
    const QStringList paths = FilesOf(*drop->mimeData());
    if (paths.isEmpty()) {
        return false;
    }
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop) {
        const Vector3 place = window.views->PlaceUnder(window.views->mapToGlobal(drop->position().toPoint()));
        // After the drop: a box would hold the program that the files come from.
        QMetaObject::invokeMethod(
            this, [this, paths, place] { Import(paths, place); }, Qt::QueuedConnection);
    }
    return true;
}

} // namespace stage
