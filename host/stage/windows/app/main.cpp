#include "framework/FilmsApplication.h"
#include "host/stage/host/StateFolder.h"
#include "host/stage/windows/app/CommandLine.h"
#include "host/stage/windows/app/EndSignals.h"
#include "host/stage/windows/app/HeadlessStage.h"
#include "host/stage/windows/app/Inspector.h"
#include "host/stage/windows/app/StageApp.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/Theme.h"
#include "host/stage/windows/WorkKeeper.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <memory>
#include <optional>
#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <string>
#include <vector>

namespace {

constexpr int kUsageError = 1;
constexpr int kLevelError = 2;

stage::HostFolders FoldersOf(const stage::CommandLine& line) {
    const QString folder = line.dataFolder.isEmpty()
                               ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                               : QDir(line.dataFolder).absolutePath();
    QDir().mkpath(folder + "/helpers");
    const QString shipped = QDir(QCoreApplication::applicationDirPath() + "/../share/stage").absolutePath();
    return {folder.toStdString(), (folder + "/helpers").toStdString(), shipped.toStdString(),
            stage::UserStateFolder()};
}

int RunWindows(QApplication& application, const stage::CommandLine& line) {
    stage::ApplyTheme(application);
    stage::MainWindow window(FoldersOf(line));
    window.RestorePlaces();
    if (line.size.isValid()) {
        window.resize(line.size);
        window.StayOnScreen();
    }
    // Not by the last closed window: plug-ins have windows of their own.
    QObject::connect(&window, &stage::MainWindow::Closed, &application, &QApplication::quit,
                     Qt::QueuedConnection);
    const stage::EndSignals endSignals([&window] {
        if (window.keeper->Keep() && window.keeper->folder.HasKept()) {
            std::fputs("stage: the unsaved work is kept; the next start offers it\n", stderr);
        }
    });
    stage::StageApp app(window, line);
    std::unique_ptr<stage::Inspector> inspector;
    if (line.inspect) {
        inspector = std::make_unique<stage::Inspector>(window);
    }
    if (!app.Start() && !line.screenshots.isEmpty()) {
        return kLevelError;
    }
    const int code = QApplication::exec();
    window.ShutdownHost();
    return code;
}

bool AsksForRender(const std::vector<std::string>& arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument == "--render" || argument.starts_with("--render=");
    });
}

/// `stage --render ...`: no display is asked for, not even when there is one.
int RunRender(int argc, char** argv, const std::vector<std::string>& arguments) {
    int status = 0;
    const std::optional<headless::HeadlessOptions> options =
        headless::ReadArguments(arguments, stderr, status);
    if (!options) {
        return status;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    FilmsApplication application(argc, argv);
    std::vector<std::string> plugins;
    for (const QString& plugin : stage::FindPlugins(QCoreApplication::applicationDirPath())) {
        plugins.push_back(plugin.toStdString());
    }
    stage::HeadlessStage stage(FoldersOf({}), plugins);
    return headless::RunHeadless(*options, stage, stderr);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication::setOrganizationName("Stage");
    QCoreApplication::setApplicationName("Stage");
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (AsksForRender(words)) {
        return RunRender(argc, argv, words);
    }
    QStringList arguments;
    for (const std::string& word : words) {
        arguments << QString::fromLocal8Bit(word.c_str());
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
    // Films keep their times as text too; a comma would be another number.
    std::setlocale(LC_NUMERIC, "C");
    return RunWindows(application, line);
}
