#include "tests/timeline/GestureFixture.h"

#include <algorithm>

GestureTest::GestureTest()
    : root(MakeRow(KeyKind::None, boxTrack)), bars(MakeRow(KeyKind::Position, boxTrack)),
      turns(MakeRow(KeyKind::Rotation, boxTrack)), sounds(MakeRow(KeyKind::Sound, boxTrack)) {
    Hooks().keyState = [this](int key) { return (key == VK_CONTROL && ctrl) || (key == VK_LMENU && alt); };
    info.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(700, 0, 800, 20), &timeline, 30);
    timeline.infoWnd = &info;
    timeline.viewEnd = 10.0f;
    timeline.movieEnd = 100.0f;
    int line = 0;
    for (CTrackCtrl* row : {&bars, &turns, &sounds}) {
        EXPECT_TRUE(root.AddChildRow(row, /*first*/ false));
        Lay(*row, ++line);
    }
    StartWatching();
}

GestureTest::~GestureTest() {
    ReleaseCapture();
    CurrentKey() = nullptr;
    plugin.keyAttributesDlg.reset();
}

/// Grips lie where the last paint put them.
void GestureTest::Lay(CTrackCtrl& row, int line) {
    row.MoveWindow(0, line * kHeight, kWidth, kHeight);
    row.ticDistance = 2.0f;
    RenderRow(row);
}

void GestureTest::Enter(CTrackCtrl& row, CTrackKey* view) {
    std::erase(loose, view->record); // the track has it from here on
    EXPECT_TRUE(row.AddKeyView(view, /*redraw*/ false, /*existing*/ false, /*noUndo*/ true));
    Unselect();
    CurrentKey() = nullptr;
    StartWatching();
}

CNullTimeTrackKey* GestureTest::PutBar(CTrackCtrl& row, float time) {
    auto* key = static_cast<CNullTimeTrackKey*>(MakeView(row.kind, time).release());
    Enter(row, key);
    return key;
}

CTimedTrackKey* GestureTest::PutBox(float time, float duration) {
    auto* key = static_cast<CTimedTrackKey*>(MakeView(sounds.kind, time, duration).release());
    Enter(sounds, key);
    return key;
}

void GestureTest::StartWatching() {
    SettleAll();
    info.ValidateRect();
    timeline.log.clear();
    windowLog.clear();
}

CFUAChangeSize* GestureTest::TheChange() const {
    EXPECT_EQ(Edits().size(), 1U);
    return Edits().size() == 1 ? dynamic_cast<CFUAChangeSize*>(Edits().front()) : nullptr;
}

void GestureTest::ExpectBox(const CTimedTrackKey& key, float time, float duration) {
    EXPECT_EQ(key.time, time);
    EXPECT_EQ(key.duration, duration);
    EXPECT_EQ(key.record->time, time);
    EXPECT_EQ(key.record->endTime, time + duration);
}

std::vector<float> GestureTest::TimesOf(const CTrackCtrl& row) {
    std::vector<float> times;
    std::ranges::transform(row.keys, std::back_inserter(times),
                           [](const CTrackKey* key) { return key->time; });
    std::ranges::sort(times);
    return times;
}

bool GestureTest::WantsInfo() const {
    CRect rect;
    return info.GetUpdateRect(&rect) != FALSE;
}
