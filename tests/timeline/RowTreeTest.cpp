#include "timeline/rows/RowTree.h"

#include "plugin/rules/PluginFilmsParams.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

constexpr int kAny = -2;

/// A row without a window.
struct PlainRow {
    int kind = KeyKind::None;
    int subIndex = -1;
    bool visible = true;
    bool expanded = false;
    KeyFilter kindFlags{};
    std::vector<int> keys;
    std::list<PlainRow*> children;
};

PlainRow Camera(int index) {
    PlainRow row;
    row.kind = KeyKind::Camera;
    row.subIndex = index;
    return row;
}

PlainRow OfKind(int kind, bool hasKey) {
    PlainRow row;
    row.kind = kind;
    if (hasKey) {
        row.keys.push_back(1);
    }
    return row;
}

TEST(RowTreeTest, ChildIsFoundByKindAndIndex) {
    PlainRow first = Camera(0);
    PlainRow second = Camera(1);
    const std::list<PlainRow*> rows{&first, &second};
    EXPECT_EQ(FindChildRow(rows, KeyKind::Camera, kAny, kAny), &first);
    EXPECT_EQ(FindChildRow(rows, KeyKind::Camera, 1, kAny), &second);
    EXPECT_EQ(FindChildRow(rows, KeyKind::Camera, 2, kAny), nullptr);
    EXPECT_EQ(FindChildRow(rows, KeyKind::Sound, kAny, kAny), nullptr);
}

TEST(RowTreeTest, LastOfAKind) {
    PlainRow first = OfKind(KeyKind::Animation, false);
    PlainRow second = OfKind(KeyKind::Animation, false);
    PlainRow other = OfKind(KeyKind::Sound, false);
    const std::list<PlainRow*> rows{&first, &second, &other};
    EXPECT_EQ(FindLastRowOfKind(rows, KeyKind::Animation), &second);
    EXPECT_EQ(FindLastRowOfKind(rows, KeyKind::Speech), nullptr);
}

TEST(RowTreeTest, CameraRowGoesBehindTheNextLowerOne) {
    PlainRow zero = Camera(0);
    PlainRow two = Camera(2);
    PlainRow sounds = OfKind(KeyKind::Sound, false);
    const std::list<PlainRow*> rows{&zero, &two, &sounds};
    EXPECT_EQ(*CameraRowPlace(rows, 1), &two);    // behind 0
    EXPECT_EQ(*CameraRowPlace(rows, 3), &sounds); // behind 2
    EXPECT_EQ(CameraRowPlace(rows, 0), rows.begin());
}

TEST(RowTreeTest, RowsWithKeysAreShownBelowAnUnfoldedRow) {
    PlainRow filled = OfKind(KeyKind::Sound, true);
    PlainRow bare = OfKind(KeyKind::Position, false);
    PlainRow root;
    root.visible = false;
    root.kindFlags.fill(1);
    root.children = {&filled, &bare};
    ShowRowsWithKeys(root, /*show*/ true);
    EXPECT_TRUE(root.visible);
    EXPECT_FALSE(filled.visible); // folded
    EXPECT_EQ(root.kindFlags[KeyKind::Sound], 1);
    EXPECT_EQ(root.kindFlags[KeyKind::Position], 0);
    root.expanded = true;
    ShowRowsWithKeys(root, /*show*/ true);
    EXPECT_TRUE(filled.visible);
    EXPECT_FALSE(bare.visible);
}

TEST(RowTreeTest, FilterShowsRowsOfItsKinds) {
    PlainRow sounds = OfKind(KeyKind::Sound, false);
    PlainRow positions = OfKind(KeyKind::Position, true);
    PlainRow root;
    root.expanded = true;
    root.children = {&sounds, &positions};
    KeyFilter filter{};
    filter[KeyKind::Sound] = 1;
    ShowRowsOfKinds(root, filter.data(), /*show*/ true);
    EXPECT_TRUE(sounds.visible);
    EXPECT_FALSE(positions.visible);
    ShowRowsOfKinds(root, nullptr, /*show*/ true);
    EXPECT_TRUE(positions.visible);
    EXPECT_EQ(root.kindFlags[KeyKind::Position], 1);
}

TEST(RowTreeTest, NoTrackHasNoRows) {
    EXPECT_TRUE(ChildRowKindsOf(nullptr).kinds.empty());
    EXPECT_TRUE(ChildRowKindsOf(nullptr).behindElements.empty());
}

} // namespace
