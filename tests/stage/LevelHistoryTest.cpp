#include "host/stage/host/history/LevelHistory.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelContent.h"
#include "host/stage/host/DryWrite.h"
#include "host/stage/host/LevelSession.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/host/ObjectCopies.h"
#include "plugin/contract/FilmManager.h"
#include "tests/stage/HostFixture.h"

#include <stdexcept>
#include <utility>
#include <vector>

using ::testing::_;

/// A level with two objects, and a film with an actor's track that has two position keys.
class LevelHistoryTest : public HostFixture {
protected:
    LevelHistoryTest() {
        crate = Make("Crate");
        barrel = Make("Barrel");
        films = host.level.Data()->filmManager;
        film = films->GetFilm(films->AllocateFilm());
        film->SetName("Intro");
        film->AddTrack(film->CreateLevelTrack());
        track = film->CreateObjectTrack();
        film->AddTrack(track);
        AsObjectTrack(track)->SetActor(barrel, false);
        AddKey(1.0f, 10.0f);
        AddKey(2.0f, 20.0f);
        history.Start();
    }
    CFilmVectorKey* AddKey(float time, float x) {
        auto* key = static_cast<CFilmVectorKey*>(films->keyFactory->CreateKey(KeyKind::Position));
        key->SetTime(time);
        const float value[3] = {x, 0.0f, 0.0f};
        key->SetValue(value);
        EXPECT_TRUE(track->AddKey(key));
        return key;
    }
    void MoveTo(engine::SceneObject* object, float x) {
        engine::Matrix4 matrix;
        matrix.SetTranslation({x, 0.0f, 0.0f});
        host.level.SetSelection({object});
        commands.Move({{object, matrix}});
    }
    std::uint64_t Content() { return engine::LevelContent(stage::DryWrite(host)); }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const stage::HistoryStep& step : history.Edits().Steps()) {
            names.push_back(step.name);
        }
        return names;
    }
    IFilm* FirstFilm() { return host.level.Data()->filmManager->GetFilm(0); }

    stage::LevelSession session{host};
    stage::ObjectCommands commands{host, session};
    stage::LevelHistory& history = session.History();
    engine::SceneObject* crate = nullptr;
    engine::SceneObject* barrel = nullptr;
    IFilmManager* films = nullptr;
    IFilm* film = nullptr;
    CFilmTrack* track = nullptr;
};

TEST_F(LevelHistoryTest, AMoveIsAStepAndComesBackAndGoesAgain) {
    const std::uint64_t start = Content();
    MoveTo(crate, 300.0f);
    EXPECT_TRUE(history.Note());
    EXPECT_FALSE(history.Note()) << "nothing more";
    EXPECT_EQ(history.Edits().UndoName(), "Move Crate");
    const std::uint64_t moved = Content();
    ASSERT_NE(moved, start);
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(crate->World().m[12], 0.0f);
    EXPECT_EQ(Content(), start);
    EXPECT_EQ(history.Edits().RedoName(), "Move Crate");
    ASSERT_TRUE(history.Redo());
    EXPECT_EQ(crate->World().m[12], 300.0f);
    EXPECT_EQ(Content(), moved);
}

TEST_F(LevelHistoryTest, KeysComeBackInPlaceWhileTheFilmStaysOpen) {
    films->currentFilm = film;
    film->Activate();
    film->SetTime(1.0f, -1.0f);
    EXPECT_FALSE(history.Note());
    const std::uint64_t start = Content();
    auto* key = static_cast<CFilmVectorKey*>(track->keys.front());
    key->SetTime(3.0f);
    EXPECT_TRUE(history.Note());
    EXPECT_EQ(history.Edits().UndoName(), "Edit Intro: 1 key");
    EXPECT_CALL(first, OnEvent(EventCode::Suspend, _)).Times(0);
    EXPECT_CALL(first, OnEvent(EventCode::ObjectSetChanged, _)).Times(::testing::AtLeast(1));
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(Content(), start);
    EXPECT_EQ(key->time, 1.0f) << "the record is the same";
    film->Deactivate();
    films->currentFilm = nullptr;
}

