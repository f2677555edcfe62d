#include "tests/stage/WindowFixture.h"

#include "host/stage/gizmo/Gizmo.h"
#include "host/stage/windows/ScenePictures.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewTool.h"

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QTest>

using ::testing::_;

class ViewWindowTest : public WindowFixture {
protected:
    void UseTool(const char* name) {
        Action(name)->trigger();
        Settle();
    }
    /// Pixel of the point of the gizmo's X arrow that is `share` of its length from the middle.
    QPoint OnAxisX(const Vector3& middle, float share) {
        const stage::StageView& view = *window.host.views.At(0);
        gizmo::Gizmo gizmo;
        gizmo.ShowAt({middle.x, middle.y, middle.z});
        const float size = gizmo.Size({view.ViewMatrix(), view.ProjectionMatrix()});
        return PixelOf(middle.x + size * share, middle.y, middle.z);
    }
};

TEST_F(ViewWindowTest, ClickOnAMeshSelectsItAndClickBesideItSelectsNothing) {
    UseTool("ToolSelect");
    EditorObject* crate = AddCrate("Crate", 0, 50, 0);
    EXPECT_CALL(plugin, OnEvent(EventCode::SelectionChanged, _)).Times(2);
    Click(PixelOf(0, 50, 0));
    EXPECT_EQ(window.host.level.selection, (ObjectList{crate}));
    Click(QPoint(20, 60));
    EXPECT_TRUE(window.host.level.selection.empty());
}

TEST_F(ViewWindowTest, ShiftAddsAndControlToggles) {
    UseTool("ToolSelect");
    EditorObject* left = AddEmpty("Left", -300, 100, 0);
    EditorObject* right = AddEmpty("Right", 300, 100, 0);
    Click(PixelOf(-300, 100, 0));
    Click(PixelOf(300, 100, 0), Qt::ShiftModifier);
    EXPECT_EQ(window.host.level.selection, (ObjectList{left, right}));
    Click(PixelOf(-300, 100, 0), Qt::ControlModifier);
    EXPECT_EQ(window.host.level.selection, (ObjectList{right}));
}

TEST_F(ViewWindowTest, LessDetailWhileMovingIsASettingThatIsKept) {
    const auto* area = window.findChild<stage::ViewArea*>();
    ASSERT_NE(area, nullptr);
    EXPECT_TRUE(area->pictures->quickWhileMoving);
    Action("ViewQuickPictures")->trigger();
    EXPECT_FALSE(area->pictures->quickWhileMoving);
    {
        const stage::MainWindow other(window.host.folders);
        EXPECT_FALSE(other.findChild<stage::ViewArea*>()->pictures->quickWhileMoving);
    }
    Action("ViewQuickPictures")->trigger();
    EXPECT_TRUE(area->pictures->quickWhileMoving);
}

TEST_F(ViewWindowTest, ARectangleSelectsWhatHasItsMiddleInIt) {
    UseTool("ToolSelect");
    EditorObject* left = AddEmpty("Left", -300, 100, 0);
    EditorObject* middle = AddEmpty("Middle", 0, 100, 0);
    AddEmpty("Right", 300, 100, 0);
    Drag(PixelOf(-400, 300, 0), PixelOf(100, -100, 0));
    EXPECT_EQ(window.host.level.selection, (ObjectList{left, middle}));
}

TEST_F(ViewWindowTest, AMemberOfAGroupBringsTheGroup) {
    UseTool("ToolSelect");
    engine::SceneObject* left = AddEmpty("Left", -300, 100, 0);
    engine::SceneObject* right = AddEmpty("Right", 300, 100, 0);
    window.host.level.Data()->MakeGroup("Pair", {left, right});
    Click(PixelOf(300, 100, 0));
    EXPECT_EQ(window.host.level.selection, (ObjectList{right, left}));
}

TEST_F(ViewWindowTest, DraggingAnArrowMovesAlongItsAxisAndTellsEventFourteen) {
    UseTool("ToolMove");
    engine::SceneObject* crate = AddEmpty("Crate", 0, 100, 0);
    window.host.Select({crate});
    Settle();
    EXPECT_CALL(plugin, OnEvent(EventCode::ObjectsMoved, nullptr)).Times(::testing::AtLeast(1));
    EXPECT_CALL(plugin, OnViewRequest(_, _, _, _)).Times(0);
    const QPoint grip = OnAxisX({0, 100, 0}, 0.7f);
    const QPoint oneMetre = PixelOf(100, 100, 0) - PixelOf(0, 100, 0);
    Drag(grip, grip + oneMetre);
    EXPECT_NEAR(crate->GetPosition(0)[0], 100.0f, 3.0f);
    EXPECT_NEAR(crate->GetPosition(0)[1], 100.0f, 1e-2f);
    EXPECT_NEAR(crate->GetPosition(0)[2], 0.0f, 1e-2f);
    EXPECT_TRUE(window.session.IsChanged());
}

TEST_F(ViewWindowTest, EscapePutsADraggedObjectBack) {
    UseTool("ToolMove");
    engine::SceneObject* crate = AddEmpty("Crate", 0, 100, 0);
    window.host.Select({crate});
    Settle();
    const QPoint grip = OnAxisX({0, 100, 0}, 0.7f);
    QTest::mousePress(View(), Qt::LeftButton, Qt::NoModifier, grip);
    QTest::mouseMove(View(), grip + QPoint(80, 0));
    Settle();
    EXPECT_GT(crate->GetPosition(0)[0], 50.0f);
    QTest::keyClick(View(), Qt::Key_Escape);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 0.0f);
    QTest::mouseRelease(View(), Qt::LeftButton, Qt::NoModifier, grip + QPoint(80, 0));
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 0.0f);
}

