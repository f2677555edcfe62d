#include "keys/views/GroupDrag.h"

#include "keys/views/KeyRow.h"
#include "keys/views/KeyViewList.h"
#include "keys/views/NullTimeTrackKey.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

/// A row of bars over 0 to 20 seconds, without a window.
class PlainRow final : public KeyRow {
public:
    ~PlainRow() { list.Clear(); }
    TimeAxis GetAxis() const override { return {0.0f, 20.0f, 1.0f}; }
    float SnapTime(CTrackKey*, float ref, bool, bool) const override { return ref; }
    bool FitTimedKey(CTrackKey*, float, float&, float&, float) const override { return true; }
    const KeyViewList& GetKeys() const override { return list; }
    std::optional<std::vector<KeyRow*>> GetGroup() const override { return group; }
    void Repaint() override { ++repaints; }

    CTrackKey& Add(float time, bool marked) {
        CTrackKey& key = *views.emplace_back(std::make_unique<CNullTimeTrackKey>());
        key.time = time;
        key.marked = marked;
        list.Insert(&key);
        return key;
    }

    std::optional<std::vector<KeyRow*>> group;
    int repaints = 0;

private:
    std::vector<std::unique_ptr<CTrackKey>> views;
    KeyViewList list;
};

class GroupDragTest : public ::testing::Test {
protected:
    GroupDragTest() { first.group = second.group = std::vector<KeyRow*>{&first, &second}; }

    PlainRow first;
    PlainRow second;
};

TEST_F(GroupDragTest, GroupStaysOnTheAxisUpToItsEnds) {
    const CTrackKey& dragged = first.Add(5.0f, /*marked*/ true);
    second.Add(8.0f, /*marked*/ true);
    const GroupDrag group(dragged, first);
    EXPECT_TRUE(group.StaysOnAxis(17.0f));  // the other one comes to 20
    EXPECT_FALSE(group.StaysOnAxis(17.5f)); // to 20.5
    EXPECT_TRUE(group.StaysOnAxis(0.0f));
    EXPECT_FALSE(group.StaysOnAxis(-0.5f));
}

TEST_F(GroupDragTest, UnmarkedKeysHoldNobodyBack) {
    const CTrackKey& dragged = first.Add(5.0f, /*marked*/ true);
    second.Add(19.0f, /*marked*/ false);
    EXPECT_TRUE(GroupDrag(dragged, first).StaysOnAxis(20.0f));
}

TEST_F(GroupDragTest, MarkedKeysOfAllRowsFollowByTheSameStep) {
    CTrackKey& dragged = first.Add(5.0f, /*marked*/ true);
    CTrackKey& beside = first.Add(9.0f, /*marked*/ false);
    CTrackKey& other = second.Add(8.0f, /*marked*/ true);
    dragged.time = 6.0f;
    dragged.lastMouseTime = 6.25f;
    GroupDrag(dragged, first).Follow(/*oldTime*/ 5.0f, /*target*/ 6.0f);
    EXPECT_EQ(dragged.time, 6.0f);
    EXPECT_EQ(beside.time, 9.0f);
    EXPECT_EQ(other.time, 9.0f);
    EXPECT_EQ(other.lastMouseTime, 6.25f);
    EXPECT_EQ(first.repaints, 0);
    EXPECT_EQ(second.repaints, 1);
}

TEST_F(GroupDragTest, AllMarksAreCleared) {
    CTrackKey& dragged = first.Add(5.0f, /*marked*/ true);
    CTrackKey& other = second.Add(8.0f, /*marked*/ true);
    GroupDrag(dragged, first).ClearMarks();
    EXPECT_FALSE(dragged.marked);
    EXPECT_FALSE(other.marked);
}

TEST_F(GroupDragTest, WithoutAGroupNothingGoesAlong) {
    first.group.reset();
    const CTrackKey& dragged = first.Add(5.0f, /*marked*/ true);
    CTrackKey& other = first.Add(8.0f, /*marked*/ true);
    GroupDrag(dragged, first).Follow(5.0f, 6.0f);
    EXPECT_EQ(other.time, 8.0f);
}

} // namespace