TEST_F(LevelHistoryTest, AKeyThatCameGoesAndOneThatWentComesBack) {
    const std::uint64_t start = Content();
    AddKey(1.5f, 15.0f);
    EXPECT_TRUE(history.Note());
    const std::uint64_t added = Content();
    track->ClearKind(KeyKind::Position);
    EXPECT_TRUE(history.Note());
    const std::uint64_t cleared = Content();
    EXPECT_EQ(Names(), (std::vector<std::string>{"Edit Intro: 1 key", "Edit Intro: 3 keys"}));
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(Content(), added);
    EXPECT_EQ(track->keys.size(), 3u);
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(Content(), start);
    ASSERT_TRUE(history.GoTo(2));
    EXPECT_EQ(Content(), cleared);
    EXPECT_TRUE(track->keys.empty());
}

TEST_F(LevelHistoryTest, DeletedObjectsComeBackWithTheirIdsPlacesChildrenAndRoles) {
    commands.SetParent({crate}, barrel);
    host.level.SetSelection({crate, barrel});
    commands.GroupSelected();
    history.Start();
    const std::uint64_t start = Content();
    const int id = barrel->id;
    host.Select({barrel});
    commands.DeleteSelected();
    EXPECT_TRUE(history.Note());
    EXPECT_EQ(history.Edits().UndoName(), "Delete Barrel");
    const std::uint64_t deleted = Content();
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(Content(), start);
    engine::SceneObject* again = host.level.FindObject(id);
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(host.level.FindObject("Crate")->Parent(), again);
    EXPECT_NE(FirstFilm()->FindObjectTrack(again), nullptr);
    ASSERT_TRUE(history.Redo());
    EXPECT_EQ(Content(), deleted);
    EXPECT_EQ(host.level.FindObject(id), nullptr);
}

TEST_F(LevelHistoryTest, TheOldestStepsFallAwayAtTheLimit) {
    for (const float x : {100.0f, 200.0f, 300.0f, 400.0f, 500.0f}) {
        MoveTo(crate, x);
        ASSERT_TRUE(history.Note());
    }
    const auto& steps = history.Edits().Steps();
    ASSERT_EQ(steps.size(), 5u);
    const std::size_t lastThree = steps[2].Size() + steps[3].Size() + steps[4].Size();
    history.SetLimit(lastThree);
    EXPECT_EQ(steps.size(), 3u);
    EXPECT_EQ(history.Edits().Done(), 3u);
    EXPECT_EQ(history.Edits().Forgotten(), 2u);
    EXPECT_EQ(history.Edits().Size(), lastThree);
    history.SetLimit(lastThree - 1);
    EXPECT_EQ(steps.size(), 2u);
    EXPECT_EQ(history.Edits().Forgotten(), 3u);
    MoveTo(crate, 600.0f);
    ASSERT_TRUE(history.Note());
    EXPECT_LE(history.Edits().Size(), lastThree - 1);
    const std::size_t left = steps.size();
    EXPECT_EQ(history.Edits().Forgotten() + left, 6u);
    for (std::size_t i = 0; i < left; ++i) {
        ASSERT_TRUE(history.Undo());
    }
    EXPECT_EQ(crate->World().m[12], 100.0f * static_cast<float>(6 - left));
    EXPECT_FALSE(history.Undo()) << "further back nothing is known";
    ASSERT_TRUE(history.GoTo(left));
    EXPECT_EQ(crate->World().m[12], 600.0f);
}

