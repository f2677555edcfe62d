// "Attach to object" and "Change actor" in Stage.
#include "framework/PickMode.h"
#include "framework/QtBridge.h"
#include "framework/Wnd.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewWidget.h"
#include "tests/support/Answering.h"
#include "tests/whole/GizmoHand.h"
#include "tests/whole/OwnFilmFixture.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QWindow>

using ::testing::HasSubstr;

namespace {

class AttachInStageTest : public OwnFilmTest {
protected:
    static QWidget* Dialog() {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top->isVisible() && top->windowTitle() == "Attach movie object") {
                return top;
            }
        }
        return nullptr;
    }
    static void Press(const char* text) {
        ASSERT_NE(Dialog(), nullptr);
        for (QPushButton* button : Dialog()->findChildren<QPushButton*>()) {
            if (button->text() == text) {
                QTest::mouseClick(button, Qt::LeftButton);
                Settle();
                return;
            }
        }
        FAIL() << text;
    }
    QLabel* Sign() const { return window->findChild<QLabel*>("PickMode"); }
    std::string SignText() const { return Sign()->isVisible() ? Sign()->text().toStdString() : ""; }
    Qt::CursorShape Cursor() const { return window->views->Widget(0)->cursor().shape(); }
    void Escape() {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        PressKey(Qt::Key_Escape);
        Settle();
    }
};

using PickModeInStageTest = AttachInStageTest;

} // namespace

TEST_F(AttachInStageTest, AnActorIsAttachedByTheMouseAndFollows) {
    engine::SceneObject& crate = MakeInTheAir("Target box", 500);
    constexpr Vector3 kAside{10, 20, 30};
    AddKey(*Track(), KeyKind::Position, 0.0f, kAside.Data());
    ChooseOfRow("Attach to object");
    ASSERT_NE(Dialog(), nullptr);
    ChooseOfObject(crate, "Attach to Target box(");
    Press("OK");
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(Track()->parentObject, &crate);
    // The key says (10, 20, 30), in the space of the crate now.
    EXPECT_EQ(boat->World().Translation(), (Vector3{510, 3020, 30}));
    EXPECT_TRUE(window->session.IsChanged());
}

TEST_F(AttachInStageTest, AnAmpersandInTheNameIsShownInTheMenu) {
    engine::SceneObject& crate = MakeInTheAir("Fish & Chips", 500);
    ChooseOfRow("Attach to object");
    ASSERT_NE(Dialog(), nullptr);
    QStringList texts;
    Answering(
        [&](QWidget& menu) {
            for (const QAction* action : menu.actions()) {
                texts << action->text();
            }
            menu.close();
        },
        [&] { emit window->views->MenuRequested(0, &crate, QPoint(0, 0)); });
    // A doubled '&' is shown as one; a single one underlines the letter behind it.
    EXPECT_EQ(texts.value(0), "Fish && Chips");
    EXPECT_TRUE(texts.contains(QString("Attach to Fish && Chips(%1)").arg(crate.id)))
        << texts.join(", ").toStdString();
}

TEST_F(AttachInStageTest, TheAttachmentIsSavedAndLoaded) {
    engine::SceneObject& crate = MakeInTheAir("Target box", 500);
    ChooseOfRow("Attach to object");
    ChooseOfObject(crate, "Attach to Target box(");
    Press("OK");
    const std::string name = film->name;
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
    Settle();
    const auto* track = AsObjectTrack(Film(name)->FindObjectTrack(Object("Fishing boat")));
    ASSERT_NE(track, nullptr);
    EXPECT_EQ(track->parentObject, Object("Target box"));
}

TEST_F(AttachInStageTest, AnotherLevelClosesTheWindow) {
    engine::SceneObject& crate = MakeInTheAir("Target box", 500);
    ChooseOfRow("Attach to object");
    ChooseOfObject(crate, "Attach to Target box(");
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
    Settle();
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(SignText(), "");
}

TEST_F(AttachInStageTest, AParentThatTheUserDeletesLeavesTheWindowEmpty) {
    engine::SceneObject& crate = MakeInTheAir("Target box", 500);
    ChooseOfRow("Attach to object");
    ChooseOfObject(crate, "Attach to Target box(");
    window->host.Select({&crate});
    window->commands.DeleteSelected();
    Settle();
    ASSERT_EQ(Object("Target box"), nullptr);
    Press("OK");
    EXPECT_EQ(Track()->parentObject, nullptr);
}

