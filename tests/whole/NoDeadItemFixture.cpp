#include "tests/whole/NoDeadItemFixture.h"

#include "framework/Constants.h"
#include "host/stage/host/DryWrite.h"
#include "host/stage/windows/ScenePictures.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewTool.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <sstream>

namespace {

constexpr unsigned kPlugin = 1;
constexpr unsigned kToVirtual = 52;
constexpr std::uint32_t kClockStep = 1000;          // milliseconds
constexpr std::uint32_t kLongerThanTheFilm = 60000; // milliseconds

/// What is checked already among others that exclude it does nothing, as it shows.
bool CanBeChosen(const QAction& action) {
    const bool isPresent = action.isChecked() && action.actionGroup() != nullptr;
    return action.isEnabled() && action.isVisible() && !action.isSeparator() && !isPresent;
}

std::string NameOf(const QAction& action) {
    return action.text().remove('&').section('\t', 0, 0).toStdString();
}

void Collect(const QMenu& menu, const std::string& path,
             std::vector<std::pair<std::string, QAction*>>& found) {
    emit const_cast<QMenu&>(menu).aboutToShow(); // some are filled then
    for (QAction* action : menu.actions()) {
        const std::string name = path + '/' + NameOf(*action);
        if (action->menu() != nullptr) {
            Collect(*action->menu(), name, found);
        } else if (CanBeChosen(*action)) {
            found.emplace_back(name, action);
        }
    }
}

} // namespace

void NoDeadItemInStageTest::SetUp() {
    Hooks().messageBox = [this](const std::string& text, UINT) {
        boxes.push_back(text);
        return IDYES;
    };
    const auto make = [this](const char* className, const char* name, float x) {
        engine::Matrix4 matrix;
        matrix.SetTranslation({x, 100, 0});
        const bool isLight = std::string(className) == ClassName::GLLight;
        engine::SceneObject* object = window->commands.Create(
            {className, name, isLight ? "" : "models/crate.glb", matrix, nullptr, true});
        Settle();
        return object;
    };
    window->session.New();
    engine::SceneObject* crate = make(ClassName::Mesh, "Crate", 0);
    make(ClassName::Mesh, "Barrel", 300);
    make(ClassName::GLLight, "Lamp", 600);
    window->host.Select({make(ClassName::Mesh, "Chest", 900)});
    window->host.RunCommand(PluginCommandId::FromPluginNumber(kPlugin).WithLocal(kToVirtual));
    for (QPushButton* button : window->findChildren<QPushButton*>()) {
        if (button->text() == "Add") {
            button->click();
        }
    }
    ASSERT_NE(Films().currentFilm, nullptr);
    CFilmTrack* track = Films().currentFilm->CreateObjectTrack();
    Films().currentFilm->AddTrack(track);
    AsObjectTrack(track)->SetActor(crate, /*isVirtual*/ false);
    for (const float time : {0.0f, 9.0f}) {
        IFilmKey* key = Films().keyFactory->CreateKey(KeyKind::Position);
        const Vector3 place{100.0f * time, 100.0f, 0.0f};
        key->SetTime(time);
        key->SetValue(&place);
        ASSERT_TRUE(track->AddKey(key));
    }
    track->RefreshTrack();
    torch = make(ClassName::GLLight, "Torch", 1200)->name; // the plug-in gives it a name of its own
    ChooseFilm("<none>");
    path = folder.File("harbour/small.level");
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(path)));
    window->views->hide(); // pictures of the level take most of the time, and are not looked at
    QObject::connect(window->statusBar(), &QStatusBar::messageChanged, &dialogs,
                     [this](const QString& text) { messages += text.isEmpty() ? 0 : 1; });
    QObject::connect(&dialogs, &QTimer::timeout, &dialogs, [this] { GiveUpDialogs(); });
    dialogs.start(0);
    Hooks().clock = [this] { return clock += clockStep; };
}

void NoDeadItemInStageTest::GiveUpDialogs() {
    if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        ++asked;
        dialog->reject();
    }
}

