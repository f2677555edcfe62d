#include "framework/Wnd.h"
#include "host/stage/windows/ObjectPanel.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/TransformFields.h"
#include "tests/whole/GizmoHand.h"
#include "tests/whole/StageFixture.h"

#include <QDoubleSpinBox>
#include <QTest>

#include <cmath>

using gizmo::GizmoMode;
using gizmo::GizmoPart;
using ::testing::ElementsAre;

namespace {

constexpr int kPositionKey = KeyKind::Position;
constexpr int kRotationKey = KeyKind::Rotation;
constexpr int kScaleKey = KeyKind::Scale;

/// "Animate object": what the user does with an actor in the views becomes keys of the film on show. The
/// actor is a crate of its own with keys at 0, the time 1.5 seconds.
class AnimateInStageTest : public StageTest {
protected:
    static constexpr UINT kAnimate = 36823;
    static constexpr UINT kMoveToBegin = 36833;
    static constexpr UINT kFrameForward = 36841;
    static constexpr UINT kCreateCameraFrame = 36846;
    static constexpr float kTime = 1.5f;

    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OpenScenario("Epilogue"));
        film = Film("Epilogue");
        crate = MakeActor("Crate", {0, 3000, 0}); // in the air, where nothing stands in front
        GoTo(kTime);
        LookAt(*crate);
    }
    /// An object that becomes an actor: with "Animate object" on a move does it.
    engine::SceneObject* MakeActor(const std::string& name, const Vector3& place) {
        engine::Matrix4 matrix;
        matrix.SetTranslation(place);
        engine::SceneObject* object =
            window->commands.Create({ClassName::Mesh, name, "models/crate.glb", matrix, nullptr, true});
        Settle();
        Command(kAnimate);
        Move(object, place.x, place.y, place.z);
        return object;
    }
    void Send(UINT id) { window->toolWindows->Docks().front()->Window()->SendMessage(WM_COMMAND, id); }
    void Command(UINT id) {
        Send(id);
        Settle();
    }
    void GoTo(float seconds) {
        Send(kMoveToBegin);
        for (int frame = 0; frame < std::lround(seconds * 30.0f); ++frame) {
            Send(kFrameForward);
        }
        Settle();
    }
    CFilmTrack* Track() const { return film->FindObjectTrack(crate); }
    std::vector<const CFilmVectorKey*> Keys(int kind) const {
        std::vector<const CFilmVectorKey*> found;
        for (const IFilmKey* key : Track()->keys) {
            if (key->kind == kind) {
                found.push_back(static_cast<const CFilmVectorKey*>(key));
            }
        }
        return found;
    }
    /// How many keys of position, rotation and scale there are.
    std::vector<std::size_t> Counts() const {
        return {Keys(kPositionKey).size(), Keys(kRotationKey).size(), Keys(kScaleKey).size()};
    }
    Vector3 Place() const { return crate->World().Translation(); }
    /// Drags a part of the gizmo with the mouse.
    void DragGizmo(const char* tool, GizmoMode mode, GizmoPart part, const QPoint& way) {
        GizmoHand hand(*window);
        ASSERT_TRUE(hand.Press(tool, mode, part, Place()));
        hand.Move(way);
        hand.Release();
        Settle();
    }
    /// Types a number into a field of the properties panel.
    void TypeField(int row, int axis, double value) {
        window->findChild<stage::ObjectPanel*>()->transform->Field(row, axis)->setValue(value);
        Settle();
    }

    IFilm* film = nullptr;
    engine::SceneObject* crate = nullptr;
};

} // namespace

TEST_F(AnimateInStageTest, TheFirstMoveMakesAnActorWithKeysAtTheStart) {
    ASSERT_NE(Track(), nullptr);
    EXPECT_THAT(Counts(), ElementsAre(1u, 1u, 1u));
    EXPECT_EQ(Keys(kPositionKey).front()->value, (Vector3{0, 3000, 0}));
}

TEST_F(AnimateInStageTest, DraggingTheGizmoWritesOnePositionKeyAtTheCursor) {
    DragGizmo("ToolMove", GizmoMode::Translate, GizmoPart::AxisY, {0, -120});
    ASSERT_THAT(Counts(), ElementsAre(2u, 1u, 1u));
    const CFilmVectorKey& key = *Keys(kPositionKey).back();
    EXPECT_NEAR(key.time, kTime, 1e-4f);
    EXPECT_GT(key.value.y, 3100.0f);
    EXPECT_EQ(key.value, Place());
    const Vector3 dragged = Place();
    GoTo(0.0f);
    EXPECT_NEAR(Place().y, 3000.0f, 1e-2f);
    GoTo(kTime);
    EXPECT_NEAR(Place().y, dragged.y, 1e-2f);
}

TEST_F(AnimateInStageTest, DraggingARingWritesARotationKeyAlone) {
    DragGizmo("ToolRotate", GizmoMode::Rotate, GizmoPart::AxisY, {60, 10});
    ASSERT_THAT(Counts(), ElementsAre(1u, 2u, 1u));
    EXPECT_GT(std::abs(Keys(kRotationKey).back()->value.y), 1.0f);
    EXPECT_NEAR(Keys(kRotationKey).back()->value.x, 0.0f, 1e-3f);
}

TEST_F(AnimateInStageTest, DraggingAScaleHandleWritesAScaleKeyAlone) {
    DragGizmo("ToolScale", GizmoMode::Scale, GizmoPart::AxisY, {0, -60});
    ASSERT_THAT(Counts(), ElementsAre(1u, 1u, 2u));
    EXPECT_GT(Keys(kScaleKey).back()->value.y, 1.1f);
    EXPECT_NEAR(Keys(kScaleKey).back()->value.x, 1.0f, 1e-4f);
}

