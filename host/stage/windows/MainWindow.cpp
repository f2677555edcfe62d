#include "host/stage/windows/MainWindow.h"

#include "framework/FilmsApplication.h"
#include "framework/QtBridge.h"
#include "framework/UserNote.h"
#include "framework/Wnd.h"
#include "host/stage/windows/assets/Assets.h"
#include "host/stage/windows/browse/SoundPreview.h"
#include "host/stage/windows/DeleteNotice.h"
#include "host/stage/windows/EffectWatch.h"
#include "host/stage/windows/FilmEffects.h"
#include "host/stage/windows/films/FilmCommands.h"
#include "host/stage/windows/films/ScenarioKeys.h"
#include "host/stage/windows/Icons.h"
#include "host/stage/windows/Notice.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/ObjectPanel.h"
#include "host/stage/windows/ObjectTree.h"
#include "host/stage/windows/PickModeSign.h"
#include "host/stage/windows/PluginPanel.h"
#include "host/stage/windows/QuietMoments.h"
#include "host/stage/windows/ScreenFit.h"
#include "host/stage/windows/SeparatorDrag.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/WorkKeeper.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <QAction>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <utility>

namespace stage {

namespace {
constexpr int kMessageMs = 6000;

/// Tells the user what a handler threw, as a plug-in's that can't read a file: after the handler's event,
/// which may be a painting, and one box at a time, as what is thrown behind an open one would open box upon
/// box.
std::function<void(const std::string&)> ExceptionReport(MainWindow& window) {
    return [&window, isOpen = std::make_shared<bool>(false)](const std::string& what) {
        std::fprintf(stderr, "stage: %s\n", what.c_str());
        if (std::exchange(*isOpen, true)) {
            return;
        }
        const auto tell = [&window, isOpen, what] {
            window.ReportError("The command has failed.\n" + what);
            *isOpen = false;
        };
        QMetaObject::invokeMethod(&window, tell, Qt::QueuedConnection);
    };
}

void SetExceptionReport(std::function<void(const std::string&)> report) {
    if (auto* application = dynamic_cast<FilmsApplication*>(qApp)) {
        application->SetExceptionReport(std::move(report));
    }
}

} // namespace

MainWindow::MainWindow(HostFolders folders)
    : host(*this, std::move(folders)), session(host), commands(host, session) {
    setObjectName("Stage");
    effectWatch = std::make_unique<EffectWatch>(); // told by all that follows
    views = new ViewArea(host, commands, this);
    setCentralWidget(views);
    MakeHistory();
    MakeDocks();
    MakeFileMenu();
    MakeEditMenu();
    MakeCreateMenu();
    MakeViewMenu();
    MakeFilmsMenu();
    MakePluginMenu();
    MakeHelpMenu();
    MakeToolBar();
    MakeStatusBar();
    MakeKeeper();
    refreshTimer.setSingleShot(true);
    refreshTimer.setInterval(0);
    connect(&refreshTimer, &QTimer::timeout, this, &MainWindow::FlushRefresh);
    connect(views, &ViewArea::MenuRequested, this, &MainWindow::ShowMenu);
    resize(1360, 860);
    effects = std::make_unique<FilmEffects>(host.level, [this](const std::string& text) { Report(text); });
    effects->onStopped = [this] {
        effectWatch->NoteFilmStopped();
        scenarioKeys->FilmStopped();
    };
    host.level.SetFilmSink(effects.get());
    SetFilePreview(SoundPreview::Maker([this] { return QString::fromStdString(host.level.Folder()); }));
    session.New();
    UpdateActions();
    new SeparatorDrag(*this);
    SetExceptionReport(ExceptionReport(*this));
    SetUserNoteSink([this](const std::string& text) { Report(text); });
}

MainWindow::~MainWindow() {
    ShutdownHost();
    // The views draw the host's level; they must go before it.
    delete takeCentralWidget();
    qDeleteAll(findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly));
}

