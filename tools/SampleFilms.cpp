#include "tools/FilmMaker.h"
#include "tools/InUnits.h"
#include "tools/SampleLevel.h"

#include "host/engine/FilmKeys.h"
#include "host/engine/FilmManager.h"

namespace {

constexpr float kIntroSeconds = 24.0f;
constexpr float kEpilogueSeconds = 9.0f;
/// The sailor's pace: the Walk clip covers 1.47 m in its second.
constexpr float kWalkFrequency = 0.95f;
/// Sun helpers stand so many metres out in the sun's direction, 1,000 units as those that the plug-in makes.
constexpr float kSunDistance = 10.0f;

/// Metres; where tools/SampleLevel.cpp puts the water.
constexpr float kWaterLevel = -1.25f;

/// The bodies of the lights; films share the sun's.
struct Lights {
    engine::SceneObject* sun = nullptr;
    engine::SceneObject* lamp = nullptr;
    engine::SceneObject* cabin = nullptr;
};

/// Place and range in metres.
engine::SceneObject* MakeLight(engine::Level& level, const char* className, const char* name,
                               const Vector3& place, const Vector3& color, float range) {
    engine::ObjectSpec spec;
    spec.className = className;
    spec.name = name;
    spec.matrix.SetTranslation(InUnits(place));
    engine::SceneObject* object = level.CreateObject(spec);
    object->savedAsObject = 0;
    object->light->color = color;
    object->light->range = InUnits(range);
    return object;
}

/// Metres.
Vector3 SunPlace(float x, float y, float z) {
    using engine::operator*;
    return engine::Normalized({x, y, z}, {0, 1, 0}) * kSunDistance;
}

void Sunset(FilmMaker& film, engine::SceneObject* helper) {
    CFilmTrack* sun = film.Sun(helper);
    film.Vector(sun, KeyKind::Position, 0, SunPlace(-0.42f, 0.62f, 0.66f), FilmMaker::kSoft);
    film.Vector(sun, KeyKind::Position, 12, SunPlace(-0.58f, 0.42f, 0.62f));
    film.Vector(sun, KeyKind::Position, 24, SunPlace(-0.86f, 0.17f, 0.44f), FilmMaker::kSoft);
    film.Vector(sun, KeyKind::Color, 0, {1.0f, 0.93f, 0.82f});
    film.Vector(sun, KeyKind::Color, 14, {1.0f, 0.86f, 0.66f});
    film.Vector(sun, KeyKind::Color, 24, {1.0f, 0.62f, 0.36f});
    film.Flags(sun, 0, engine::TrackFlag::LightOn);
}

void LampComesOn(FilmMaker& film, engine::SceneObject* helper) {
    CFilmTrack* lamp = film.GLLight(helper);
    film.Vector(lamp, KeyKind::Position, 0, {2.22f, 2.6f, 0.4f});
    film.Vector(lamp, KeyKind::Color, 0, {0, 0, 0});
    film.Vector(lamp, KeyKind::Color, 16, {0, 0, 0}, FilmMaker::kLinear);
    film.Vector(lamp, KeyKind::Color, 17.2f, {1.0f, 0.74f, 0.40f}, FilmMaker::kLinear);
    film.Vector(lamp, KeyKind::Color, 24, {1.0f, 0.78f, 0.46f});
    film.Flags(lamp, 0, engine::TrackFlag::LightOn);
}

void CabinFlickers(FilmMaker& film, engine::SceneObject* helper, float length) {
    CFilmTrack* cabin = film.DynLight(helper);
    film.Vector(cabin, KeyKind::Position, 0, {8.0f, 0.9f, 8.2f});
    film.Vector(cabin, KeyKind::Rotation, 0, {0, 0, 0});
    film.Vector(cabin, KeyKind::Scale, 0, {1, 1, 1});
    for (int i = 0; static_cast<float>(i) * 1.5f <= length; ++i) {
        const float level = i % 2 == 0 ? 0.75f : 1.0f;
        film.Vector(cabin, KeyKind::Color, static_cast<float>(i) * 1.5f,
                    {level, level * 0.55f, level * 0.25f});
    }
    film.Flags(cabin, 0, engine::TrackFlag::LightOn);
}

void Life(FilmMaker& film, float length) {
    film.Animation(film.Actor("Buoy"), "Bob", 0, length);
    CFilmTrack* crane = film.Actor("Crane");
    film.Animation(crane, "Turn", 0, 8, 1, 0.6f);
    CFilmObjectTrack* load = film.Actor("Crate on hook");
    load->SetParent(crane->IsA(ClassId::ObjectTrack) ? AsObjectTrack(crane)->actor : nullptr, false, "hook");
    film.Vector(load, KeyKind::Position, 0, {0, -4.75f, 0});
    film.Vector(load, KeyKind::Rotation, 0, {0, 0, 0});
    film.Vector(load, KeyKind::Rotation, length, {0, 40, 0});
    CFilmTrack* boat = film.Actor("Row boat");
    for (int i = 0; static_cast<float>(i) * 1.6f <= length; ++i) {
        const float side = i % 2 == 0 ? 1.0f : -1.0f;
        film.Vector(boat, KeyKind::Position, static_cast<float>(i) * 1.6f,
                    {3.3f, -1.42f + 0.04f * side, 6.2f});
        film.Vector(boat, KeyKind::Rotation, static_cast<float>(i) * 1.6f,
                    {1.2f * side, -12.0f, -2.0f * side});
    }
}

void Gulls(FilmMaker& film) {
    CFilmTrack* gull = film.Actor("Gull");
    film.Animation(gull, "Fly", 0, kIntroSeconds, 0, 1.3f);
    film.Vector(gull, KeyKind::Position, 0, {-9, 5.6f, 21});
    film.Vector(gull, KeyKind::Position, 3, {-2, 6.2f, 14});
    film.Vector(gull, KeyKind::Position, 6, {8, 7.5f, 8});
    film.Vector(gull, KeyKind::Position, 12, {20, 11, -10});
    film.Vector(gull, KeyKind::Rotation, 0, {0, 135, 0});
    film.Vector(gull, KeyKind::Rotation, 3, {0, 130, -12});
    film.Vector(gull, KeyKind::Rotation, 12, {0, 146, 0});
    film.Sound(gull, "sounds/gull.wav", 0.8f, 2.6f, false);
    CFilmTrack* high = film.Actor("Gull high");
    film.Animation(high, "Fly", 0, kIntroSeconds, 0, 0.9f);
    film.Vector(high, KeyKind::Position, 0, {14, 10, 2}, FilmMaker::kLinear);
    film.Vector(high, KeyKind::Position, 12, {-6, 8, 6}, FilmMaker::kLinear);
    film.Vector(high, KeyKind::Position, 24, {-24, 10, 22}, FilmMaker::kLinear);
    film.Vector(high, KeyKind::Rotation, 0, {0, -78, 8});
    film.Vector(high, KeyKind::Rotation, 24, {0, -48, -6});
}

void SailorArrives(FilmMaker& film) {
    CFilmTrack* sailor = film.Actor("Sailor");
    film.Vector(sailor, KeyKind::Position, 0, {6.2f, 0, 16.2f}, FilmMaker::kLinear);
    film.Vector(sailor, KeyKind::Position, 3.6f, {6.2f, 0, 16.2f}, FilmMaker::kLinear);
    film.Vector(sailor, KeyKind::Position, 12.7f, {5.9f, 0, 3.4f}, FilmMaker::kLinear);
    film.Vector(sailor, KeyKind::Position, 14.6f, {4.75f, 0, 0.75f}, FilmMaker::kLinear);
    film.Vector(sailor, KeyKind::Rotation, 0, {0, 180, 0}, FilmMaker::kLinear);
    film.Vector(sailor, KeyKind::Rotation, 12.2f, {0, 181, 0}, FilmMaker::kLinear);
    film.Vector(sailor, KeyKind::Rotation, 13.2f, {0, 204, 0});
    film.Vector(sailor, KeyKind::Rotation, 15.2f, {0, 217, 0}, FilmMaker::kSoft);
    film.Vector(sailor, KeyKind::Scale, 0, {1, 1, 1});
    film.Animation(sailor, "Idle", 0, 3.6f);
    film.Animation(sailor, "Walk", 3.6f, 14.6f, 0, kWalkFrequency);
    film.Animation(sailor, "Wave", 14.7f, 17.1f, 1);
    film.Animation(sailor, "Idle", 17.1f, 24);
    film.Sound(sailor, "sounds/steps.wav", 3.6f, 14.6f, true);
    film.Speech(sailor, "sounds/sailor_hello.wav", "Ahoy! Have I missed the last boat?", 15.0f, 17.1f);
    film.Effect(sailor, KeyKind::FxTrace, 3.6f, 14.6f, {"Footprints"});
    film.Effect(sailor, KeyKind::FxParticle, 3.6f, 14.6f, {"Dust", {}, nullptr, "Bip01 L Foot"});
    film.Method(sailor, "harbour.sailorArrived", 14.6f, false);
    film.Flags(sailor, 0, 0);

    CFilmObjectTrack* suitcase = film.Actor("Suitcase");
    suitcase->SetParent(AsObjectTrack(sailor)->actor, false, "prop");
    film.Vector(suitcase, KeyKind::Position, 0, {0, 0.02f, 0});
    film.Vector(suitcase, KeyKind::Rotation, 0, {0, 0, 0});
    // He puts it down to wave.
    film.Flags(suitcase, 0, 0);
    film.Flags(suitcase, 14.6f, engine::TrackFlag::ObjectHidden);
}

void MasterWaits(FilmMaker& film) {
    CFilmTrack* master = film.Actor("Harbour master");
    film.Vector(master, KeyKind::Position, 0, {3.5f, 0, -0.9f});
    film.Vector(master, KeyKind::Rotation, 0, {0, 12, 0}, FilmMaker::kSoft);
    film.Vector(master, KeyKind::Rotation, 12, {0, 22, 0}, FilmMaker::kSoft);
    film.Vector(master, KeyKind::Rotation, 13.5f, {0, 37, 0}, FilmMaker::kSoft);
    film.Animation(master, "Idle", 0, 17.2f, 0, 0.85f);
    film.Animation(master, "Talk", 17.2f, 20.2f);
    film.Animation(master, "Idle", 20.2f, 24);
    film.Speech(master, "sounds/master_reply.wav", "The last boat? My boy, you came on it.", 17.4f, 20.0f);
}

void IntroCameras(FilmMaker& film) {
    CFilmTrack* wide = film.Camera("Establishing");
    film.Point(wide, KeyKind::CameraPosition, 0, {-19, 4.2f, 30}, FilmMaker::kSoft);
    film.Point(wide, KeyKind::CameraPosition, 6.4f, {-4, 6.0f, 24}, FilmMaker::kSoft);
    film.Point(wide, KeyKind::CameraTarget, 0, {-8, 3.2f, 0}, FilmMaker::kSoft);
    film.Point(wide, KeyKind::CameraTarget, 6.4f, {4, 1.4f, 2}, FilmMaker::kSoft);
    film.Scalar(wide, KeyKind::Roll, 0, -1.5f, FilmMaker::kSoft);
    film.Scalar(wide, KeyKind::Roll, 6.4f, 0.0f, FilmMaker::kSoft);
    film.Scalar(wide, KeyKind::FieldOfView, 0, 46, FilmMaker::kSoft);
    film.Scalar(wide, KeyKind::FieldOfView, 6.4f, 40, FilmMaker::kSoft);

    CFilmTrack* dock = film.Camera("Along the dock");
    film.Point(dock, KeyKind::CameraPosition, 6.4f, {4.9f, 1.35f, 7.2f});
    film.Point(dock, KeyKind::CameraPosition, 11.4f, {4.2f, 1.7f, 0.6f});
    film.Point(dock, KeyKind::CameraTarget, 6.4f, {0, 0.1f, 0}, FilmMaker::kSmooth, "Sailor", "Bip01 Spine1");
    film.Point(dock, KeyKind::CameraTarget, 11.4f, {0, 0.25f, 0}, FilmMaker::kSmooth, "Sailor",
               "Bip01 Spine1");
    film.Scalar(dock, KeyKind::Roll, 6.4f, 0);
    film.Scalar(dock, KeyKind::FieldOfView, 6.4f, 40);
    film.Scalar(dock, KeyKind::FieldOfView, 11.4f, 34);

    CFilmTrack* close = film.Camera("Master close");
    film.Point(close, KeyKind::CameraPosition, 11.4f, {4.75f, 1.70f, 1.05f}, FilmMaker::kSoft);
    film.Point(close, KeyKind::CameraPosition, 14.4f, {4.45f, 1.74f, 0.70f}, FilmMaker::kSoft);
    film.Point(close, KeyKind::CameraTarget, 11.4f, {0, 0.09f, 0.02f}, FilmMaker::kSmooth, "Harbour master",
               "Bip01 Head");
    film.Scalar(close, KeyKind::FieldOfView, 11.4f, 27);

    CFilmTrack* meeting = film.Camera("Meeting");
    film.Point(meeting, KeyKind::CameraPosition, 14.4f, {7.3f, 1.5f, -1.9f}, FilmMaker::kSoft);
    film.Point(meeting, KeyKind::CameraPosition, 17.2f, {6.7f, 1.55f, -2.1f}, FilmMaker::kSoft);
    film.Point(meeting, KeyKind::CameraTarget, 14.4f, {4.0f, 1.2f, 0.2f});
    film.Point(meeting, KeyKind::CameraTarget, 17.2f, {4.1f, 1.3f, 0.2f});
    film.Scalar(meeting, KeyKind::FieldOfView, 14.4f, 44);

    CFilmTrack* last = film.Camera("Evening");
    film.Point(last, KeyKind::CameraPosition, 17.2f, {6.2f, 1.75f, 1.5f}, FilmMaker::kSoft);
    film.Point(last, KeyKind::CameraPosition, 19.6f, {6.9f, 2.0f, 2.2f}, FilmMaker::kSmooth);
    film.Point(last, KeyKind::CameraPosition, 24, {17, 9.5f, 18}, FilmMaker::kSoft);
    film.Point(last, KeyKind::CameraTarget, 17.2f, {3.7f, 1.35f, -0.5f});
    film.Point(last, KeyKind::CameraTarget, 24, {0, 2.4f, -3}, FilmMaker::kSoft);
    film.Scalar(last, KeyKind::FieldOfView, 17.2f, 40);
    film.Scalar(last, KeyKind::FieldOfView, 24, 46, FilmMaker::kSoft);

    film.Cut("Establishing", 0, 6.4f);
    film.Cut("Along the dock", 6.4f, 11.4f);
    film.Cut("Master close", 11.4f, 14.4f);
    film.Cut("Meeting", 14.4f, 17.2f);
    film.Cut("Evening", 17.2f, kIntroSeconds);
}

/// Black at both ends, and what lives without the actors: smoke, a splash, lights that are lit, a drizzle.
void IntroEffects(FilmMaker& film) {
    CFilmTrack* level = film.Level();
    film.Effect(level, KeyKind::FxBlind, 0, 2, {"From black"});
    film.Effect(level, KeyKind::FxBlind, 22.6f, kIntroSeconds, {"To black"});
    film.Effect(level, KeyKind::FxRain, 17.2f, kIntroSeconds, {"Evening drizzle"});
    // The chimney's top, as tools/sample/props.py builds it.
    film.Effect(level, KeyKind::FxParticle, 0, kIntroSeconds,
                {"Chimney smoke", {1.7f, 9.04f, -3.6f}, "House white", "house"});
    // With the horn; behind the wheelhouse.
    film.Effect(level, KeyKind::FxParticle, 20.4f, 22.8f,
                {"Steam", {0, 3.6f, -2.0f}, "Fishing boat", "fishing boat"});
    film.Effect(level, KeyKind::FxSequence, 9.4f, 10.6f, {"Dock splash", {2.6f, kWaterLevel, 4.4f}});
    film.Effect(level, KeyKind::FxFlare, 14, kIntroSeconds,
                {"Harbour light", {0, 17.8f, 0}, "Lighthouse", "lighthouse"});
    film.Effect(level, KeyKind::FxFlare, 16, kIntroSeconds, {"Lantern", {}, "Lamp post", "lamp"});
}

void MakeIntro(engine::Level& level, const Lights& lights) {
    FilmMaker film(level, "Intro", kIntroSeconds);
    Sunset(film, lights.sun);
    film.Sound(film.Level(), "sounds/surf.wav", 0, kIntroSeconds, true);
    film.Sound(film.Level(), "sounds/theme.wav", 0.5f, 11.5f, false);
    film.Sound(film.Level(), "sounds/bell.wav", 12.0f, 14.0f, false);
    film.Sound(film.Level(), "sounds/horn.wav", 20.4f, 22.8f, false);
    film.Method(film.Level(), "harbour.introStarted", 0, false);
    film.Method(film.Level(), "harbour.introEnded", 23.9f, true);
    film.Flags(film.Level(), 0, engine::TrackFlag::BlackBars);
    IntroEffects(film);
    SailorArrives(film);
    MasterWaits(film);
    Gulls(film);
    Life(film, kIntroSeconds);
    LampComesOn(film, lights.lamp);
    CabinFlickers(film, lights.cabin, kIntroSeconds);
    IntroCameras(film);
    film.Finish();
}

void MakeEpilogue(engine::Level& level, const Lights& lights) {
    FilmMaker film(level, "Epilogue", kEpilogueSeconds);
    CFilmTrack* sun = film.Sun(lights.sun);
    film.Vector(sun, KeyKind::Position, 0, SunPlace(-0.90f, 0.11f, 0.42f));
    film.Vector(sun, KeyKind::Color, 0, {1.0f, 0.60f, 0.34f});
    film.Flags(sun, 0, engine::TrackFlag::LightOn);
    film.Sound(film.Level(), "sounds/surf.wav", 0, kEpilogueSeconds, true);

    CFilmTrack* sailor = film.Actor("Sailor");
    film.Vector(sailor, KeyKind::Position, 0, {5.6f, 0, 13.8f});
    film.Vector(sailor, KeyKind::Rotation, 0, {0, -40, 0});
    film.Animation(sailor, "Idle", 0, 3);
    film.Animation(sailor, "Wave", 3, 5.4f, 1);
    film.Animation(sailor, "Idle", 5.4f, kEpilogueSeconds);
    film.Speech(sailor, "sounds/sailor_hello.wav", "Farewell, harbour!", 3.2f, 5.3f);

    CFilmTrack* shore = film.Camera("From the water");
    film.Point(shore, KeyKind::CameraPosition, 0, {2.4f, 1.3f, 18.6f}, FilmMaker::kSoft);
    film.Point(shore, KeyKind::CameraPosition, kEpilogueSeconds, {-3.5f, 3.4f, 25}, FilmMaker::kSoft);
    film.Point(shore, KeyKind::CameraTarget, 0, {5.4f, 1.25f, 13.6f});
    film.Point(shore, KeyKind::CameraTarget, kEpilogueSeconds, {4.4f, 1.6f, 8}, FilmMaker::kSoft);
    film.Scalar(shore, KeyKind::FieldOfView, 0, 38);
    film.Cut("From the water", 0, kEpilogueSeconds);
    film.Finish();
}

} // namespace

void MakeHarbourFilms(engine::Level& level) {
    Lights lights;
    lights.sun = MakeLight(level, ClassName::GLLight, "SunHelper", SunPlace(-0.42f, 0.62f, 0.66f),
                           {1.0f, 0.93f, 0.82f}, 10.0f);
    lights.lamp = MakeLight(level, ClassName::GLLight, "MovieGLLight", {2.22f, 2.6f, 0.4f},
                            {1.0f, 0.78f, 0.46f}, 11.0f);
    lights.cabin = MakeLight(level, ClassName::DynLight, "MovieDynLight", {8.0f, 0.9f, 8.2f},
                             {1.0f, 0.55f, 0.25f}, 7.0f);
    MakeIntro(level, lights);
    MakeEpilogue(level, lights);
}
