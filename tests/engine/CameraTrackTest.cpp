#include "host/engine/CameraTrack.h"
#include "tests/engine/EngineFixture.h"

namespace engine_test {

using engine::CameraTrack;

class CameraTrackTest : public EngineTest {
protected:
    CameraTrackTest() : camera(AddCamera("A")) {}

    CFilmLinkedKey& AddEye(float time, const Vector3& value, int method = BezierMethod::Linear) {
        return static_cast<CFilmLinkedKey&>(AddVector(camera, KeyKind::CameraPosition, time, value, method));
    }
    CFilmLinkedKey& AddTarget(float time, const Vector3& value) {
        return static_cast<CFilmLinkedKey&>(AddVector(camera, KeyKind::CameraTarget, time, value));
    }
    float EyeX(float time) {
        film->SetTime(time, -1.0f);
        return camera.eyePoint.x;
    }

    CFilmCameraTrack& camera;
};

TEST_F(CameraTrackTest, PosesEyeTargetAndRecord) {
    AddEye(0.0f, {0.0f, 0.0f, 10.0f});
    AddEye(2.0f, {4.0f, 0.0f, 10.0f});
    AddTarget(0.0f, {2.0f, 0.0f, 0.0f});
    camera.nearPlane = 0.5f;
    camera.farPlane = 200.0f;
    film->SetTime(1.0f, -1.0f);
    ExpectVector(camera.eyePoint, {2.0f, 0.0f, 10.0f});
    ExpectVector(camera.targetPoint, {2.0f, 0.0f, 0.0f});
    const CameraData& data = camera.cameraData->data;
    EXPECT_EQ(data.recordNear, 0.5f);
    EXPECT_EQ(data.recordFar, 200.0f);
    ExpectVector({data.matrices[0][8], data.matrices[0][9], data.matrices[0][10]}, {0.0f, 0.0f, 1.0f});
    ExpectVector({data.matrices[0][12], data.matrices[0][13], data.matrices[0][14]}, {2.0f, 0.0f, 10.0f});
    // The second matrix is the inverse: it takes the eye to the origin.
    ExpectVector(TransformPoint(camera.eyePoint, engine::MatrixFrom(data.matrices[1])), {0.0f, 0.0f, 0.0f});
}

TEST_F(CameraTrackTest, RollAndFieldOfViewComeFromTheirKeys) {
    AddEye(0.0f, {0.0f, 0.0f, 10.0f});
    AddTarget(0.0f, {0.0f, 0.0f, 0.0f});
    AddScalar(camera, KeyKind::Roll, 0.0f, 0.0f);
    AddScalar(camera, KeyKind::Roll, 2.0f, 180.0f);
    AddScalar(camera, KeyKind::FieldOfView, 0.0f, 40.0f);
    AddScalar(camera, KeyKind::FieldOfView, 4.0f, 80.0f);
    film->SetTime(1.0f, -1.0f);
    EXPECT_NEAR(camera.fieldOfView, 50.0f, 1e-4f);
    const float* rows = camera.cameraData->data.matrices[0];
    ExpectVector({rows[0], rows[1], rows[2]}, {0.0f, 1.0f, 0.0f}); // 90 degrees of roll
}

TEST_F(CameraTrackTest, WithoutKeysTheFieldOfViewStays) {
    camera.fieldOfView = 35.0f;
    film->SetTime(1.0f, -1.0f);
    EXPECT_EQ(camera.fieldOfView, 35.0f);
    EXPECT_EQ(camera.eyePoint, Vector3{});
}

TEST_F(CameraTrackTest, KeysAtATimeAreFoundWithinATenthOfAMillisecond) {
    CFilmLinkedKey& eye = AddEye(2.0f, {});
    CFilmLinkedKey& near = AddEye(2.00008f, {});
    CFilmLinkedKey& target = AddTarget(3.0f, {});
    EXPECT_EQ(camera.GetEyeKeyAt(2.0f), &eye);
    EXPECT_EQ(camera.GetEyeKeyAt(1.99995f), &eye);
    EXPECT_EQ(camera.GetEyeKeyAt(2.0001f), &near);
    EXPECT_EQ(camera.GetEyeKeyAt(1.9998f), nullptr);
    EXPECT_EQ(camera.GetTargetKeyAt(3.0f), &target);
    EXPECT_EQ(camera.GetTargetKeyAt(2.0f), nullptr);
}

TEST_F(CameraTrackTest, LoopModesMapTheTime) {
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(LoopMode::None, 4.0f, 9.0f), 9.0f);
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(LoopMode::Loop, 4.0f, 9.0f), 1.0f);
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(LoopMode::Loop, 4.0f, 4.0f), 0.0f);
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(LoopMode::Loop, 4.0f, -1.0f), 3.0f);
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(LoopMode::SmoothLoop, 4.0f, 9.0f), 1.0f);
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(LoopMode::PingPong, 4.0f, 3.0f), 3.0f);
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(LoopMode::PingPong, 4.0f, 5.0f), 3.0f);
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(LoopMode::PingPong, 4.0f, 9.0f), 1.0f);
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(LoopMode::PingPong, 4.0f, -1.0f), 1.0f);
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(LoopMode::Loop, 0.0f, 9.0f), 9.0f);
    EXPECT_FLOAT_EQ(CameraTrack::LoopTime(7, 4.0f, 9.0f), 9.0f);
}

