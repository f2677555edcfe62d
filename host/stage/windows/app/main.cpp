#include "framework/FilmsApplication.h"
#include "host/stage/windows/app/CommandLine.h"
#include "host/stage/windows/app/StageApp.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/Theme.h"

#include <clocale>
#include <cstdio>
#include <QApplication>
#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace {

constexpr int kUsageError = 1;
constexpr int kLevelError = 2;

stage::HostFolders FoldersOf(const stage::CommandLine& line) {
    const QString folder = line.dataFolder.isEmpty()
                               ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                               : QDir(line.dataFolder).absolutePath();
    QDir().mkpath(folder + "/helpers");
    return {folder.toStdString(), (folder + "/helpers").toStdString()};
}

int RunWindows(QApplication& application, const stage::CommandLine& line) {
    stage::ApplyTheme(application);
    stage::MainWindow window(FoldersOf(line));
    const QSettings settings;
    window.restoreGeometry(settings.value("window/geometry").toByteArray());
    window.restoreState(settings.value("window/state").toByteArray());
    if (line.size.isValid()) {
        window.resize(line.size);
    }
    stage::StageApp app(window, line);
    if (!app.Start() && !line.screenshots.isEmpty()) {
        return kLevelError;
    }
    const int code = QApplication::exec();
    window.ShutdownHost();
    return code;
}

} // namespace

int main(int argc, char** argv) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    const stage::CommandLine line = stage::ParseCommandLine(arguments);
    if (line.help) {
        std::fputs(qPrintable(stage::UsageText()), stdout);
        return 0;
    }
    if (!line.error.isEmpty()) {
        std::fprintf(stderr, "stage: %s\n%s", qPrintable(line.error), qPrintable(stage::UsageText()));
        return kUsageError;
    }
    FilmsApplication application(argc, argv);
    QCoreApplication::setOrganizationName("Stage");
    QCoreApplication::setApplicationName("Stage");
    // Films keep their times as text too; a comma would be another number.
    std::setlocale(LC_NUMERIC, "C");
    return RunWindows(application, line);
}
