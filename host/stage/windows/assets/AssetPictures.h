#pragma once

#include "host/stage/windows/assets/AssetFiles.h"

#include <deque>
#include <functional>
#include <memory>
#include <QHash>
#include <QObject>
#include <QPixmap>
#include <QThreadPool>
#include <QTimer>

namespace mesh {
class Mesh;
} // namespace mesh
namespace render {
class Renderer;
} // namespace render
namespace sound {
class SoundWave;
} // namespace sound

namespace stage {

/// Small pictures of assets, made one after another of those that were asked for: files are read beside the
/// user's work, the drawing takes a moment between events. The last ones are kept.
class AssetPictures : public QObject {
    Q_OBJECT
public:
    static constexpr int kSide = 72; ///< of a picture, in pixels before scaling

    explicit AssetPictures(QObject* parent);
    ~AssetPictures() override;

    /// Null while it is not made, and if it can't be; it is made then, and told by Made.
    QPixmap Get(const Asset& asset, const std::string& levelFolder);
    /// Why an asset has no picture, empty while nothing is wrong.
    QString ErrorOf(const Asset& asset) const;
    /// Forgets the pictures of files that have changed.
    void Refresh();
    /// Nothing is asked for that is not made.
    bool IsIdle() const { return queue.empty() && !isReading; }

    /// Whether there is time for pictures now; else they wait.
    std::function<bool()> mayWork;

signals:
    /// There is a picture, or a reason why there is none.
    void Made(const QString& path);

private:
    struct Job {
        Asset asset;
        std::string levelFolder;
    };
    struct Picture {
        qint64 changed = 0; ///< milliseconds since the epoch
        qint64 size = 0;    ///< bytes
        QPixmap pixmap;
        QString error;
    };
    /// What a file holds, as far as it is read apart from the windows.
    struct Content {
        std::shared_ptr<const mesh::Mesh> mesh;
        std::shared_ptr<sound::SoundWave> wave;
        QString error;
    };

    static Content Read(const Job& job);
    void StartNext();
    void Finish(const Job& job, Picture picture, const Content& content);
    QPixmap Draw(const Asset& asset, const Content& content);
    QPixmap DrawModel(const std::shared_ptr<const mesh::Mesh>& mesh);

    QHash<QString, Picture> pictures; ///< by path
    std::deque<QString> order;        ///< of the pictures, the oldest first
    std::deque<Job> queue;            ///< the last one asked for is wanted first
    bool isReading = false;
    QThreadPool reader; ///< one thread
    QTimer next;
    std::unique_ptr<render::Renderer> renderer;
    QString rendererError;
};

} // namespace stage
