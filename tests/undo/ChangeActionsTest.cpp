// Keys that stay and change: the actions of a new size and of new attributes.
#include "keys/views/LooseKeys.h"
#include "tests/undo/UndoFixture.h"

#include <cmath>
#include <utility>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Counts how often its background is erased.
class ErasedRow : public CTrackCtrl {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        erased += message == WM_ERASEBKGND ? 1 : 0;
        return CTrackCtrl::WindowProc(message, wParam, lParam);
    }

    int erased = 0;
};

class ChangeActionsTest : public UndoTest {
protected:
    ChangeActionsTest()
        : bars(MakeRow(KeyKind::Position, boxTrack)), boxes(MakeRow(KeyKind::Sound, boxTrack)) {
        StartWatching();
    }
    std::unique_ptr<CFUAChangeSize> MakeSize(CTrackKey* key, CTrackCtrl& row, float start, float end) {
        auto action = Make<CFUAChangeSize>(key, &row);
        action->start = start;
        action->end = end;
        return action;
    }

    CTrackCtrl& bars;
    CTrackCtrl& boxes;
};

} // namespace

TEST_F(ChangeActionsTest, SizeSwapsStartAndEndWithTheStoredOnes) {
    CTimedTrackKey* view = PutBox(boxes, 2.0f, 1.5f);
    const auto action = MakeSize(view, boxes, 1.0f, 4.0f);
    EXPECT_TRUE(action->Undo());
    EXPECT_EQ(view->time, 1.0f);
    EXPECT_EQ(view->duration, 3.0f);
    EXPECT_EQ(view->record->time, 1.0f);
    EXPECT_EQ(view->record->endTime, 4.0f);
    EXPECT_EQ(action->start, 2.0f);
    EXPECT_EQ(action->end, 3.5f);
    EXPECT_TRUE(WantsPaint(boxes));
    EXPECT_TRUE(action->Redo());
    EXPECT_EQ(view->time, 2.0f);
    EXPECT_EQ(view->duration, 1.5f);
    EXPECT_EQ(view->record->time, 2.0f);
    EXPECT_EQ(view->record->endTime, 3.5f);
    EXPECT_EQ(action->start, 1.0f);
    EXPECT_EQ(action->end, 4.0f);
    EXPECT_THAT(factory.log, IsEmpty());
}

TEST_F(ChangeActionsTest, SizeStoresTheTimesOfTheRecordAndNotOfTheView) {
    CTimedTrackKey* view = PutBox(boxes, 2.0f, 1.5f);
    view->SetPosition(6.0f, /*viewOnly*/ true);
    const auto action = MakeSize(view, boxes, 1.0f, 4.0f);
    action->Undo();
    EXPECT_EQ(action->start, 2.0f);
    EXPECT_EQ(action->end, 3.5f);
}

TEST_F(ChangeActionsTest, SizeOfAKeyWithoutDurationMovesItsStartAlone) {
    CTrackKey* view = PutKey(bars, 2.0f);
    const auto action = MakeSize(view, bars, 1.0f, 4.0f);
    EXPECT_TRUE(action->Undo());
    EXPECT_EQ(view->time, 1.0f);
    EXPECT_EQ(view->record->time, 1.0f);
    EXPECT_EQ(view->record->endTime, 1.0f);
    EXPECT_EQ(action->start, 2.0f);
    EXPECT_EQ(action->end, 2.0f);
}

TEST_F(ChangeActionsTest, TheFlagDecidesAndNotTheClassOfTheView) {
    CTimedTrackKey* view = PutBox(boxes, 2.0f, 1.5f);
    view->record->flags |= KeyFlag::NoDuration;
    EXPECT_TRUE(MakeSize(view, boxes, 1.0f, 4.0f)->Undo());
    EXPECT_EQ(view->duration, 1.5f);
    EXPECT_EQ(view->record->endTime, 2.5f); // 1.0 + 1.5
    CTrackKey* bar = PutKey(bars, 2.0f);
    bar->record->flags &= ~KeyFlag::NoDuration;
    EXPECT_TRUE(MakeSize(bar, bars, 1.0f, 4.0f)->Undo());
    EXPECT_EQ(bar->record->endTime, 1.0f); // a bar has no length to set
}

