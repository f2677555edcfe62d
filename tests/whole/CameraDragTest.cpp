#include "framework/Wnd.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewWidget.h"
#include "tests/whole/CameraStageFixture.h"
#include "tests/whole/GizmoHand.h"

#include <QPushButton>
#include <QTest>

using ::testing::Contains;
using ::testing::Not;

namespace {

/// The points of the visualized camera in the views: picked, dragged with the mouse, and gone meanwhile.
class CameraDragTest : public CameraInStageTest {
protected:
    void SetUp() override {
        CameraInStageTest::SetUp();
        LookAt(*eye);
    }
    /// Grips the eye's gizmo and drags it upwards for a while.
    void BeginDrag() {
        ASSERT_TRUE(
            hand.Press("ToolMove", gizmo::GizmoMode::Translate, gizmo::GizmoPart::AxisY, PlaceOf(eye)));
        hand.Move({0, -40});
    }
    void GoOnAndEnd() {
        hand.Move({0, -90});
        hand.Release();
        Settle();
    }
    static Vector3 PlaceOf(const engine::SceneObject* object) { return object->World().Translation(); }
    ObjectList InView() const {
        const QSize size = window->views->Widget(0)->size();
        return window->views->picker.InRectangle(*window->host.views.At(0), 0.0f, 0.0f,
                                                 static_cast<float>(size.width()),
                                                 static_cast<float>(size.height()));
    }
    EditorObject* At(const Vector3& place) const {
        const std::optional<QPoint> pixel = GizmoHand::PixelOf(*window, place);
        return pixel ? window->views->picker.At(*window->host.views.At(0), static_cast<float>(pixel->x()),
                                                static_cast<float>(pixel->y()))
                     : nullptr;
    }
    std::vector<std::vector<float>> Matrices() const {
        std::vector<std::vector<float>> matrices;
        for (const auto& object : window->host.level.Data()->Objects()) {
            matrices.push_back(MatrixOf(*object));
        }
        return matrices;
    }
    /// "Remove actor" of the menu of the camera's row.
    void RemoveCamera() {
        constexpr UINT kRemoveActor = 36803;
        Hooks().popupMenu = [](const CMenu&, CPoint) { return kRemoveActor; };
        CameraRow()->SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(60, 8));
        Settle();
        Hooks().popupMenu = nullptr;
    }
    void PressPanelButton(const char* text) {
        for (QPushButton* button : window->findChildren<QPushButton*>()) {
            if (button->text() == text) {
                QTest::mouseClick(button, Qt::LeftButton);
            }
        }
        Settle();
    }

    GizmoHand hand{*window};
};

} // namespace

TEST_F(CameraDragTest, PressOnTheEyeSelectsItAndItsGizmoMovesTheKey) {
    window->host.Select({});
    const std::optional<QPoint> pixel = GizmoHand::PixelOf(*window, PlaceOf(eye));
    ASSERT_TRUE(pixel.has_value());
    QTest::mouseClick(window->views->Widget(0), Qt::LeftButton, {}, *pixel);
    Settle();
    EXPECT_EQ(window->host.level.selection, ObjectList{eye});
    const float before = PlaceOf(eye).y;
    const std::size_t keys = Keys(KeyKind::CameraPosition);
    BeginDrag();
    EXPECT_GT(PlaceOf(eye).y, before);
    EXPECT_EQ(FirstKey(KeyKind::CameraPosition).value, PlaceOf(eye)) << "at every step of the mouse";
    GoOnAndEnd();
    EXPECT_EQ(FirstKey(KeyKind::CameraPosition).value, PlaceOf(eye));
    EXPECT_EQ(window->host.RenderPlugins(0).front().from[1], PlaceOf(eye).y);
    EXPECT_EQ(Keys(KeyKind::CameraPosition), keys);
}

