#include "tests/whole/OwnFilmFixture.h"

#include "framework/QtBridge.h"
#include "framework/Wnd.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewWidget.h"
#include "tests/support/Answering.h"
#include "tests/whole/GizmoHand.h"

#include <QMenu>
#include <QPushButton>
#include <QTest>

namespace {

constexpr UINT kMainControl = 1234;
constexpr UINT kMoveToBegin = 36833;
constexpr UINT kFrameForward = 36841;

void ChooseBeginning(QWidget& popup, const std::string& begin) {
    auto* menu = qobject_cast<QMenu*>(&popup);
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions()) {
        if (action->text().startsWith(QString::fromStdString(begin)) && action->isEnabled()) {
            menu->setActiveAction(action);
            QTest::keyClick(menu, Qt::Key_Return);
            return;
        }
    }
    menu->close();
    ADD_FAILURE() << "no entry " << begin;
}

} // namespace

void OwnFilmTest::SetUp() {
    for (QPushButton* button : window->findChildren<QPushButton*>()) {
        if (button->text() == "Add") {
            button->click();
        }
    }
    film = Films().currentFilm;
    ASSERT_NE(film, nullptr);
    boat = Object("Fishing boat");
    ASSERT_NE(boat, nullptr);
    auto* track = AsObjectTrack(film->CreateObjectTrack());
    film->AddTrack(track);
    track->SetActor(boat, /*isVirtual*/ false);
    const std::string name = film->name;
    ChooseFilm("<none>");
    ASSERT_NO_FATAL_FAILURE(OpenScenario(name));
    window->session.IsChanged(); // the film counts as one from here on
}

void OwnFilmTest::ChooseWith(QWidget& widget, const QPoint& place, const std::string& begin) {
    Answering([&](QWidget& menu) { ChooseBeginning(menu, begin); },
              [&] { QTest::mouseClick(&widget, Qt::RightButton, {}, place); });
    Settle();
}

void OwnFilmTest::ChooseOfRow(const char* entry) {
    ASSERT_FALSE(ScenarioRows().empty());
    ChooseWith(*NativeWidget(*ScenarioRows().back()), {60, 8}, entry);
}

void OwnFilmTest::ChooseOfFilm(const char* entry) {
    QWidget* control =
        NativeWidget(*window->toolWindows->Docks().front()->Window()->GetDlgItem(kMainControl));
    ChooseWith(*control, {60, control->height() - 4}, entry);
}

void OwnFilmTest::ChooseOfObject(engine::SceneObject& object, const std::string& begin) {
    const std::optional<QPoint> place = GizmoHand::PixelOf(*window, object.World().Translation());
    ASSERT_TRUE(place.has_value());
    ChooseWith(*window->views->Widget(0), *place, begin);
}

void OwnFilmTest::ClickInView(engine::SceneObject& object) {
    const std::optional<QPoint> place = GizmoHand::PixelOf(*window, object.World().Translation());
    ASSERT_TRUE(place.has_value());
    QTest::mouseClick(window->views->Widget(0), Qt::LeftButton, {}, *place);
    Settle();
}

void OwnFilmTest::Send(UINT id) {
    window->toolWindows->Docks().front()->Window()->SendMessage(WM_COMMAND, id);
    Settle();
}

void OwnFilmTest::GoTo(int frames) {
    Send(kMoveToBegin);
    for (int i = 0; i < frames; ++i) {
        Send(kFrameForward);
    }
}

IFilmKey* OwnFilmTest::AddKey(CFilmTrack& to, int kind, float seconds, const void* value) {
    IFilmKey* key = Films().keyFactory->CreateKey(kind);
    key->SetTime(seconds);
    if (value != nullptr) {
        key->SetValue(value);
    }
    EXPECT_TRUE(to.AddKey(key));
    return key;
}

engine::SceneObject& OwnFilmTest::MakeInTheAir(const std::string& name, float x) {
    engine::Matrix4 matrix;
    matrix.SetTranslation({x, 3000, 0});
    engine::SceneObject* object =
        window->commands.Create({ClassName::Mesh, name, "models/crate.glb", matrix, nullptr, true});
    Settle();
    LookAt(*object);
    window->host.Select({});
    Settle();
    return *object;
}
