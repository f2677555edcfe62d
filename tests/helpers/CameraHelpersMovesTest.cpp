#include "tests/helpers/CameraHelpersFixture.h"
#include "tests/support/FakeAttributes.h"
#include "tests/support/FakeKeyFactory.h"

#include <cmath>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

/// The camera is visualized and stands at (0, 1, 0), looking at (0, 1, 10), with keys at time 0.
class HelperMovesTest : public CameraHelpersTest {
protected:
    HelperMovesTest() : window(calls) {
        eye = AddPoint(KeyKind::CameraPosition, 0, {0, 1, 0});
        target = AddPoint(KeyKind::CameraTarget, 0, {0, 1, 10});
        SetHandles(*eye, {0, 1, -2}, {0, 1, 2});
        SetHandles(*target, {0, 1, 8}, {0, 1, 12});
        plugin.SetFrame(0, -1);
        Visualize();
        plugin.scenarioDlg = &window;
        calls.clear();
    }
    std::vector<IFilmKey*> EyeKeys() const { return KeysOf(*camera, KeyKind::CameraPosition); }
    std::vector<IFilmKey*> TargetKeys() const { return KeysOf(*camera, KeyKind::CameraTarget); }

    std::vector<std::string> calls;
    LoggingWindow window;
    CFilmLinkedKey* eye = nullptr;
    CFilmLinkedKey* target = nullptr;
};

} // namespace

TEST_F(HelperMovesTest, DraggedEyeAndTargetChangeTheKeysAtTheTime) {
    UserMoves(*helpers.positionObject, 3, 4, 5);
    EXPECT_EQ(eye->value, (Vector3{3, 4, 5}));
    UserMoves(*helpers.targetObject, 6, 7, 8);
    EXPECT_EQ(target->value, (Vector3{6, 7, 8}));
    EXPECT_THAT(camera->keys, SizeIs(2));
    EXPECT_THAT(calls, IsEmpty()) << "no row changes";
}

TEST_F(HelperMovesTest, DraggedEyeLeavesTheHandlesOfItsKey) {
    UserMoves(*helpers.positionObject, 3, 4, 5);
    EXPECT_EQ(eye->inHandle, (Vector3{0, 1, -2}));
    EXPECT_EQ(eye->outHandle, (Vector3{0, 1, 2}));
}

TEST_F(HelperMovesTest, DraggedHandlesChangeTheHandlesOfTheKeys) {
    UserMoves(*helpers.posInControl, 1, 0, 0);
    UserMoves(*helpers.posOutControl, 2, 0, 0);
    UserMoves(*helpers.targetInControl, 3, 0, 0);
    UserMoves(*helpers.targetOutControl, 4, 0, 0);
    EXPECT_EQ(eye->inHandle, (Vector3{1, 0, 0}));
    EXPECT_EQ(eye->outHandle, (Vector3{2, 0, 0}));
    EXPECT_EQ(target->inHandle, (Vector3{3, 0, 0}));
    EXPECT_EQ(target->outHandle, (Vector3{4, 0, 0}));
    EXPECT_EQ(eye->value, (Vector3{0, 1, 0}));
}

TEST_F(HelperMovesTest, TiedKeyTakesWorldPointsInItsOwnSpace) {
    EditorObject* cart = editor.Create("Cart", 10, 0, 0);
    eye->SetLinkObject(cart);
    UserMoves(*helpers.positionObject, 12, 1, 0);
    EXPECT_EQ(eye->value, (Vector3{2, 1, 0}));
    UserMoves(*helpers.posOutControl, 13, 1, 0);
    EXPECT_EQ(eye->outHandle, (Vector3{3, 1, 0}));
}

TEST_F(HelperMovesTest, HiddenHandleIsNotWritten) {
    editor.SetObjectsHidden({helpers.posInControl}, true);
    UserMoves(*helpers.posInControl, 1, 0, 0);
    EXPECT_EQ(eye->inHandle, (Vector3{0, 1, -2}));
}

TEST_F(HelperMovesTest, HandleOfASideWithAnotherMethodIsNotWritten) {
    eye->inMethod = BezierMethod::Inverse; // the object is still shown
    UserMoves(*helpers.posInControl, 1, 0, 0);
    EXPECT_EQ(eye->inHandle, (Vector3{0, 1, -2}));
}