TEST_F(LevelHistoryTest, ALowerLimitTakesDoneStepsFirstAndLeavesTheLast) {
    for (const float x : {100.0f, 200.0f, 300.0f, 400.0f}) {
        MoveTo(crate, x);
        ASSERT_TRUE(history.Note());
    }
    const auto& steps = history.Edits().Steps();
    ASSERT_TRUE(history.GoTo(2));
    history.SetLimit(history.Edits().Size() - 1);
    EXPECT_EQ(steps.size(), 3u);
    EXPECT_EQ(history.Edits().Done(), 1u);
    EXPECT_EQ(history.Edits().Forgotten(), 1u);
    history.SetLimit(1);
    EXPECT_EQ(steps.size(), 1u) << "the one that is done next";
    EXPECT_EQ(history.Edits().Done(), 0u);
    EXPECT_EQ(history.Edits().Forgotten(), 2u);
    ASSERT_TRUE(history.Redo());
    EXPECT_EQ(crate->World().m[12], 300.0f);
    MoveTo(crate, 1000.0f);
    ASSERT_TRUE(history.Note());
    ASSERT_TRUE(history.Undo()) << "however large the last step is";
    EXPECT_EQ(crate->World().m[12], 300.0f);
    history.Start();
    EXPECT_EQ(history.Edits().Forgotten(), 0u) << "of this level";
}

TEST_F(LevelHistoryTest, WhatWasSelectedIsSelectedAgain) {
    host.level.SetSelection({crate});
    EXPECT_FALSE(history.Note());
    commands.Rename(*crate, "Box");
    EXPECT_TRUE(history.Note());
    host.level.SetSelection({barrel});
    EXPECT_FALSE(history.Note());
    commands.Rename(*crate, "Case");
    EXPECT_TRUE(history.Note());
    host.level.SetSelection({});
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(host.level.selection, ObjectList{barrel}) << "as in front of the second step";
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(host.level.selection, ObjectList{crate}) << "and of the first";
    ASSERT_TRUE(history.GoTo(2));
    EXPECT_EQ(host.level.selection, ObjectList{barrel}) << "behind the second";
}

TEST_F(LevelHistoryTest, DeletedObjectsAreSelectedWhenTheyComeBack) {
    host.level.SetSelection({crate, barrel});
    EXPECT_FALSE(history.Note());
    const int ids[] = {crate->id, barrel->id};
    commands.DeleteSelected();
    EXPECT_TRUE(history.Note());
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(host.level.selection,
              (ObjectList{host.level.FindObject(ids[0]), host.level.FindObject(ids[1])}));
}

TEST_F(LevelHistoryTest, WhatTheEditorNotesOfAnObjectComesBack) {
    crate->notes.locked = true;
    crate->notes.text = "Stand here";
    ASSERT_TRUE(history.NoteAll());
    ASSERT_TRUE(history.Undo());
    EXPECT_FALSE(crate->notes.locked);
    EXPECT_EQ(crate->notes.text, "");
    ASSERT_TRUE(history.Redo());
    EXPECT_TRUE(crate->notes.locked);
    EXPECT_EQ(crate->notes.text, "Stand here");
}

TEST_F(LevelHistoryTest, BookmarksOfViewsAreNoStepsAndStay) {
    host.level.Data()->bookmarks[3] = {};
    EXPECT_FALSE(history.NoteAll());
    host.level.SetSelection({crate});
    commands.DeleteSelected();
    ASSERT_TRUE(history.Note());
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(host.level.Data()->bookmarks.count(3), 1u);
}

TEST_F(LevelHistoryTest, AFilmThatWentComesBackAndTheOthersStayTheSameObjects) {
    IFilm* other = films->GetFilm(films->AllocateFilm());
    other->SetName("Outro");
    other->AddTrack(other->CreateLevelTrack());
    history.Start();
    const std::uint64_t start = Content();
    films->DeleteFilm(0);
    EXPECT_TRUE(history.Note());
    EXPECT_EQ(history.Edits().UndoName(), "Delete film Intro");
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(Content(), start);
    EXPECT_EQ(films->GetFilm(1), other) << "a plug-in may go back to the film that it has left";
}

