#pragma once

#include <QObject>

namespace stage {

class FileWatch;
class MainWindow;

/// Has models that change on the disk loaded anew, when the user pauses and no film plays. What can't be read
/// stays as it is, and the status bar tells why.
class ModelWatch : public QObject {
    Q_OBJECT
public:
    explicit ModelWatch(MainWindow& mainWindow);

    /// Something may have changed: looks at the next pause.
    void Request();

signals:
    /// Files of models have changed, whether they could be read or not.
    void Changed();

private:
    void OnQuiet();
    void Reload();

    MainWindow& window;
    FileWatch* watch;
    bool isWanted = false;
};

} // namespace stage