void NoDeadItemInStageTest::Begin() {
    window->show();
    window->session.Changes().Forget();
    ASSERT_TRUE(window->session.Open(path)); // the list of recent files needn't be written each time
    ShowPanel();
    window->host.Select({});
    window->views->SetViewCount(1);
    stage::StageView& view = *window->host.views.At(0);
    view.navigation.LookAt({400, 500, 1800}, {400, 100, 0});
    view.ApplyNavigation();
    Settle();
    Settle();
}

void NoDeadItemInStageTest::Select(const std::vector<std::string>& names) {
    ObjectList objects;
    for (const std::string& name : names) {
        ASSERT_NE(Object(name), nullptr) << name;
        objects.push_back(Object(name));
    }
    window->host.Select(objects);
    Settle();
}

void NoDeadItemInStageTest::OpenFilm() {
    ChooseFilm(FilmLines()[1]);
    ASSERT_NE(Films().currentFilm, nullptr);
}

std::string NoDeadItemInStageTest::Look() {
    if (window->host.level.Data() == nullptr) {
        return "no level"; // the window has been closed
    }
    std::ostringstream look;
    look << stage::DryWrite(window->host, stage::DryWriteFor::Comparison) << '|' << boxes.size() << ' '
         << asked << ' ' << messages << '|' << window->isVisible() << ' ' << (Films().currentFilm != nullptr)
         << '|' << window->session.Path() << '|';
    for (const EditorObject* object : window->host.level.selection) {
        look << object->name << ' ';
    }
    for (int view = 0; view < window->host.views.Count(); ++view) {
        const stage::StageView& shown = *window->host.views.At(view);
        look << shown.attachedTo << ' ' << static_cast<int>(shown.Kind()) << static_cast<int>(shown.shading);
        for (int i = 0; i < 16; ++i) {
            look << window->host.GetViewMatrix(view)[i] << ' ';
        }
    }
    look << static_cast<int>(window->views->tool->Mode()) << window->views->pictures->showGrid << '|';
    for (const QAction* action : window->findChildren<QAction*>()) {
        if (!action->objectName().isEmpty()) {
            look << action->isChecked();
        }
    }
    for (const QAbstractItemView* list : window->findChildren<QAbstractItemView*>()) {
        look << (list->viewport()->findChild<QLineEdit*>() != nullptr); // a name is written in its row
    }
    for (const QDockWidget* dock : window->findChildren<QDockWidget*>()) {
        look << dock->isVisible();
    }
    for (const QToolBar* bar : window->findChildren<QToolBar*>()) {
        look << bar->isVisible();
        for (const QAction* action : bar->actions()) {
            look << action->isChecked();
        }
    }
    if (Object("Crate") != nullptr) {
        look << '|' << Object("Crate")->World().Translation().x;
    }
    return look.str();
}

/// A line that stands in the status bar already would not be told again.
std::string NoDeadItemInStageTest::LookBefore() {
    window->statusBar()->clearMessage();
    return Look();
}

std::vector<std::string> NoDeadItemInStageTest::Items() {
    std::vector<std::pair<std::string, QAction*>> found;
    for (const QAction* title : window->menuBar()->actions()) {
        Collect(*title->menu(), title->text().remove('&').toStdString(), found);
    }
    for (const QToolBar* bar : window->findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly)) {
        for (QAction* action : bar->actions()) {
            if (CanBeChosen(*action)) {
                found.emplace_back(bar->windowTitle().toStdString() + '/' + action->toolTip().toStdString(),
                                   action);
            }
        }
    }
    std::vector<std::string> names;
    names.reserve(found.size());
    for (const auto& [name, action] : found) {
        names.push_back(name);
    }
    return names;
}

QAction* NoDeadItemInStageTest::Find(const std::string& item, QWidget** button) {
    std::vector<std::pair<std::string, QAction*>> found;
    for (const QAction* title : window->menuBar()->actions()) {
        Collect(*title->menu(), title->text().remove('&').toStdString(), found);
    }
    for (const auto& [name, action] : found) {
        if (name == item) {
            return action;
        }
    }
    for (const QToolBar* bar : window->findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly)) {
        for (QAction* action : bar->actions()) {
            if (bar->windowTitle().toStdString() + '/' + action->toolTip().toStdString() == item) {
                *button = bar->widgetForAction(action);
                return action;
            }
        }
    }
    return nullptr;
}

