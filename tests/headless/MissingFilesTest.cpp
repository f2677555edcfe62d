#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "plugin/contract/Film.h"
#include "tests/headless/HeadlessFixture.h"

namespace HeadlessExit = headless::HeadlessExit;

namespace {

/// The sample with one more object whose model is missing, and a row of it with keys of missing files.
class LackingHost : public SampleHost {
public:
    engine::LevelMessages Open(const std::string& path) override {
        engine::LevelMessages messages = SampleHost::Open(path);
        engine::LevelData& data = *Level().Data();
        engine::SceneObject& ghost = data.AddLoaded(0);
        ghost.name = "Ghost";
        ghost.SetMeshName("models/ghost.glb");
        IFilm& film = *data.Films().FindFilm("Intro");
        auto* row = AsObjectTrack(film.CreateObjectTrack());
        film.AddTrack(row);
        row->SetActor(Level().FindObject("Sailor"), false);
        AddKey(*row, KeyKind::Sound, "sounds/none.wav");
        AddKey(*row, KeyKind::Sound, "sounds/none.wav");
        AddKey(*row, KeyKind::Speech, "sounds/unsaid.wav");
        auto* animation = static_cast<CFilmAnimationKey*>(AddKey(*row, KeyKind::Animation, ""));
        animation->animationName = "Somersault";
        return messages;
    }

private:
    IFilmKey* AddKey(CFilmTrack& row, int kind, const std::string& value) {
        IFilmKey* key = Level().Data()->Films().keyFactory->CreateKey(kind);
        key->SetTime(10.0f); // behind what the tests render
        key->SetValue(&value);
        row.AddKey(key);
        return key;
    }
};

class MissingFilesTest : public HeadlessTest {
protected:
    void ExpectTold(const std::string& sentence) const {
        const std::size_t first = told.find(sentence);
        EXPECT_NE(first, std::string::npos) << sentence << " in\n" << told;
        EXPECT_EQ(told.find(sentence, first + 1), std::string::npos) << sentence << " twice in\n" << told;
    }

    std::vector<std::string> Strict() const {
        std::vector<std::string> arguments = Arguments("out", "0:0");
        arguments.emplace_back("--strict");
        return arguments;
    }
};

TEST_F(MissingFilesTest, ModelsSoundsSpeechAndAnimationsAreToldOnceEachAndTheFilmIsWritten) {
    LackingHost host;
    EXPECT_EQ(Run(Arguments("out", "0:0"), host), HeadlessExit::kDone);
    ExpectTold("object \"Ghost\" has no model: ");
    ExpectTold("sounds/none.wav can't be played");
    ExpectTold("sounds/unsaid.wav can't be played");
    ExpectTold("object \"Sailor\" has no animation \"Somersault\"");
    EXPECT_TRUE(std::filesystem::exists(folder / "out/frame_0000.png"));
}

TEST_F(MissingFilesTest, StrictlyNothingIsWritten) {
    LackingHost host;
    EXPECT_EQ(Run(Strict(), host), HeadlessExit::kOutput);
    ExpectTold("nothing was written, since --strict allows nothing to be missing");
    EXPECT_FALSE(std::filesystem::exists(folder / "out"));
    EXPECT_EQ(host.begun, 0);
}

TEST_F(MissingFilesTest, AWholeLevelIsWrittenStrictly) {
    SampleHost host;
    EXPECT_EQ(Run(Strict(), host), HeadlessExit::kDone) << told;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/frame_0000.png"));
}

TEST_F(MissingFilesTest, WhatTheLevelOrItsHostLostCountsStrictly) {
    class Lossy : public SampleHost {
    public:
        engine::LevelMessages Open(const std::string& path) override {
            SampleHost::Open(path);
            return std::exchange(lost, {});
        }
        std::vector<std::string> TakeTroubles() override { return std::exchange(troubles, {}); }

        std::vector<std::string> lost;
        std::vector<std::string> troubles;
    } host;
    host.lost = {"a key is left out"};
    EXPECT_EQ(Run(Strict(), host), HeadlessExit::kOutput);
    ExpectTold("a key is left out");
    host.troubles = {"a plug-in is missing"};
    EXPECT_EQ(Run(Strict(), host), HeadlessExit::kOutput);
    ExpectTold("a plug-in is missing");
    EXPECT_EQ(Run(Strict(), host), HeadlessExit::kDone) << told;
}

} // namespace
