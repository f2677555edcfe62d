#include "keys/views/Selection.h"

#include "keys/views/NullTimeTrackKey.h"
#include "plugin/PluginImpl.h"
#include "timeline/rows/TrackCtrl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class SelectionTest : public testing::Test {
protected:
    SelectionTest() { Point(&gone); }
    ~SelectionTest() override { CurrentKey() = nullptr; }

    /// Every holder of a single key holds this one.
    void Point(CTrackKey* key) {
        selection.activeKey = selection.hoverKey = selection.menuKey = CurrentKey() = key;
    }

    IPluginImpl plugin;
    CTrackCtrl row;
    CTrackCtrl other;
    CNullTimeTrackKey gone;
    CNullTimeTrackKey kept;
    Selection selection;
};

} // namespace

TEST_F(SelectionTest, ViewThatGoesIsForgottenEverywhere) {
    selection.selectedKeys = {&gone, &kept, &gone};
    selection.Forget(&gone);
    EXPECT_THAT(selection.selectedKeys, ElementsAre(&kept));
    EXPECT_EQ(selection.activeKey, nullptr);
    EXPECT_EQ(selection.hoverKey, nullptr);
    EXPECT_EQ(selection.menuKey, nullptr);
    EXPECT_EQ(CurrentKey(), nullptr);
}

TEST_F(SelectionTest, AnotherViewStays) {
    selection.selectedKeys = {&gone};
    selection.Forget(&kept);
    EXPECT_THAT(selection.selectedKeys, ElementsAre(&gone));
    EXPECT_EQ(selection.activeKey, &gone);
    EXPECT_EQ(selection.hoverKey, &gone);
    EXPECT_EQ(selection.menuKey, &gone);
    EXPECT_EQ(CurrentKey(), &gone);
}

TEST_F(SelectionTest, RowThatGoesIsForgottenAndAnotherStays) {
    selection.menuRow = selection.adjustRow = &row;
    selection.Forget(&other);
    EXPECT_EQ(selection.menuRow, &row);
    EXPECT_EQ(selection.adjustRow, &row);
    selection.Forget(&row);
    EXPECT_EQ(selection.menuRow, nullptr);
    EXPECT_EQ(selection.adjustRow, nullptr);
    EXPECT_EQ(selection.menuKey, &gone);
}

TEST_F(SelectionTest, AllGoAtOnce) {
    selection.selectedKeys = {&gone, &kept};
    selection.menuRow = selection.adjustRow = &row;
    selection.ForgetAll();
    EXPECT_THAT(selection.selectedKeys, IsEmpty());
    EXPECT_EQ(selection.activeKey, nullptr);
    EXPECT_EQ(selection.hoverKey, nullptr);
    EXPECT_EQ(selection.menuKey, nullptr);
    EXPECT_EQ(selection.menuRow, nullptr);
    EXPECT_EQ(selection.adjustRow, nullptr);
    EXPECT_EQ(CurrentKey(), nullptr);
}