TEST_F(AnimateInStageTest, ThePanelsNumbersWriteKeysToo) {
    TypeField(stage::TransformFields::kPosition, 0, 500.0);
    ASSERT_THAT(Counts(), ElementsAre(2u, 1u, 1u));
    EXPECT_EQ(Keys(kPositionKey).back()->value, (Vector3{500, 3000, 0}));
    TypeField(stage::TransformFields::kScale, 1, 2.0);
    ASSERT_THAT(Counts(), ElementsAre(2u, 1u, 2u));
    EXPECT_NEAR(Keys(kScaleKey).back()->value.y, 2.0f, 1e-4f);
    TypeField(stage::TransformFields::kRotation, 1, 30.0);
    ASSERT_THAT(Counts(), ElementsAre(2u, 2u, 2u));
    EXPECT_NEAR(std::abs(Keys(kRotationKey).back()->value.y), 30.0f, 1e-3f);
    TypeField(stage::TransformFields::kPosition, 0, 650.0); // the key stands there now
    EXPECT_THAT(Counts(), ElementsAre(2u, 2u, 2u));
    EXPECT_EQ(Keys(kPositionKey).back()->value.x, 650.0f);
}

TEST_F(AnimateInStageTest, LessThanACentimetreInsideOneCellMakesNoKey) {
    TypeField(stage::TransformFields::kPosition, 0, 0.75);
    EXPECT_THAT(Counts(), ElementsAre(1u, 1u, 1u));
}

TEST_F(AnimateInStageTest, ACrateThatIsPushedByHalfItsWidthGetsAKey) {
    Vector3 low;
    Vector3 high;
    crate->Mesh()->Bounds(low, high);
    const float width = high.x - low.x;
    EXPECT_NEAR(width, 90.0f, 1e-2f);
    Move(crate, width / 2, 3000, 0);
    ASSERT_THAT(Counts(), ElementsAre(2u, 1u, 1u));
    EXPECT_FLOAT_EQ(Keys(kPositionKey).back()->value.x, width / 2);
}

TEST_F(AnimateInStageTest, AtAKeyTheKeyIsChanged) {
    GoTo(0.0f);
    Move(crate, 0.5f, 3000, 0);
    EXPECT_THAT(Counts(), ElementsAre(1u, 1u, 1u));
    EXPECT_EQ(Keys(kPositionKey).front()->value, (Vector3{0.5f, 3000, 0}));
}

TEST_F(AnimateInStageTest, SwitchedOffTheActorGoesBackToTheFilm) {
    Command(kAnimate);
    DragGizmo("ToolMove", GizmoMode::Translate, GizmoPart::AxisY, {0, -120});
    EXPECT_THAT(Counts(), ElementsAre(1u, 1u, 1u));
    EXPECT_NEAR(Place().y, 3000.0f, 1e-2f);
    EXPECT_NEAR(window->findChild<stage::ObjectPanel*>()
                    ->transform->Field(stage::TransformFields::kPosition, 1)
                    ->value(),
                3000.0, 1e-2);
}

TEST_F(AnimateInStageTest, AnotherFilmGetsItsOwnActorAndKeys) {
    ChooseFilm("Intro");
    const std::size_t before = Track()->keys.size();
    GoTo(kTime);
    Move(crate, 300, 3000, 0);
    const CFilmTrack* second = Film("Intro")->FindObjectTrack(crate);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(Track()->keys.size(), before);
    EXPECT_EQ(second->keys.size(), 4u);
}

TEST_F(AnimateInStageTest, ALightIsAnimatedThroughItsObject) {
    engine::SceneObject* lamp = window->commands.Create({ClassName::GLLight, "Lamp", "", {}, nullptr, true});
    Settle();
    CFilmTrack* light = nullptr;
    for (CFilmTrack* track : film->tracks) {
        const CFilmGLLightTrack* candidate = AsGLLightTrack(track);
        light = candidate != nullptr && candidate->lightObject == lamp ? track : light;
    }
    ASSERT_NE(light, nullptr);
    const std::size_t before = light->keys.size();
    Move(lamp, 3, 4, 5);
    ASSERT_EQ(light->keys.size(), before + 1);
    EXPECT_EQ(static_cast<const CFilmVectorKey*>(light->keys.back())->value, (Vector3{3, 4, 5}));
}

TEST_F(AnimateInStageTest, AnActorWithoutAnAttachedObjectAndOneOfAParentKeepTheirPlaces) {
    engine::SceneObject* cart = MakeActor("Cart", {1000, 3000, 0});
    if (Film("Epilogue")->FindObjectTrack(cart) == nullptr) {
        Command(kAnimate); // MakeActor switched it off
        Move(cart, 1000, 3000, 0);
    }
    auto* track = AsObjectTrack(Track());
    track->SetParent(cart, false, "");
    GoTo(kTime);
    EXPECT_NEAR(Place().x, 1000.0f, 1e-2f);
    EXPECT_NEAR(Place().y, 6000.0f, 1e-2f);
    Move(crate, 1500, 6000, 0);
    EXPECT_NEAR(Keys(kPositionKey).back()->value.x, 500.0f, 1e-2f);
    EXPECT_NEAR(Keys(kPositionKey).back()->value.y, 3000.0f, 1e-2f);
}
