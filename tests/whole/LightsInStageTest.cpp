// Lights of films in Stage: made, moved, coloured, faded, deleted, saved and loaded.
#include "host/stage/host/FreeLights.h"
#include "host/stage/windows/ColorButton.h"
#include "host/stage/windows/ObjectPanel.h"
#include "tests/whole/OwnFilmFixture.h"

#include <algorithm>
#include <cmath>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>

namespace {

constexpr UINT kAnimate = 36823;

class LightsInStageTest : public OwnFilmTest {
protected:
    /// By the names that the plug-in gives them.
    std::vector<engine::SceneObject*> FilmLights() const {
        std::vector<engine::SceneObject*> lights;
        for (const auto& object : window->host.level.Data()->Objects()) {
            if (object->name.starts_with("MovieGLLight") || object->name.starts_with("MovieDynLight")) {
                lights.push_back(object.get());
            }
        }
        return lights;
    }
    /// A light by the menu of the scenario window.
    engine::SceneObject* Add(const char* entry) {
        const std::vector<engine::SceneObject*> before = FilmLights();
        ChooseOfFilm(entry);
        for (engine::SceneObject* light : FilmLights()) {
            if (std::ranges::find(before, light) == before.end()) {
                return light;
            }
        }
        return nullptr;
    }
    CFilmTrack* TrackOf(const engine::SceneObject& light, const IFilm& of) const {
        for (CFilmTrack* track : of.tracks) {
            const auto* gl = AsGLLightTrack(track);
            const auto* dynamic = AsDynLightTrack(track);
            if ((gl != nullptr && gl->lightObject == &light) ||
                (dynamic != nullptr && dynamic->lightObject == &light)) {
                return track;
            }
        }
        return nullptr;
    }
    static float Distance(const Vector3& a, const Vector3& b) {
        return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
    }
    stage::LightFields& Fields() const { return *window->panel->light; }
    void Select(engine::SceneObject& object) {
        window->host.Select({&object});
        Settle();
    }
};

} // namespace

TEST_F(LightsInStageTest, BothKindsStandAMetreBeforeTheView) {
    const float* view = window->host.GetViewMatrix(0);
    const Vector3 eye{view[12], view[13], view[14]};
    for (const char* entry : {"Add GL light", "Add dyn light"}) {
        const engine::SceneObject* light = Add(entry);
        ASSERT_NE(light, nullptr) << entry;
        EXPECT_NEAR(Distance(light->World().Translation(), eye), 100.0f, 0.01f);
        EXPECT_NE(TrackOf(*light, *film), nullptr);
        EXPECT_TRUE(light->light->on);
    }
}

TEST_F(LightsInStageTest, AFirstLightIsAChangeAlthoughItLooksLikeShowing) {
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    ASSERT_FALSE(window->session.IsChanged());
    ASSERT_NE(Add("Add GL light"), nullptr);
    EXPECT_TRUE(window->session.IsChanged());
}

TEST_F(LightsInStageTest, KeysMoveColourAndSwitchIt) {
    engine::SceneObject* light = Add("Add GL light");
    ASSERT_NE(light, nullptr);
    CFilmTrack* track = TrackOf(*light, *film);
    const Vector3 place = light->World().Translation();
    const Vector3 red{1.0f, 0.0f, 0.0f};
    const Vector3 black{0.0f, 0.0f, 0.0f};
    static_cast<CFilmVectorKey*>(AddKey(*track, KeyKind::Color, 0.0f, red.Data()))
        ->SetOutMethod(BezierMethod::Linear);
    static_cast<CFilmVectorKey*>(AddKey(*track, KeyKind::Color, 0.2f, black.Data()))
        ->SetInMethod(BezierMethod::Linear);
    AddKey(*track, KeyKind::Flags, 0.3f, nullptr); // without the bit
    track->RefreshTrack();
    GoTo(0);
    EXPECT_EQ(light->light->color, red);
    GoTo(3); // a tenth of a second, half way
    EXPECT_NEAR(light->light->color.x, 0.5f, 0.001f);
    GoTo(7);
    EXPECT_EQ(light->light->color, black); // faded
    EXPECT_TRUE(light->light->on);
    GoTo(10);
    EXPECT_FALSE(light->light->on);
    Send(kAnimate);
    Move(light, place.x + 50.0f, place.y, place.z);
    GoTo(0);
    EXPECT_EQ(light->World().Translation(), place);
    GoTo(10);
    EXPECT_NEAR(light->World().Translation().x, place.x + 50.0f, 0.01f);
}

TEST_F(LightsInStageTest, TheSunIsMovedLikeALight) {
    engine::SunObject& sun = *window->host.level.Data()->Sun();
    engine::SceneObject* helper = Object("SunHelper");
    ASSERT_NE(helper, nullptr);
    Send(kAnimate);
    GoTo(30);
    Move(helper, 0.0f, 600.0f, 800.0f);
    GoTo(30);
    EXPECT_NEAR(sun.direction.x, 0.0f, 1e-5f);
    EXPECT_NEAR(sun.direction.y, 0.6f, 1e-5f);
    EXPECT_NEAR(sun.direction.z, 0.8f, 1e-5f);
}