TEST_F(HelperMovesTest, HandleWithoutAKeyMakesNone) {
    plugin.currentTime = 2;
    UserMoves(*helpers.posInControl, 1, 0, 0);
    EXPECT_THAT(camera->keys, SizeIs(2));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(HelperMovesTest, DraggedEyeMakesAPlainKeyWhereNoneStands) {
    plugin.SetTime(2, false);
    calls.clear();
    window.times.clear();
    UserMoves(*helpers.positionObject, 3, 4, 5);
    ASSERT_THAT(EyeKeys(), SizeIs(2));
    const auto& made = static_cast<const CFilmLinkedKey&>(*EyeKeys().back());
    EXPECT_EQ(made.time, 2.0f);
    EXPECT_EQ(made.value, (Vector3{3, 4, 5}));
    EXPECT_EQ(made.inMethod, BezierMethod::Smooth);
    EXPECT_EQ(made.outMethod, BezierMethod::Smooth);
    EXPECT_EQ(made.inHandle, Vector3{});
    EXPECT_EQ(made.linkObject, nullptr);
    EXPECT_THAT(TargetKeys(), ElementsAre(target));
    EXPECT_THAT(calls, ElementsAre("ShowCurrentFilm"));
    EXPECT_THAT(window.times, ElementsAre(2.0f));
    EXPECT_EQ(plugin.currentTime, 2.0f);
}

TEST_F(HelperMovesTest, WithItsFilmClosedTheCameraGetsAKeyAndNoTimeIsTold) {
    plugin.SetCurrentFilm(nullptr);
    plugin.currentTime = 2;
    calls.clear();
    window.times.clear();
    MoveTo(*helpers.positionObject, 3, 4, 5);
    const ObjectList moved{helpers.positionObject};
    helpers.OnObjectsMoved(&moved);
    ASSERT_THAT(EyeKeys(), SizeIs(2));
    EXPECT_EQ(EyeKeys().back()->time, 2.0f);
    EXPECT_THAT(calls, ElementsAre("ShowCurrentFilm"));
    EXPECT_THAT(window.times, IsEmpty());
}

TEST_F(HelperMovesTest, NextDragChangesTheKeyThatTheFirstOneMade) {
    plugin.SetTime(2, false);
    UserMoves(*helpers.targetObject, 1, 0, 0);
    calls.clear();
    UserMoves(*helpers.targetObject, 2, 0, 0);
    ASSERT_THAT(TargetKeys(), SizeIs(2));
    EXPECT_EQ(VectorKey(TargetKeys().back()).value, (Vector3{2, 0, 0}));
    EXPECT_THAT(EyeKeys(), ElementsAre(eye));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(HelperMovesTest, BothAtOnceMakeTheEyesKeyFirstAndRefreshOnce) {
    plugin.SetTime(2, false);
    calls.clear();
    MoveTo(*helpers.positionObject, 1, 0, 0);
    MoveTo(*helpers.targetObject, 2, 0, 0);
    UserMovesAll({helpers.targetObject, helpers.positionObject});
    ASSERT_THAT(camera->keys, SizeIs(4));
    EXPECT_EQ((*std::prev(camera->keys.end(), 2))->kind, KeyKind::CameraPosition);
    EXPECT_EQ(camera->keys.back()->kind, KeyKind::CameraTarget);
    EXPECT_THAT(calls, ElementsAre("ShowCurrentFilm"));
}

TEST_F(HelperMovesTest, KeysAreMadeWithoutAScenarioWindowToo) {
    plugin.scenarioDlg = nullptr;
    plugin.SetTime(2, false);
    UserMoves(*helpers.positionObject, 3, 4, 5);
    EXPECT_THAT(EyeKeys(), SizeIs(2));
}

TEST_F(HelperMovesTest, NothingIsRefreshedWhenNoKeyCouldBeMade) {
    FakeKeyFactory factory(Films());
    factory.refusedKind = KeyKind::CameraPosition;
    plugin.SetTime(2, false);
    calls.clear();
    UserMoves(*helpers.positionObject, 3, 4, 5);
    EXPECT_THAT(EyeKeys(), ElementsAre(eye));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(HelperMovesTest, OneKeyOfTwoIsEnoughForARefresh) {
    FakeKeyFactory factory(Films());
    factory.refusedKind = KeyKind::CameraPosition;
    plugin.SetTime(2, false);
    calls.clear();
    UserMovesAll({helpers.positionObject, helpers.targetObject});
    EXPECT_THAT(EyeKeys(), ElementsAre(eye));
    EXPECT_THAT(TargetKeys(), SizeIs(2));
    EXPECT_THAT(calls, ElementsAre("ShowCurrentFilm"));
}

TEST_F(HelperMovesTest, KeyThatTheTrackRefusesIsDestroyed) {
    FakeKeyFactory factory(Films());
    factory.spoiledKind = KeyKind::Position;
    plugin.SetTime(2, false);
    UserMoves(*helpers.positionObject, 3, 4, 5);
    EXPECT_THAT(camera->keys, SizeIs(2));
    EXPECT_EQ(factory.living, 0);
}

TEST_F(HelperMovesTest, NoKeyIsMadeWithoutAFactory) {
    IKeyFactory* factory = Films().keyFactory;
    plugin.SetTime(2, false);
    Films().keyFactory = nullptr;
    UserMoves(*helpers.positionObject, 3, 4, 5);
    Films().keyFactory = factory;
    EXPECT_THAT(camera->keys, SizeIs(2));
}

TEST_F(HelperMovesTest, AttributesAreReadAnewForWhatWasDraggedAndForNothingElse) {
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.record = eye;
    UserMoves(*editor.Create("Crate"), 1, 2, 3);
    UserMoves(*helpers.targetObject, 6, 7, 8);
    UserMoves(*helpers.targetInControl, 3, 0, 0);
    EXPECT_THAT(attributes.log, IsEmpty()) << "what was typed there and not applied stays";
    UserMoves(*helpers.positionObject, 3, 4, 5);
    EXPECT_THAT(attributes.log, ElementsAre("Refresh"));
    UserMoves(*helpers.posInControl, 1, 0, 0);
    UserMoves(*helpers.posOutControl, 2, 0, 0);
    EXPECT_THAT(attributes.log, SizeIs(3));
    attributes.record = target;
    UserMoves(*helpers.targetObject, 1, 7, 8);
    UserMoves(*helpers.targetInControl, 3, 0, 0);
    UserMoves(*helpers.targetOutControl, 4, 0, 0);
    EXPECT_THAT(attributes.log, SizeIs(6));
    plugin.keyAttributesDlg.reset();
}

TEST_F(HelperMovesTest, OtherObjectsAndNullsArePassedOver) {
    EditorObject* crate = editor.Create("Crate");
    MoveTo(*helpers.targetObject, 6, 7, 8);
    helpers.posInControl = nullptr; // not to be met by a null of the list
    UserMovesAll({crate, nullptr, helpers.targetObject});
    EXPECT_EQ(target->value, (Vector3{6, 7, 8}));
    EXPECT_EQ(eye->inHandle, (Vector3{0, 1, -2}));
    helpers.OnObjectsMoved(nullptr);
}

TEST_F(HelperMovesTest, StrangerBehindSixHandledObjectsEndsTheWalk) {
    EditorObject* crate = editor.Create("Crate");
    EditorObject* point = helpers.positionObject;
    MoveTo(*helpers.targetObject, 6, 7, 8);
    const ObjectList five{point, point, point, point, point, crate, helpers.targetObject};
    helpers.OnObjectsMoved(&five);
    EXPECT_EQ(target->value, (Vector3{6, 7, 8}));
    MoveTo(*helpers.targetObject, 0, 0, 0);
    const ObjectList six{point, point, point, point, point, point, crate, helpers.targetObject};
    helpers.OnObjectsMoved(&six);
    EXPECT_EQ(target->value, (Vector3{6, 7, 8})) << "the target behind the crate is not looked at";
}

TEST_F(HelperMovesTest, NothingIsWrittenWhileNoCameraIsVisualized) {
    plugin.SetVisualizedTrack(nullptr);
    UserMoves(*helpers.positionObject, 3, 4, 5);
    EXPECT_EQ(eye->value, (Vector3{0, 1, 0}));
}

TEST_F(HelperMovesTest, PointThatIsNoNumberIsLetThrough) {
    const Vector3 bad{NAN, 1, INFINITY};
    helpers.positionObject->SetPosition(bad.Data(), 0);
    UserMovesAll({helpers.positionObject});
    EXPECT_TRUE(std::isnan(eye->value.x));
    plugin.SetFrame(0, -1);
    plugin.OnRender();
}