TEST_F(ChangeActionsTest, ASizeThatWasNeverFilledMovesTheKeyToMinusOne) {
    CTimedTrackKey* view = PutBox(boxes, 2.0f, 1.5f);
    const auto action = Make<CFUAChangeSize>(view, &boxes);
    EXPECT_TRUE(action->Undo());
    EXPECT_EQ(view->time, -1.0f);
    EXPECT_EQ(view->duration, 1.5f); // a length of 0 is not taken
    EXPECT_EQ(view->record->endTime, 0.5f);
}

TEST_F(ChangeActionsTest, SizesThatAreNoNumbersAreSwappedToo) {
    CTimedTrackKey* view = PutBox(boxes, 2.0f, 1.5f);
    const auto action = MakeSize(view, boxes, std::nanf(""), INFINITY);
    EXPECT_TRUE(action->Undo());
    EXPECT_TRUE(std::isnan(view->time));
    EXPECT_EQ(view->duration, 1.5f);
    EXPECT_TRUE(action->Redo());
    EXPECT_EQ(view->time, 2.0f);
    EXPECT_EQ(view->duration, 1.5f);
}

TEST_F(ChangeActionsTest, SizeChangesNothingWithoutKeyRecordOrRow) {
    CTimedTrackKey* view = PutBox(boxes, 2.0f, 1.5f);
    CTimedTrackKey bare;
    bare.time = 7.0f;
    const std::unique_ptr<CFUAChangeSize> actions[] = {Make<CFUAChangeSize>(nullptr, &boxes),
                                                       Make<CFUAChangeSize>(&bare, &boxes),
                                                       Make<CFUAChangeSize>(view, nullptr)};
    for (const auto& action : actions) {
        EXPECT_TRUE(action->Undo());
        EXPECT_TRUE(action->Redo());
        EXPECT_EQ(action->start, -1.0f);
        EXPECT_EQ(action->end, -1.0f);
    }
    EXPECT_EQ(view->time, 2.0f);
    EXPECT_EQ(bare.time, 7.0f);
    EXPECT_FALSE(WantsPaint(boxes));
}

TEST_F(ChangeActionsTest, AttributesSwapTheRecordForACopyOfTheSavedOne) {
    for (CTrackCtrl* row : {&bars, &boxes}) {
        CTrackKey* view = PutKey(*row, 2.0f, 1.5f);
        view->record->flags |= KeyFlag::MayOverlap;
        const std::string kind = std::to_string(row->kind);
        IFilmKey* old = view->record;
        const auto action = Make<CFUAChangeAttribs>(view, row);
        IFilmKey* saved = Films().keyFactory->CreateKey(row->kind);
        action->savedRecord = saved;
        StartWatching();
        EXPECT_TRUE(action->Undo());
        EXPECT_THAT(factory.log, ElementsAre("Create " + kind, "Destroy " + kind));
        EXPECT_THAT(factory.destroyed, ElementsAre(saved));
        EXPECT_EQ(action->savedRecord, old);
        EXPECT_NE(view->record, old);
        // Required: the track goes on with the old record, and the new one has a new record's times.
        EXPECT_TRUE(IsListed(*boxTrack, old));
        EXPECT_EQ(view->record->track, nullptr);
        EXPECT_EQ(view->record->time, 0.0f);
        EXPECT_EQ(view->record->endTime, 0.0f);
        EXPECT_EQ(view->time, 2.0f);
        EXPECT_EQ(view->GetDuration(), row == &boxes ? 1.5f : 0.0f);
        EXPECT_TRUE(WantsPaint(*row));
        ReturnRecord(plugin, std::exchange(view->record, nullptr));
    }
}

TEST_F(ChangeActionsTest, AttributesAreCopiedIntoTheNewRecord) {
    CTrackKey* view = PutKey(boxes, 2.0f);
    RecordAs<CFilmSoundKey>(*view).wavPath = "old.wav";
    const auto action = Make<CFUAChangeAttribs>(view, &boxes);
    action->savedRecord = Films().keyFactory->CreateKey(KeyKind::Sound);
    static_cast<CFilmSoundKey*>(action->savedRecord)->wavPath = "saved.wav";
    EXPECT_TRUE(action->Redo());
    EXPECT_EQ(RecordAs<CFilmSoundKey>(*view).wavPath, "saved.wav");
    EXPECT_EQ(static_cast<CFilmSoundKey*>(action->savedRecord)->wavPath, "old.wav");
    ReturnRecord(plugin, std::exchange(view->record, nullptr));
}