TEST_F(LevelHistoryTest, PluginsLeaveTheFilmAndGoBackAroundAChangeOfTheLevel) {
    host.level.SetSelection({crate});
    commands.DeleteSelected();
    history.Note();
    testing::InSequence order;
    EXPECT_CALL(second, OnEvent(_, _)).Times(::testing::AnyNumber());
    EXPECT_CALL(first, OnEvent(EventCode::CollectHiddenObjects, _)).Times(::testing::AnyNumber());
    EXPECT_CALL(first, OnEvent(EventCode::Suspend, _));
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsDeleting, _));
    EXPECT_CALL(first, OnEvent(EventCode::ReleaseRenderResources, _));
    EXPECT_CALL(first, OnEvent(EventCode::LevelLoaded, _));
    EXPECT_CALL(first, OnEvent(EventCode::SelectionChanged, _));
    EXPECT_CALL(first, OnEvent(EventCode::Resume, _));
    EXPECT_CALL(first, OnEvent(EventCode::CollectHiddenObjects, _)).Times(::testing::AnyNumber());
    EXPECT_TRUE(history.Undo());
}

TEST_F(LevelHistoryTest, AnotherEditEndsWhatWasUndone) {
    MoveTo(crate, 300.0f);
    history.Note();
    MoveTo(barrel, 200.0f);
    history.Note();
    ASSERT_TRUE(history.Undo());
    host.level.Rename(crate, "Box");
    EXPECT_TRUE(history.Note());
    EXPECT_EQ(Names(), (std::vector<std::string>{"Move Crate", "Rename Crate to Box"}));
    EXPECT_FALSE(history.Redo());
}

TEST_F(LevelHistoryTest, TurnsOfAWheelBecomeOneStepAndOtherRowsAnother) {
    auto* key = static_cast<CFilmVectorKey*>(track->keys.front());
    const std::uint64_t start = Content();
    for (const float x : {11.0f, 12.0f, 13.0f}) {
        const float value[3] = {x, 0.0f, 0.0f};
        key->SetValue(value);
        history.Note(stage::LevelHistory::Pace::Series);
    }
    EXPECT_EQ(history.Edits().Steps().size(), 1u);
    history.EndSeries();
    const float value[3] = {14.0f, 0.0f, 0.0f};
    key->SetValue(value);
    history.Note(stage::LevelHistory::Pace::Series);
    EXPECT_EQ(history.Edits().Steps().size(), 2u);
    history.Undo();
    EXPECT_EQ(key->value.x, 13.0f);
    history.Undo();
    EXPECT_EQ(key->value.x, 10.0f);
    EXPECT_EQ(Content(), start);
}

TEST_F(LevelHistoryTest, WhatNobodyToldIsFoundBeforeAnUndo) {
    for (int i = 0; i < 100; ++i) {
        AddKey(3.0f + static_cast<float>(i), 0.0f); // too many to be read each time
    }
    history.Start();
    auto* key = static_cast<CFilmVectorKey*>(track->keys.front());
    key->value.x = 77.0f; // the field itself
    EXPECT_FALSE(history.Note());
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(key->value.x, 10.0f);
}

TEST_F(LevelHistoryTest, LateFindingsBelongToTheStepOfTheirGesture) {
    for (int i = 0; i < 100; ++i) {
        AddKey(3.0f + static_cast<float>(i), 0.0f);
    }
    history.Start();
    MoveTo(crate, 5.0f);
    static_cast<CFilmVectorKey*>(track->keys.front())->value.x = 77.0f;
    EXPECT_TRUE(history.Note());
    EXPECT_TRUE(history.NoteAll());
    EXPECT_EQ(history.Edits().Steps().size(), 1u);
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(static_cast<CFilmVectorKey*>(track->keys.front())->value.x, 10.0f);
    EXPECT_EQ(crate->World().m[12], 0.0f);
}

