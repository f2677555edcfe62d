// What a press with Shift takes hold of, and the ghost that follows the mouse.
#include "tests/timeline/CloneFixture.h"

#include <algorithm>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(CloneTest, PressWithShiftSelectsTheKeyAndHoldsAGhostOfIt) {
    CTrackKey* key = PutBar(bars, 4.0f);
    PressAt(bars, 4.0f, MK_SHIFT);
    EXPECT_EQ(bars.dragKey, nullptr);
    EXPECT_EQ(CurrentKey(), key);
    EXPECT_THAT(timeline.selectedKeys, ElementsAre(key));
    EXPECT_EQ(CWnd::GetCapture(), &bars);
    EXPECT_EQ(duplicator.sourceKey, key);
    EXPECT_EQ(duplicator.sourceRow, &bars);
    EXPECT_EQ(duplicator.sourceTime, 4.0f);
    EXPECT_TRUE(duplicator.cloneMode);
}

TEST_F(CloneTest, GhostFollowsTheMouseFrameByFrameAndTheKeyStays) {
    CTrackKey* key = PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    DragTo(bars, 5.5f); // tics don't count for a ghost
    EXPECT_EQ(duplicator.sourceTime, 5.5f);
    EXPECT_EQ(key->time, 4.0f);
    EXPECT_TRUE(WantsPaint(bars));
    EXPECT_FALSE(WantsPaint(turns));
    EXPECT_TRUE(WantsInfo());
    DragTo(bars, 2.5f);
    EXPECT_EQ(duplicator.sourceTime, 2.5f);
}

// Required: the first step is measured from where the mouse was last told, not from the press.
TEST_F(CloneTest, GhostsFirstStepBeginsAtTheLastMouseTime) {
    PutBar(bars, 4.0f);
    timeline.mouseTime = 3.5f; // as the ruler leaves it
    PressAt(bars, 4.0f, MK_SHIFT);
    DragTo(bars, 4.5f);
    EXPECT_EQ(duplicator.sourceTime, 5.0f);
}

TEST_F(CloneTest, GhostIsNotDescribed) {
    PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    timeline.keyDescrWnd = &info;
    DragTo(bars, 4.0f);
    EXPECT_THAT(timeline.log, IsEmpty());
}

TEST_F(CloneTest, GhostIsDrawnWithAFrameInItsOwnRow) {
    PutBar(bars, 4.0f);
    EXPECT_THAT(Frames(bars), IsEmpty());
    TakeClone(bars, 4.0f);
    EXPECT_THAT(Frames(bars), ElementsAre(GhostFrame(350)));
    DragTo(bars, 5.5f);
    EXPECT_THAT(Frames(bars), ElementsAre(GhostFrame(425)));
    EXPECT_THAT(Frames(turns), IsEmpty());
}

TEST_F(CloneTest, GhostIsDrawnFromTheStartOfTheFilmToBeforeItsEnd) {
    PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    timeline.movieStart = 2.0f;
    timeline.movieEnd = 6.0f;
    DragTo(bars, 2.0f);
    EXPECT_THAT(Frames(bars), ElementsAre(GhostFrame(250)));
    DragTo(bars, 1.5f);
    EXPECT_THAT(Frames(bars), IsEmpty());
    DragTo(bars, 5.5f);
    EXPECT_THAT(Frames(bars), ElementsAre(GhostFrame(425)));
    DragTo(bars, 6.0f);
    EXPECT_THAT(Frames(bars), IsEmpty());
}

TEST_F(CloneTest, CopiedKeyHasNoGhost) {
    duplicator.Set(PutBar(bars, 4.0f), &bars, /*clone*/ false);
    EXPECT_THAT(Frames(bars), IsEmpty());
}

TEST_F(CloneTest, SeveralSelectedKeysRepaintAllRows) {
    CTrackKey* key = PutBar(bars, 4.0f);
    timeline.selectedKeys = {PutBar(turns, 1.0f), key};
    PressAt(bars, 4.0f, MK_SHIFT);
    EXPECT_THAT(timeline.log, Contains("ArrangeRows true false"));
}

TEST_F(CloneTest, ShiftBesideTheKeysIsAPlainPress) {
    PutBar(bars, 4.0f);
    PressAt(bars, 8.0f, MK_SHIFT);
    EXPECT_FALSE(duplicator.HasSource());
    editor.Select({});
    Press(bars, 60, kMiddle, MK_LBUTTON | MK_SHIFT);
    EXPECT_THAT(editor.level.selection, ElementsAre(box));
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(CloneTest, GhostLiesAboveTheSelectedKey) {
    PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    DragTo(bars, 4.5f);
    const std::vector<std::string> lines = Lines(bars);
    const auto squareOf = [&lines](const std::string& place) {
        return std::ranges::find_if(lines, [&](const std::string& line) { return line.starts_with(place); });
    };
    const auto ghost = squareOf("rect 372,3,378,18");
    ASSERT_NE(ghost, lines.end());
    EXPECT_LT(squareOf("rect 347,3,353,18"), ghost);
}
