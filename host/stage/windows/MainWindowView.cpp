#include "host/engine/ClassDatabase.h"
#include "host/stage/windows/assets/Assets.h"
#include "host/stage/windows/HelpDialogs.h"
#include "host/stage/windows/Icons.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/ObjectPanel.h"
#include "host/stage/windows/ObjectTree.h"
#include "host/stage/windows/PluginPanel.h"
#include "host/stage/windows/ScenePictures.h"
#include "host/stage/windows/SnapMenu.h"
#include "host/stage/windows/Theme.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewHeader.h"
#include "host/stage/windows/ViewTool.h"

#include <QAction>
#include <QActionGroup>
#include <QDockWidget>
#include <QMenuBar>
#include <QSettings>
#include <QShortcut>
#include <QToolBar>

namespace stage {

namespace {

struct ToolEntry {
    ToolMode mode;
    const char* text;
    Qt::Key key;
    IconId icon;
    const char* name;
};

constexpr ToolEntry kTools[] = {
    {ToolMode::Select, QT_TR_NOOP("&Select"), Qt::Key_Q, IconId::Select, "ToolSelect"},
    {ToolMode::Move, QT_TR_NOOP("&Move"), Qt::Key_W, IconId::Move, "ToolMove"},
    {ToolMode::Rotate, QT_TR_NOOP("&Rotate"), Qt::Key_E, IconId::Rotate, "ToolRotate"},
    {ToolMode::Scale, QT_TR_NOOP("S&cale"), Qt::Key_R, IconId::Scale, "ToolScale"},
};

struct LayoutEntry {
    int views;
    const char* text;
    Qt::Key key;
    IconId icon;
    const char* name;
};

constexpr LayoutEntry kLayouts[] = {
    {1, QT_TR_NOOP("&One view"), Qt::Key_1, IconId::OneView, "Views1"},
    {2, QT_TR_NOOP("&Two views"), Qt::Key_2, IconId::TwoViews, "Views2"},
    {3, QT_TR_NOOP("T&hree views"), Qt::Key_3, IconId::FourViews, "Views3"},
    {4, QT_TR_NOOP("&Four views"), Qt::Key_4, IconId::FourViews, "Views4"},
};

struct KindKey {
    ViewKind kind;
    const char* text;
    Qt::Key key;
    const char* name;
};

constexpr KindKey kKindKeys[] = {
    {ViewKind::Perspective, QT_TR_NOOP("&Perspective view"), Qt::Key_F5, "ViewPerspective"},
    {ViewKind::Top, QT_TR_NOOP("To&p view"), Qt::Key_F6, "ViewTop"},
    {ViewKind::Front, QT_TR_NOOP("F&ront view"), Qt::Key_F7, "ViewFront"},
    {ViewKind::Side, QT_TR_NOOP("S&ide view"), Qt::Key_F8, "ViewSide"},
};

} // namespace

void MainWindow::AddQuickPictures(QMenu& menu) {
    static constexpr auto kKey = "view/quickPictures";
    QAction* quick = AddAction(
        menu, tr("Less &detail while moving"), {}, [] {}, "ViewQuickPictures");
    quick->setToolTip(tr("Films and moving views are drawn with fewer pixels where this machine is slow; "
                         "a still view is always drawn in full"));
    quick->setCheckable(true);
    connect(quick, &QAction::toggled, this, [this](bool on) {
        views->pictures->quickWhileMoving = on;
        QSettings().setValue(kKey, on);
    });
    quick->setChecked(QSettings().value(kKey, true).toBool());
}

void MainWindow::AddHelperObjects(QMenu& menu) {
    static constexpr auto kKey = "objects/helpers";
    QAction* helpers = AddAction(
        menu, tr("Helper ob&jects in the list"), {}, [] {}, "ViewHelperObjects");
    helpers->setToolTip(tr("What films make for themselves: the points of a camera, the body of the sun"));
    helpers->setCheckable(true);
    connect(helpers, &QAction::toggled, this, [this](bool on) {
        tree->tree->ShowHelpers(on);
        QSettings().setValue(kKey, on);
    });
    helpers->setChecked(QSettings().value(kKey, false).toBool());
}

void MainWindow::MakeViewMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&View"));
    auto* toolGroup = new QActionGroup(this);
    for (const ToolEntry& tool : kTools) {
        QAction* action = AddAction(
            *menu, tr(tool.text), QKeySequence(tool.key),
            [this, mode = tool.mode] {
                views->tool->SetMode(mode);
                RedrawView(-1);
            },
            tool.name);
        action->setCheckable(true);
        action->setIcon(MakeIcon(tool.icon));
        action->setChecked(views->tool->Mode() == tool.mode);
        toolGroup->addAction(action);
    }
    menu->addSeparator();
    AddAction(
        *menu, tr("F&ocus"), QKeySequence(Qt::Key_F), [this] { views->FocusSelection(); }, "ViewFocus")
        ->setIcon(MakeIcon(IconId::Focus));
    AddAction(
        *menu, tr("Focus &all"), {}, [this] { views->FocusAll(); }, "ViewFocusAll");
    AddViewKey(Qt::Key_Home, [this] { views->FocusAll(); });
    QAction* orbit = AddAction(
        *menu, tr("Or&bit round the selection"), {}, [] {}, "ViewOrbitSelection");
    orbit->setCheckable(true);
    orbit->setChecked(true);
    connect(orbit, &QAction::toggled, this, [this](bool on) { views->orbitsSelection = on; });
    MakeBookmarkMenu(*menu->addMenu(tr("Boo&kmarks")));
    snapMenu = new SnapMenu(*views);
    snapMenu->Fill(*menu->addMenu(tr("S&napping and handles")));
    QAction* grid = AddAction(
        *menu, tr("&Grid"), QKeySequence(Qt::Key_G), [] {}, "ViewGrid");
    grid->setCheckable(true);
    grid->setChecked(true);
    grid->setIcon(MakeIcon(IconId::Grid));
    connect(grid, &QAction::toggled, this, [this](bool shown) {
        views->pictures->showGrid = shown;
        RedrawView(-1);
    });
    AddQuickPictures(*menu);
    menu->addSeparator();
    QMenu* layouts = menu->addMenu(tr("&Number of views"));
    auto* layoutGroup = new QActionGroup(this);
    for (const LayoutEntry& layout : kLayouts) {
        QAction* action = AddAction(
            *layouts, tr(layout.text), QKeySequence(Qt::CTRL | layout.key),
            [this, count = layout.views] { views->SetViewCount(count); }, layout.name);
        action->setCheckable(true);
        action->setChecked(layout.views == 1);
        action->setIcon(MakeIcon(layout.icon));
        layoutGroup->addAction(action);
    }
    auto* kindGroup = new QActionGroup(this);
    kindGroup->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (const KindKey& entry : kKindKeys) {
        QAction* action = AddAction(
            *menu, tr(entry.text), QKeySequence(entry.key),
            [this, kind = entry.kind] { views->SetKind(ActiveView(), kind); }, entry.name);
        action->setCheckable(true);
        kindGroup->addAction(action);
        connect(menu, &QMenu::aboutToShow, action, [this, action, kind = entry.kind] {
            const StageView* view = host.views.At(ActiveView());
            action->setChecked(view != nullptr && view->Kind() == kind);
        });
    }
    AddAction(
        *menu, tr("Look through the selected &camera"), QKeySequence(Qt::Key_F9),
        [this] { LookThroughSelected(); }, "ViewLookThrough");
    QMenu* looks = menu->addMenu(tr("&Active view"));
    connect(looks, &QMenu::aboutToShow, this, [this, looks] {
        looks->clear();
        ViewHeader::Fill(*looks, *views, ActiveView());
    });
    connect(panel, &ObjectPanel::LookRequested, this,
            [this](int camera) { views->SetKind(ActiveView(), ViewKind::Camera, camera); });
    AddThemeMenu(*menu);
    menu->addSeparator();
    AddHelperObjects(*menu);
    menu->addAction(treeDock->toggleViewAction());
    menu->addAction(assets->dock->toggleViewAction());
    menu->addAction(panelDock->toggleViewAction());
    menu->addAction(historyDock->toggleViewAction());
    menu->addAction(pluginPanel->toggleViewAction());
    toolWindows->SetMenu(menu);
}