TEST_F(CameraTrackTest, LoopJumpsBackAtTheSubTracksLength) {
    AddEye(0.0f, {0.0f, 0.0f, 0.0f});
    AddEye(2.0f, {4.0f, 0.0f, 0.0f});
    camera.loopMode[0] = LoopMode::Loop;
    camera.subTrackLength[0] = 3.0f;
    EXPECT_FLOAT_EQ(EyeX(1.0f), 2.0f);
    EXPECT_FLOAT_EQ(EyeX(2.5f), 4.0f);
    EXPECT_FLOAT_EQ(EyeX(4.0f), 2.0f);
}

TEST_F(CameraTrackTest, LoopWithoutALengthTakesThatOfItsKeys) {
    AddEye(0.0f, {0.0f, 0.0f, 0.0f});
    AddEye(2.0f, {4.0f, 0.0f, 0.0f});
    camera.loopMode[0] = LoopMode::Loop;
    EXPECT_FLOAT_EQ(EyeX(5.0f), 2.0f);
    camera.loopMode[0] = LoopMode::PingPong;
    EXPECT_FLOAT_EQ(EyeX(3.0f), 2.0f);
}

TEST_F(CameraTrackTest, SmoothLoopGoesOnFromTheLastKeyToTheFirst) {
    AddEye(0.0f, {0.0f, 0.0f, 0.0f});
    AddEye(2.0f, {4.0f, 0.0f, 0.0f});
    camera.loopMode[0] = LoopMode::SmoothLoop;
    camera.subTrackLength[0] = 4.0f;
    EXPECT_FLOAT_EQ(EyeX(1.0f), 2.0f);
    EXPECT_FLOAT_EQ(EyeX(3.0f), 2.0f); // half of the way back
    EXPECT_FLOAT_EQ(EyeX(4.0f), 0.0f);
    EXPECT_FLOAT_EQ(EyeX(5.0f), 2.0f);
}

TEST_F(CameraTrackTest, SmoothLoopHasNoCornerAtItsSeam) {
    // A triangle wave 0, 1, 0, -1 each second: at time 0 the velocity is (1 - -1) / 2 = 1 a second.
    const float values[] = {0.0f, 1.0f, 0.0f, -1.0f};
    for (int i = 0; i < 4; ++i) {
        AddEye(static_cast<float>(i), {values[i], 0.0f, 0.0f}, BezierMethod::Smooth);
    }
    camera.loopMode[0] = LoopMode::SmoothLoop;
    camera.subTrackLength[0] = 4.0f;
    constexpr float kStep = 0.001f;
    EXPECT_NEAR((EyeX(kStep) - EyeX(0.0f)) / kStep, 1.0f, 0.01f);
    EXPECT_NEAR((EyeX(4.0f) - EyeX(4.0f - kStep)) / kStep, 1.0f, 0.01f);
    // Between -1 and 0 with velocities 0 and 1: control points -1, -1, -1/3, 0 give B(1/2) = -5/8.
    EXPECT_NEAR(EyeX(3.5f), -0.625f, 1e-4f);
}

