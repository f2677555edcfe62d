// How long what was edited out lives: beside the main control, its films and the level.
#include "host/engine/FilmManager.h"
#include "keys/views/NullTimeTrackKey.h"
#include "tests/timeline/ControlFixture.h"
#include "undo/KeyActions.h"

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class UndoLifeTest : public ControlTest {
protected:
    UndoLifeTest() {
        film = OpenFilmWithActors(1);
        recordsBefore = Records();
        root = RowOf("Actor100");
        row = RowOf("Actor100", KeyKind::Position);
        key = row->keys.front();
        // The user deletes a key: it is out of row and track, and its action holds it.
        row->RemoveKey(key, /*destroy*/ false, /*redraw*/ true, /*noUndo*/ true);
        auto* removal = static_cast<CFUADeleteKey*>(control->undoMgr.CreateAction(UndoCode::DeleteKey));
        removal->SetKey(key);
        removal->SetTrackCtrl(row);
        control->undoMgr.Add(removal);
        // What still points to it.
        control->hoverKey = control->activeKey = control->menuKey = key;
        CurrentKey() = key;
    }
    std::size_t Records() { return static_cast<engine::FilmManager&>(Films()).Keys().Count(); }
    void ExpectGone() {
        EXPECT_THAT(control->undoMgr.retired.Actions(), IsEmpty());
        EXPECT_EQ(control->undoMgr.position, -1);
        EXPECT_EQ(Records(), recordsBefore - 1);
        ExpectNothingDangles();
    }

    IFilm* film = nullptr;
    std::size_t recordsBefore = 0;
    CTrackCtrl* root = nullptr;
    CTrackCtrl* row = nullptr;
    CTrackKey* key = nullptr;
};

} // namespace

TEST_F(UndoLifeTest, ADeletedKeyStaysAliveInItsAction) {
    EXPECT_THAT(control->undoMgr.retired.Actions(), SizeIs(1));
    EXPECT_EQ(Records(), recordsBefore);
    EXPECT_EQ(CurrentKey(), key);
    EXPECT_EQ(key->record->track, nullptr);
}

TEST_F(UndoLifeTest, ItGoesWhenTheFilmIsShownAnew) {
    control->ShowFilm(film, true);
    ExpectGone();
}

TEST_F(UndoLifeTest, ItGoesWhenAnotherFilmIsShown) {
    plugin.SetCurrentFilm(NewFilm());
    EXPECT_THAT(control->undoMgr.retired.Actions(), IsEmpty());
    ExpectNothingDangles();
}

TEST_F(UndoLifeTest, ItGoesWhenNoFilmIsShown) {
    control->ShowFilm(nullptr, true);
    ExpectGone();
}

TEST_F(UndoLifeTest, ItGoesAtANewLevel) {
    plugin.OnNew();
    ExpectGone();
}

TEST_F(UndoLifeTest, ItGoesWhenALevelWasLoaded) {
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    ExpectGone();
}

TEST_F(UndoLifeTest, TheNextLevelFindsNothingOfTheLast) {
    plugin.OnNew();
    editor.level.New("");
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    EXPECT_EQ(Records(), 0U);
    OpenFilmWithActors(1);
    ExpectNothingDangles();
}

TEST_F(UndoLifeTest, ALevelThatIsGoneAlreadyTakesTheRecordAlong) {
    plugin.SetCurrentFilm(nullptr); // no row looks at the level
    EXPECT_THAT(control->undoMgr.retired.Actions(), IsEmpty());
    CTrackKey* view = new CNullTimeTrackKey;
    view->SetRecord(Films().keyFactory->CreateKey(KeyKind::Position), /*takeTimes*/ false);
    control->undoMgr.retired.KeepView(view);
    editor.level.Close();
    control->ClearUndo();
    EXPECT_THAT(control->undoMgr.retired.Views(), IsEmpty());
}

TEST_F(UndoLifeTest, ItGoesWithTheMainControl) {
    control.reset();
    holder.control = nullptr;
    EXPECT_EQ(Records(), recordsBefore - 1);
    EXPECT_EQ(CurrentKey(), nullptr);
}

TEST_F(UndoLifeTest, AKeyThatCameBackToItsRowStaysInTheFilm) {
    // The view is in its row and in the action: the row deletes it.
    ASSERT_TRUE(row->AddKeyView(key, /*redraw*/ false, /*existing*/ false, /*noUndo*/ true));
    IFilmKey* record = key->record;
    control->ShowFilm(film, true);
    EXPECT_EQ(Records(), recordsBefore);
    row = RowOf("Actor100", KeyKind::Position);
    EXPECT_EQ(row->keys.front()->record, record); // the key isn't lost
    ExpectNothingDangles();
}

TEST_F(UndoLifeTest, AManyTimesEditedFilmIsLeftInOneGo) {
    constexpr int kEdits = 20000;
    for (int i = 0; i < kEdits; ++i) {
        CTrackKey* view = new CNullTimeTrackKey;
        view->SetRecord(Films().keyFactory->CreateKey(KeyKind::Position), /*takeTimes*/ false);
        auto* removal = static_cast<CFUADeleteKey*>(control->undoMgr.CreateAction(UndoCode::DeleteKey));
        removal->SetKey(view);
        removal->SetTrackCtrl(row);
        control->undoMgr.Add(removal);
    }
    EXPECT_EQ(Records(), recordsBefore + kEdits);
    control->ShowFilm(film, true);
    ExpectGone();
}
