#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace stage {

/// Tells when something in folders or in single files has changed and has rested for a moment, so that what
/// is just written is mostly whole. What could not be watched, as where the system's limit is reached, is
/// not.
class FileWatch : public QObject {
    Q_OBJECT
public:
    static constexpr int kRestMs = 300;
    static constexpr int kMostPaths = 2000; ///< well below what systems allow a user

    explicit FileWatch(QObject* parent);
    /// These from now on; paths that don't exist are watched by their folder, and taken up when they are
    /// named again. True if some were not watched before.
    bool Watch(const QStringList& paths);
    QStringList Watched() const { return watcher.files() + watcher.directories(); }

signals:
    void Changed();

private:
    QFileSystemWatcher watcher;
    QTimer rest;
};

} // namespace stage
