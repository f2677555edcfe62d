#include "tests/timeline/HeldGestureFixture.h"

#include "framework/QtBridge.h"
#include "keys/views/NullTimeTrackKey.h"

#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <sstream>

using ::testing::IsEmpty;

std::string NameOf(Gesture gesture) {
    static constexpr const char* kNames[] = {"BarDrag",          "BoxDrag",   "LeftGrip",  "RightGrip",
                                             "GripInAnotherRow", "GroupMove", "CloneDrag", "CursorDrag",
                                             "MarkDrag",         "NamePress", "TimeThumb", "RowThumb"};
    return kNames[static_cast<int>(gesture)];
}

HeldGestureTest::HeldGestureTest() {
    Hooks().keyState = [this](int key) { return key == VK_LMENU && alt; };
    Hooks().cursorPos = [] { return CPoint(200, 100); };
    for (const float time : {2.0f, 5.0f, 8.0f}) {
        AddKey(track, KeyKind::Position, time);
    }
    AddKey(track, KeyKind::Rotation, 2.0f);
    AddKey(track, KeyKind::Sound, 4.0f)->SetEndTime(6.0f);
    ShowRows();
    control->grid->AddMark(8.0f);
}

HeldGestureTest::~HeldGestureTest() {
    ReleaseCapture();
    CurrentKey() = nullptr;
}

void HeldGestureTest::ShowRows() {
    control->ShowFilm(film, true);
    Row(KeyKind::None)->SetExpanded(true, true);
    Settle();
    bars = Row(KeyKind::Position);
    turns = Row(KeyKind::Rotation);
    sounds = Row(KeyKind::Sound);
    for (CTrackCtrl* row : {bars, turns, sounds}) {
        NativeWidget(*row)->grab(); // grips lie where the last paint put them
    }
    CurrentKey() = nullptr;
}

int HeldGestureTest::X(float time) {
    return 150 + static_cast<int>(time * kSecond);
}

CTrackKey* HeldGestureTest::KeyAt(const CTrackCtrl& row, float time) {
    const auto found = std::ranges::find(row.keys, time, &CTrackKey::time);
    return found != row.keys.end() ? *found : nullptr;
}

void HeldGestureTest::Press(CWnd& window, int x, UINT flags) {
    pressed = &window;
    mouse = {x, kMiddle};
    window.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON | flags, MAKELPARAM(mouse.x, mouse.y));
}

void HeldGestureTest::Move(int x, UINT flags) {
    mouse.x = x;
    pressed->SendMessage(WM_MOUSEMOVE, MK_LBUTTON | flags, MAKELPARAM(mouse.x, mouse.y));
}

void HeldGestureTest::Release(CWnd& window) {
    window.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(mouse.x, mouse.y));
}

/// Makes the box current, then takes it at a pixel of a row.
void HeldGestureTest::Grip(CTrackCtrl& row, int x) {
    Press(*sounds, X(5.0f));
    Release(*sounds);
    Press(row, x);
    heldKey = row.dragKey;
    heldRow = &row;
}

void HeldGestureTest::PressThumb(const CTimeScrollbar& bar) {
    const CRect& thumb = bar.thumbRect;
    pressed = bar.vertical == 1 ? control->vScroll : control->hScroll;
    mouse = {(thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2};
    pressed->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(mouse.x, mouse.y));
    EXPECT_TRUE(bar.dragging);
}

