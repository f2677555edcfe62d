#include "host/stage/windows/assets/AssetPictures.h"

#include "host/engine/mesh/GltfLoader.h"
#include "host/sound/SoundFile.h"
#include "host/sound/SoundWave.h"
#include "host/stage/render/Renderer.h"
#include "host/stage/windows/browse/EffectPainter.h"
#include "host/stage/windows/browse/ModelScene.h"
#include "host/stage/windows/browse/WaveView.h"

#include <algorithm>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

namespace stage {

namespace {

/// More than a screen shows.
constexpr std::size_t kMostWaiting = 200;
/// 30 KiB each without scaling.
constexpr std::size_t kMostKept = 1000;
constexpr int kWaitMs = 250; ///< between looks whether there is time
constexpr int kWavePieces = 256;
constexpr int kReadSamples = 1 << 20;
constexpr float kEffectShare = 0.4f; ///< of its showing: when there is most to be seen
constexpr std::uint32_t kSeed = 1;

QString PathOf(const Asset& asset) {
    return QString::fromStdString(asset.path);
}

} // namespace

AssetPictures::AssetPictures(QObject* parent) : QObject(parent) {
    reader.setMaxThreadCount(1);
    next.setSingleShot(true);
    connect(&next, &QTimer::timeout, this, &AssetPictures::StartNext);
}

AssetPictures::~AssetPictures() {
    reader.clear();
    reader.waitForDone();
}

QPixmap AssetPictures::Get(const Asset& asset, const std::string& levelFolder) {
    const auto known = pictures.constFind(PathOf(asset));
    if (known != pictures.constEnd()) {
        return known->pixmap;
    }
    const auto isSame = [&](const Job& job) { return job.asset.path == asset.path; };
    if (std::ranges::none_of(queue, isSame)) {
        queue.push_back({asset, levelFolder});
        if (queue.size() > kMostWaiting) {
            queue.pop_front(); // it was scrolled away; whoever sees it again asks again
        }
    }
    if (!isReading && !next.isActive()) {
        next.start(0);
    }
    return {};
}

QString AssetPictures::ErrorOf(const Asset& asset) const {
    return pictures.value(PathOf(asset)).error;
}

void AssetPictures::Refresh() {
    std::erase_if(order, [this](const QString& path) {
        const QFileInfo file(path);
        const Picture& picture = pictures[path];
        const bool isSame = file.lastModified().toMSecsSinceEpoch() == picture.changed &&
                            file.size() == picture.size && file.exists();
        if (!isSame) {
            pictures.remove(path);
        }
        return !isSame;
    });
}

void AssetPictures::StartNext() {
    if (isReading || queue.empty()) {
        return;
    }
    if (mayWork && !mayWork()) {
        next.start(kWaitMs);
        return;
    }
    const Job job = queue.back();
    queue.pop_back();
    isReading = true;
    const QFileInfo file(PathOf(job.asset));
    Picture picture{file.lastModified().toMSecsSinceEpoch(), file.size(), QPixmap(), QString()};
    reader.start([this, job, picture] {
        const Content content = Read(job);
        QMetaObject::invokeMethod(
            this, [this, job, picture, content] { Finish(job, picture, content); }, Qt::QueuedConnection);
    });
}

/// Runs in the reader's thread: nothing of the windows in here.
AssetPictures::Content AssetPictures::Read(const Job& job) {
    Content content;
    try {
        if (job.asset.kind == AssetKind::Model) {
            content.mesh = mesh::LoadGltf(job.asset.path, job.levelFolder);
        } else if (job.asset.kind == AssetKind::Sound) {
            content.wave = std::make_shared<sound::SoundWave>(job.asset.path, kWavePieces);
            while (content.wave->ReadOn(kReadSamples)) {
            }
        }
    } catch (const std::exception& failure) {
        content.error = QString::fromStdString(failure.what());
    }
    return content;
}

void AssetPictures::Finish(const Job& job, Picture picture, const Content& content) {
    const QString path = PathOf(job.asset);
    picture.error = content.error;
    if (content.error.isEmpty()) {
        try {
            picture.pixmap = Draw(job.asset, content);
        } catch (const EffectFileError& failure) {
            picture.error = QString::fromStdString(failure.what());
        }
    }
    std::erase(order, path);
    order.push_back(path);
    pictures.insert(path, picture);
    if (order.size() > kMostKept) {
        pictures.remove(order.front());
        order.pop_front();
    }
    isReading = false;
    if (!queue.empty()) {
        next.start(0);
    }
    emit Made(path);
}

QPixmap AssetPictures::Draw(const Asset& asset, const Content& content) {
    if (asset.kind == AssetKind::Model) {
        return DrawModel(content.mesh);
    }
    if (asset.kind == AssetKind::Sound) {
        WaveView view(nullptr);
        view.resize(kSide, kSide);
        view.Show(content.wave);
        return view.grab();
    }
    const qreal scale = qGuiApp->devicePixelRatio();
    QPixmap pixmap(QSize(kSide, kSide) * scale);
    pixmap.setDevicePixelRatio(scale);
    const EffectPainter effect(EffectSimulation(EffectFile::Read(asset.effect, asset.path), kSeed));
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    effect.Paint(painter, QRectF(0, 0, kSide, kSide), effect.LoopSeconds() * kEffectShare);
    return pixmap;
}

QPixmap AssetPictures::DrawModel(const std::shared_ptr<const mesh::Mesh>& mesh) {
    if (renderer == nullptr && rendererError.isEmpty()) {
        std::string error;
        renderer = render::Renderer::Create(error);
        rendererError = renderer == nullptr ? QString::fromStdString(error) : QString();
    }
    if (renderer == nullptr) {
        return {};
    }
    const qreal scale = qGuiApp->devicePixelRatio();
    const int side = static_cast<int>(kSide * scale);
    ModelScene scene(mesh);
    ViewNavigation navigation;
    scene.Frame(navigation, /*aspect*/ 1.0f);
    render::RenderImage image;
    renderer->BeginFrame(scene.Update(navigation, side));
    if (!renderer->DrawView(scene.Camera(navigation, 1.0f), side, side, image, /*detail*/ 2.0f)) {
        return {};
    }
    const QImage pixels(reinterpret_cast<const uchar*>(image.pixels.data()), image.width, image.height,
                        static_cast<qsizetype>(image.width) * 4, QImage::Format_RGB32);
    QPixmap pixmap = QPixmap::fromImage(pixels.copy());
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

} // namespace stage
