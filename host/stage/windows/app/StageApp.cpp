#include "host/stage/windows/app/StageApp.h"

#include "host/stage/windows/MainWindow.h"

#include <cstdio>
#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>

namespace stage {

namespace {

constexpr int kSettleMs = 400; ///< windows place themselves and the plug-in makes its own

void Click(QWidget& target, const QPoint& place) {
    const QPointF local(place);
    const QPointF global = target.mapToGlobal(local);
    QMouseEvent press(QEvent::MouseButtonPress, local, global, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&target, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, local, global, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(&target, &release);
}

} // namespace

QStringList FindPlugins(const QString& programFolder) {
    QStringList found;
    for (const QString& folder : {programFolder + "/plugins", programFolder + "/../lib/films"}) {
        for (const QString& file : QDir(folder).entryList({"*.so"}, QDir::Files, QDir::Name)) {
            found << QDir(folder).absoluteFilePath(file);
        }
    }
    const QString films = QDir(programFolder + "/../lib").absoluteFilePath("films.so");
    if (found.isEmpty() && QFile::exists(films)) {
        found << films;
    }
    return found;
}

StageApp::StageApp(MainWindow& mainWindow, const CommandLine& line) : window(mainWindow), commandLine(line) {
}

bool StageApp::Start() {
    window.show();
    if (!commandLine.noPlugins) {
        window.LoadPlugins(commandLine.plugins.isEmpty() ? FindPlugins(QApplication::applicationDirPath())
                                                         : commandLine.plugins);
    }
    // Pictures are taken by scripts, which answer no boxes.
    if (commandLine.screenshots.isEmpty() && window.OfferKeptWork(/*onlyAfterCrash*/ true)) {
        return true;
    }
    if (!commandLine.level.isEmpty() && !window.OpenLevel(commandLine.level)) {
        return false;
    }
    if (!commandLine.film.isEmpty() || !commandLine.screenshots.isEmpty()) {
        QTimer::singleShot(kSettleMs, this, &StageApp::Continue);
    }
    return true;
}

void StageApp::Continue() {
    if (!commandLine.film.isEmpty() && !OpenFilm()) {
        window.ReportError("The level has no film \"" + commandLine.film.toStdString() + "\".");
        exitCode = 3;
    } else if (commandLine.play) {
        if (!commandLine.screenshots.isEmpty()) {
            QTimer::singleShot(kSettleMs * 2, this, &StageApp::TakeScreenshots);
        }
        for (const ShortcutRecord& shortcut : std::vector<ShortcutRecord>(window.host.shortcuts)) {
            window.host.RunShortcut(shortcut); // plays to the end
        }
        return;
    }
    if (!commandLine.screenshots.isEmpty()) {
        QTimer::singleShot(kSettleMs, this, &StageApp::TakeScreenshots);
    }
}

// A plug-in tells nobody how to open a film by name, so this does what a user does: it opens the plug-in's
// panel and clicks the film's name in its list.
bool StageApp::OpenFilm() {
    for (const PluginEntry* entry : window.host.plugins.Entries()) {
        if (!window.IsPanelShown()) {
            window.host.plugins.Guarded("OnActivate", [&] { entry->plugin->OnActivate(true); });
        }
    }
    QApplication::processEvents();
    for (QListWidget* list : window.findChildren<QListWidget*>()) {
        for (QListWidgetItem* item : list->findItems(commandLine.film, Qt::MatchExactly)) {
            list->scrollToItem(item);
            Click(*list->viewport(), list->visualItemRect(item).center());
            return true;
        }
    }
    return false;
}

void StageApp::TakeScreenshots() {
    QList<QWidget*> shown{&window};
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget != &window && widget->isVisible() && widget->windowType() != Qt::Popup &&
            widget->windowType() != Qt::ToolTip) {
            shown << widget;
        }
    }
    for (qsizetype i = 0; i < commandLine.screenshots.size() && i < shown.size(); ++i) {
        if (!shown[i]->grab().save(commandLine.screenshots[i])) {
            std::fprintf(stderr, "stage: can't write %s\n", qPrintable(commandLine.screenshots[i]));
            exitCode = 4;
        }
    }
    QApplication::exit(exitCode);
}

} // namespace stage