TEST_F(CameraTrackTest, SmoothLoopBeforeItsFirstKeyComesFromTheLast) {
    AddEye(1.0f, {2.0f, 0.0f, 0.0f});
    AddEye(3.0f, {6.0f, 0.0f, 0.0f});
    camera.loopMode[0] = LoopMode::SmoothLoop;
    camera.subTrackLength[0] = 4.0f;
    EXPECT_FLOAT_EQ(EyeX(0.0f), 4.0f); // half of the way from 6 at -1 to 2 at 1
}

TEST_F(CameraTrackTest, SmoothLoopLeavesOutKeysBehindItsLength) {
    AddEye(0.0f, {0.0f, 0.0f, 0.0f});
    AddEye(2.0f, {4.0f, 0.0f, 0.0f});
    AddEye(6.0f, {99.0f, 0.0f, 0.0f});
    camera.loopMode[0] = LoopMode::SmoothLoop;
    camera.subTrackLength[0] = 4.0f;
    EXPECT_FLOAT_EQ(EyeX(3.0f), 2.0f);
}

TEST_F(CameraTrackTest, EachSubTrackHasItsOwnLoop) {
    AddEye(0.0f, {0.0f, 0.0f, 0.0f});
    AddEye(2.0f, {4.0f, 0.0f, 0.0f});
    AddTarget(0.0f, {0.0f, 0.0f, 0.0f});
    AddTarget(4.0f, {8.0f, 0.0f, 0.0f});
    camera.loopMode[0] = LoopMode::Loop;
    camera.subTrackLength[0] = 2.0f;
    film->SetTime(3.0f, -1.0f);
    EXPECT_FLOAT_EQ(camera.eyePoint.x, 2.0f);
    EXPECT_FLOAT_EQ(camera.targetPoint.x, 6.0f);
}

TEST_F(CameraTrackTest, LinkedPointFollowsThePosedObject) {
    engine::SceneObject& cart = MakeObject("Cart");
    CFilmObjectTrack& cartTrack = AddActor(cart);
    AddVector(cartTrack, KeyKind::Position, 0.0f, {0.0f, 0.0f, 0.0f});
    AddVector(cartTrack, KeyKind::Position, 2.0f, {10.0f, 0.0f, 0.0f});
    CFilmLinkedKey& eye = AddEye(0.0f, {0.0f, 2.0f, 0.0f});
    eye.linkObject = &cart;
    camera.NotifyKeysChanged(KeyKind::CameraPosition);
    film->SetTime(1.0f, -1.0f);
    ExpectVector(camera.eyePoint, {5.0f, 2.0f, 0.0f});
    film->SetTime(2.0f, -1.0f);
    ExpectVector(camera.eyePoint, {10.0f, 2.0f, 0.0f});
}

TEST_F(CameraTrackTest, SegmentBetweenALinkedAndAFreeKeyRunsInTheWorld) {
    engine::SceneObject& cart = MakeObject("Cart", {10.0f, 0.0f, 0.0f});
    AddEye(0.0f, {0.0f, 0.0f, 0.0f});
    CFilmLinkedKey& tied = AddEye(2.0f, {4.0f, 0.0f, 0.0f}); // at x = 14 in the world
    tied.linkObject = &cart;
    camera.NotifyKeysChanged(KeyKind::CameraPosition);
    EXPECT_FLOAT_EQ(EyeX(1.0f), 7.0f);
}

TEST_F(CameraTrackTest, CameraPointsOfAnotherTimeLeaveThePoseAlone) {
    engine::SceneObject& cart = MakeObject("Cart");
    CFilmObjectTrack& cartTrack = AddActor(cart);
    AddVector(cartTrack, KeyKind::Position, 0.0f, {0.0f, 0.0f, 0.0f});
    AddVector(cartTrack, KeyKind::Position, 2.0f, {10.0f, 0.0f, 0.0f});
    engine::SceneObject& box = MakeObject("Box", {1.0f, 0.0f, 0.0f}, &cart);
    CFilmLinkedKey& eye = AddEye(0.0f, {0.0f, 2.0f, 0.0f});
    eye.linkObject = &box; // follows the cart through the level's parents
    camera.NotifyKeysChanged(KeyKind::CameraPosition);
    AddTarget(0.0f, {3.0f, 0.0f, 0.0f});
    film->SetTime(0.0f, -1.0f);
    ExpectVector(film->GetCameraPosition(&camera, 2.0f), {11.0f, 2.0f, 0.0f});
    ExpectVector(film->GetCameraTarget(&camera, 2.0f), {3.0f, 0.0f, 0.0f});
    ExpectVector(cart.World().Translation(), {0.0f, 0.0f, 0.0f});
    ExpectVector(camera.eyePoint, {1.0f, 2.0f, 0.0f});
    EXPECT_EQ(film->GetCameraPosition(film->mainTrack, 0.0f), Vector3{});
    EXPECT_EQ(film->GetCameraPosition(nullptr, 0.0f), Vector3{});
}

