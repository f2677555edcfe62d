#include "host/engine/LightTrack.h"
#include "tests/engine/EngineFixture.h"

namespace engine_test {

using engine::SceneObject;

class LightTrackTest : public EngineTest {
protected:
    SceneObject& MakeLight(const char* className) {
        return MakeObject("Light", {1.0f, 1.0f, 1.0f}, nullptr, className);
    }
    CFilmGLLightTrack& AddGLLight(SceneObject* object) {
        auto& track = *AsGLLightTrack(&AddTrack(film->CreateGLLightTrack()));
        track.lightObject = object;
        track.RefreshTrack();
        return track;
    }
    void AddSwitch(CFilmTrack& track, float time, bool on) {
        Add<CFilmFlagsKey>(track, KeyKind::Flags, time).keyFlags = on ? 1u : 0u;
    }
};

TEST_F(LightTrackTest, KeysDrivePlaceColourAndSwitch) {
    SceneObject& lamp = MakeLight(ClassName::GLLight);
    CFilmGLLightTrack& track = AddGLLight(&lamp);
    AddVector(track, KeyKind::Position, 0.0f, {0.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Position, 2.0f, {2.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Color, 0.0f, {1.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Color, 2.0f, {0.0f, 0.0f, 1.0f});
    AddSwitch(track, 0.0f, true);
    AddSwitch(track, 1.5f, false);
    film->SetTime(1.0f, -1.0f);
    ExpectVector(lamp.World().Translation(), {1.0f, 0.0f, 0.0f});
    ExpectVector(lamp.light->color, {0.5f, 0.0f, 0.5f});
    EXPECT_TRUE(lamp.light->on);
    film->SetTime(1.75f, -1.0f);
    EXPECT_FALSE(lamp.light->on);
}

TEST_F(LightTrackTest, EndOfTheFilmGivesTheLightItsOwnColourBack) {
    SceneObject& lamp = MakeLight(ClassName::GLLight);
    lamp.light->color = {0.25f, 0.5f, 0.75f};
    CFilmGLLightTrack& track = AddGLLight(&lamp);
    AddVector(track, KeyKind::Color, 0.0f, {1.0f, 0.0f, 0.0f});
    AddSwitch(track, 0.0f, false);
    film->SetTime(0.0f, -1.0f);
    EXPECT_EQ(lamp.light->color, (Vector3{1.0f, 0.0f, 0.0f}));
    film->Deactivate();
    EXPECT_EQ(lamp.light->color, (Vector3{0.25f, 0.5f, 0.75f}));
    EXPECT_TRUE(lamp.light->on);
}

TEST_F(LightTrackTest, SunTrackDrivesTheLevelsSun) {
    SceneObject& helper = MakeLight(ClassName::GLLight);
    engine::SunObject& sun = *level.Data()->Sun();
    const Vector3 before = sun.direction;
    CFilmGLLightTrack& track = AddGLLight(&helper);
    track.isSun = 1;
    AddVector(track, KeyKind::Position, 0.0f, {0.0f, 600.0f, 800.0f});
    AddVector(track, KeyKind::Color, 0.0f, {1.0f, 0.5f, 0.25f});
    AddSwitch(track, 0.0f, true);
    AddSwitch(track, 1.0f, false);
    film->SetTime(0.0f, -1.0f);
    ExpectVector(sun.direction, {0.0f, 0.6f, 0.8f});
    EXPECT_EQ(sun.light.color, (Vector3{1.0f, 0.5f, 0.25f}));
    ExpectVector(helper.World().Translation(), {0.0f, 600.0f, 800.0f});
    film->SetTime(1.0f, -1.0f);
    EXPECT_FALSE(sun.light.on);
    film->Deactivate();
    EXPECT_EQ(sun.direction, before);
    EXPECT_EQ(sun.light.color, (Vector3{1.0f, 1.0f, 1.0f}));
    EXPECT_TRUE(sun.light.on);
}

TEST_F(LightTrackTest, RangeAndStrengthAreTheUsersWhileTheFilmIsOpen) {
    SceneObject& lamp = MakeLight(ClassName::GLLight);
    const engine::LightProperties before = *lamp.light;
    CFilmGLLightTrack& track = AddGLLight(&lamp);
    AddVector(track, KeyKind::Color, 0.0f, {1.0f, 0.5f, 0.25f});
    AddSwitch(track, 0.0f, false);
    film->SetTime(0.0f, -1.0f);
    lamp.light->range = 70.0f;
    lamp.light->intensity = 3.0f;
    film->SetTime(1.0f, 0.0f);
    film->Deactivate();
    EXPECT_EQ(lamp.light->range, 70.0f);
    EXPECT_EQ(lamp.light->intensity, 3.0f);
    EXPECT_EQ(lamp.light->color, before.color);
    EXPECT_EQ(lamp.light->on, before.on);
}

TEST_F(LightTrackTest, AColourWithoutKeysIsTheUsersToo) {
    SceneObject& lamp = MakeLight(ClassName::GLLight);
    CFilmGLLightTrack& track = AddGLLight(&lamp);
    AddSwitch(track, 0.0f, true);
    film->SetTime(0.0f, -1.0f);
    lamp.light->color = {0.1f, 0.2f, 0.3f};
    film->SetTime(1.0f, 0.0f);
    film->Deactivate();
    EXPECT_EQ(lamp.light->color, (Vector3{0.1f, 0.2f, 0.3f}));
}

TEST_F(LightTrackTest, TheColourOfBeforeComesBackWithItsLastKey) {
    SceneObject& lamp = MakeLight(ClassName::GLLight);
    const Vector3 before = lamp.light->color;
    CFilmGLLightTrack& track = AddGLLight(&lamp);
    AddVector(track, KeyKind::Color, 0.0f, {1.0f, 0.5f, 0.25f});
    film->SetTime(0.0f, -1.0f);
    EXPECT_EQ(lamp.light->color, (Vector3{1.0f, 0.5f, 0.25f}));
    track.ClearKind(KeyKind::Color);
    film->SetTime(1.0f, 0.0f);
    EXPECT_EQ(lamp.light->color, before);
}

TEST_F(LightTrackTest, ALightThatATrackTakesIsNoBodyOfTheSession) {
    for (const char* className : {ClassName::GLLight, ClassName::DynLight}) {
        SceneObject& lamp = MakeLight(className);
        lamp.transient = true;
        CFilmTrack& track =
            AddTrack(std::string(className) == ClassName::GLLight ? film->CreateGLLightTrack()
                                                                  : film->CreateDynLightTrack());
        if (CFilmGLLightTrack* light = AsGLLightTrack(&track)) {
            light->lightObject = &lamp;
        } else {
            static_cast<CFilmDynLightTrack&>(track).lightObject = &lamp;
        }
        track.RefreshTrack();
        EXPECT_FALSE(lamp.transient) << className;
    }
    SceneObject& helper = MakeLight(ClassName::GLLight);
    helper.transient = true;
    auto& sun = *AsGLLightTrack(&AddTrack(film->CreateGLLightTrack()));
    sun.isSun = 1;
    sun.lightObject = &helper;
    sun.RefreshTrack();
    EXPECT_TRUE(helper.transient); // one of the level, for all films
}

TEST_F(LightTrackTest, SunTrackInALevelWithoutSunMovesTheHelperOnly) {
    SceneObject& helper = MakeLight(ClassName::GLLight);
    CFilmGLLightTrack& track = AddGLLight(&helper);
    track.isSun = 1;
    AddVector(track, KeyKind::Position, 0.0f, {0.0f, 5.0f, 0.0f});
    level.Data()->SetSun(false);
    film->SetTime(0.0f, -1.0f);
    ExpectVector(helper.World().Translation(), {0.0f, 5.0f, 0.0f});
    film->Deactivate();
}

TEST_F(LightTrackTest, DynamicLightHasAWholeMatrix) {
    SceneObject& lamp = MakeLight(ClassName::DynLight);
    auto& track = *AsDynLightTrack(&AddTrack(film->CreateDynLightTrack()));
    track.lightObject = &lamp;
    AddVector(track, KeyKind::Rotation, 0.0f, {90.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Scale, 0.0f, {1.0f, 2.0f, 1.0f});
    AddVector(track, KeyKind::Color, 0.0f, {0.0f, 1.0f, 0.0f});
    film->SetTime(0.0f, -1.0f);
    ExpectVector(lamp.World().Axis(1), {0.0f, 0.0f, 2.0f});
    ExpectVector(lamp.World().Translation(), {1.0f, 1.0f, 1.0f}); // no position key: it stays
    EXPECT_EQ(lamp.light->color, (Vector3{0.0f, 1.0f, 0.0f}));
}

TEST_F(LightTrackTest, TracksWithoutALightAreHarmless) {
    CFilmGLLightTrack& track = AddGLLight(nullptr);
    AddVector(track, KeyKind::Position, 0.0f, {});
    AddSwitch(track, 0.0f, true);
    AddTrack(film->CreateDynLightTrack());
    film->SetTime(0.0f, 0.0f);
    film->Deactivate();
    EXPECT_EQ(track.lightObject, nullptr);
}

TEST_F(LightTrackTest, LightThatTheTrackNoLongerHoldsIsForgottenWithItsObject) {
    SceneObject& lamp = MakeLight(ClassName::GLLight);
    CFilmGLLightTrack& track = AddGLLight(&lamp);
    AddSwitch(track, 0.0f, true);
    film->SetTime(0.0f, -1.0f);
    track.lightObject = nullptr; // the plug-in unpairs the helper first
    level.DeleteObject(&lamp);
    film->SetTime(1.0f, -1.0f);
    film->Deactivate();
    EXPECT_EQ(level.FindObject("Light"), nullptr);
}

TEST_F(LightTrackTest, LightIsRestoredWhenTheTrackTakesAnother) {
    SceneObject& first = MakeLight(ClassName::DynLight);
    SceneObject& second = MakeLight(ClassName::DynLight);
    auto& track = *AsDynLightTrack(&AddTrack(film->CreateDynLightTrack()));
    AddVector(track, KeyKind::Color, 0.0f, {1.0f, 0.0f, 0.0f});
    track.lightObject = &first;
    film->SetTime(0.0f, -1.0f);
    track.lightObject = &second;
    film->SetTime(0.0f, -1.0f);
    EXPECT_EQ(first.light->color, (Vector3{1.0f, 1.0f, 1.0f}));
    EXPECT_EQ(second.light->color, (Vector3{1.0f, 0.0f, 0.0f}));
}

TEST_F(LightTrackTest, SunThatGoesInMidFilmIsNotRestored) {
    CFilmGLLightTrack& track = AddGLLight(nullptr);
    track.isSun = 1;
    AddVector(track, KeyKind::Color, 0.0f, {1.0f, 0.0f, 0.0f});
    film->SetTime(0.0f, -1.0f);
    level.Data()->SetSun(false);
    film->SetTime(1.0f, -1.0f);
    film->Deactivate();
    EXPECT_EQ(level.Data()->Sun(), nullptr);
}

TEST_F(LightTrackTest, DeletedLightIsNotRestored) {
    SceneObject& lamp = MakeLight(ClassName::GLLight);
    CFilmGLLightTrack& track = AddGLLight(&lamp);
    AddSwitch(track, 0.0f, true);
    film->SetTime(0.0f, -1.0f);
    level.DeleteObject(&lamp);
    film->Deactivate();
    EXPECT_EQ(track.lightObject, nullptr);
}

} // namespace engine_test