TEST_F(ViewWindowTest, AnObjectDeletedInMidDragIsNotTouchedAnyMore) {
    UseTool("ToolMove");
    engine::SceneObject* crate = AddEmpty("Crate", 0, 100, 0);
    window.host.Select({crate});
    Settle();
    const QPoint grip = OnAxisX({0, 100, 0}, 0.7f);
    QTest::mousePress(View(), Qt::LeftButton, Qt::NoModifier, grip);
    window.host.DestroyObjects({crate});
    QTest::mouseMove(View(), grip + QPoint(80, 0));
    QTest::mouseRelease(View(), Qt::LeftButton, Qt::NoModifier, grip + QPoint(80, 0));
    Settle();
    EXPECT_TRUE(window.host.level.Data()->Objects().empty());
}

TEST_F(ViewWindowTest, MiddleDragOrbitsAndWheelComesCloser) {
    const stage::ViewNavigation before = window.host.views.At(0)->navigation;
    Drag(QPoint(200, 200), QPoint(260, 220), Qt::MiddleButton);
    const stage::ViewNavigation& after = window.host.views.At(0)->navigation;
    EXPECT_NE(after.yaw, before.yaw);
    EXPECT_FLOAT_EQ(after.pivot.x, before.pivot.x);
    QWheelEvent wheel(QPointF(200, 200), QPointF(200, 200), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(View(), &wheel);
    EXPECT_LT(after.distance, before.distance);
}

TEST_F(ViewWindowTest, WhileLookingTheLettersFlyAndChangeNoTool) {
    UseTool("ToolSelect");
    const glm::vec3 before = window.host.views.At(0)->navigation.Eye();
    QTest::mousePress(View(), Qt::RightButton, Qt::NoModifier, QPoint(200, 200));
    QTest::keyPress(View(), Qt::Key_W);
    QTest::qWait(120);
    QTest::keyRelease(View(), Qt::Key_W);
    EXPECT_EQ(window.views->tool->Mode(), stage::ToolMode::Select);
    // At 6 m a second, in steps of 15 ms and more.
    EXPECT_LT(window.host.views.At(0)->navigation.Eye().z, before.z - 5.0f);
    QTest::mouseRelease(View(), Qt::RightButton, Qt::NoModifier, QPoint(200, 200));
    QTest::keyClick(View(), Qt::Key_W);
    EXPECT_EQ(window.views->tool->Mode(), stage::ToolMode::Move);
}

TEST_F(ViewWindowTest, FocusShowsTheSelectedObject) {
    window.host.Select({AddEmpty("Far", 5000, 0, 0)});
    QTest::keyClick(View(), Qt::Key_F);
    EXPECT_FLOAT_EQ(window.host.views.At(0)->navigation.pivot.x, 5000.0f);
}

TEST_F(ViewWindowTest, AnAttachedViewIgnoresTheMouseUntilItsBadgeIsClicked) {
    ASSERT_TRUE(window.host.AttachViewToPlugin(0, plugin.id));
    Settle();
    const float distance = window.host.views.At(0)->navigation.distance;
    Drag(QPoint(200, 200), QPoint(260, 220), Qt::MiddleButton);
    QTest::keyClick(View(), Qt::Key_F);
    EXPECT_FLOAT_EQ(window.host.views.At(0)->navigation.distance, distance);
    EXPECT_CALL(plugin, OnViewRequest(ViewRequest::IsAttached, _, _, _)).Times(::testing::AnyNumber());
    EXPECT_CALL(plugin, OnViewRequest(ViewRequest::Detach, _, _, _)).Times(1);
    Click(QPoint(View()->width() - 60, 22));
    EXPECT_FALSE(window.host.IsViewAttachedToPlugin(0, plugin.id));
}

TEST_F(ViewWindowTest, FourViewsCanBeChosenAndTheClickedOneIsActive) {
    Action("Views4")->trigger();
    Settle();
    ASSERT_NE(View(3), nullptr);
    QTest::mouseClick(View(3), Qt::MiddleButton, Qt::NoModifier, QPoint(20, 60));
    EXPECT_EQ(window.host.GetActiveView(), 3);
    Action("Views1")->trigger();
    Settle();
    EXPECT_EQ(window.host.GetActiveView(), 0);
    EXPECT_EQ(View(1), nullptr);
}

TEST_F(ViewWindowTest, EachPictureAsksThePluginsToDraw) {
    EXPECT_CALL(plugin, OnRender()).Times(::testing::AtLeast(1)).WillRepeatedly([this] {
        EXPECT_EQ(window.host.GetActiveView(), 0);
    });
    window.RedrawView(0);
    Settle();
    View()->grab();
}

TEST_F(ViewWindowTest, PluginLinesAreSeenInThePicture) {
    Action("ViewGrid")->setChecked(false);
    const QRgb before = View()->grab().toImage().pixel(PixelOf(0, 100, 0));
    ON_CALL(plugin, OnRender()).WillByDefault([this] {
        const float color[4] = {1, 0, 1, 1};
        for (float y = 90; y < 110; y += 1) {
            const float from[3] = {-200, y, 0};
            const float to[3] = {200, y, 0};
            window.host.DrawLine(from, to, color);
        }
    });
    AddEmpty("Aside", 500, 0, 0); // an empty level shows a hint in the middle
    const QColor after = View()->grab().toImage().pixelColor(PixelOf(0, 100, 0));
    EXPECT_NE(after.rgb(), before);
    EXPECT_GT(after.red(), 180);
    EXPECT_LT(after.green(), 120);
    EXPECT_GT(after.blue(), 180);
}