TEST_F(CameraTrackTest, CameraPointOfAnotherTimeFollowsAnElement) {
    engine::SceneObject& robot = MakeObject("Robot", {}, nullptr, "MeshObject", "robot.glb");
    CFilmObjectTrack& track = AddActor(robot);
    Add<CFilmAnimationKey>(track, KeyKind::Animation, 0.0f, 5.0f).animationName = "Lift";
    CFilmLinkedKey& eye = AddEye(0.0f, {0.0f, 0.0f, 0.0f});
    eye.linkObject = &robot;
    eye.linkElement = "arm";
    camera.NotifyKeysChanged(KeyKind::CameraPosition);
    ExpectVector(film->GetCameraPosition(&camera, 1.25f), {1.25f, 2.0f, 0.0f});
    EXPECT_EQ(robot.Pose(), nullptr);
}

TEST_F(CameraTrackTest, PathIsSampledBetweenTheKeysAndTheStripEndsThere) {
    AddEye(0.0f, {0.0f, 0.0f, 0.0f});
    AddEye(1.0f, {4.0f, 0.0f, 0.0f});
    AddEye(3.0f, {8.0f, 0.0f, 0.0f});
    AddTarget(0.0f, {1.0f, 1.0f, 1.0f});
    TrackRenderData data;
    data.track = &camera;
    data.detail = 4;
    data.strips[0].At(50); // what a former sampling left
    film->SampleCameraPath(&data, 1);
    ASSERT_EQ(data.strips[0].count, 9);
    for (int i = 0; i < 9; ++i) {
        ExpectVector(*data.strips[0].At(i), {static_cast<float>(i), 0.0f, 0.0f});
    }
    ASSERT_EQ(data.strips[1].count, 1);
    ExpectVector(*data.strips[1].At(0), {1.0f, 1.0f, 1.0f});
}

TEST_F(CameraTrackTest, KeysOfThePathAreKeptAndEveryChangeOfThemShows) {
    CFilmLinkedKey& first = AddEye(0.0f, {0.0f, 0.0f, 0.0f});
    AddEye(1.0f, {4.0f, 0.0f, 0.0f});
    TrackRenderData data;
    data.track = &camera;
    data.detail = 2;
    film->SampleCameraPath(&data, 1);
    const std::size_t built = engine::SegmentsBuilt();
    film->SampleCameraPath(&data, 1);
    EXPECT_EQ(engine::SegmentsBuilt(), built) << "an unchanged path is not worked out again";
    ASSERT_EQ(data.strips[0].count, 3);

    const float moved[] = {2.0f, 0.0f, 0.0f};
    first.SetValue(moved);
    film->SampleCameraPath(&data, 1);
    ExpectVector(*data.strips[0].At(0), {2.0f, 0.0f, 0.0f});
    first.value = {3.0f, 0.0f, 0.0f}; // written directly and told
    camera.NotifyKeysChanged(KeyKind::CameraPosition);
    film->SampleCameraPath(&data, 1);
    ExpectVector(*data.strips[0].At(0), {3.0f, 0.0f, 0.0f});
    data.detail = 4;
    film->SampleCameraPath(&data, 1);
    EXPECT_EQ(data.strips[0].count, 5);
    AddEye(2.0f, {4.0f, 0.0f, 0.0f});
    film->SampleCameraPath(&data, 1);
    EXPECT_EQ(data.strips[0].count, 9);
    camera.RemoveKey(&first, true);
    film->SampleCameraPath(&data, 1);
    EXPECT_EQ(data.strips[0].count, 5);
    camera.ClearKind(KeyKind::CameraPosition);
    film->SampleCameraPath(&data, 1);
    EXPECT_EQ(data.strips[0].count, 0);
    TrackRenderData other; // a record that was never filled gets the kept path too
    other.track = &camera;
    other.detail = 4;
    AddTarget(0.0f, {1.0f, 1.0f, 1.0f});
    film->SampleCameraPath(&data, 1);
    film->SampleCameraPath(&other, 1);
    ASSERT_EQ(other.strips[1].count, 1);
    ExpectVector(*other.strips[1].At(0), {1.0f, 1.0f, 1.0f});
}