TEST_F(LevelHistoryTest, APlayingFilmIsLeftAlone) {
    MoveTo(crate, 5.0f);
    history.Note();
    films->currentFilm = film;
    film->Activate();
    film->SetTime(0.1f, 0.0f);
    EXPECT_FALSE(history.Undo());
    film->Stop();
    EXPECT_TRUE(history.Undo());
    film->Deactivate();
    films->currentFilm = nullptr;
}

TEST_F(LevelHistoryTest, NamesSayWhatWasDone) {
    const auto name = [this] {
        history.Note();
        return history.Edits().UndoName();
    };
    host.level.SetSelection({crate, barrel});
    commands.Duplicate();
    EXPECT_EQ(name(), "Duplicate Crate1 and 1 other");
    commands.GroupSelected();
    EXPECT_EQ(name(), "Group Crate1 and 1 other");
    commands.UngroupSelected();
    EXPECT_EQ(name(), "Ungroup Crate1 and 1 other");
    commands.SetParent({crate}, barrel);
    EXPECT_EQ(name(), "Attach Crate");
    MoveTo(barrel, 40.0f);
    EXPECT_EQ(name(), "Move Barrel") << "what goes along is not named";
    commands.SetParent({crate}, nullptr);
    EXPECT_EQ(name(), "Set free Crate");
    commands.SetVisible(*crate, false);
    EXPECT_EQ(name(), "Hide Crate");
    film->length = 20.0f;
    EXPECT_EQ(name(), "Length of Intro");
    film->SetName("Start");
    EXPECT_EQ(name(), "Rename film Intro to Start");
    CFilmTrack* camera = film->CreateCameraTrack();
    AsCameraTrack(camera)->cameraName = "Camera 1";
    film->AddTrack(camera);
    EXPECT_EQ(name(), "Add Camera 1 to Start");
    film->RemoveTrack(camera, 1);
    EXPECT_EQ(name(), "Remove Camera 1 from Start");
    commands.SetSun({0.0f, 1.0f, 0.0f}, host.level.Data()->Sun()->light);
    EXPECT_EQ(name(), "Sun");
    const std::size_t steps = history.Edits().Steps().size();
    const std::uint64_t last = Content();
    for (std::size_t i = 0; i < steps; ++i) {
        EXPECT_TRUE(history.Undo()) << i;
    }
    EXPECT_FALSE(history.Undo());
    EXPECT_TRUE(history.GoTo(steps));
    EXPECT_EQ(Content(), last);
}

TEST_F(LevelHistoryTest, LoopsAndLensOfACameraComeBackWhileTheFilmStaysOpen) {
    CFilmTrack* camera = film->CreateCameraTrack();
    film->AddTrack(camera);
    history.Start();
    const std::uint64_t start = Content();
    CFilmCameraTrack& lens = *AsCameraTrack(camera);
    lens.fieldOfView = 35.0f;
    lens.loopMode[2] = LoopMode::PingPong;
    EXPECT_TRUE(history.Note());
    EXPECT_EQ(history.Edits().UndoName(), "Edit Intro");
    const std::uint64_t edited = Content();
    ASSERT_NE(edited, start);
    EXPECT_CALL(first, OnEvent(EventCode::Suspend, _)).Times(0);
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(lens.fieldOfView, 60.0f) << "the track is the same";
    EXPECT_EQ(lens.loopMode[2], LoopMode::None);
    EXPECT_EQ(Content(), start);
    ASSERT_TRUE(history.Redo());
    EXPECT_EQ(lens.fieldOfView, 35.0f);
    EXPECT_EQ(Content(), edited);
}

