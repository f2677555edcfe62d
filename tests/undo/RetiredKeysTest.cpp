#include "undo/RetiredKeys.h"

#include "tests/support/RetiredRecords.h"
#include "tests/undo/UndoFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class RetiredKeysTest : public UndoTest {
protected:
    RetiredKeysTest() : recordsBefore(RecordCount()) {}

    std::size_t recordsBefore;
    RetiredKeys retired{&timeline};
};

} // namespace

TEST_F(RetiredKeysTest, ClearDestroysViewsAndRecords) {
    CTrackKey* view = NewView(KeyKind::Sound, 2.0f);
    retired.KeepView(view);
    retired.KeepRecord(Films().keyFactory->CreateKey(KeyKind::Position));
    retired.KeepView(nullptr);
    retired.KeepRecord(nullptr);
    retired.KeepAction(nullptr);
    EXPECT_THAT(retired.Views(), ElementsAre(view));
    StartWatching();
    retired.Clear();
    EXPECT_THAT(factory.log, ElementsAre("Destroy 9", "Destroy 10"));
    EXPECT_THAT(timeline.forgottenViews, ElementsAre(view));
    EXPECT_EQ(RecordCount(), recordsBefore);
    EXPECT_THAT(retired.Views(), IsEmpty());
    EXPECT_THAT(retired.Records(), IsEmpty());
}

TEST_F(RetiredKeysTest, AViewOfTwoActionsIsDestroyedOnce) {
    CTrackKey* view = NewView(KeyKind::Position, 2.0f);
    auto* first = Make<CFUADeleteKey>(view, nullptr).release();
    auto* second = Make<CFUADeleteKey>(view, nullptr).release();
    retired.KeepAction(first);
    retired.KeepAction(second);
    EXPECT_TRUE(first->ownsKey);
    EXPECT_FALSE(second->ownsKey);
    EXPECT_EQ(second->key, view);
    retired.KeepView(view);
    EXPECT_THAT(retired.Views(), IsEmpty());
    retired.Clear();
    EXPECT_THAT(timeline.forgottenViews, ElementsAre(view));
    EXPECT_EQ(RecordCount(), recordsBefore);
}

TEST_F(RetiredKeysTest, AViewThatIsKeptGetsNoSecondOwnerInAnAction) {
    CTrackKey* view = NewView(KeyKind::Position, 2.0f);
    retired.KeepView(view);
    retired.KeepView(view);
    retired.KeepAction(Make<CFUADeleteKey>(view, nullptr).release());
    retired.Clear();
    EXPECT_THAT(timeline.forgottenViews, ElementsAre(view));
    EXPECT_EQ(RecordCount(), recordsBefore);
}

TEST_F(RetiredKeysTest, AnActionOrRecordHandedInTwiceIsKeptOnce) {
    CFUAChangeAttribs* action = Make<CFUAChangeAttribs>(nullptr, nullptr).release();
    action->savedRecord = Films().keyFactory->CreateKey(KeyKind::Position);
    retired.KeepAction(action);
    retired.KeepAction(action);
    EXPECT_THAT(retired.Actions(), ElementsAre(action));
    IFilmKey* record = Films().keyFactory->CreateKey(KeyKind::Position);
    retired.KeepRecord(record);
    retired.KeepRecord(record);
    EXPECT_THAT(retired.Records(), ElementsAre(record));
    retired.Clear();
    EXPECT_EQ(RecordCount(), recordsBefore);
}

TEST_F(RetiredKeysTest, AViewThatSomebodyElseDeletesIsForgottenEverywhere) {
    CTrackKey* owned = NewView(KeyKind::Position, 2.0f);
    CTrackKey* kept = NewView(KeyKind::Position, 3.0f);
    auto* removal = Make<CFUADeleteKey>(owned, nullptr).release();
    auto* size = Make<CFUAChangeSize>(owned, nullptr).release();
    retired.KeepAction(removal);
    retired.KeepAction(size);
    retired.KeepView(kept);
    for (CTrackKey* view : {owned, kept}) {
        loose.push_back(view->record);
        retired.Forget(view);
        delete view;
    }
    EXPECT_EQ(removal->key, nullptr);
    EXPECT_EQ(size->key, nullptr);
    EXPECT_THAT(retired.Views(), IsEmpty());
    StartWatching();
    retired.Clear();
    EXPECT_THAT(factory.log, IsEmpty());
}

TEST_F(RetiredKeysTest, ARemovedKeyThatARowDeletesIsForgotten) {
    CTrackCtrl& row = MakeRow(KeyKind::Position, boxTrack);
    CTrackKey* view = PutKey(row, 2.0f);
    row.RemoveKey(view, /*destroy*/ false, /*redraw*/ false, /*noUndo*/ true);
    auto* removal = Make<CFUADeleteKey>(view, &row).release();
    timeline.undoMgr.Add(removal);
    EXPECT_TRUE(row.AddKeyView(view, false, /*existing*/ false, /*noUndo*/ true)); // it is back
    row.RemoveKey(view, /*destroy*/ true, /*redraw*/ false, /*noUndo*/ true);
    EXPECT_EQ(removal->key, nullptr);
    timeline.undoMgr.Clear();
    EXPECT_EQ(RecordCount(), recordsBefore);
}

TEST_F(RetiredKeysTest, ADeletedKeyAndItsReinsertedTwinAreTwoThings) {
    CTrackCtrl& row = MakeRow(KeyKind::Position, boxTrack);
    CTrackKey* view = PutKey(row, 2.0f);
    row.RemoveKey(view, /*destroy*/ false, /*redraw*/ false, /*noUndo*/ true);
    auto* removal = Make<CFUADeleteKey>(view, &row).release();
    timeline.undoMgr.Add(removal);
    EXPECT_TRUE(removal->Undo());
    ASSERT_EQ(row.keys.size(), 1U);
    IFilmKey* twin = row.keys.front()->record;
    timeline.undoMgr.Clear();
    EXPECT_EQ(row.keys.size(), 1U);
    EXPECT_TRUE(IsListed(*boxTrack, twin));
    EXPECT_EQ(RecordCount(), recordsBefore + 1); // the twin's
}

TEST_F(RetiredKeysTest, EveryRetiredRecordIsCounted) {
    retired.KeepView(NewView(KeyKind::Sound, 2.0f));
    retired.KeepAction(Make<CFUADeleteKey>(NewView(KeyKind::Position, 2.0f), nullptr).release());
    retired.KeepRecord(Films().keyFactory->CreateKey(KeyKind::Position));
    CFilmsUndoMgr& manager = timeline.undoMgr;
    auto* change = Make<CFUAChangeAttribs>(nullptr, nullptr).release();
    change->savedRecord = Films().keyFactory->CreateKey(KeyKind::Position);
    manager.Add(change);
    manager.Add(Make<CFUADeleteKey>(NewView(KeyKind::Position, 2.0f), nullptr).release());
    manager.retired.KeepView(NewView(KeyKind::Sound, 2.0f));
    manager.retired.KeepRecord(Films().keyFactory->CreateKey(KeyKind::Position));
    EXPECT_EQ(RetiredRecords(manager).size(), 4U);
    EXPECT_EQ(RecordCount(), recordsBefore + 7);
}