TEST_F(CameraTrackTest, PathFollowsWhatItsKeysAreTiedTo) {
    engine::SceneObject& dock = MakeObject("Dock", {0.0f, 0.0f, 5.0f});
    engine::SceneObject& cart = MakeObject("Cart");
    CFilmObjectTrack& track = AddActor(cart);
    CFilmVectorKey& last = AddVector(track, KeyKind::Position, 0.0f, {0.0f, 0.0f, 0.0f});
    AddEye(0.0f, {0.0f, 0.0f, 0.0f}).linkObject = &cart;
    AddTarget(0.0f, {1.0f, 0.0f, 0.0f}).linkObject = &dock;
    camera.Finish();
    TrackRenderData data;
    data.track = &camera;
    data.detail = 4;
    film->SampleCameraPath(&data, 1);
    ExpectVector(*data.strips[0].At(0), {0.0f, 0.0f, 0.0f});
    ExpectVector(*data.strips[1].At(0), {1.0f, 0.0f, 5.0f});
    const std::size_t built = engine::SegmentsBuilt();
    film->SetTime(3.0f, -1.0f);
    const std::size_t posed = engine::SegmentsBuilt() - built;
    film->SampleCameraPath(&data, 1);
    EXPECT_EQ(engine::SegmentsBuilt(), built + posed) << "posing the film does not move its paths";

    last.value = {7.0f, 0.0f, 0.0f};
    track.NotifyKeysChanged(KeyKind::Position);
    film->SampleCameraPath(&data, 1);
    ExpectVector(*data.strips[0].At(0), {7.0f, 0.0f, 0.0f});
    const float place[] = {0.0f, 0.0f, 9.0f};
    dock.SetPosition(place, 0); // an object that no film holds, moved by the user
    film->SampleCameraPath(&data, 1);
    ExpectVector(*data.strips[1].At(0), {1.0f, 0.0f, 9.0f});
    track.SetParent(&dock, false, "");
    film->SampleCameraPath(&data, 1);
    ExpectVector(*data.strips[0].At(0), {7.0f, 0.0f, 9.0f});
    dock.SetPosition(engine::Matrix4{}.m + 12, 0);
    film->SampleCameraPath(&data, 1);
    ExpectVector(*data.strips[0].At(0), {7.0f, 0.0f, 0.0f});
}

TEST_F(CameraTrackTest, KeyIsFoundWithinATenthOfAMillisecond) {
    CFilmLinkedKey& first = AddEye(1.0f, {});
    CFilmLinkedKey& second = AddEye(1.00015f, {});
    AddEye(5.0f, {});
    EXPECT_EQ(camera.GetEyeKeyAt(1.0f), &first);
    EXPECT_EQ(camera.GetEyeKeyAt(0.99992f), &first);
    EXPECT_EQ(camera.GetEyeKeyAt(0.9998f), nullptr);
    EXPECT_EQ(camera.GetEyeKeyAt(1.00005f), &first) << "the nearest of two";
    EXPECT_EQ(camera.GetEyeKeyAt(1.0001f), &second);
    EXPECT_EQ(camera.GetEyeKeyAt(2.0f), nullptr);
    EXPECT_EQ(camera.GetEyeKeyAt(std::numeric_limits<float>::quiet_NaN()), nullptr);
    EXPECT_EQ(camera.GetTargetKeyAt(1.0f), nullptr);
}

TEST_F(CameraTrackTest, PathOfNoCameraOrWithoutDetailIsHarmless) {
    TrackRenderData data;
    film->SampleCameraPath(nullptr, 1);
    film->SampleCameraPath(&data, 1);
    EXPECT_EQ(data.strips[0].count, 0);
    AddEye(0.0f, {});
    AddEye(1.0f, {1.0f, 0.0f, 0.0f});
    data.track = &camera;
    data.detail = 0;
    film->SampleCameraPath(&data, 1);
    EXPECT_EQ(data.strips[0].count, 2);
}

} // namespace engine_test