TEST_F(ChangeActionsTest, AttributesSwappedTwiceHoldAnEqualRecordAtANewAddress) {
    CTrackKey* view = PutKey(boxes, 2.0f);
    IFilmKey* listed = view->record;
    RecordAs<CFilmSoundKey>(*view).wavPath = "old.wav";
    const auto action = Make<CFUAChangeAttribs>(view, &boxes);
    const IFilmKey* first = action->savedRecord = Films().keyFactory->CreateKey(KeyKind::Sound);
    static_cast<CFilmSoundKey*>(action->savedRecord)->wavPath = "saved.wav";
    EXPECT_TRUE(action->Undo());
    const IFilmKey* second = view->record;
    EXPECT_TRUE(action->Redo());
    EXPECT_EQ(action->savedRecord, second);
    EXPECT_NE(action->savedRecord, first);
    EXPECT_EQ(static_cast<CFilmSoundKey*>(action->savedRecord)->wavPath, "saved.wav");
    EXPECT_EQ(RecordAs<CFilmSoundKey>(*view).wavPath, "old.wav");
    EXPECT_NE(view->record, listed);
    EXPECT_TRUE(IsListed(*boxTrack, listed)); // a key of the film isn't lost
    ReturnRecord(plugin, std::exchange(view->record, nullptr));
}

TEST_F(ChangeActionsTest, AttributesChangeNothingWithoutKeyRecordsOrRow) {
    CTrackKey* view = PutKey(boxes, 2.0f);
    IFilmKey* record = view->record;
    CTimedTrackKey bare;
    IFilmKey* saved = Films().keyFactory->CreateKey(KeyKind::Sound);
    const struct {
        CTrackKey* key;
        CTrackCtrl* row;
        IFilmKey* saved;
    } cases[] = {
        {nullptr, &boxes, saved}, {&bare, &boxes, saved}, {view, nullptr, saved}, {view, &boxes, nullptr}};
    StartWatching();
    for (const auto& [key, row, savedRecord] : cases) {
        const auto action = Make<CFUAChangeAttribs>(key, row);
        action->savedRecord = savedRecord;
        EXPECT_TRUE(action->Undo());
        EXPECT_TRUE(action->Redo());
        EXPECT_EQ(action->savedRecord, savedRecord);
        action->savedRecord = nullptr;
    }
    EXPECT_EQ(view->record, record);
    EXPECT_THAT(factory.log, IsEmpty());
    EXPECT_FALSE(WantsPaint(boxes));
    ReturnRecord(plugin, saved);
}

TEST_F(ChangeActionsTest, AttributesChangeNothingIfNoRecordIsMade) {
    CTrackKey* view = PutKey(boxes, 2.0f);
    IFilmKey* record = view->record;
    const auto action = Make<CFUAChangeAttribs>(view, &boxes);
    IFilmKey* saved = action->savedRecord = Films().keyFactory->CreateKey(KeyKind::Sound);
    StartWatching();
    factory.granted = 0;
    EXPECT_TRUE(action->Undo());
    factory.granted = -1;
    Films().keyFactory = nullptr;
    EXPECT_TRUE(action->Undo());
    Films().keyFactory = &factory;
    EXPECT_EQ(view->record, record);
    EXPECT_EQ(action->savedRecord, saved);
    EXPECT_THAT(factory.log, IsEmpty());
}

TEST_F(ChangeActionsTest, OnlyANewSizeErasesTheRow) {
    ErasedRow row;
    row.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, kWidth, kHeight), &timeline, 56);
    row.kind = KeyKind::Sound;
    row.track = boxTrack;
    CTrackKey* view = PutKey(row, 2.0f);
    const auto attributes = Make<CFUAChangeAttribs>(view, &row);
    attributes->savedRecord = Films().keyFactory->CreateKey(KeyKind::Sound);
    const auto size = MakeSize(view, row, 1.0f, 4.0f);
    RenderRow(row);
    row.erased = 0;
    attributes->Undo();
    RenderRow(row);
    EXPECT_EQ(row.erased, 0);
    size->Undo();
    RenderRow(row);
    EXPECT_EQ(row.erased, 1);
    ReturnRecord(plugin, std::exchange(view->record, nullptr));
}
