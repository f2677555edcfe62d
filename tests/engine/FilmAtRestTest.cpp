#include "host/engine/FilmAtRest.h"

#include "host/engine/LevelContent.h"
#include "host/engine/LevelFile.h"
#include "host/engine/LightTrack.h"
#include "tests/engine/EngineFixture.h"

namespace engine_test {

/// What a save would write in the middle of a film that poses an actor, what hangs on it, a light and the
/// sun.
class FilmAtRestTest : public EngineTest {
protected:
    FilmAtRestTest()
        : cart(MakeObject("Cart", {1.0f, 2.0f, 3.0f})), wheel(MakeObject("Wheel", {1.5f, 2.0f, 3.0f}, &cart)),
          lamp(MakeObject("Lamp", {0.0f, 5.0f, 0.0f}, nullptr, "GLLightEditorObject")) {
        lamp.light.emplace();
        // As after the film was closed for the first time.
        lamp.visible = 0;
        lamp.SetFlags(4);
        CFilmTrack& actor = AddActor(cart);
        AddVector(actor, KeyKind::Position, 0.0f, {10.0f, 0.0f, 0.0f});
        AddVector(actor, KeyKind::Position, 4.0f, {20.0f, 0.0f, 0.0f});
        auto* light = AsGLLightTrack(film->CreateGLLightTrack());
        light->lightObject = &lamp;
        AddTrack(light);
        AddVector(*light, KeyKind::Position, 0.0f, {0.0f, 9.0f, 0.0f});
        AddVector(*light, KeyKind::Color, 0.0f, {1.0f, 0.0f, 0.0f});
        auto* sun = AsGLLightTrack(film->CreateGLLightTrack());
        sun->isSun = 1;
        AddTrack(sun);
        AddVector(*sun, KeyKind::Position, 0.0f, {0.0f, 0.0f, 1.0f});
        AddScalar(AddCamera("Wide"), KeyKind::FieldOfView, 0.0f, 20.0f);
        film->Deactivate();
    }
    std::string Written() {
        engine::LevelMessages messages;
        return engine::SerializeLevel(level, "", messages);
    }
    void Show(float time) {
        lamp.visible = 1;
        lamp.SetFlags(0);
        film->Activate();
        film->SetTime(time, -1.0f);
    }

    engine::SceneObject& cart;
    engine::SceneObject& wheel;
    engine::SceneObject& lamp;
};

TEST_F(FilmAtRestTest, TheLevelIsWrittenAsWithTheFilmClosed) {
    const std::string closed = Written();
    Show(2.0f);
    EXPECT_FALSE(Written() == closed) << "the film poses the level";
    const engine::FilmAtRest rest(level);
    EXPECT_TRUE(Written() == closed);
}

TEST_F(FilmAtRestTest, AfterwardsTheFilmStandsAsItStood) {
    Show(2.0f);
    const std::string open = Written();
    { const engine::FilmAtRest rest(level); }
    EXPECT_TRUE(Written() == open);
    ExpectVector(cart.World().Translation(), {15.0f, 0.0f, 0.0f});
    film->SetTime(4.0f, -1.0f);
    ExpectVector(wheel.World().Translation(), {20.5f, 0.0f, 0.0f});
}

TEST_F(FilmAtRestTest, TheFilmStillPutsEverythingBackWhenItCloses) {
    const std::string closed = Written();
    Show(2.0f);
    { const engine::FilmAtRest rest(level); }
    film->Deactivate();
    lamp.visible = 0;
    lamp.SetFlags(4);
    EXPECT_TRUE(Written() == closed);
}

TEST_F(FilmAtRestTest, ALevelWithoutAFilmOpenOrWithNoneAtAllIsLeftAlone) {
    const std::string closed = Written();
    {
        const engine::FilmAtRest rest(level);
        EXPECT_TRUE(Written() == closed);
    }
    level.Close();
    const engine::FilmAtRest rest(level);
    EXPECT_EQ(level.Data(), nullptr);
}

TEST_F(FilmAtRestTest, LightsOfAFilmThatWasNeverOpenedAreDarkWhereThatIsAskedForOnly) {
    const std::string dark = Written();
    lamp.visible = 1;
    lamp.SetFlags(0);
    const std::string asTheFileHadIt = Written();
    {
        const engine::FilmAtRest rest(level);
        EXPECT_TRUE(Written() == asTheFileHadIt);
    }
    {
        const engine::FilmAtRest rest(level, engine::FilmAtRest::ClosedFilms::AllDark);
        EXPECT_TRUE(Written() == dark);
    }
    EXPECT_TRUE(Written() == asTheFileHadIt);
}

TEST_F(FilmAtRestTest, WhatACameraKeepsDoesNotDependOnTheTimeShown) {
    CFilmCameraTrack& camera = AddCamera("Zoom");
    camera.fieldOfView = 45.0f;
    AddScalar(camera, KeyKind::FieldOfView, 0.0f, 30.0f);
    AddScalar(camera, KeyKind::FieldOfView, 4.0f, 70.0f);
    const std::string before = Written();
    film->Activate();
    for (const float time : {0.0f, 1.0f, 2.0f}) {
        film->SetTime(time, -1.0f);
    }
    EXPECT_FLOAT_EQ(camera.fieldOfView, 50.0f) << "between 30 and 70";
    film->Deactivate();
    EXPECT_TRUE(Written() == before);
    camera.fieldOfView = 60.0f;
    EXPECT_FALSE(Written() == before) << "somebody has set it";
    film->Activate();
    film->SetTime(3.0f, -1.0f);
    film->Deactivate();
    camera.ClearKind(KeyKind::FieldOfView);
    film->Activate();
    film->SetTime(3.0f, -1.0f);
    EXPECT_FLOAT_EQ(camera.fieldOfView, 60.0f);
}

TEST_F(FilmAtRestTest, ContentIsBlindForViewsAndForIdsGivenAwayOnly) {
    const std::uint64_t content = engine::LevelContent(Written());
    const float elsewhere[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1};
    level.Views().SetCount(1);
    level.Views().At(0)->SetCamera(elsewhere);
    level.DeleteObject(&MakeObject("Gone"));
    EXPECT_EQ(engine::LevelContent(Written()), content);
    level.Data()->Sun()->light.intensity = 0.5f;
    EXPECT_NE(engine::LevelContent(Written()), content);
    level.Data()->Sun()->light.intensity = 1.0f;
    EXPECT_EQ(engine::LevelContent(Written()), content);
    level.Data()->bytesBehind = "x";
    EXPECT_NE(engine::LevelContent(Written()), content);
}

} // namespace engine_test