void HeldGestureTest::Begin(Gesture gesture) {
    constexpr int kGrip = 10; // pixels from an end to the middle of its grip
    switch (gesture) {
    case Gesture::GroupMove:
        KeyAt(*bars, 2.0f)->marked = KeyAt(*turns, 2.0f)->marked = true;
        [[fallthrough]];
    case Gesture::BarDrag:
        heldKey = KeyAt(*bars, 2.0f);
        heldRow = bars;
        Press(*bars, X(2.0f));
        EXPECT_EQ(bars->dragKey, heldKey);
        return Move(X(3.0f));
    case Gesture::BoxDrag:
        heldKey = KeyAt(*sounds, 4.0f);
        heldRow = sounds;
        Press(*sounds, X(5.0f) + kSecond / 2);
        EXPECT_EQ(sounds->dragKey, heldKey);
        return Move(X(5.0f) - kSecond / 2);
    case Gesture::LeftGrip:
        Grip(*sounds, X(4.0f) - kGrip);
        return Move(X(3.0f) - kGrip);
    case Gesture::RightGrip:
        Grip(*sounds, X(6.0f) + kGrip);
        return Move(X(7.0f) + kGrip);
    case Gesture::GripInAnotherRow:
        Grip(*turns, X(6.0f) + kGrip);
        return Move(X(7.0f) + kGrip);
    case Gesture::CloneDrag:
        bars->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(X(2.0f), kMiddle));
        heldKey = KeyAt(*bars, 2.0f);
        heldRow = bars;
        Press(*bars, X(2.0f), MK_SHIFT);
        EXPECT_EQ(control->keyDuplicator.sourceKey, heldKey);
        return Move(X(3.0f), MK_SHIFT);
    case Gesture::CursorDrag:
        Press(*control->grid, 5 * kSecond);
        return Move(6 * kSecond);
    case Gesture::MarkDrag:
        Press(*control->grid, 8 * kSecond, MK_SHIFT);
        EXPECT_NE(control->grid->dragMark, nullptr);
        return Move(7 * kSecond, MK_SHIFT);
    case Gesture::NamePress:
        Press(*bars, 60);
        return Move(120);
    case Gesture::TimeThumb:
        control->SetViewRange(0.0f, 5.0f, true);
        PressThumb(*control->hScroll);
        return Move(mouse.x + kSecond);
    case Gesture::RowThumb:
        Resize(kWidth, 120);
        Settle();
        PressThumb(*control->vScroll);
        mouse.y += kMiddle;
        return Move(mouse.x);
    }
}

void HeldGestureTest::MoveOnAndRelease() {
    std::vector<CWnd*> windows{control->grid, control->hScroll, control->vScroll};
    windows.insert(windows.end(), control->tracks.begin(), control->tracks.end());
    const bool lives = std::ranges::find(windows, pressed) != windows.end();
    CWnd* target = CWnd::GetCapture() != nullptr ? CWnd::GetCapture() : lives ? pressed : control->grid;
    for (const int step : {20, 40}) {
        // The button went up elsewhere.
        target->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(mouse.x + step, mouse.y + step));
    }
    target->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(mouse.x + 40, mouse.y + 40));
    if (CWnd::GetCapture() == target) {
        ReleaseCapture(); // as the window system does with the last button
    }
}

std::vector<std::string> HeldGestureTest::Picture() const {
    std::vector<std::string> lines;
    std::ostringstream view;
    view << "cursor " << control->currentTime << " view " << control->viewStart << " row " << control->topRow;
    lines.push_back(view.str());
    for (const CMark* mark : control->grid->marks) {
        lines.push_back("mark " + std::to_string(mark->time));
    }
    for (const CTrackCtrl* row : control->tracks) {
        for (const CTrackKey* key : row->keys) {
            std::ostringstream line;
            line << row->name << ' ' << key->time << " for " << key->GetDuration() << " record "
                 << key->record->time << (key->marked ? " marked" : "");
            lines.push_back(line.str());
        }
    }
    return lines;
}

void HeldGestureTest::ExpectNothingHeld() const {
    for (const CTrackCtrl* row : control->tracks) {
        EXPECT_EQ(row->dragKey, nullptr);
    }
    EXPECT_EQ(control->grid->dragMark, nullptr);
    EXPECT_FALSE(control->hScroll->dragging);
    EXPECT_FALSE(control->vScroll->dragging);
    EXPECT_FALSE(control->keyDuplicator.HasSource());
    ExpectNothingDangles();
}

void HeldGestureTest::ExpectNextGestureWorks() {
    Resize(kWidth, kHeight);
    control->SetViewRange(0.0f, 10.0f, true);
    ShowRows();
    ASSERT_NE(bars, nullptr);
    CTrackKey* key = KeyAt(*bars, 5.0f);
    ASSERT_NE(key, nullptr);
    key->marked = false;
    Press(*bars, X(5.0f));
    Move(X(6.0f));
    Release(*bars);
    EXPECT_EQ(key->time, 6.0f);
    EXPECT_EQ(key->record->time, 6.0f);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    ExpectNothingHeld();
}
