#include "timeline/CommandNotes.h"

#include "framework/UserNote.h"
#include "resources/resource.h"
#include "tests/timeline/CommandFixture.h"

namespace {

/// At the fixture's film, whose actor is "Crate"; nothing is selected.
class CommandNotesTest : public CommandTest {
protected:
    std::string Why(UINT command) { return WhyIdle(command, *control); }
};

} // namespace

TEST_F(CommandNotesTest, WithoutAFilmItIsTheFilmThatIsMissing) {
    plugin.SetCurrentFilm(nullptr);
    for (const UINT id : {IDC_PLAY_MOVIE, IDC_ADD_ACTORS, IDC_ADD_CAMERA, IDC_ADJUST_TIME, IDC_UNDO}) {
        EXPECT_EQ(Why(id), "No film is open.") << id;
    }
    EXPECT_EQ(Why(IDC_SETTINGS), "");
    EXPECT_EQ(Why(IDC_TO_VIRTUAL_OBJECT), "");
}

TEST_F(CommandNotesTest, ActorsComeAndGoByTheSelection) {
    EditorObject* barrel = editor.Create("Barrel");
    EXPECT_EQ(Why(IDC_ADD_ACTORS), "No object is selected.");
    EXPECT_EQ(Why(IDC_REMOVE_ACTORS), "No actor of the film is selected.");
    editor.Select({crate});
    EXPECT_EQ(Why(IDC_ADD_ACTORS), "The selected objects are in the film already.");
    EXPECT_EQ(Why(IDC_REMOVE_ACTORS), "");
    editor.Select({barrel});
    EXPECT_EQ(Why(IDC_ADD_ACTORS), "");
    EXPECT_EQ(Why(IDC_REMOVE_ACTORS), "No actor of the film is selected.");
    editor.Select({crate, barrel});
    EXPECT_EQ(Why(IDC_ADD_ACTORS), "");
    EXPECT_EQ(Why(IDC_REMOVE_ACTORS), "");
    const ObjectList made = {crate};
    boxAnswer = IDYES;
    plugin.ConvertToVirtualObjects(&made);
    editor.Select({plugin.FindObjectByTrack(track)});
    EXPECT_EQ(Why(IDC_REMOVE_ACTORS), "A virtual object stays in its film.");
}

TEST_F(CommandNotesTest, MarksGoByTheFirstSelectedKey) {
    control->ClearSelection();
    EXPECT_EQ(Why(IDC_SELECT_KEY), "No key is selected.");
    EXPECT_EQ(Why(IDC_DESELECT_KEYS), "No key is selected.");
    CTrackCtrl* row = control->FindRowOfKey(track->keys.front());
    ASSERT_NE(row, nullptr);
    control->SelectOnly(row->keys[0]);
    EXPECT_EQ(Why(IDC_SELECT_KEY), "");
    EXPECT_EQ(Why(IDC_DESELECT_KEYS), "No key of this row is marked.");
    row->keys[0]->marked = true;
    EXPECT_EQ(Why(IDC_DESELECT_KEYS), "");
}

TEST_F(CommandNotesTest, PlayingUndoAndCameras) {
    EXPECT_EQ(Why(IDC_STOP_MOVIE), "No film plays.");
    plugin.isPlaying = 1;
    EXPECT_EQ(Why(IDC_STOP_MOVIE), "");
    plugin.isPlaying = 0;
    EXPECT_EQ(Why(IDC_REDO), "The timeline keeps no steps: use the editor's Undo and Redo.");
    EXPECT_EQ(Why(IDC_CREATE_CAMERA_FRAME), "No camera is on show; a click on a camera's name shows it.");
    plugin.SetVisualizedTrack(AddCamera(film, "Main"));
    EXPECT_EQ(Why(IDC_CREATE_CAMERA_FRAME), "");
    plugin.SetVisualizedTrack(nullptr);
}

TEST_F(CommandNotesTest, WhatTheMenuOfARowOrAKeyOffersToEach) {
    CTrackCtrl* row = control->FindRowOfKey(track->keys.front());
    control->menuRow = row;
    control->menuKey = row->keys[0];
    EXPECT_EQ(Why(IDC_TRACK_PARAMETERS), "Only rows of cameras have parameters.");
    EXPECT_EQ(Why(IDC_CALC_KEY_DURATION), "The key has no length of its own.");
    AddCamera(film, "Main");
    control->ShowFilm(film, true);
    control->menuRow = RowOf("Main");
    EXPECT_EQ(Why(IDC_TRACK_PARAMETERS), "");
}

TEST_F(CommandNotesTest, ReasonsAreToldAsNotesAndNothingElseIs) {
    std::vector<std::string> notes;
    SetUserNoteSink([&](const std::string& text) { notes.push_back(text); });
    NoteIfIdle(IDC_STOP_MOVIE, *control);
    NoteIfIdle(IDC_SETTINGS, *control);
    SetUserNoteSink(nullptr);
    EXPECT_THAT(notes, ::testing::ElementsAre("No film plays."));
}
