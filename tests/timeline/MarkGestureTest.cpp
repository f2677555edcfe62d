// Marks of the ruler that the user drags with Shift, and the keys of the rows that they take along.
#include "tests/timeline/HeldGestureFixture.h"

#include <algorithm>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A second is as wide on the ruler as in the rows; the mark stands at 8 seconds as one of the keys.
class MarkGestureTest : public HeldGestureTest {
protected:
    MarkGestureTest() {
        CRect client;
        ruler.GetClientRect(&client);
        EXPECT_EQ(client.Width(), 10 * kSecond);
    }
    void Press(float time, UINT flags = MK_SHIFT) { Send(WM_LBUTTONDOWN, MK_LBUTTON | flags, time); }
    void Drag(float time, UINT flags = MK_SHIFT) { Send(WM_MOUSEMOVE, MK_LBUTTON | flags, time); }
    void Release(float time) { Send(WM_LBUTTONUP, 0, time); }
    void Send(UINT message, UINT flags, float time) {
        ruler.SendMessage(message, flags, MAKELPARAM(static_cast<int>(time * kSecond), kMiddle));
    }
    std::vector<float> MarkTimes() const {
        std::vector<float> times;
        std::ranges::transform(ruler.marks, std::back_inserter(times),
                               [](const CMark* mark) { return mark->time; });
        return times;
    }

    CMarkedGridCtrl& ruler = *control->grid;
};

} // namespace

TEST_F(MarkGestureTest, DraggedMarkTakesTheKeysOfAllShownRowsAlong) {
    CTrackKey* turn = turns->keys.front();
    turn->SetPosition(8.0f, /*viewOnly*/ false);
    const std::vector<float> others = TimesOf(*bars);
    Press(8.0f);
    Drag(7.0f);
    Release(7.0f);
    EXPECT_THAT(MarkTimes(), ElementsAre(7.0f));
    EXPECT_EQ(turn->time, 7.0f);
    EXPECT_EQ(turn->record->time, 7.0f);
    std::vector<float> expected = others;
    std::ranges::replace(expected, 8.0f, 7.0f);
    EXPECT_EQ(TimesOf(*bars), expected);
    EXPECT_THAT(control->undoMgr.retired.Actions(), IsEmpty()); // Required: no edit
}

TEST_F(MarkGestureTest, BoxGoesAlongByItsEndToo) {
    Press(8.0f);
    Drag(6.0f);
    Drag(5.0f); // the mark reached the box's end at 6, and took it on from there
    CTrackKey* box = sounds->keys.front();
    EXPECT_EQ(box->time, 3.0f);
    EXPECT_EQ(box->record->endTime, 5.0f);
    Release(5.0f);
    EXPECT_EQ(box->time, 3.0f);
}

// Required: what the mark passes it takes along, and keys so come together.
TEST_F(MarkGestureTest, MarkCollectsKeysOnItsWay) {
    Press(8.0f);
    Drag(5.0f);
    Drag(4.0f);
    Release(4.0f);
    const std::vector<float> times = TimesOf(*bars);
    EXPECT_EQ(std::ranges::count(times, 4.0f), 2);
    EXPECT_EQ(std::ranges::count(times, 5.0f) + std::ranges::count(times, 8.0f), 0);
}

TEST_F(MarkGestureTest, MarkDroppedOutOfTheViewGoesAndItsKeysGoBack) {
    const std::vector<float> before = TimesOf(*bars);
    Press(8.0f);
    Drag(5.0f);
    Drag(11.0f);
    EXPECT_NE(TimesOf(*bars), before);
    Release(11.0f);
    EXPECT_THAT(MarkTimes(), IsEmpty());
    EXPECT_EQ(TimesOf(*bars), before);
    for (const CTrackKey* key : bars->keys) {
        EXPECT_EQ(key->record->time, key->time);
    }
}

TEST_F(MarkGestureTest, ShiftLetGoInADragMovesTheCursorAndTheKeysWait) {
    const std::vector<float> before = TimesOf(*bars);
    Press(8.0f);
    Drag(6.0f, /*flags*/ 0);
    EXPECT_EQ(control->currentTime, 6.0f);
    EXPECT_EQ(TimesOf(*bars), before);
    EXPECT_THAT(MarkTimes(), ElementsAre(8.0f));
    Drag(7.0f);
    Release(7.0f);
    EXPECT_THAT(MarkTimes(), ElementsAre(7.0f));
    EXPECT_EQ(control->currentTime, 6.0f);
}

TEST_F(MarkGestureTest, ShiftPressOnEmptyTimeMakesAMarkThatDoesntFollow) {
    const std::vector<float> before = TimesOf(*bars);
    Press(3.0f);
    Drag(5.0f);
    Release(5.0f);
    EXPECT_THAT(MarkTimes(), ElementsAre(8.0f, 3.0f));
    EXPECT_EQ(TimesOf(*bars), before);
}
