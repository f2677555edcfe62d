#include "framework/QtBridge.h"
#include "tests/support/MouseScript.h"
#include "tests/timeline/TrackCtrlFixture.h"

#include <QTest>
#include <QWidget>
#include <QWindow>

namespace {

/// A bar at 4 seconds, x 350, under the real keyboard and mouse.
class KeyDragInputTest : public TrackCtrlTest {
protected:
    KeyDragInputTest() {
        EXPECT_TRUE(root.AddChildRow(&row, /*first*/ false));
        row.ticDistance = 2.0f;
        key = AddBar(row, 4.0f);
        CurrentKey() = nullptr;
        ShowForMouse(timeline);
    }
    ~KeyDragInputTest() override {
        ReleaseCapture();
        CurrentKey() = nullptr;
    }
    QWindow* Window() { return NativeWidget(timeline)->windowHandle(); }

    CTrackCtrl& root = MakeRow(KeyKind::None);
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    CNullTimeTrackKey* key = nullptr;
};

} // namespace

TEST_F(KeyDragInputTest, CtrlPressMarksTheKey) {
    QTest::mousePress(Window(), Qt::LeftButton, Qt::ControlModifier, {350, 10});
    EXPECT_TRUE(key->marked);
    QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, {350, 10});
    QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, {350, 11});
    EXPECT_TRUE(key->marked);
    QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, {350, 11});
}

TEST_F(KeyDragInputTest, AltLetsTheKeyFollowTheMouse) {
    key->dragging = true;
    key->lastMouseTime = 4.0f;
    timeline.mouseTime = 4.5f;
    key->OnMouseMove(0, 4.5f, &row);
    EXPECT_EQ(key->time, 4.0f);
    QTest::keyPress(Window(), Qt::Key_Alt, Qt::AltModifier);
    key->OnMouseMove(0, 4.5f, &row);
    EXPECT_EQ(key->time, 4.5f);
    QTest::keyRelease(Window(), Qt::Key_Alt, Qt::NoModifier);
    timeline.mouseTime = 4.75f;
    key->OnMouseMove(0, 4.75f, &row);
    EXPECT_EQ(key->time, 4.5f);
}