void NoDeadItemInStageTest::Choose(const std::string& item) {
    QWidget* button = nullptr;
    QAction* action = Find(item, &button);
    ASSERT_NE(action, nullptr) << item;
    ++walked;
    if (button != nullptr) {
        QTest::mouseClick(button, Qt::LeftButton);
    } else {
        action->trigger();
    }
    Settle();
}

std::set<std::string> NoDeadItemInStageTest::Dead(const Prepare& prepare,
                                                  bool (*isWanted)(const std::string&)) {
    prepare();
    const std::vector<std::string> offered = Items();
    std::set<std::string> dead;
    for (const std::string& item : offered) {
        if (!isWanted(item)) {
            continue;
        }
        prepare();
        const std::string before = LookBefore();
        Choose(item);
        if (Look() == before) {
            dead.insert(item);
        }
    }
    return dead;
}

std::set<std::string> NoDeadItemInStageTest::DeadWhilePlaying() {
    Begin();
    OpenFilm();
    const std::vector<std::string> offered = Items();
    std::set<std::string> dead;
    for (const std::string& item : offered) {
        if (item.starts_with("Tools/")) {
            continue; // the same actions as in the menus
        }
        Begin();
        OpenFilm();
        // The clock stands, so the film shows the same frame until it is stopped; but saving takes the film
        // up again and comes back when it is over.
        clockStep = item == "File/Save" ? kClockStep : 0;
        bool isSeen = false;
        bool playedOn = false;
        bool ran = false;
        QTimer::singleShot(0, window.get(), [&] {
            const std::string before = LookBefore();
            Choose(item);
            isSeen = Look() != before;
            ran = true;
            QTimer::singleShot(0, window.get(), [this, &playedOn] {
                playedOn = true;
                clock += kLongerThanTheFilm;
            });
        });
        window->host.RunShortcut(window->host.shortcuts.front());
        if (!isSeen && playedOn) { // a film that stops is seen too
            dead.insert(item);
        }
        while (!playedOn) {
            Settle(); // the clock goes on in any case
        }
        EXPECT_TRUE(ran) << item;
    }
    return dead;
}

std::set<std::string> NoDeadItemInStageTest::DeadInMenu(const Prepare& prepare,
                                                        const std::function<void()>& rightClick) {
    std::vector<std::string> offered;
    const auto open = [&](const std::function<void(QMenu&)>& choose) {
        constexpr int kMostTries = 100; // then the menu would wait for ever
        int tries = 0;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (menu != nullptr && ++tries <= kMostTries) {
                choose(*menu);
            } else if (menu != nullptr) {
                ADD_FAILURE() << "the menu takes no choice";
                menu->close();
            }
        });
        poll.start(1);
        rightClick();
        Settle();
    };
    prepare();
    open([&](QMenu& menu) {
        offered.clear();
        std::vector<std::pair<std::string, QAction*>> found;
        Collect(menu, "", found);
        for (const auto& [name, action] : found) {
            offered.push_back(name);
        }
        menu.close();
    });
    EXPECT_FALSE(offered.empty());
    std::set<std::string> dead;
    for (const std::string& item : offered) {
        prepare();
        const std::string before = LookBefore();
        open([&](QMenu& menu) {
            for (QAction* action : menu.actions()) {
                const std::string name = "/" + NameOf(*action);
                const bool isOnTheWay =
                    action->menu() != nullptr && item.find(name + "/") != std::string::npos;
                if (isOnTheWay || (action->menu() == nullptr && item.ends_with(name))) {
                    menu.setActiveAction(action);
                    QTest::keyClick(&menu, Qt::Key_Return);
                    return;
                }
            }
            menu.close();
        });
        ++walked;
        if (Look() == before) {
            dead.insert(item);
        }
    }
    return dead;
}
