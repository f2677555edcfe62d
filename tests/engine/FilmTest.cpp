#include "host/engine/LevelTrack.h"
#include "tests/engine/EngineFixture.h"

#include <cstring>
#include <list>

namespace engine_test {

class FilmTest : public EngineTest {
protected:
    std::vector<std::string> Fired() {
        std::vector<std::string> events;
        events.swap(sink.events);
        return events;
    }
    CFilmCameraKey& AddCut(float time, float end, const std::string& camera, int priority = 0) {
        auto& key = Add<CFilmCameraKey>(*film->mainTrack, KeyKind::Camera, time, end);
        key.cameraName = camera;
        key.priority = priority;
        return key;
    }
    const CFilmCameraTrack* Active() const {
        return AsLevelTrack(film->mainTrack)->cameraHolder->activeCamera;
    }
};

using Events = std::vector<std::string>;

TEST_F(FilmTest, ManagerHandsOut200SlotsAndThenNone) {
    for (int i = 1; i < IFilmManager::kFilms; ++i) {
        EXPECT_EQ(Films().AllocateFilm(), i);
        EXPECT_EQ(Films().GetFilm(i), Films().films[i]);
        EXPECT_EQ(Films().GetFilm(i)->index, i);
    }
    EXPECT_EQ(Films().AllocateFilm(), -1);
    Films().DeleteFilm(57);
    EXPECT_EQ(Films().films[57], nullptr);
    EXPECT_EQ(Films().GetFilm(57), nullptr);
    EXPECT_EQ(Films().AllocateFilm(), 57);
}

TEST_F(FilmTest, ManagerAnswersNullOutsideItsSlots) {
    EXPECT_EQ(Films().GetFilm(-1), nullptr);
    EXPECT_EQ(Films().GetFilm(200), nullptr);
    Films().DeleteFilm(-1);
    Films().DeleteFilm(200);
    Films().DeleteFilm(150);
}

TEST_F(FilmTest, DeletingTheCurrentFilmClearsThePointer) {
    Films().currentFilm = film;
    Films().DeleteFilm(film->index);
    EXPECT_EQ(Films().currentFilm, nullptr);
}

TEST_F(FilmTest, NewFilmHasTenSecondsAndNoTracks) {
    const IFilm& made = *Films().GetFilm(Films().AllocateFilm());
    EXPECT_EQ(made.length, 10.0f);
    EXPECT_EQ(made.validated, 0);
    EXPECT_TRUE(made.tracks.empty());
    EXPECT_EQ(made.mainTrack, nullptr);
    EXPECT_STREQ(made.name, "");
}

TEST_F(FilmTest, NewFilmNameIsOneThatNoFilmHas) {
    MakeFilm("Film 1");
    MakeFilm("Film 3");
    const std::unique_ptr<char[]> name(Films().NewFilmName());
    EXPECT_STREQ(name.get(), "Film 2");
}

TEST_F(FilmTest, SetNameCopiesTheText) {
    char text[] = "Intro";
    film->SetName(text);
    text[0] = 'X';
    EXPECT_STREQ(film->name, "Intro");
    film->SetName(nullptr);
    EXPECT_STREQ(film->name, "");
}

TEST_F(FilmTest, FirstLevelTrackBecomesTheMainTrack) {
    CFilmTrack* first = film->mainTrack;
    CFilmTrack& second = AddTrack(film->CreateLevelTrack());
    EXPECT_EQ(film->mainTrack, first);
    EXPECT_EQ(second.film, film);
    film->AddTrack(nullptr);
    film->AddTrack(&second);
    EXPECT_EQ(film->tracks.size(), 2u);
    film->RemoveTrack(&second, 1);
    EXPECT_EQ(film->tracks.size(), 1u);
}

TEST_F(FilmTest, MainTrackCannotBeRemoved) {
    CFilmTrack* main = film->mainTrack;
    ASSERT_NE(main, nullptr);
    film->RemoveTrack(main, 1);
    EXPECT_EQ(film->mainTrack, main);
    EXPECT_EQ(film->tracks, std::list<CFilmTrack*>{main});
}

TEST_F(FilmTest, RemoveTrackDestroysItsKeysAndLetsForeignTracksBe) {
    const std::size_t before = Films().Keys().Count();
    CFilmObjectTrack& track = AddActor(MakeObject("Box"));
    AddVector(track, KeyKind::Position, 0.0f, {});
    engine::Film& other = MakeFilm("Other");
    other.RemoveTrack(&track, 1);
    other.RemoveTrack(nullptr, 1);
    EXPECT_EQ(Films().Keys().Count(), before + 1);
    film->RemoveTrack(&track, 1);
    EXPECT_EQ(Films().Keys().Count(), before);
    EXPECT_EQ(film->tracks.size(), 1u);
}

TEST_F(FilmTest, TracksNotAddedBelongToTheCaller) {
    const std::unique_ptr<CFilmTrack> track(film->CreateObjectTrack());
    AddVector(*track, KeyKind::Position, 0.0f, {});
    EXPECT_EQ(track->film, nullptr);
    EXPECT_EQ(film->CreateTrack(1), nullptr);
}

TEST_F(FilmTest, FindObjectTrackKnowsActorsOnly) {
    engine::SceneObject& box = MakeObject("Box");
    CFilmObjectTrack& track = AddActor(box);
    EXPECT_EQ(film->FindObjectTrack(&box), &track);
    EXPECT_EQ(film->FindObjectTrack(&MakeObject("Other")), nullptr);
    EXPECT_EQ(film->FindObjectTrack(nullptr), nullptr);
}

TEST_F(FilmTest, CameraNamesAreFoundAndFreshOnesMade) {
    CFilmCameraTrack& camera = AddCamera("Camera 1");
    EXPECT_EQ(film->FindCamera("Camera 1"), &camera);
    EXPECT_EQ(film->FindCamera("camera 1"), nullptr);
    std::string name;
    film->NewCameraName(name);
    EXPECT_EQ(name, "Camera 2");
}

TEST_F(FilmTest, CutsGoByPriorityAndEndBeforeTheirEnd) {
    const CFilmCameraTrack& a = AddCamera("A");
    const CFilmCameraTrack& b = AddCamera("B");
    AddCut(0.0f, 4.0f, "A", 1);
    AddCut(2.0f, 6.0f, "B", 0);
    film->SetTime(0.0f, -1.0f);
    EXPECT_EQ(Active(), &a);
    film->SetTime(2.0f, -1.0f);
    EXPECT_EQ(Active(), &b);
    film->SetTime(5.999f, -1.0f);
    EXPECT_EQ(Active(), &b);
    film->SetTime(6.0f, -1.0f);
    EXPECT_EQ(Active(), nullptr);
}

TEST_F(FilmTest, OfEqualPrioritiesTheFirstOfTheListWins) {
    AddCamera("A");
    const CFilmCameraTrack& b = AddCamera("B");
    AddCut(2.0f, 6.0f, "B", 5); // first in the list, later in time
    AddCut(0.0f, 6.0f, "A", 5);
    film->SetTime(3.0f, -1.0f);
    EXPECT_EQ(Active(), &b);
}

TEST_F(FilmTest, PrioritiesFrom2000AndUnknownCamerasShowNothing) {
    AddCamera("A");
    AddCut(0.0f, 4.0f, "A", 2000);
    film->SetTime(1.0f, -1.0f);
    EXPECT_EQ(Active(), nullptr);
    AddCut(0.0f, 4.0f, "Nobody", 1999);
    film->SetTime(1.0f, -1.0f);
    EXPECT_EQ(Active(), nullptr);
}

TEST_F(FilmTest, RemovedCameraIsNoLongerInForce) {
    CFilmCameraTrack& a = AddCamera("A");
    AddCut(0.0f, 4.0f, "A");
    film->SetTime(1.0f, -1.0f);
    film->RemoveTrack(&a, 1);
    EXPECT_EQ(Active(), nullptr);
    film->SetTime(1.0f, -1.0f);
    EXPECT_EQ(Active(), nullptr);
}

TEST_F(FilmTest, KeysFireOnceWhenTheirStartIsPassed) {
    Add<CFilmSoundKey>(*film->mainTrack, KeyKind::Sound, 1.0f, 3.0f);
    film->SetTime(0.5f, -1.0f);
    EXPECT_EQ(Fired(), Events{});
    film->SetTime(1.0f, 0.5f);
    EXPECT_EQ(Fired(), (Events{"9@1+0"}));
    film->SetTime(1.5f, 1.0f);
    EXPECT_EQ(Fired(), Events{});
}

TEST_F(FilmTest, LateKeysTellHowLate) {
    Add<CFilmFxKey>(*film->mainTrack, KeyKind::FxRain, 1.0f);
    film->SetTime(1.75f, 0.5f);
    EXPECT_EQ(Fired(), (Events{"5@1+0.75"}));
}

TEST_F(FilmTest, SeeksAndStepsBackFireNothing) {
    Add<CFilmSoundKey>(*film->mainTrack, KeyKind::Sound, 1.0f);
    film->SetTime(5.0f, -1.0f);
    film->SetTime(0.5f, 5.0f);
    EXPECT_EQ(Fired(), Events{});
}

TEST_F(FilmTest, StartOfTheFilmCountsAsPassedByTheFirstStepFromIt) {
    // Required here: music that starts with the film would never be heard otherwise.
    Add<CFilmSoundKey>(*film->mainTrack, KeyKind::Sound, 0.0f);
    film->SetTime(0.0f, -1.0f);
    film->SetTime(0.0f, 0.0f);
    EXPECT_EQ(Fired(), (Events{"9@0+0"}));
    film->SetTime(0.5f, 0.0f); // the clock may show time 0 twice
    EXPECT_EQ(Fired(), Events{});
    film->Stop();
    EXPECT_EQ(Fired(), (Events{"stop"}));
    film->SetTime(0.25f, 0.0f);
    EXPECT_EQ(Fired(), (Events{"9@0+0.25"}));
}

TEST_F(FilmTest, OnlyKindsWithAnEffectFire) {
    CFilmObjectTrack& track = AddActor(MakeObject("Box"));
    for (const int kind : {1, 2, 3, 4, 7, 8, 9, 10, 11, 12, 13, 15}) {
        Add<IFilmKey>(track, kind, 1.0f);
    }
    film->SetTime(2.0f, 0.5f);
    EXPECT_EQ(Fired(), (Events{"2@1+1", "3@1+1", "4@1+1", "7@1+1", "8@1+1", "9@1+1", "13@1+1"}));
}

TEST_F(FilmTest, ScriptKeysForTheEndFireAtStopAfterAPlaying) {
    auto& java = Add<CFilmJavaKey>(*film->mainTrack, KeyKind::JavaMethod, 1.0f);
    java.callAfterStop = 1;
    film->Stop(); // nothing was played
    EXPECT_EQ(Fired(), (Events{"stop"}));
    film->SetTime(2.0f, 0.5f);
    EXPECT_EQ(Fired(), Events{});
    film->Stop();
    EXPECT_EQ(Fired(), (Events{"13@1+0", "stop"}));
    film->Stop();
    EXPECT_EQ(Fired(), (Events{"stop"}));
}

TEST_F(FilmTest, ApplyAtOfOneTrackFiresItsOwnKeys) {
    CFilmObjectTrack& track = AddActor(MakeObject("Box"));
    Add<CFilmSoundKey>(track, KeyKind::Sound, 1.0f);
    track.ApplyAt(2.0f, -1.0f, 0);
    EXPECT_EQ(Fired(), Events{});
    track.ApplyAt(2.0f, 0.5f, 0);
    EXPECT_EQ(Fired(), (Events{"9@1+1"}));
}

TEST_F(FilmTest, PlaysWithoutASink) {
    level.SetFilmSink(nullptr);
    Add<CFilmSoundKey>(*film->mainTrack, KeyKind::Sound, 1.0f);
    film->SetTime(2.0f, 0.5f);
    film->Stop();
    EXPECT_EQ(Fired(), Events{});
}

TEST_F(FilmTest, BlackBarsFollowTheLevelTracksFlags) {
    auto& on = Add<CFilmFlagsKey>(*film->mainTrack, KeyKind::Flags, 1.0f);
    on.keyFlags = 1;
    Add<CFilmFlagsKey>(*film->mainTrack, KeyKind::Flags, 2.0f);
    const auto& track = static_cast<engine::LevelTrack&>(*AsLevelTrack(film->mainTrack));
    const auto barsAt = [&](float time) {
        film->SetTime(time, -1.0f);
        return track.BlackBars();
    };
    EXPECT_FALSE(barsAt(0.5f));
    EXPECT_TRUE(barsAt(1.0f));
    EXPECT_FALSE(barsAt(2.5f));
}

TEST_F(FilmTest, DeletedObjectsAreForgottenByAllFilms) {
    engine::SceneObject& box = MakeObject("Box");
    engine::SceneObject& base = MakeObject("Base");
    CFilmObjectTrack& track = AddActor(box);
    track.SetParent(&base, false, "hand");
    engine::Film& second = MakeFilm("Second");
    CFilmObjectTrack& other = AddActor(box, &second);
    CFilmCameraTrack& camera = AddCamera("A");
    auto& eye = Add<CFilmLinkedKey>(camera, KeyKind::CameraPosition, 0.0f);
    eye.SetLinkObject(&box);
    auto& fx = Add<CFilmFxKey>(*film->mainTrack, KeyKind::FxTrace, 0.0f);
    fx.objectId = box.id;
    CFilmDynLightTrack& light = *AsDynLightTrack(&AddTrack(film->CreateDynLightTrack()));
    light.lightObject = &base;

    level.DeleteObject(&box);
    EXPECT_EQ(track.actor, nullptr);
    EXPECT_EQ(other.actor, nullptr);
    EXPECT_EQ(eye.linkObject, nullptr);
    EXPECT_EQ(eye.linkObjectId, 0);
    EXPECT_EQ(fx.objectId, 0);
    EXPECT_EQ(track.parentObject, &base);
    level.DeleteObject(&base);
    EXPECT_EQ(track.parentObject, nullptr);
    EXPECT_EQ(track.parentElement, "");
    EXPECT_EQ(light.lightObject, nullptr);
    film->SetTime(1.0f, 0.0f); // nothing left to pose
}

TEST_F(FilmTest, ReleaseVirtualObjectsClearsTheMarkInAllFilms) {
    engine::SceneObject& box = MakeObject("Box");
    auto& track = static_cast<engine::ObjectTrack&>(AddActor(box));
    track.SetActor(&box, true);
    auto& other = static_cast<engine::ObjectTrack&>(AddActor(MakeObject("Other")));
    other.SetActor(other.actor, true);
    Films().ReleaseVirtualObjects({&box}, 0);
    EXPECT_FALSE(track.actorIsVirtual);
    EXPECT_EQ(track.actor, &box);
    EXPECT_TRUE(other.actorIsVirtual);
}

TEST_F(FilmTest, ManagerIsOfItsClassAndHasAnInfo) {
    EXPECT_TRUE(Films().IsA(ClassId::FilmManager));
    EXPECT_FALSE(Films().IsA(ClassId::LevelObject));
    EXPECT_NE(Films().GetInfo(), nullptr);
    EXPECT_EQ(Films().currentFilm, nullptr);
}

TEST_F(FilmTest, KeysAtTheStartFireOnceThoughPaintsPoseTheFilmInBetween) {
    for (int i = 0; i < 3; ++i) {
        Add<CFilmSoundKey>(*film->mainTrack, KeyKind::Sound, 0.0f);
    }
    film->SetTime(0.0f, -1.0f);
    for (int step = 0; step < 3; ++step) { // the clock stands still at first
        film->SetTime(0.0f, 0.0f);
        film->SetTime(0.0f, -1.0f); // a view is painted
    }
    film->SetTime(0.5f, -1.0f); // one is painted before the step to its time
    film->SetTime(0.5f, 0.0f);
    EXPECT_EQ(Fired(), (Events{"9@0+0", "9@0+0", "9@0+0"}));
}

TEST_F(FilmTest, AJumpBackToTheStartInMidPlayFiresTheStartAnew) {
    Add<CFilmSoundKey>(*film->mainTrack, KeyKind::Sound, 0.0f);
    film->SetTime(0.0f, -1.0f);
    film->SetTime(1.0f, 0.0f);
    film->SetTime(0.0f, -1.0f);
    film->SetTime(0.0f, -1.0f); // a view is painted
    film->SetTime(0.25f, 0.0f);
    EXPECT_EQ(Fired(), (Events{"9@0+1", "9@0+0.25"}));
}

TEST_F(FilmTest, AFilmThatIsNotActiveFiresNothing) {
    Add<CFilmSoundKey>(*film->mainTrack, KeyKind::Sound, 1.0f);
    film->Deactivate();
    film->SetTime(2.0f, 0.0f);
    film->mainTrack->ApplyAt(2.0f, 0.0f, 0);
    EXPECT_EQ(Fired(), Events{});
}

} // namespace engine_test
