#include "host/stage/windows/ImportFiles.h"

#include "host/engine/Units.h"
#include "host/stage/host/AssetImport.h"
#include "host/stage/windows/CreateMenu.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/ViewArea.h"

#include <optional>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <utility>

namespace stage {

namespace {

constexpr float kBetween = engine::Metres(0.5f); ///< one imported model and the next

QStringList FilesOf(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile() && AssetKindOf(url.toLocalFile().toStdString()) != AssetKind::None) {
            paths.append(url.toLocalFile());
        }
    }
    return paths;
}

/// How far a model goes to both sides of its place along x; 0 and 0 if it can't be read.
std::pair<float, float> BoundsOf(engine::IMeshLibrary& meshes, const std::string& name) {
    Vector3 low;
    Vector3 high;
    if (const engine::IMesh* mesh = meshes.FindMesh(name)) {
        mesh->Bounds(low, high);
    }
    return {low.x, high.x};
}

/// "bell.wav", "1 sound", "3 sounds".
QString Counted(const QStringList& paths, const char* one, const char* several, bool byName) {
    const auto count = paths.size();
    return byName && count == 1
               ? QFileInfo(paths.front()).fileName()
               : QString("%1 %2").arg(count).arg(ImportFiles::tr(count == 1 ? one : several));
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
        Import(paths, [this](const std::string& mesh) { return window.views->PlaceForNew(mesh); });
    }
}

int ImportFiles::Import(const QStringList& paths, const Where& where) {
    int count = 0;
    Deed deed{Deed::Kind::Import, {}};
    QStringList refused;
    std::optional<Vector3> edge; ///< of the last model, and its place otherwise
    for (const QString& path : paths) {
        const ImportedAsset asset = ImportAsset(path.toStdString(), window.host.level.Folder());
        if (!asset.error.empty()) {
            refused.append(QString::fromStdString(asset.error));
            continue;
        }
        ++count;
        if (asset.kind == AssetKind::Model) {
            const auto [low, high] = BoundsOf(window.host.meshes, asset.name);
            Vector3 place = edge ? *edge : where(asset.name);
            place.x += edge ? kBetween - low : 0.0f;
            edge = Vector3{place.x + high, place.y, place.z};
            deed.objects.push_back(create.CreateMesh(QString::fromStdString(asset.name), place));
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

QString ImportFiles::WordsFor(const QMimeData& data) const {
    QStringList models;
    QStringList sounds;
    for (const QString& path : FilesOf(data)) {
        (AssetKindOf(path.toStdString()) == AssetKind::Model ? models : sounds).append(path);
    }
    const auto others = data.urls().size() - models.size() - sounds.size();
    if (models.isEmpty() && sounds.isEmpty()) {
        return tr("Only models (.glb, .gltf) and sounds (.wav, .ogg, .flac) can be dropped here.");
    }
    if (window.host.level.Folder().empty()) {
        return tr("Save the level first: what is imported goes into its folder.");
    }
    const bool isOne = models.size() + sounds.size() == 1;
    const QString soundWords = Counted(sounds, QT_TR_NOOP("sound"), QT_TR_NOOP("sounds"), isOne);
    QString words =
        tr("Drop to import %1 here").arg(Counted(models, QT_TR_NOOP("model"), QT_TR_NOOP("models"), isOne));
    if (models.isEmpty()) {
        words = tr("Drop to import %1 into the level's folder; sounds can't stand in a view").arg(soundWords);
    } else if (!sounds.isEmpty()) {
        words += tr(", and %1 into the level's folder").arg(soundWords);
    }
    if (others > 0) {
        words +=
            others == 1 ? tr("; 1 other file is left out") : tr("; %1 other files are left out").arg(others);
    }
    return words + '.';
}

bool ImportFiles::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove &&
        event->type() != QEvent::Drop) {
        return QObject::eventFilter(watched, event);
    }
    auto* drop = static_cast<QDropEvent*>(event);
    if (!drop->mimeData()->hasUrls()) {
        return false;
    }
    const QStringList paths = FilesOf(*drop->mimeData());
    window.views->TellDrop(event->type() == QEvent::Drop ? QString() : WordsFor(*drop->mimeData()));
    if (paths.isEmpty()) {
        ViewArea::Refuse(*drop);
        return true;
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
