#include "tools/SampleLevel.h"
#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelFile.h"
#include "host/engine/mesh/GltfMeshLibrary.h"
#include "host/stage/effects/EffectLibrary.h"
#include "tests/support/Paths.h"
#include "tools/LightChunks.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>

namespace {

const std::string kFolder = SampleFolder() + "/";
const std::string kPath = kFolder + "harbour.level";

std::string CommittedBytes() {
    std::ifstream stream(kPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

class SampleLevelTest : public testing::Test {
protected:
    SampleLevelTest() {
        meshes.SetFolder(kFolder);
        level.SetMeshLibrary(&meshes);
        level.SetChunkClient(&lights);
    }

    void Load() {
        EXPECT_EQ(engine::LoadLevel(level, kPath), engine::LevelMessages());
        lights.SetLevel(level.Data());
        lights.PairWithTracks(level.Data()->Films());
    }

    IFilm& Film(const char* name) {
        IFilm* film = level.Data()->Films().FindFilm(name);
        EXPECT_NE(film, nullptr) << name;
        return *film;
    }

    std::set<int> Kinds(const IFilm& film) const {
        std::set<int> kinds;
        for (const CFilmTrack* track : film.tracks) {
            for (const IFilmKey* key : track->keys) {
                kinds.insert(key->kind);
            }
        }
        return kinds;
    }

    mesh::GltfMeshLibrary meshes;
    LightChunks lights;
    engine::Level level;
};

TEST_F(SampleLevelTest, TheMakerMakesTheCommittedBytes) {
    level.New(kFolder);
    lights.SetLevel(level.Data());
    BuildHarbour(level);
    engine::LevelMessages messages;
    EXPECT_EQ(engine::SerializeLevel(level, kPath, messages), CommittedBytes());
}

TEST_F(SampleLevelTest, SavingALoadedLevelGivesTheSameBytes) {
    level.Views().SetCount(1);
    Load();
    engine::LevelMessages messages;
    EXPECT_EQ(engine::SerializeLevel(level, kPath, messages), CommittedBytes());
}

TEST_F(SampleLevelTest, AllMeshesAreThere) {
    Load();
    std::set<std::string> names;
    for (const auto& object : level.Data()->Objects()) {
        if (!object->IsLight()) {
            EXPECT_NE(object->Mesh(), nullptr) << object->name << ": " << meshes.ErrorOf(object->meshName);
            names.insert(object->meshName);
        }
    }
    EXPECT_GE(names.size(), 20u);
    EXPECT_EQ(level.FindObject("Suitcase")->parent, level.FindObject("Sailor"));
}

TEST_F(SampleLevelTest, FilmLightsComeFromTheirChunk) {
    Load();
    int glLights = 0;
    int dynLights = 0;
    for (const CFilmTrack* track : Film("Intro").tracks) {
        if (const auto* light = AsGLLightTrack(const_cast<CFilmTrack*>(track))) {
            ASSERT_NE(light->lightObject, nullptr);
            EXPECT_EQ(light->lightObject->savedAsObject, 0);
            EXPECT_EQ(light->lightObject->name, light->isSun != 0 ? "SunHelper" : "MovieGLLight");
            ++glLights;
        } else if (const auto* dynamic = AsDynLightTrack(const_cast<CFilmTrack*>(track))) {
            ASSERT_NE(dynamic->lightObject, nullptr);
            EXPECT_EQ(dynamic->lightObject->name, "MovieDynLight");
            ++dynLights;
        }
    }
    EXPECT_EQ(glLights, 2) << "the sun and the lamp";
    EXPECT_EQ(dynLights, 1);
}

TEST_F(SampleLevelTest, ItsLengthsAreCentimetres) {
    level.Views().SetCount(1);
    Load();
    EXPECT_EQ(level.FindObject("Lighthouse")->World().Translation(), (Vector3{-3400, -120, 6200}));
    const engine::View& view = *level.Views().At(0);
    EXPECT_FLOAT_EQ(view.CameraMatrix()[12], 1400.0f);
    EXPECT_FLOAT_EQ(view.camera->data.recordNear, 10.0f);
    EXPECT_FLOAT_EQ(view.camera->data.recordFar, 100000.0f);
    for (CFilmTrack* track : Film("Intro").tracks) {
        if (const auto* camera = AsCameraTrack(track)) {
            EXPECT_FLOAT_EQ(camera->nearPlane, 10.0f);
            EXPECT_FLOAT_EQ(camera->farPlane, 100000.0f);
        } else if (const auto* light = AsGLLightTrack(track)) {
            const auto* object = static_cast<const engine::SceneObject*>(light->lightObject);
            if (light->isSun != 0) {
                EXPECT_NEAR(engine::Length(object->World().Translation()), 1000.0f, 0.01f)
                    << "where the plug-in puts the sun's helper";
            } else {
                EXPECT_FLOAT_EQ(object->light->range, 1100.0f);
                EXPECT_EQ(object->World().Translation(), (Vector3{222, 260, 40}));
            }
        }
    }
    const CFilmTrack* dock = Film("Intro").FindCamera("Along the dock");
    const auto first = [&](int kind) {
        const auto found = std::ranges::find(dock->keys, kind, &IFilmKey::kind);
        return found != dock->keys.end() ? static_cast<const CFilmVectorKey*>(*found)->value : Vector3();
    };
    EXPECT_EQ(first(KeyKind::CameraPosition), (Vector3{490, 135, 720}));
    EXPECT_EQ(first(KeyKind::CameraTarget), (Vector3{0, 10, 0})) << "above a bone";
}

TEST_F(SampleLevelTest, TheIntroUsesTheKindsOfKeys) {
    Load();
    EXPECT_EQ(Film("Intro").length, 24.0f);
    std::set<int> all;
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        all.insert(kind);
    }
    EXPECT_EQ(Kinds(Film("Intro")), all);
}

TEST_F(SampleLevelTest, ItsEffectsHaveFilesOfTheirKind) {
    Load();
    const stage::EffectLibrary library({kFolder + "effects", SourceFolder() + "/host/stage/data/effects"});
    // Kinds 2 to 7 of keys by the codes of effects.
    constexpr int kCodes[] = {1, 2, 3, 5, 6, 4};
    int count = 0;
    for (const CFilmTrack* track : Film("Intro").tracks) {
        for (const IFilmKey* key : track->keys) {
            if (key->kind >= KeyKind::FxSequence && key->kind <= KeyKind::FxFlare) {
                const auto& fx = static_cast<const CFilmFxKey&>(*key);
                stage::EffectKind kind = stage::EffectKind::Sequence;
                ASSERT_TRUE(stage::EffectKindOf(kCodes[key->kind - KeyKind::FxSequence], kind));
                EXPECT_NO_THROW(library.Load(kind, fx.fxName)) << fx.fxName;
                ++count;
            }
        }
    }
    EXPECT_EQ(count, 10) << "eight of the level, two of the sailor";
}

TEST_F(SampleLevelTest, ItsEffectsLieOnTheirObjects) {
    Load();
    for (const CFilmTrack* track : Film("Intro").tracks) {
        for (const IFilmKey* key : track->keys) {
            if (key->kind < KeyKind::FxSequence || key->kind > KeyKind::FxFlare) {
                continue;
            }
            const auto& fx = static_cast<const CFilmFxKey&>(*key);
            const auto* actor = AsObjectTrack(const_cast<CFilmTrack*>(track));
            const EditorObject* object = actor != nullptr ? actor->actor : level.Data()->Find(fx.objectId);
            if (object != nullptr) {
                EXPECT_GE(object->FindMeshElement(fx.linkElement), 0) << fx.fxName;
            } else {
                EXPECT_EQ(fx.objectId, 0) << fx.fxName;
            }
        }
    }
}

TEST_F(SampleLevelTest, TheFilmsShareAnActor) {
    Load();
    const EditorObject* sailor = level.FindObject("Sailor");
    EXPECT_NE(Film("Intro").FindObjectTrack(sailor), nullptr);
    EXPECT_NE(Film("Epilogue").FindObjectTrack(sailor), nullptr);
}

TEST_F(SampleLevelTest, ACameraIsInForceAtEachMoment) {
    Load();
    for (const char* name : {"Intro", "Epilogue"}) {
        IFilm& film = Film(name);
        film.Activate();
        std::set<std::string> seen;
        for (int quarter = 0; static_cast<float>(quarter) * 0.25f < film.length; ++quarter) {
            const float time = static_cast<float>(quarter) * 0.25f;
            film.SetTime(time, -1.0f);
            const CFilmCameraTrack* camera = AsLevelTrack(film.mainTrack)->cameraHolder->activeCamera;
            ASSERT_NE(camera, nullptr) << name << " at " << time;
            seen.insert(camera->cameraName);
        }
        EXPECT_EQ(seen.size(), film.index == 0 ? 5u : 1u);
    }
}

TEST_F(SampleLevelTest, TheSailorWalksAlongTheDockWithHisSuitcase) {
    Load();
    IFilm& film = Film("Intro");
    film.Activate();
    const engine::SceneObject* sailor = level.FindObject("Sailor");
    const engine::SceneObject* suitcase = level.FindObject("Suitcase");
    film.SetTime(3.6f, -1.0f);
    EXPECT_NEAR(sailor->World().Translation().z, 1620.0f, 1e-2f);
    film.SetTime(10.0f, -1.0f);
    // Evenly from z = 1620 at 3.6 s to 340 at 12.7 s.
    const float expected = 1620.0f - (1620.0f - 340.0f) * (10.0f - 3.6f) / (12.7f - 3.6f);
    EXPECT_NEAR(sailor->World().Translation().z, expected, 0.1f);
    const Vector3 hand = sailor->ElementWorld("prop").Translation();
    const Vector3 held = suitcase->World().Translation();
    EXPECT_NEAR(held.x, hand.x, 5.0f);
    EXPECT_NEAR(held.y, hand.y, 5.0f);
    EXPECT_NEAR(held.z, hand.z, 5.0f);
}

TEST_F(SampleLevelTest, TheSunGoesDown) {
    Load();
    IFilm& film = Film("Intro");
    film.Activate();
    film.SetTime(0.0f, -1.0f);
    const Vector3 early = engine::Normalized(level.Data()->Sun()->direction, {});
    film.SetTime(24.0f, -1.0f);
    const Vector3 late = engine::Normalized(level.Data()->Sun()->direction, {});
    EXPECT_GT(early.y, 0.6f);
    EXPECT_LT(late.y, 0.25f);
    EXPECT_LT(level.Data()->Sun()->light.color.z, 0.5f);
}

TEST_F(SampleLevelTest, CutShortLightChunksLoseNothingElse) {
    // Every prefix of the file either loads or is refused; none crashes.
    const std::string whole = CommittedBytes();
    for (std::size_t size = 0; size < whole.size(); size += 509) {
        try {
            engine::InstallLevel(level, engine::ParseLevel(level, kPath, whole.substr(0, size)));
            lights.PairWithTracks(level.Data()->Films());
        } catch (const engine::LevelFileError& error) {
            EXPECT_NE(std::string(error.what()), "");
        }
    }
    Load();
    EXPECT_GT(level.Data()->Objects().size(), 40u);
}

} // namespace