TEST_F(CameraDragTest, EscapePutsTheKeyBack) {
    const Vector3 before = FirstKey(KeyKind::CameraPosition).value;
    BeginDrag();
    EXPECT_NE(FirstKey(KeyKind::CameraPosition).value, before);
    QTest::keyClick(window->views->Widget(0), Qt::Key_Escape);
    Settle();
    EXPECT_EQ(FirstKey(KeyKind::CameraPosition).value, before);
}

TEST_F(CameraDragTest, OnlyPointsThatAreShownCanBePicked) {
    engine::SceneObject* handle = Object("PosInControlPoint");
    ASSERT_NE(handle, nullptr);
    handle->SetPosition(eye->GetPosition(0), 0);
    EXPECT_EQ(At(PlaceOf(eye)), eye);
    EXPECT_THAT(InView(), Contains(eye));
    EXPECT_THAT(InView(), Not(Contains(handle)));
    PressName();
    EXPECT_NE(At(PlaceOf(eye)), eye);
    EXPECT_THAT(InView(), Not(Contains(eye)));
}

TEST_F(CameraDragTest, AViewThatFollowsTheFilmShowsNoPointsToPick) {
    stage::StageView& view = *window->host.views.At(0);
    view.attachedTo = window->host.plugins.Entries().front()->number;
    EXPECT_NE(At(PlaceOf(eye)), eye);
    EXPECT_THAT(InView(), Not(Contains(eye)));
    view.attachedTo = 0;
    EXPECT_EQ(At(PlaceOf(eye)), eye);
}

TEST_F(CameraDragTest, CameraThatIsRemovedMidDragLeavesTheViews) {
    BeginDrag();
    RemoveCamera();
    EXPECT_EQ(Film("Intro")->FindCamera("Establishing"), nullptr);
    EXPECT_FALSE(eye->IsShown());
    EXPECT_EQ(Lines(), 0u);
    GoOnAndEnd();
    EXPECT_EQ(Lines(), 0u);
    EXPECT_NE(At(PlaceOf(eye)), eye);
}

TEST_F(CameraDragTest, FilmThatIsDeletedMidDragTakesTheCameraAlong) {
    BeginDrag();
    PressPanelButton("Delete");
    EXPECT_EQ(Film("Intro"), nullptr);
    EXPECT_EQ(Lines(), 0u);
    GoOnAndEnd();
    EXPECT_EQ(Lines(), 0u);
    ChooseFilm("Epilogue");
    EXPECT_FALSE(eye->IsShown());
}

TEST_F(CameraDragTest, AnotherFilmMidDragEndsItAndLeavesTheCameraOnShow) {
    BeginDrag();
    const Vector3 dragged = FirstKey(KeyKind::CameraPosition).value;
    ChooseFilm("Epilogue"); // takes the selection away, and with it the gizmo
    const Vector3 place = PlaceOf(eye);
    GoOnAndEnd();
    EXPECT_EQ(FirstKey(KeyKind::CameraPosition).value, dragged);
    EXPECT_EQ(PlaceOf(eye), place);
    EXPECT_EQ(Lines(), 80u);
}

TEST_F(CameraDragTest, AnotherLevelMidDragIsLeftAlone) {
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    BeginDrag();
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
    Settle();
    EXPECT_EQ(Points(), 0);
    const std::vector<std::vector<float>> before = Matrices();
    GoOnAndEnd();
    EXPECT_EQ(Matrices(), before);
    EXPECT_EQ(Lines(), 0u);
}

TEST_F(CameraDragTest, DragOfAnObjectDoesNotGoOnWithItsTwinOfAnotherLevel) {
    engine::SceneObject* barrel = Object("Barrel");
    ASSERT_NE(barrel, nullptr);
    LookAt(*barrel);
    ASSERT_TRUE(
        hand.Press("ToolMove", gizmo::GizmoMode::Translate, gizmo::GizmoPart::AxisY, PlaceOf(barrel)));
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
    Settle();
    const std::vector<std::vector<float>> before = Matrices();
    GoOnAndEnd();
    EXPECT_EQ(Matrices(), before);
}