void MainWindow::ShutdownHost() {
    closing = true;
    refreshTimer.stop();
    lookTimer.stop();
    session.Changes().Forget();
    host.Shutdown();
    pickSign.reset();
    SetUserNoteSink(nullptr);
    host.level.SetFilmSink(nullptr);
    SetFilePreview({});
    SetExceptionReport(nullptr);
    toolWindows->Detach();
    if (AfxGetMainWnd() == WrapWidget(this)) {
        AfxSetMainWnd(nullptr);
    }
}

void MainWindow::MakeDocks() {
    setDockNestingEnabled(true);
    // A wide window below leaves the column of forms at the right its whole height.
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    toolWindows = new ToolWindows(*this);
    tree = new ObjectTree(host, commands, this);
    treeDock = new QDockWidget(tr("Objects"), this);
    treeDock->setObjectName("ObjectsDock");
    treeDock->setWidget(tree);
    addDockWidget(Qt::LeftDockWidgetArea, treeDock);
    panel = new ObjectPanel(host, commands, this);
    panelDock = new QDockWidget(tr("Properties"), this);
    panelDock->setObjectName("PropertiesDock");
    panelDock->setWidget(panel);
    addDockWidget(Qt::RightDockWidgetArea, panelDock);
    pluginPanel = new PluginPanel(this);
    addDockWidget(Qt::RightDockWidgetArea, pluginPanel);
    pluginPanel->hide();
    addDockWidget(Qt::LeftDockWidgetArea, historyDock);
    historyDock->hide();
    resizeDocks({treeDock, panelDock}, {240, 300}, Qt::Horizontal);
    connect(pluginPanel, &PluginPanel::ClosedByUser, this, [this] {
        HidePanel();
        host.PanelClosed();
    });
    connect(pluginPanel, &PluginPanel::OpenedByUser, this, &MainWindow::OpenPanel);
    connect(tree->tree, &ObjectTreeWidget::FocusRequested, views, &ViewArea::FocusSelection);
    connect(tree->tree, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
        EditorObject* object = tree->tree->ObjectOf(tree->tree->itemAt(place));
        ShowMenu(-1, object, tree->tree->viewport()->mapToGlobal(place));
    });
}

void MainWindow::MakeStatusBar() {
    selectionLabel = new QLabel(this);
    selectionLabel->setProperty("role", "hint");
    rateLabel = new QLabel(this);
    rateLabel->setProperty("role", "hint");
    rateLabel->setMinimumWidth(60);
    rateLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    pickSign = std::make_unique<PickModeSign>(*statusBar(), *views);
    notice = new Notice(*statusBar());
    new DeleteNotice(*this, *notice);
    statusBar()->addPermanentWidget(selectionLabel);
    statusBar()->addPermanentWidget(rateLabel);
    statusBar()->showMessage(tr("Right mouse: look and fly with WASD. Alt+left or middle: orbit. F: focus."));
    connect(views, &ViewArea::FrameRate, this, [this](double rate) {
        rateLabel->setText(rate > 0.0 ? tr("%1 fps").arg(rate, 0, 'f', 0) : QString());
    });
    connect(views, &ViewArea::ModeChanged, this, [this](const QString& text, bool isDrag) {
        if (pickSign) {
            pickSign->ShowViewMode(text, isDrag);
        }
    });
    connect(tree->tree, &ObjectTreeWidget::Dragged, this, [this](const QString& text) {
        if (pickSign) {
            pickSign->ShowListMode(text);
        }
    });
    connect(views, &ViewArea::StatusText, this,
            [this](const QString& text) { statusBar()->showMessage(text, kMessageMs); });
}

int MainWindow::ActiveView() {
    return views != nullptr ? views->ActiveView() : -1;
}

void MainWindow::RedrawView(int view) {
    effectWatch->NoteRedraw();
    if (views != nullptr && !closing) {
        views->Redraw(view);
    }
    if (!closing && !refreshTimer.isActive()) {
        refreshTimer.start(); // a film that opens, closes or gets keys tells the panel nothing
    }
}