TEST_F(LevelHistoryTest, ChunksThatNobodyKnowsStayWhereTheLevelIsPutTogetherAnew) {
    engine::LevelData& data = *host.level.Data();
    data.foreignChunks.push_back({0x7A01, 0, "of the level"});
    data.foreignRootChunks.push_back({0x7A02, 0, "of its root"});
    static_cast<engine::FilmManager*>(films)->foreignChunks.push_back({0x7A03, 0, "of the films"});
    static_cast<engine::Film*>(film)->foreignChunks.push_back({0x7A04, 1, "of a film"});
    barrel->foreignChunks.push_back({0x7A05, 1, "of the barrel"});
    history.Start();
    const std::uint64_t start = Content();
    host.Select({crate});
    commands.DeleteSelected();
    EXPECT_TRUE(history.Note());
    const std::uint64_t deleted = Content();
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(Content(), start);
    const auto& ofFilm = static_cast<engine::Film*>(FirstFilm())->foreignChunks;
    ASSERT_EQ(ofFilm.size(), 1u);
    EXPECT_EQ(ofFilm[0].id, 0x7A04);
    EXPECT_EQ(ofFilm[0].place, 1);
    EXPECT_EQ(ofFilm[0].bytes, "of a film");
    const engine::SceneObject* again = host.level.FindObject("Barrel");
    ASSERT_EQ(again->foreignChunks.size(), 1u);
    EXPECT_EQ(again->foreignChunks[0].bytes, "of the barrel");
    ASSERT_EQ(host.level.Data()->foreignChunks.size(), 1u);
    EXPECT_EQ(host.level.Data()->foreignChunks[0].bytes, "of the level");
    ASSERT_EQ(host.level.Data()->foreignRootChunks.size(), 1u);
    EXPECT_EQ(host.level.Data()->foreignRootChunks[0].bytes, "of its root");
    ASSERT_TRUE(history.Redo());
    EXPECT_EQ(Content(), deleted);
}

TEST_F(LevelHistoryTest, APluginThatCannotWriteEndsTheStepsAndTheNextNoteBegins) {
    MoveTo(crate, 5.0f);
    ASSERT_TRUE(history.Note());
    EXPECT_CALL(first, SaveChunks(_, _)).WillOnce([](fs::file&, IHostObject*) -> bool {
        throw std::runtime_error("no");
    });
    MoveTo(crate, 9.0f);
    EXPECT_FALSE(history.NoteAll());
    EXPECT_FALSE(history.Edits().CanUndo()) << "what was read last is not what is there";
    EXPECT_CALL(first, SaveChunks(_, _)).WillRepeatedly(::testing::Return(true));
    EXPECT_FALSE(history.Note()) << "the first look";
    const std::uint64_t start = Content();
    MoveTo(crate, 12.0f);
    EXPECT_TRUE(history.Note());
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(crate->World().m[12], 9.0f);
    EXPECT_EQ(Content(), start);
}

TEST_F(LevelHistoryTest, WhatAPluginChangesInAnswerToAStepIsTakenBackWithIt) {
    const std::uint64_t start = Content();
    MoveTo(crate, 5.0f);
    ASSERT_TRUE(history.Note());
    const int barrelId = barrel->id;
    bool answered = false;
    ON_CALL(first, OnEvent(EventCode::ObjectsChangedOutside, _)).WillByDefault([&](int, void*) {
        if (!std::exchange(answered, true)) {
            engine::Matrix4 matrix;
            matrix.SetTranslation({0.0f, 77.0f, 0.0f});
            host.level.FindObject(barrelId)->SetMatrix(matrix.m, 0);
        }
    });
    ASSERT_TRUE(history.Undo());
    EXPECT_TRUE(answered);
    EXPECT_EQ(Content(), start);
    EXPECT_EQ(host.level.FindObject(barrelId)->World().m[13], 0.0f);
}