void MainWindow::CheckLayout() {
    for (const LayoutEntry& layout : kLayouts) {
        findChild<QAction*>(layout.name)->setChecked(layout.views == host.views.Count());
    }
}

void MainWindow::AddThemeMenu(QMenu& menu) {
    constexpr std::pair<ThemeChoice, const char*> kThemes[] = {
        {ThemeChoice::Desktop, QT_TR_NOOP("As the &desktop")},
        {ThemeChoice::Light, QT_TR_NOOP("&Light")},
        {ThemeChoice::Dark, QT_TR_NOOP("D&ark")},
    };
    QMenu* themes = menu.addMenu(tr("T&heme"));
    auto* group = new QActionGroup(this);
    for (const auto& [choice, text] : kThemes) {
        QAction* action = AddAction(
            *themes, tr(text), {},
            [this, chosen = choice] {
                ChooseTheme(chosen);
                Report("Stage looks so from its next start on");
            },
            "");
        action->setCheckable(true);
        action->setChecked(choice == ChosenTheme());
        group->addAction(action);
    }
}

void MainWindow::MakeToolBar() {
    constexpr const char* kButtons[] = {
        "FileNew",   "FileOpen",  "FileSave", "", "ToolSelect",    "ToolMove",  "ToolRotate",
        "ToolScale", "",          "Snapping", "", "EditDuplicate", "EditGroup", "EditDelete",
        "",          "ViewFocus", "ViewGrid", "", "Views1",        "Views2",    "Views4",
    };
    tools = addToolBar(tr("Tools"));
    tools->setObjectName("ToolsBar");
    tools->setIconSize(QSize(20, 20));
    tools->setMovable(true);
    for (const char* name : kButtons) {
        if (std::string_view(name) == "Snapping") {
            tools->addActions(snapMenu->Switches());
            continue;
        }
        if (QAction* action = *name != '\0' ? findChild<QAction*>(name) : nullptr) {
            if (!action->shortcut().isEmpty()) {
                action->setToolTip(action->toolTip() + " (" +
                                   action->shortcut().toString(QKeySequence::NativeText) + ')');
            }
            tools->addAction(action);
        } else {
            tools->addSeparator();
        }
    }
}

