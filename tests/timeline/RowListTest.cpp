#include "timeline/rows/RowList.h"

#include "plugin/PluginImpl.h"
#include "timeline/rows/TrackCtrl.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

/// Rows without windows, named by their place.
class RowListTest : public testing::Test {
protected:
    CTrackCtrl* Add(bool visible = true) {
        made.push_back(std::make_unique<CTrackCtrl>());
        CTrackCtrl* row = made.back().get();
        row->visible = visible;
        rows.tracks.push_back(row);
        if (visible) {
            rows.visibleTracks.push_back(row);
        }
        return row;
    }
    void AddRows(int count, std::size_t top) {
        for (int i = 0; i < count; ++i) {
            Add();
        }
        rows.topRow = rows.RowAt(top);
    }
    /// Place of a row among the visible ones, -1 for none.
    int PlaceOf(const CTrackCtrl* row) const {
        for (std::size_t i = 0; i < rows.visibleTracks.size(); ++i) {
            if (rows.visibleTracks[i] == row) {
                return static_cast<int>(i);
            }
        }
        return -1;
    }

    IPluginImpl plugin;
    std::vector<std::unique_ptr<CTrackCtrl>> made;
    RowList rows;
};

} // namespace

TEST_F(RowListTest, TopRowThatDoesntShowStandsBehindAll) {
    AddRows(3, 1);
    EXPECT_EQ(rows.TopIndex(), 1U);
    rows.topRow = nullptr;
    EXPECT_EQ(rows.TopIndex(), 3U);
    EXPECT_EQ(rows.RowAt(3), nullptr);
}

TEST_F(RowListTest, NearestVisibleRowIsBeforeOrElseBehind) {
    CTrackCtrl* hidden = Add(false);
    CTrackCtrl* first = Add();
    CTrackCtrl* between = Add(false);
    CTrackCtrl* last = Add();
    EXPECT_EQ(rows.NearestVisibleRow(between), first);
    EXPECT_EQ(rows.NearestVisibleRow(hidden), first);
    EXPECT_EQ(rows.NearestVisibleRow(first), last);
    const CTrackCtrl stranger;
    EXPECT_EQ(rows.NearestVisibleRow(&stranger), nullptr);
}

TEST_F(RowListTest, OnlyRowHasNoNeighbour) {
    EXPECT_EQ(rows.NearestVisibleRow(Add()), nullptr);
}

TEST_F(RowListTest, HiddenTopRowGivesWay) {
    Add();
    CTrackCtrl* before = Add();
    rows.topRow = Add(false);
    rows.MendTopRow(0);
    EXPECT_EQ(rows.topRow, before);
}

TEST_F(RowListTest, LastPageStaysFullButForOneRow) {
    AddRows(10, 8);
    rows.MendTopRow(5); // 2 rows are left of 5: back by 5 - 2 - 1
    EXPECT_EQ(PlaceOf(rows.topRow), 6);
    rows.topRow = rows.RowAt(5);
    rows.MendTopRow(5); // 5 are left
    EXPECT_EQ(PlaceOf(rows.topRow), 5);
    rows.MendTopRow(30);
    EXPECT_EQ(PlaceOf(rows.topRow), 0);
}

TEST_F(RowListTest, FirstRowThatShowsBecomesTheTop) {
    rows.MendTopRow(5);
    EXPECT_EQ(rows.topRow, nullptr);
    Add(false);
    CTrackCtrl* first = Add();
    rows.MendTopRow(5);
    EXPECT_EQ(rows.topRow, first);
}

TEST_F(RowListTest, LinesEndWhereTheLastRowIsReached) {
    AddRows(10, 5);
    EXPECT_EQ(PlaceOf(rows.LineAhead(4).value()), 6); // 5 + 4 is less than 10
    EXPECT_EQ(PlaceOf(rows.LineBack().value()), 4);
    rows.topRow = rows.RowAt(6);
    EXPECT_FALSE(rows.LineAhead(4)); // 6 + 4 isn't
    rows.topRow = rows.RowAt(0);
    EXPECT_FALSE(rows.LineBack());
    rows.topRow = nullptr;
    EXPECT_FALSE(rows.LineBack());
    EXPECT_FALSE(rows.LineAhead(-5));
}

