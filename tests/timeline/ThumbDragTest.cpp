#include "timeline/rows/ThumbDrag.h"

#include <gtest/gtest.h>

TEST(ThumbDragTest, StepIsMeasuredFromTheLastOne) {
    ThumbDrag drag;
    drag.Begin({10, 100});
    EXPECT_TRUE(drag.dragging);
    EXPECT_EQ(drag.Step({14, 130}, /*isVertical*/ false), 4);
    EXPECT_EQ(drag.Step({14, 130}, /*isVertical*/ true), 30);
    drag.MoveTo({14, 130});
    EXPECT_EQ(drag.Step({15, 125}, /*isVertical*/ false), 1);
    EXPECT_EQ(drag.Step({15, 125}, /*isVertical*/ true), -5);
}

TEST(ThumbDragTest, EndTellsWhetherThereWasADrag) {
    ThumbDrag drag;
    EXPECT_FALSE(drag.End());
    drag.Begin({0, 0});
    EXPECT_TRUE(drag.End());
    EXPECT_FALSE(drag.dragging);
    EXPECT_FALSE(drag.End());
}