void MainWindow::AttachmentChanged(int view) {
    const StageView* changed = host.views.At(view);
    if (changed != nullptr && changed->attachedTo != 0 && !closing) {
        Report(tr("The view shows the film's camera. Click its badge to take it back.").toStdString());
    }
    RedrawView(view);
}

void MainWindow::SelectionChanged() {
    effectWatch->Note();
    panelStale = true;
    refreshTimer.start();
    if (tree != nullptr && !closing) {
        tree->tree->ShowSelection();
    }
    RedrawView(-1);
}

void MainWindow::ObjectsChanged() {
    effectWatch->Note();
    treeStale = panelStale = true;
    refreshTimer.start();
    quiet->Request();
    RedrawView(-1);
}

void MainWindow::ObjectsMoved() {
    effectWatch->Note();
    transformStale = true;
    if (!refreshTimer.isActive()) {
        refreshTimer.start();
    }
}

void MainWindow::RefreshObjectTree() {
    treeStale = true;
    refreshTimer.start();
}

void MainWindow::RefreshObjectPanel() {
    panelStale = true;
    refreshTimer.start();
}

void MainWindow::FlushRefresh() {
    if (closing) {
        return;
    }
    if (treeStale) {
        tree->tree->Rebuild();
    }
    if (panelStale || panel->IsStale()) {
        panel->Refresh();
    } else if (transformStale) {
        panel->RefreshTransform();
    }
    treeStale = panelStale = transformStale = false;
    const int selected = static_cast<int>(host.level.selection.size());
    selectionLabel->setText(selected == 1   ? QString::fromStdString(host.level.selection.front()->name)
                            : selected == 0 ? QString()
                                            : tr("%1 objects selected").arg(selected));
    UpdateActions();
}

void MainWindow::LevelChanged() {
    if (closing) {
        return;
    }
    setWindowTitle(tr("%1[*] - Stage").arg(QString::fromStdString(session.Title())));
    setWindowModified(session.IsMarkedChanged());
    setWindowFilePath(QString::fromStdString(session.Path()));
    assets->FollowLevel();
    if (!session.IsMarkedChanged()) {
        keeper->Drop();
    }
}

void MainWindow::UpdateActions() {
    const bool any = !host.level.selection.empty();
    for (QAction* action : selectionActions) {
        action->setEnabled(any);
    }
}

void MainWindow::Report(const std::string& text) {
    effectWatch->Note();
    statusBar()->showMessage(QString::fromStdString(text), kMessageMs);
}

void MainWindow::RestorePlaces() {
    const QSettings settings;
    restoreGeometry(settings.value("window/geometry").toByteArray());
    isPanelUnplaced = !restoreState(settings.value("window/state").toByteArray());
    views->RestoreLooks();
    CheckLayout();
    StayOnScreen();
    if (panelForm == nullptr) {
        pluginPanel->hide(); // it was shown at the last end; its plug-in says whether it is again
    }
}

void MainWindow::StayOnScreen() {
    constexpr QSize kFrame(4, 40); // pixels: what window managers add at most, before it is known
    const QRect area = screen()->availableGeometry();
    if (isMaximized() || isFullScreen()) {
        return;
    }
    if (!testAttribute(Qt::WA_Moved)) {
        resize(size().boundedTo(area.size() - kFrame)); // the window manager finds a place
    } else if (!area.contains(geometry())) {
        setGeometry(FitInto(geometry(), area.adjusted(0, kFrame.height(), 0, 0), {kFrame.width(), 0}));
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!MayLoseChanges()) {
        event->ignore();
        return;
    }
    QSettings settings;
    settings.setValue("window/geometry", saveGeometry());
    settings.setValue("window/state", saveState());
    toolWindows->SavePlaces();
    views->SaveLooks();
    // A film that plays is left here; its loop then ends, and the plug-ins are unloaded after it.
    session.Close();
    keeper->Drop();
    event->accept();
    emit Closed();
}

} // namespace stage
