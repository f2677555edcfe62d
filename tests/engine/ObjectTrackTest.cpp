#include "tests/engine/EngineFixture.h"
#include "host/engine/AnimationPose.h"

namespace engine_test {

using engine::Compose;
using engine::Matrix4;
using engine::SceneObject;

class ObjectTrackTest : public EngineTest {
protected:
    Vector3 Place(const SceneObject& object) const { return object.World().Translation(); }
    SceneObject& MakeRobot(const Vector3& position = {}) {
        return MakeObject("Robot", position, nullptr, "MeshObject", "robot.glb");
    }
    CFilmAnimationKey& AddClip(CFilmTrack& track, float time, const std::string& clip, int repeats = 1,
                               const std::string& element = "") {
        auto& key = Add<CFilmAnimationKey>(track, KeyKind::Animation, time, time + 5.0f);
        key.animationName = clip;
        key.repeats = repeats;
        key.meshElement = element;
        return key;
    }
};

TEST_F(ObjectTrackTest, PosesPositionRotationAndScale) {
    SceneObject& box = MakeObject("Box");
    CFilmObjectTrack& track = AddActor(box);
    AddVector(track, KeyKind::Position, 0.0f, {0.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Position, 2.0f, {4.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Rotation, 0.0f, {0.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Rotation, 2.0f, {0.0f, 0.0f, 180.0f});
    AddVector(track, KeyKind::Scale, 0.0f, {3.0f, 1.0f, 1.0f});
    film->SetTime(1.0f, -1.0f);
    ExpectVector(Place(box), {2.0f, 0.0f, 0.0f});
    ExpectVector(box.World().Axis(0), {0.0f, 3.0f, 0.0f}); // 90 degrees about z, three times as long
    ExpectVector(track.GetRotationAt(1.0f), {0.0f, 0.0f, 90.0f}, 1e-4f);
}

TEST_F(ObjectTrackTest, PartsWithoutKeysStayAsOutsideTheFilm) {
    SceneObject& box = MakeObject("Box");
    box.SetMatrix(Compose({1.0f, 2.0f, 3.0f}, {0.0f, 90.0f, 0.0f}, {2.0f, 2.0f, 2.0f}).m, 0);
    CFilmObjectTrack& track = AddActor(box);
    film->SetTime(0.0f, -1.0f);
    ExpectVector(Place(box), {1.0f, 2.0f, 3.0f});
    AddVector(track, KeyKind::Rotation, 0.0f, {0.0f, 0.0f, 0.0f});
    for (int i = 0; i < 1000; ++i) {
        film->SetTime(0.001f * static_cast<float>(i), -1.0f);
    }
    ExpectVector(Place(box), {1.0f, 2.0f, 3.0f});
    EXPECT_EQ(box.World().Axis(0), (Vector3{2.0f, 0.0f, 0.0f})); // no drift from posing again and again
}

TEST_F(ObjectTrackTest, ChildrenInTheLevelFollowTheirParent) {
    SceneObject& cart = MakeObject("Cart");
    SceneObject& crate = MakeObject("Crate", {0.0f, 1.0f, 0.0f}, &cart);
    CFilmObjectTrack& track = AddActor(cart);
    AddVector(track, KeyKind::Position, 0.0f, {5.0f, 0.0f, 0.0f});
    film->SetTime(0.0f, -1.0f);
    ExpectVector(Place(crate), {5.0f, 1.0f, 0.0f});
}

TEST_F(ObjectTrackTest, ActorBelowAnActorIsPosedAfterIt) {
    SceneObject& cart = MakeObject("Cart");
    SceneObject& crate = MakeObject("Crate", {0.0f, 1.0f, 0.0f}, &cart);
    CFilmObjectTrack& crateTrack = AddActor(crate); // added before its parent
    CFilmObjectTrack& cartTrack = AddActor(cart);
    AddVector(crateTrack, KeyKind::Position, 0.0f, {7.0f, 7.0f, 7.0f});
    AddVector(cartTrack, KeyKind::Position, 0.0f, {5.0f, 0.0f, 0.0f});
    film->SetTime(0.0f, -1.0f);
    ExpectVector(Place(crate), {7.0f, 7.0f, 7.0f});
}

TEST_F(ObjectTrackTest, AttachedActorIsPosedInItsParentsSpace) {
    SceneObject& ship = MakeObject("Ship");
    SceneObject& sailor = MakeObject("Sailor");
    CFilmObjectTrack& sailorTrack = AddActor(sailor); // added before what it hangs on
    CFilmObjectTrack& shipTrack = AddActor(ship);
    sailorTrack.SetParent(&ship, false, "");
    AddVector(sailorTrack, KeyKind::Position, 0.0f, {1.0f, 0.0f, 0.0f});
    AddVector(shipTrack, KeyKind::Position, 0.0f, {0.0f, 0.0f, 0.0f});
    AddVector(shipTrack, KeyKind::Position, 1.0f, {10.0f, 0.0f, 0.0f});
    AddVector(shipTrack, KeyKind::Rotation, 0.0f, {0.0f, 90.0f, 0.0f});
    film->SetTime(1.0f, -1.0f);
    // 90 degrees about y turns the sailor's x into -z.
    ExpectVector(Place(sailor), {10.0f, 0.0f, -1.0f});
    sailorTrack.SetParent(nullptr, false, "");
    film->SetTime(1.0f, -1.0f);
    ExpectVector(Place(sailor), {1.0f, 0.0f, 0.0f});
}

TEST_F(ObjectTrackTest, AttachedToAnElementFollowsTheElementsPose) {
    SceneObject& robot = MakeRobot({10.0f, 0.0f, 0.0f});
    CFilmObjectTrack& robotTrack = AddActor(robot);
    AddClip(robotTrack, 0.0f, "Lift");
    SceneObject& cup = MakeObject("Cup");
    CFilmObjectTrack& cupTrack = AddActor(cup);
    cupTrack.SetParent(&robot, false, "hand");
    AddVector(cupTrack, KeyKind::Position, 0.0f, {0.0f, 0.25f, 0.0f});
    film->SetTime(1.5f, -1.0f);
    // hip at height 1, arm 1 above it and 1.5 along x, hand half a unit above.
    ExpectVector(Place(cup), {11.5f, 2.75f, 0.0f});
}

TEST_F(ObjectTrackTest, RingOfAttachmentsPosesWithoutEnd) {
    SceneObject& a = MakeObject("A");
    SceneObject& b = MakeObject("B");
    CFilmObjectTrack& aTrack = AddActor(a);
    CFilmObjectTrack& bTrack = AddActor(b);
    aTrack.SetParent(&b, false, "");
    bTrack.SetParent(&a, false, "");
    AddVector(aTrack, KeyKind::Position, 0.0f, {1.0f, 0.0f, 0.0f});
    AddVector(bTrack, KeyKind::Position, 0.0f, {0.0f, 1.0f, 0.0f});
    film->SetTime(0.0f, -1.0f);
    EXPECT_TRUE(IsFinite(a.World()) && IsFinite(b.World()));
    CFilmObjectTrack& own = AddActor(MakeObject("Self"));
    own.SetParent(own.actor, false, "");
    AddVector(own, KeyKind::Position, 0.0f, {2.0f, 0.0f, 0.0f});
    film->SetTime(0.0f, -1.0f);
    ExpectVector(Place(static_cast<SceneObject&>(*own.actor)), {2.0f, 0.0f, 0.0f});
    CFilmCameraTrack& camera = AddCamera("A");
    Add<CFilmLinkedKey>(camera, KeyKind::CameraPosition, 0.0f).linkObject = &a;
    camera.NotifyKeysChanged(KeyKind::CameraPosition);
    EXPECT_TRUE(engine::IsFinite(film->GetCameraPosition(&camera, 3.0f)));
}

TEST_F(ObjectTrackTest, ToParentSpaceTurnsAWorldMatrixAtThePresentPose) {
    SceneObject& ship = MakeObject("Ship", {10.0f, 0.0f, 0.0f});
    CFilmObjectTrack& track = AddActor(MakeObject("Sailor"));
    Matrix4 matrix;
    matrix.SetTranslation({12.0f, 3.0f, 0.0f});
    Matrix4 free = matrix;
    track.ToParentSpace(free.m);
    EXPECT_EQ(free, matrix);
    track.SetParent(&ship, false, "");
    track.ToParentSpace(matrix.m);
    ExpectVector(matrix.Translation(), {2.0f, 3.0f, 0.0f});
}

TEST_F(ObjectTrackTest, BrokenTrackPosesNothing) {
    CFilmObjectTrack& track = *AsObjectTrack(&AddTrack(film->CreateObjectTrack()));
    AddVector(track, KeyKind::Position, 0.0f, {1.0f, 0.0f, 0.0f});
    AddClip(track, 0.0f, "Lift");
    film->SetTime(1.0f, 0.0f);
    EXPECT_FLOAT_EQ(track.GetPositionAt(0.0f).x, 1.0f);
}

TEST_F(ObjectTrackTest, FlagsHideTheActorAndTheEndOfTheFilmShowsItAgain) {
    SceneObject& box = MakeObject("Box");
    CFilmObjectTrack& track = AddActor(box);
    Add<CFilmFlagsKey>(track, KeyKind::Flags, 1.0f).keyFlags = 1;
    Add<CFilmFlagsKey>(track, KeyKind::Flags, 2.0f).keyFlags = 0;
    film->Activate();
    film->SetTime(0.5f, -1.0f);
    EXPECT_EQ(box.visible, 1);
    film->SetTime(1.5f, -1.0f);
    EXPECT_EQ(box.visible, 0);
    film->SetTime(2.0f, -1.0f);
    EXPECT_EQ(box.visible, 1);
    film->SetTime(1.5f, -1.0f);
    film->Deactivate();
    EXPECT_EQ(box.visible, 1);
}

TEST_F(ObjectTrackTest, ClipPosesTheMeshFromItsKeyOn) {
    SceneObject& robot = MakeRobot();
    CFilmObjectTrack& track = AddActor(robot);
    AddClip(track, 1.0f, "Lift");
    film->SetTime(0.5f, -1.0f);
    EXPECT_EQ(robot.Pose(), nullptr);
    film->SetTime(2.5f, -1.0f);
    ASSERT_NE(robot.Pose(), nullptr);
    ExpectVector(robot.Pose()[1].Translation(), {1.5f, 2.0f, 0.0f});
    film->Deactivate();
    EXPECT_EQ(robot.Pose(), nullptr);
    ExpectVector(robot.ElementWorld("arm").Translation(), {0.0f, 2.0f, 0.0f});
}

TEST_F(ObjectTrackTest, ClipTimeRepeatsThenHoldsTheLastPose) {
    CFilmAnimationKey* key = &AddClip(AddActor(MakeRobot()), 1.0f, "Lift", 2);
    const auto at = [&](float time) { return engine::AnimationPose::ClipTime(*key, time, 2.0f, 30); };
    EXPECT_FLOAT_EQ(at(1.0f), 0.0f);
    EXPECT_FLOAT_EQ(at(2.5f), 1.5f);
    EXPECT_FLOAT_EQ(at(3.5f), 0.5f);
    EXPECT_FLOAT_EQ(at(5.0f), 2.0f);
    EXPECT_FLOAT_EQ(at(100.0f), 2.0f);
    key->frequency = 2.0f;
    EXPECT_FLOAT_EQ(at(1.75f), 1.5f);
    key->frequency = 1.0f;
    key->startFrame = 15.0f; // half a second at 30
    EXPECT_FLOAT_EQ(at(1.0f), 0.5f);
    key->repeats = 0;
    EXPECT_FLOAT_EQ(at(102.0f), 1.5f);
    EXPECT_EQ(engine::AnimationPose::ClipTime(*key, 5.0f, 0.0f, 30), 0.0f);
}

TEST_F(ObjectTrackTest, ClipOfAnElementMovesItAndWhatHangsOnIt) {
    SceneObject& robot = MakeRobot();
    CFilmObjectTrack& track = AddActor(robot);
    AddClip(track, 0.0f, "Lift", 1, "arm");
    AddClip(track, 0.0f, "Turn");
    film->SetTime(1.0f, -1.0f);
    // "Turn" moves the hip by 1 along z and leaves the arm to "Lift", which moves it by 1 along x.
    ExpectVector(robot.Pose()[0].Translation(), {0.0f, 1.0f, 1.0f});
    ExpectVector(robot.Pose()[1].Translation(), {1.0f, 2.0f, 1.0f});
    ExpectVector(robot.Pose()[2].Translation(), {1.0f, 2.5f, 1.0f});
}

TEST_F(ObjectTrackTest, LaterClipReplacesTheFormerOfItsElement) {
    SceneObject& robot = MakeRobot();
    CFilmObjectTrack& track = AddActor(robot);
    AddClip(track, 0.0f, "Lift");
    AddClip(track, 1.0f, "Turn");
    film->SetTime(1.5f, -1.0f);
    ExpectVector(robot.Pose()[1].Translation(), {0.0f, 2.0f, 0.5f});
}

TEST_F(ObjectTrackTest, UnknownClipLeavesTheMeshAtRest) {
    SceneObject& robot = MakeRobot();
    AddClip(AddActor(robot), 0.0f, "No such clip");
    film->SetTime(1.0f, -1.0f);
    EXPECT_EQ(robot.Pose(), nullptr);
}

TEST_F(ObjectTrackTest, ChangedActorFreesTheOldOne) {
    SceneObject& robot = MakeRobot();
    CFilmObjectTrack& track = AddActor(robot);
    AddClip(track, 0.0f, "Lift");
    film->SetTime(1.0f, -1.0f);
    SceneObject& other = MakeObject("Other");
    track.SetActor(&other, false);
    EXPECT_EQ(robot.Pose(), nullptr);
    EXPECT_EQ(film->FindObjectTrack(&other), &track);
}

TEST_F(ObjectTrackTest, NumbersThatAreNotFiniteReachTheObjectAndNothingElse) {
    SceneObject& cart = MakeObject("Cart");
    SceneObject& crate = MakeObject("Crate", {0.0f, 1.0f, 0.0f}, &cart);
    CFilmObjectTrack& track = AddActor(cart);
    AddVector(track, KeyKind::Position, 0.0f, {std::nanf(""), 0.0f, 0.0f});
    film->SetTime(0.0f, -1.0f);
    EXPECT_TRUE(std::isnan(Place(cart).x));
    ExpectVector(Place(crate), {0.0f, 1.0f, 0.0f});
}

} // namespace engine_test