TEST_F(LightsInStageTest, DeletingItTakesItsTrackAlong) {
    engine::SceneObject* light = Add("Add dyn light");
    ASSERT_NE(light, nullptr);
    const std::string name = light->name;
    const std::size_t tracks = film->tracks.size();
    Select(*light);
    window->commands.DeleteSelected();
    Settle();
    EXPECT_EQ(Object(name), nullptr);
    EXPECT_EQ(film->tracks.size(), tracks - 1);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(LightsInStageTest, BothAreSavedAndLoadedWithTheirTracks) {
    engine::SceneObject* gl = Add("Add GL light");
    engine::SceneObject* dynamic = Add("Add dyn light");
    ASSERT_TRUE(gl != nullptr && dynamic != nullptr);
    gl->light->intensity = 3.5f;
    const std::string name = film->name;
    const std::string glName = gl->name;
    const std::string dynName = dynamic->name;
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
    Settle();
    ASSERT_NE(Object(glName), nullptr);
    ASSERT_NE(Object(dynName), nullptr);
    EXPECT_NE(AsGLLightTrack(TrackOf(*Object(glName), *Film(name))), nullptr);
    EXPECT_NE(AsDynLightTrack(TrackOf(*Object(dynName), *Film(name))), nullptr);
    EXPECT_EQ(Object(glName)->light->intensity, 3.5f);
    EXPECT_FALSE(window->session.IsChanged());
}

TEST_F(LightsInStageTest, ALightThatLeavesItsFilmIsListedBeforeASave) {
    engine::SceneObject* light = Add("Add GL light");
    ASSERT_NE(light, nullptr);
    const std::string name = light->name;
    EXPECT_TRUE(stage::LightsWithoutFilm(window->host).empty());
    Select(*light);
    ChooseOfFilm("Remove actors");
    EXPECT_EQ(stage::LightsWithoutFilm(window->host), std::vector<std::string>{name});
}

TEST_F(LightsInStageTest, ThePanelSaysWhatBelongsToTheFilm) {
    engine::SceneObject* light = Add("Add GL light");
    ASSERT_NE(light, nullptr);
    Select(*light);
    EXPECT_FALSE(Fields().on->isEnabled());
    EXPECT_TRUE(Fields().color->isEnabled()); // no keys say a colour
    EXPECT_TRUE(Fields().intensity->isEnabled());
    EXPECT_EQ(
        Fields().belongs->text(),
        QString("\"Shines\" belongs to the film \"%1\": flags keys of its track set it.").arg(film->name));
    const Vector3 red{1.0f, 0.0f, 0.0f};
    AddKey(*TrackOf(*light, *film), KeyKind::Color, 0.0f, red.Data());
    GoTo(1);
    Settle();
    EXPECT_FALSE(Fields().color->isEnabled());
    EXPECT_EQ(
        Fields().belongs->text(),
        QString("The greyed fields belong to the film \"%1\": keys of its track set them.").arg(film->name));
    ChooseFilm("<none>");
    Select(*light); // a closed film hides its lights
    EXPECT_TRUE(Fields().on->isEnabled());
    EXPECT_TRUE(Fields().color->isEnabled());
    EXPECT_TRUE(Fields().belongs->isHidden());
}

TEST_F(LightsInStageTest, ThePanelOfTheSunFollowsTheFilmThatOpensAndCloses) {
    window->host.Select({});
    Settle();
    const stage::LightFields& sun = *window->panel->sun;
    EXPECT_FALSE(sun.on->isEnabled());
    EXPECT_TRUE(sun.color->isEnabled());
    EXPECT_EQ(
        sun.belongs->text(), // a sun track has a position key from the beginning
        QString("The greyed fields belong to the film \"%1\": keys of its track set them.").arg(film->name));
    const std::string name = film->name;
    ChooseFilm("<none>");
    Settle();
    EXPECT_TRUE(sun.on->isEnabled());
    EXPECT_TRUE(sun.belongs->isHidden());
    ChooseFilm(name);
    Settle();
    EXPECT_FALSE(sun.on->isEnabled());
    EXPECT_FALSE(sun.belongs->isHidden());
}

TEST_F(LightsInStageTest, AStrengthChangedWithTheFilmOpenStays) {
    engine::SceneObject* light = Add("Add GL light");
    ASSERT_NE(light, nullptr);
    const Vector3 red{1.0f, 0.0f, 0.0f};
    AddKey(*TrackOf(*light, *film), KeyKind::Color, 0.0f, red.Data());
    GoTo(1);
    Select(*light);
    Send(kAnimate); // no key says a strength
    const std::size_t keys = TrackOf(*light, *film)->keys.size();
    Fields().intensity->setValue(2.5);
    EXPECT_EQ(light->light->intensity, 2.5f);
    EXPECT_EQ(light->light->color, red); // what belongs to the film is not written
    EXPECT_EQ(TrackOf(*light, *film)->keys.size(), keys);
    ChooseFilm("<none>");
    EXPECT_EQ(light->light->intensity, 2.5f);
    EXPECT_EQ(light->light->color, (Vector3{1.0f, 1.0f, 1.0f}));
}