TEST_F(LevelHistoryTest, WhatThePartsDontSayIsNamedByWhoDidIt) {
    const auto name = [this] {
        history.Note();
        return history.Edits().UndoName();
    };
    const std::uint64_t start = Content();
    EXPECT_EQ(stage::PasteObjects(host, session, stage::CopyObjects(host.level, {crate, barrel})), 2);
    EXPECT_EQ(name(), "Paste Crate1 and 1 other");
    const std::uint64_t pasted = Content();
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(history.Edits().RedoName(), "Paste Crate1 and 1 other");
    EXPECT_EQ(Content(), start);
    ASSERT_TRUE(history.Redo());
    EXPECT_EQ(history.Edits().UndoName(), "Paste Crate1 and 1 other");
    EXPECT_EQ(Content(), pasted);
    const engine::SceneObject* boat = Make("Boat");
    const engine::SceneObject* sail = Make("Sail");
    history.Tell({stage::Deed::Kind::Import, {boat->id, sail->id}});
    EXPECT_EQ(name(), "Import Boat and 1 other");
    history.Tell({stage::Deed::Kind::Place, {Make("Buoy")->id}});
    EXPECT_EQ(name(), "Place Buoy");
    Make("Net");
    EXPECT_EQ(name(), "Create Net");
}

TEST_F(LevelHistoryTest, ADeedNamesTheStepOfTheNextNoteOnlyAndOnlyIfItFits) {
    const auto name = [this] {
        history.Note();
        return history.Edits().UndoName();
    };
    const auto deed = [](stage::Deed::Kind kind, int id) { return stage::Deed{kind, {id}}; };
    history.Tell(deed(stage::Deed::Kind::Paste, 999));
    EXPECT_FALSE(history.Note()) << "nothing happened";
    Make("Boat");
    EXPECT_EQ(name(), "Create Boat");
    history.Tell(deed(stage::Deed::Kind::Paste, crate->id));
    MoveTo(crate, 5.0f);
    EXPECT_EQ(name(), "Move Crate") << "something else";
    history.Tell(deed(stage::Deed::Kind::Paste, Make("Net")->id));
    Make("Oar");
    EXPECT_EQ(name(), "Create Net and 1 other") << "not all of it";
    history.Tell(deed(stage::Deed::Kind::Paste, Make("Rope")->id));
    history.Tell(deed(stage::Deed::Kind::Import, Make("Sail")->id));
    EXPECT_EQ(name(), "Create Rope and 1 other") << "two kinds";
    history.Tell(deed(stage::Deed::Kind::Paste, Make("Tar")->id));
    history.Tell(deed(stage::Deed::Kind::Paste, Make("Urn")->id));
    EXPECT_EQ(name(), "Paste Tar and 1 other") << "one kind twice";
    history.Tell(deed(stage::Deed::Kind::Paste, 999));
    ASSERT_TRUE(history.Undo());
    ASSERT_TRUE(history.Redo());
    Make("Vat");
    EXPECT_EQ(name(), "Create Vat");
    history.Tell(deed(stage::Deed::Kind::Paste, 999));
    session.New();
    Make("Whale");
    EXPECT_EQ(name(), "Create Whale") << "of another level";
}

TEST_F(LevelHistoryTest, WhatIsPastedAndDeletedWithinOneStepIsNoPaste) {
    stage::PasteObjects(host, session, stage::CopyObjects(host.level, {crate}));
    host.Select({barrel});
    commands.DeleteSelected();
    history.Note();
    EXPECT_EQ(history.Edits().UndoName(), "Delete Barrel");
}

TEST_F(LevelHistoryTest, PastingBesideAPlayingFilmKeepsItsName) {
    films->currentFilm = film;
    film->Activate();
    film->SetTime(0.1f, 0.0f);
    const engine::SceneObject* actor = barrel;
    stage::PasteObjects(host, session, stage::CopyObjects(host.level, {crate}));
    film->SetTime(1.5f, 0.1f);
    EXPECT_NE(actor->World().m[12], 0.0f) << "the film poses it";
    film->Stop();
    EXPECT_TRUE(history.Note());
    EXPECT_EQ(history.Edits().UndoName(), "Paste Crate1");
    EXPECT_TRUE(history.Undo());
    EXPECT_EQ(Count(), 2u);
    film->Deactivate();
    films->currentFilm = nullptr;
}
