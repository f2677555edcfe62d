#include "framework/Menu.h"
#include "framework/QtBridge.h"
#include "framework/ToolBar.h"
#include "host/stage/windows/CreateMenu.h"
#include "host/stage/windows/EffectWatch.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/PluginPanel.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <utility>

namespace stage {

namespace {

constexpr UINT kPanelId = 0xE900; ///< control number of a plug-in's form in the side panel
constexpr int kEnterKey = 13;
constexpr int kShift = 4;
constexpr int kCtrl = 8;
constexpr int kAlt = 16;

QKeySequence KeysOf(const ShortcutRecord& shortcut) {
    int keys = shortcut.keyCode == kEnterKey ? static_cast<int>(Qt::Key_Return) : shortcut.keyCode;
    keys |= (shortcut.modifiers & kShift) != 0 ? static_cast<int>(Qt::SHIFT) : 0;
    keys |= (shortcut.modifiers & kCtrl) != 0 ? static_cast<int>(Qt::CTRL) : 0;
    keys |= (shortcut.modifiers & kAlt) != 0 ? static_cast<int>(Qt::ALT) : 0;
    return QKeySequence(keys);
}

/// Plug-ins write the name of the object into texts of theirs.
void ShowNameAsItIs(const QMenu& menu, const QString& name) {
    if (!name.contains('&')) {
        return;
    }
    for (QAction* action : menu.actions()) {
        if (action->isEnabled() && !action->isSeparator()) {
            action->setText(action->text().replace(name, MenuText(name)));
        }
    }
}

} // namespace

void MainWindow::MakePluginMenu() {
    pluginMenu = menuBar()->addMenu(tr("&Plug-ins"));
    connect(pluginMenu, &QMenu::aboutToShow, this, &MainWindow::FillPluginMenu);
}

void MainWindow::FillPluginMenu() {
    pluginMenu->clear();
    for (const auto& [toolbar, native] : pluginToolbars) {
        for (const ToolBarButton& button : toolbar->Buttons()) {
            const PluginCommandId command{button.id};
            const QString text = QString::fromStdString(host.CommandText(command));
            if (button.id == 0 || text.isEmpty()) {
                continue;
            }
            QAction* action = pluginMenu->addAction(text);
            action->setEnabled(toolbar->IsButtonEnabled(button.id));
            action->setCheckable(toolbar->IsButtonChecked(button.id));
            action->setChecked(toolbar->IsButtonChecked(button.id));
            connect(action, &QAction::triggered, this, [this, command] { RunBarCommand(command.word); });
        }
        pluginMenu->addSeparator();
    }
    for (const ShortcutRecord& shortcut : host.shortcuts) {
        // The key itself is a shortcut of the window; here it is only told.
        const QString text = QString::fromStdString(shortcut.description) + '\t' +
                             KeysOf(shortcut).toString(QKeySequence::NativeText);
        connect(pluginMenu->addAction(text), &QAction::triggered, this,
                [this, shortcut] { RunShortcut(shortcut); });
    }
    if (host.plugins.Entries().empty()) {
        pluginMenu->addAction(tr("No plug-ins are loaded"))->setEnabled(false);
    }
}

void MainWindow::RunChosen(const QString& name, const std::function<void()>& command) {
    const QPointer<MainWindow> self(this); // a film that plays in the command may see the end of the window
    if (!effectWatch->HasEffect(command) && self != nullptr && !closing) {
        Report(tr("\"%1\" finds nothing to do").arg(name).toStdString());
    }
}

void MainWindow::RunBarCommand(unsigned id) {
    const PluginCommandId command{id};
    // The plug-in tells the state of what it switches by its buttons alone.
    const auto states = [this] {
        std::vector<unsigned> all;
        for (const auto& [toolbar, native] : pluginToolbars) {
            for (const ToolBarButton& button : toolbar->Buttons()) {
                all.push_back(button.state);
            }
        }
        return all;
    };
    RunChosen(QString::fromStdString(host.CommandText(command)), [&] {
        const std::vector<unsigned> before = states();
        host.RunCommand(command);
        if (states() != before) {
            effectWatch->Note();
        }
    });
}

void MainWindow::RunShortcut(const ShortcutRecord& shortcut) {
    const ShortcutRecord present = shortcut; // the call may end in unloading the table
    RunChosen(QString::fromStdString(present.description), [&] { host.RunShortcut(present); });
}

void MainWindow::ShortcutsChanged() {
    qDeleteAll(pluginShortcuts);
    pluginShortcuts.clear();
    for (const ShortcutRecord& shortcut : host.shortcuts) {
        auto* key = new QShortcut(KeysOf(shortcut), this);
        key->setContext(Qt::ApplicationShortcut);
        key->setAutoRepeat(false);
        connect(key, &QShortcut::activated, this, [this, shortcut] { RunShortcut(shortcut); });
        pluginShortcuts.append(key);
    }
}

bool MainWindow::AddToolbar(CToolBar* toolbar, unsigned resourceId) {
    if (!toolbar->LoadToolBar(resourceId)) {
        ReportError("A plug-in's toolbar is missing in its resources.");
        return false;
    }
    QToolBar* native = CreateNativeToolBar(*toolbar, this, [this](UINT id) { RunBarCommand(id); });
    native->setObjectName(QString("PluginBar%1").arg(resourceId));
    native->setIconSize(QSize(20, 20));
    addToolBar(native);
    pluginToolbars.emplace_back(toolbar, native);
    return true;
}

void MainWindow::NamePluginButtons() {
    for (const auto& [toolbar, native] : pluginToolbars) {
        native->setWindowTitle(QString::fromStdString(toolbar->Title()));
        const QList<QAction*> actions = native->actions();
        for (int i = 0; i < actions.size() && i < toolbar->GetButtonCount(); ++i) {
            const std::string text = host.CommandText(PluginCommandId{toolbar->GetItemID(i)});
            if (!text.empty()) {
                actions[i]->setToolTip(QString::fromStdString(text));
            }
        }
    }
    NamePanel();
}

// Forms have no title of their own; a plug-in's toolbar has.
void MainWindow::NamePanel() {
    pluginPanel->setWindowTitle(pluginToolbars.size() == 1
                                    ? QString::fromStdString(pluginToolbars.front().first->Title())
                                    : tr("Plug-in"));
}

void MainWindow::RemoveToolbar(CToolBar* toolbar) {
    std::erase_if(pluginToolbars, [toolbar](const auto& entry) {
        if (entry.first == toolbar) {
            delete entry.second.data();
        }
        return entry.first == toolbar;
    });
}

void MainWindow::ShowPanel(const CRuntimeClass* formClass) {
    auto* holder = new QWidget(pluginPanel);
    CWnd* form = CreateFormView(formClass, holder, kPanelId);
    if (form == nullptr) {
        delete holder;
        ReportError("A plug-in's panel can't be made.");
        return;
    }
    panelForm = form;
    AddFilmListMenu();
    QWidget* native = NativeWidget(*form);
    holder->setMinimumSize(native->size());
    pluginPanel->setWidget(holder);
    effectWatch->Note();
    NamePanel();
    PlacePanel(native->height());
    pluginPanel->show();
    pluginPanel->raise();
}

// A user who has not arranged the docks yet gets the panel below the properties if both have room there, else
// as a tab beside them.
void MainWindow::PlacePanel(int formHeight) {
    constexpr int kPropertiesNeed = 330; // pixels: an object's fields down to its flags
    if (!std::exchange(isPanelUnplaced, false) || panelDock->isFloating() || pluginPanel->isFloating()) {
        return;
    }
    if (views->height() < formHeight + kPropertiesNeed) {
        tabifyDockWidget(panelDock, pluginPanel);
    }
}

void MainWindow::HidePanel() {
    // Cleared first: the form's destruction may come back to the plug-in and from there to here.
    CWnd* form = panelForm;
    panelForm = nullptr;
    if (form != nullptr) {
        form->DestroyWindow();
    }
    if (pluginPanel != nullptr) {
        if (QWidget* holder = pluginPanel->widget()) {
            pluginPanel->setWidget(nullptr);
            holder->hide();
            holder->deleteLater();
        }
        pluginPanel->hide();
    }
}

// The first plug-in that has a form shows it.
void MainWindow::OpenPanel() {
    for (const PluginEntry* entry : host.plugins.Entries()) {
        if (panelForm == nullptr) {
            host.plugins.Guarded("OnActivate", [entry] { entry->plugin->OnActivate(true); });
        }
    }
    if (panelForm == nullptr) {
        pluginPanel->hide();
        Report("No plug-in has a panel to show");
    }
}

void MainWindow::DestroyToolWindows() {
    toolWindows->DestroyAll();
}

bool MainWindow::IsPanelShown() {
    return panelForm != nullptr;
}

void MainWindow::ShowMenu(int view, EditorObject* object, const QPoint& screen) {
    QMenu menu(this);
    menu.setObjectName("ContextMenu");
    const auto run = [this](UINT id) { host.RunCommand(PluginCommandId{id}); };
    if (host.Contains(object)) {
        if (!host.level.IsSelected(object)) {
            host.Select(commands.WithGroups({object}));
        }
        const QString name = QString::fromStdString(object->name);
        QAction* title =
            menu.addAction(MakeIcon(IconOf(static_cast<engine::SceneObject&>(*object))), MenuText(name));
        title->setEnabled(false);
        menu.addSeparator();
        CMenu items;
        items.CreatePopupMenu();
        if (host.FillObjectMenu(&items, object)) {
            AppendToQMenu(items, &menu, run);
            ShowNameAsItIs(menu, name);
            menu.addSeparator();
        }
        for (const char* entry :
             {"ViewFocus", "EditDuplicate", "EditRename", "EditGroup", "EditUngroup", "EditDelete"}) {
            menu.addAction(findChild<QAction*>(entry));
        }
        const auto* levelData = host.level.GetLevelData();
        if (levelData != nullptr && levelData->filmManager->currentFilm != nullptr) {
            menu.addAction(findChild<QAction*>("FilmsAddCameraFromObject"));
        }
    }
    if (view >= 0) {
        CMenu items;
        items.CreatePopupMenu();
        if (host.FillViewMenu(&items)) {
            AppendToQMenu(items, &menu, run);
        }
        menu.addSeparator();
        create->FillHere(*menu.addMenu(tr("Add here")), views->PlaceAt(view, screen));
    }
    if (!menu.isEmpty()) {
        menu.exec(screen);
    }
}

void MainWindow::LoadPlugins(const QStringList& libraries) {
    AfxSetMainWnd(WrapWidget(this));
    toolWindows->Attach();
    for (const QString& library : libraries) {
        host.LoadPlugin(library.toStdString());
    }
    host.level.Close(); // the plug-ins have seen nothing of it
    host.StartPlugins();
    NamePluginButtons();
    session.New();
}

} // namespace stage
