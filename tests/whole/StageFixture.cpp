#include "tests/whole/StageFixture.h"

#include "framework/Wnd.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"
#include "tests/support/Paths.h"

#include <algorithm>
#include <filesystem>
#include <QApplication>
#include <QShortcut>
#include <QTest>
#include <QTimer>
#include <QWindow>

namespace {

constexpr int kRowId = 55;

void CollectRows(const CWnd& parent, std::vector<CWnd*>& rows) {
    for (int i = 0; CWnd* child = parent.GetWindowChild(i); ++i) {
        if (child->GetDlgCtrlID() == kRowId && child->IsWindowVisible()) {
            rows.push_back(child);
        }
        CollectRows(*child, rows);
    }
}

int Top(const CWnd* row) {
    CRect rect;
    row->GetWindowRect(&rect);
    return static_cast<int>(rect.top);
}

} // namespace

StageTest::StageTest() {
    std::filesystem::copy(SampleFolder(), folder.File("harbour"), std::filesystem::copy_options::recursive);
    levelPath = folder.File("harbour/harbour.level");
    Hooks().messageBox = [this](const std::string& text, UINT) {
        boxes.push_back(text);
        return 1;
    };
    window = std::make_unique<stage::MainWindow>(
        stage::HostFolders{folder.Path(), folder.Path(), SourceFolder() + "/host/stage/data"});
    window->resize(1000, 640);
    window->show();
    window->LoadPlugins({QString::fromStdString(BuiltLibrary("films.so"))});
    EXPECT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
    ShowPanel();
}

StageTest::~StageTest() {
    window->ShutdownHost();
    window.reset();
    Settle();
}

void StageTest::Settle() {
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void StageTest::ShowPanel() {
    if (!window->IsPanelShown()) {
        for (const auto* entry : window->host.plugins.Entries()) {
            entry->plugin->OnActivate(true);
        }
    }
    Settle();
}

QListWidget* StageTest::FilmList() const {
    for (QListWidget* list : window->findChildren<QListWidget*>()) {
        if (list->count() > 0 && list->item(0)->text() == "<none>") {
            return list;
        }
    }
    return nullptr;
}

std::vector<std::string> StageTest::FilmLines() const {
    std::vector<std::string> lines;
    for (int i = 0; FilmList() != nullptr && i < FilmList()->count(); ++i) {
        lines.push_back(FilmList()->item(i)->text().toStdString());
    }
    return lines;
}

void StageTest::ChooseFilm(const std::string& name) {
    QListWidget* list = FilmList();
    ASSERT_NE(list, nullptr);
    const QList<QListWidgetItem*> found = list->findItems(QString::fromStdString(name), Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(found.front()).center());
    Settle();
}

IFilm* StageTest::Film(const std::string& name) const {
    for (IFilm* film : Films().films) {
        if (film != nullptr && name == film->name) {
            return film;
        }
    }
    return nullptr;
}

engine::SceneObject* StageTest::Object(const std::string& name) const {
    return window->host.level.FindObject(name);
}

EditorObject* StageTest::FirstActor(IFilm* film) const {
    for (CFilmTrack* track : film->tracks) {
        if (const auto* objectTrack = AsObjectTrack(track)) {
            return objectTrack->actor;
        }
    }
    return nullptr;
}

std::vector<float> StageTest::MatrixOf(const EditorObject& object) {
    return {object.GetMatrix(0), object.GetMatrix(0) + 16};
}

void StageTest::PlayWithShortcut(std::uint32_t stepMs) {
    Hooks().clock = [this, stepMs] { return clock += stepMs; };
    QTest::keyClick(window->windowHandle(), Qt::Key_Return, Qt::ControlModifier);
    Settle();
    Hooks().clock = nullptr;
}

void StageTest::InsidePump(std::function<void()> action) {
    auto* timer = new QTimer(window.get());
    const std::uint32_t before = clock;
    QObject::connect(timer, &QTimer::timeout, window.get(),
                     [this, timer, before, action = std::move(action)] {
                         if (clock != before) { // the film has begun to read it
                             timer->stop();
                             timer->deleteLater();
                             action();
                         }
                     });
    timer->start(1); // a timer of 0 waits until nothing has to be painted
}

void StageTest::PressKey(int key) {
    QTest::keyClick(window->windowHandle(), static_cast<Qt::Key>(key));
}

void StageTest::Move(EditorObject* object, float x, float y, float z) {
    auto* scene = static_cast<engine::SceneObject*>(object);
    window->host.SelectObject(object, 1, 0);
    engine::Matrix4 world = scene->World();
    world.SetTranslation({x, y, z});
    window->commands.Move({{scene, world}});
    Settle();
}

void StageTest::OpenScenario(const std::string& film) {
    ChooseFilm(film);
    QListWidget* list = FilmList();
    ASSERT_NE(list, nullptr);
    const QPoint line = list->visualItemRect(list->currentItem()).center();
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, line);
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, line); // the double click leaves it pressed
    Settle();
    ASSERT_FALSE(window->toolWindows->Docks().isEmpty());
}

std::vector<CWnd*> StageTest::ScenarioRows() const {
    const QList<stage::ToolWindowDock*> docks = window->toolWindows->Docks();
    std::vector<CWnd*> rows;
    if (!docks.isEmpty()) {
        CollectRows(*docks.front()->Window(), rows);
    }
    std::ranges::sort(rows, {}, Top);
    return rows;
}

void StageTest::LookAt(engine::SceneObject& object) {
    window->host.Select({&object});
    const Vector3 place = object.World().Translation();
    stage::StageView& view = *window->host.views.At(0);
    view.navigation.LookAt({place.x + 400, place.y + 300, place.z + 800}, {place.x, place.y, place.z});
    view.ApplyNavigation();
    Settle();
}