TEST_F(RowListTest, PagesAheadAreCutAtTheLastPage) {
    AddRows(10, 0);
    EXPECT_EQ(PlaceOf(rows.PageAhead(4).value()), 4);
    rows.topRow = rows.RowAt(4);
    EXPECT_EQ(PlaceOf(rows.PageAhead(4).value()), 6); // 6 rows are left, 2 more than fit
    rows.topRow = rows.RowAt(7);
    EXPECT_EQ(rows.PageAhead(4), std::optional<CTrackCtrl*>(nullptr)) << "3 rows are left: no top row";
    rows.topRow = nullptr;
    EXPECT_FALSE(rows.PageAhead(4));
}

TEST_F(RowListTest, PagesBackEndAtTheFirstRow) {
    AddRows(10, 6);
    EXPECT_EQ(PlaceOf(rows.PageBack(4)), 2);
    rows.topRow = rows.RowAt(2);
    EXPECT_EQ(PlaceOf(rows.PageBack(4)), 0);
    EXPECT_EQ(PlaceOf(rows.PageBack(-1)), 2) << "no room for a row is a page of none";
    rows.topRow = nullptr;
    EXPECT_EQ(PlaceOf(rows.PageBack(4)), 0);
}

TEST_F(RowListTest, ThumbStopsARowBehindTheLastPage) {
    AddRows(10, 0);
    EXPECT_EQ(rows.FitThumb(-1.0f, 4), 0.0f);
    EXPECT_EQ(rows.FitThumb(3.5f, 4), 3.5f);
    EXPECT_EQ(rows.FitThumb(5.0f, 4), 5.0f); // 5 + 4 isn't above 9
    EXPECT_EQ(rows.FitThumb(5.5f, 4), 6.0f);
    EXPECT_EQ(rows.FitThumb(9.0f, 4), 6.0f);
    EXPECT_EQ(rows.FitThumb(0.0f, 12), -2.0f) << "required: before the list where all rows fit";
}

TEST_F(RowListTest, HandleFindsTheRowAgain) {
    AddRows(3, 1);
    made[1]->kind = KeyKind::Camera;
    made[1]->subIndex = 2;
    RowHandle handle;
    rows.GetTopRowHandle(handle);
    EXPECT_EQ(handle.kind, KeyKind::Camera);
    EXPECT_EQ(handle.subIndex, 2);
    rows.topRow = made[0].get();
    rows.SetTopRowHandle(handle);
    EXPECT_EQ(rows.topRow, made[1].get());
    handle.subIndex = 3;
    rows.SetTopRowHandle(handle);
    EXPECT_EQ(rows.topRow, made[1].get()) << "no row has it";
    rows.topRow = nullptr;
    rows.GetTopRowHandle(handle);
    EXPECT_EQ(handle.kind, KeyKind::None);
    EXPECT_EQ(handle.subIndex, -1);
}

TEST_F(RowListTest, RowThatGoesIsLinkedToNoOther) {
    AddRows(3, 1);
    CTrackCtrl* root = made[0].get();
    CTrackCtrl* middle = made[1].get();
    CTrackCtrl* leaf = made[2].get();
    root->children = {middle};
    root->lastAnimationRow = middle;
    middle->parent = root;
    middle->children = {leaf};
    leaf->parent = middle;
    rows.Unlink(middle);
    EXPECT_TRUE(root->children.empty());
    EXPECT_EQ(root->lastAnimationRow, nullptr);
    EXPECT_EQ(leaf->parent, nullptr);
    EXPECT_EQ(rows.topRow, root);
    EXPECT_EQ(PlaceOf(middle), -1);
    EXPECT_EQ(rows.tracks.size(), 3U);
}
