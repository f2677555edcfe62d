#pragma once

#include "host/stage/windows/app/CommandLine.h"

#include <QObject>

namespace stage {

class MainWindow;

/// What happens between the start of the program and its end, besides what the user does.
class StageApp : public QObject {
    Q_OBJECT
public:
    StageApp(MainWindow& mainWindow, const CommandLine& line);

    /// Loads plug-ins and level and shows the window. False if the level can't be opened.
    bool Start();
    int exitCode = 0;

private:
    void Continue();
    bool OpenFilm();
    void TakeScreenshots();

    MainWindow& window;
    const CommandLine commandLine;
};

/// The plug-in libraries beside the program, sorted by name.
QStringList FindPlugins(const QString& programFolder);

} // namespace stage
