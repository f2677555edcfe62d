#include "tests/undo/UndoFixture.h"

#include "host/engine/FilmManager.h"

#include <algorithm>

UndoTest::UndoTest() {
    timeline.viewStart = 0.0f;
    timeline.viewEnd = 10.0f;
}

UndoTest::~UndoTest() {
    timeline.undoMgr.Clear();
}

CTrackKey* UndoTest::NewView(int kind, float time, float duration) {
    CTrackKey* view = timeline.CreateKeyView(kind);
    view->SetPosition(time, /*viewOnly*/ false);
    if (auto* timed = dynamic_cast<CTimedTrackKey*>(view)) {
        timed->SetDuration(duration, /*viewOnly*/ false);
    }
    return view;
}

CTrackKey* UndoTest::PutKey(CTrackCtrl& row, float time, float duration) {
    CTrackKey* view = NewView(row.kind, time, duration);
    if (row.kind == KeyKind::Camera) {
        RecordAs<CFilmCameraKey>(*view).priority = row.subIndex;
    }
    EXPECT_TRUE(row.AddKeyView(view, /*redraw*/ false, /*existing*/ false, /*noUndo*/ true));
    EXPECT_EQ(view->record->track, row.track);
    Unselect();
    StartWatching();
    return view;
}

bool UndoTest::IsListed(const CFilmTrack& track, const IFilmKey* record) {
    return std::ranges::find(track.keys, record) != track.keys.end();
}

std::size_t UndoTest::RecordCount() {
    return static_cast<engine::FilmManager&>(Films()).Keys().Count();
}

void UndoTest::StartWatching() {
    SettleAll();
    timeline.log.clear();
    timeline.forgottenViews.clear();
    factory.log.clear();
    factory.destroyed.clear();
}
