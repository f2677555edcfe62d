#include "tests/timeline/KeyDragFixture.h"

#include "framework/Constants.h"

KeyDragTest::KeyDragTest() {
    Hooks().keyState = [this](int key) {
        return (key == VK_LMENU && alt) || (key == VK_RMENU && rightAlt) || (key == VK_CONTROL && ctrl);
    };
}

CTrackCtrl& KeyDragTest::BoxRow(float tic) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    row.ticDistance = tic;
    return row;
}

CTrackCtrl& KeyDragTest::BarRow(float tic) {
    return AddBarRow(MakeRow(KeyKind::None), KeyKind::Position, tic);
}

CTrackCtrl& KeyDragTest::AddBarRow(CTrackCtrl& root, int kind, float tic) {
    CTrackCtrl& row = MakeRow(kind);
    row.ticDistance = tic;
    EXPECT_TRUE(root.AddChildRow(&row, /*first*/ false));
    return row;
}

void KeyDragTest::Take(CTimedTrackKey& key, int mode, float mouse) {
    key.dragMode = mode;
    key.lastMouseTime = mouse;
}

void KeyDragTest::Take(CNullTimeTrackKey& key, float mouse) {
    key.dragging = true;
    key.lastMouseTime = mouse;
}

void KeyDragTest::Drag(CTrackKey& key, CTrackCtrl& row, float mouse) {
    timeline.mouseTime = mouse;
    key.OnMouseMove(MK_LBUTTON, mouse, &row);
}

void KeyDragTest::Follow(CTrackKey& key, CTrackCtrl& row, const std::vector<DragStep>& script) {
    for (const DragStep& step : script) {
        Drag(key, row, step.mouse);
        EXPECT_EQ(key.time, step.time) << "mouse at " << step.mouse;
        EXPECT_EQ(key.GetDuration(), step.duration) << "mouse at " << step.mouse;
        if (key.record != nullptr) {
            EXPECT_EQ(key.record->time, key.time) << "mouse at " << step.mouse;
            EXPECT_EQ(key.record->endTime, key.time + key.GetDuration()) << "mouse at " << step.mouse;
        }
    }
}