TEST_F(AttachInStageTest, TheWindowSaysWhatToDoAndEscapeInTheViewClosesIt) {
    ChooseOfRow("Attach to object");
    EXPECT_THAT(SignText(), HasSubstr("choose \"Attach to ...\""));
    EXPECT_EQ(Cursor(), Qt::PointingHandCursor);
    ASSERT_NO_FATAL_FAILURE(Escape());
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(SignText(), "");
    EXPECT_EQ(Cursor(), Qt::ArrowCursor);
}

TEST_F(PickModeInStageTest, StatusBarAndCursorSayThatAnActorIsWaitedFor) {
    EXPECT_EQ(SignText(), "");
    EXPECT_EQ(Cursor(), Qt::ArrowCursor);
    ChooseOfRow("Change actor");
    EXPECT_EQ(SignText(),
              "Change actor: click the object that takes the place of \"Fishing boat\". Esc gives up.");
    EXPECT_EQ(Cursor(), Qt::CrossCursor);
    EXPECT_LE(window->minimumSizeHint().width(), window->width()); // a long text widens nothing
}

TEST_F(PickModeInStageTest, AClickOnAnObjectChangesTheActorAndEndsIt) {
    engine::SceneObject& crate = MakeInTheAir("Target box", 500);
    CFilmObjectTrack* track = Track();
    ChooseOfRow("Change actor");
    ClickInView(crate);
    EXPECT_EQ(track->actor, &crate);
    EXPECT_EQ(SignText(), "");
    EXPECT_EQ(Cursor(), Qt::ArrowCursor);
}

TEST_F(PickModeInStageTest, EscapeInAViewEndsItAndTheNextClickOnlySelects) {
    engine::SceneObject& crate = MakeInTheAir("Target box", 500);
    ChooseOfRow("Change actor");
    window->views->Widget(0)->setFocus();
    ASSERT_NO_FATAL_FAILURE(Escape());
    EXPECT_EQ(SignText(), "");
    ClickInView(crate);
    EXPECT_EQ(Track()->actor, boat);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(PickModeInStageTest, EscapeInTheScenarioWindowEndsItAndTheWindowStays) {
    ChooseOfRow("Change actor");
    NativeWidget(*window->toolWindows->Docks().front()->Window())->setFocus();
    ASSERT_NO_FATAL_FAILURE(Escape());
    EXPECT_EQ(SignText(), "");
    EXPECT_TRUE(window->toolWindows->Docks().front()->isVisible());
}

TEST_F(PickModeInStageTest, EscapeWhileTheFilmPlaysEndsItAndTheFilmPlaysOn) {
    ChooseOfRow("Change actor");
    bool pressed = false;
    std::string after = "not reached";
    InsidePump([&] {
        pressed = true;
        PressKey(Qt::Key_Escape);
        InsidePump([&] { after = SignText(); });
    });
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    PlayWithShortcut(20);
    EXPECT_TRUE(pressed);
    EXPECT_EQ(after, "");
    EXPECT_EQ(PickMode::Present(), nullptr);
}

TEST_F(PickModeInStageTest, ADragWithTheGizmoIsTakenBackFirst) {
    engine::SceneObject& crate = MakeInTheAir("Target box", 500);
    window->host.Select({&crate});
    Settle();
    ChooseOfRow("Change actor");
    GizmoHand hand(*window);
    ASSERT_TRUE(hand.Press("ToolMove", gizmo::GizmoMode::Translate, gizmo::GizmoPart::AxisY,
                           crate.World().Translation()));
    hand.Move({0, -60});
    ASSERT_NE(crate.World().Translation(), (Vector3{500, 3000, 0}));
    ASSERT_NO_FATAL_FAILURE(Escape());
    EXPECT_EQ(crate.World().Translation(), (Vector3{500, 3000, 0}));
    EXPECT_NE(SignText(), "");
    hand.Release();
    ASSERT_NO_FATAL_FAILURE(Escape());
    EXPECT_EQ(SignText(), "");
}

TEST_F(PickModeInStageTest, HidingTheScenarioWindowLeavesItOn) {
    ChooseOfRow("Change actor");
    window->toolWindows->Docks().front()->Window()->SendMessage(WM_CLOSE);
    Settle();
    EXPECT_NE(SignText(), "");       // it goes on until the next selection
    MakeInTheAir("Target box", 500); // which selects it
    EXPECT_EQ(SignText(), "");
}
