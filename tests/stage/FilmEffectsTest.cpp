#include "host/stage/windows/FilmEffects.h"

#include <gtest/gtest.h>

class FilmEffectsTest : public ::testing::Test {
protected:
    FilmEffectsTest() {
        level.SetFilmSink(&effects);
        level.New("");
        IFilmManager* films = level.Data()->filmManager;
        film = films->GetFilm(films->AllocateFilm());
        film->SetName("Intro");
        film->AddTrack(film->CreateLevelTrack());
        film->Activate();
    }
    template <class Key> Key* AddKey(int kind, float time) {
        return AddKey<Key>(*film->mainTrack, kind, time);
    }
    template <class Key> Key* AddKey(CFilmTrack& track, int kind, float time) {
        IFilmKey* key = level.Data()->filmManager->keyFactory->CreateKey(kind);
        key->SetTime(time);
        EXPECT_TRUE(track.AddKey(key));
        track.NotifyKeysChanged(kind);
        return static_cast<Key*>(key);
    }

    std::vector<std::string> told;
    engine::Level level;
    stage::FilmEffects effects{level, [this](const std::string& text) { told.push_back(text); }};
    IFilm* film = nullptr;
};

TEST_F(FilmEffectsTest, EffectsAreToldInWordsWhenTheFilmPassesThem) {
    AddKey<CFilmFxKey>(KeyKind::FxRain, 1.0f)->fxName = "Drizzle";
    film->SetTime(0.5f, 0.0f);
    EXPECT_TRUE(told.empty());
    film->SetTime(1.5f, 0.5f);
    EXPECT_EQ(told, (std::vector<std::string>{"Intro: effect Drizzle"}));
}

TEST_F(FilmEffectsTest, SpeechIsShownAsText) {
    CFilmObjectTrack* actor = AsObjectTrack(film->CreateObjectTrack());
    film->AddTrack(actor);
    actor->SetActor(level.CreateObject({ClassName::Mesh, "Sailor", "", {}, nullptr, true}), false);
    AddKey<CFilmSpeechKey>(*actor, KeyKind::Speech, 1.0f)->speechText = "Ahoy";
    film->SetTime(1.5f, 0.5f);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_NE(told[0].find("Ahoy"), std::string::npos);
}

TEST_F(FilmEffectsTest, ScriptsThatWaitForTheEndAreToldAtTheStop) {
    auto* key = AddKey<CFilmJavaKey>(KeyKind::JavaMethod, 1.0f);
    key->methodName = "openGate";
    key->callAfterStop = 1;
    film->SetTime(1.5f, 0.5f);
    EXPECT_TRUE(told.empty());
    film->Stop();
    EXPECT_EQ(told, (std::vector<std::string>{"Intro: script openGate"}));
}

TEST_F(FilmEffectsTest, ASoundThatCantBePlayedIsToldOnce) {
    AddKey<CFilmSoundKey>(KeyKind::Sound, 1.0f)->wavPath = "missing.wav";
    AddKey<CFilmSoundKey>(KeyKind::Sound, 3.0f)->wavPath = "missing.wav";
    film->SetTime(1.5f, 0.5f);
    film->SetTime(3.5f, 1.5f);
    EXPECT_EQ(told.size(), 1u);
}

TEST_F(FilmEffectsTest, ASeekTellsNothing) {
    AddKey<CFilmFxKey>(KeyKind::FxRain, 1.0f)->fxName = "Drizzle";
    film->SetTime(1.5f, -1.0f);
    EXPECT_TRUE(told.empty());
}
