#include "host/stage/windows/assets/FileWatch.h"

#include <QFileInfo>
#include <QSet>

namespace stage {

FileWatch::FileWatch(QObject* parent) : QObject(parent) {
    rest.setSingleShot(true);
    rest.setInterval(kRestMs);
    connect(&rest, &QTimer::timeout, this, &FileWatch::Changed);
    connect(&watcher, &QFileSystemWatcher::fileChanged, this, [this] { rest.start(); });
    connect(&watcher, &QFileSystemWatcher::directoryChanged, this, [this] { rest.start(); });
}

bool FileWatch::Watch(const QStringList& paths) {
    QSet<QString> wanted;
    for (const QString& path : paths) {
        if (wanted.size() < kMostPaths && QFileInfo::exists(path)) {
            wanted.insert(path);
        }
    }
    const QStringList watched = Watched();
    const QSet<QString> present(watched.begin(), watched.end());
    const QSet<QString> gone = present - wanted;
    const QSet<QString> added = wanted - present;
    if (!gone.isEmpty()) {
        watcher.removePaths(gone.values());
    }
    if (!added.isEmpty()) {
        watcher.addPaths(added.values());
    }
    return !added.isEmpty();
}

} // namespace stage