void MainWindow::AddViewKey(const QKeySequence& keys, const std::function<void()>& run) {
    auto* shortcut = new QShortcut(keys, views);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [run] { run(); });
}

void MainWindow::MakeBookmarkMenu(QMenu& menu) {
    for (int number = 1; number <= ViewArea::kBookmarks; ++number) {
        AddAction(
            menu, tr("Go to &%1").arg(number), {}, [this, number] { views->GoToBookmark(number); },
            qPrintable(QString("BookmarkGo%1").arg(number)));
        AddViewKey(QKeySequence(Qt::Key_0 + number), [this, number] { views->GoToBookmark(number); });
    }
    menu.addSeparator();
    for (int number = 1; number <= ViewArea::kBookmarks; ++number) {
        AddAction(
            menu, tr("Keep this view as %1").arg(number),
            QKeySequence(QKeyCombination(Qt::CTRL | Qt::ALT, Qt::Key(Qt::Key_0 + number))),
            [this, number] { views->SetBookmark(number); }, qPrintable(QString("BookmarkSet%1").arg(number)));
    }
}

void MainWindow::LookThroughSelected() {
    for (const engine::SceneObject* object : commands.Selected()) {
        if (object->Info().className == engine::kCameraClass) {
            views->SetKind(ActiveView(), ViewKind::Camera, object->id);
            return;
        }
    }
    Report("Select a camera to look through it; Create makes one");
}

void MainWindow::MakeHelpMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Help"));
    AddAction(
        *menu, tr("&Mouse and keys"), QKeySequence(Qt::Key_F1), [this] { ShowKeys(); }, "HelpKeys");
    AddAction(
        *menu, tr("Your &first film"), {},
        [this] {
            ShowFirstFilm(this);
            Report("The steps stand in a window of their own");
        },
        "HelpFirstFilm");
    menu->addSeparator();
    AddAction(
        *menu, tr("&About Stage"), {}, [this] { ShowAbout(this); }, "HelpAbout");
}

void MainWindow::ShowKeys() {
    ShortcutsDialog(AllShortcuts(*this), this).exec();
}

} // namespace stage
