#pragma once

#include "plugin/contract/FilmKey.h"
#include "plugin/contract/KeyKindTable.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <list>
#include <span>
#include <string>

class CFilmTrack;

// The tree of rows as rules over whatever has a kind, a subIndex, a name, keys and children: no window is
// asked.

/// The kinds of the rows below the root row of a track, in order. Those of an object stand before and behind
/// those of its mesh elements.
struct ChildRowKinds {
    std::span<const int> kinds;
    std::span<const int> behindElements;
    bool hasElements = false; ///< rows for the mesh elements stand between the two
};

/// Nothing for null and for a track of another class.
ChildRowKinds ChildRowKindsOf(const CFilmTrack* track);

/// The first of a kind, null for none; `anySubIndex` as subIndex matches any.
template <class Row>
Row* FindChildRow(const std::list<Row*>& children, int kind, int subIndex, int anySubIndex) {
    const auto found = std::ranges::find_if(children, [=](const Row* child) {
        return child->kind == kind && (subIndex == anySubIndex || child->subIndex == subIndex);
    });
    return found != children.end() ? *found : nullptr;
}

/// Null for none.
template <class Row> Row* FindLastRowOfKind(const std::list<Row*>& children, int kind) {
    const auto found = std::find_if(children.rbegin(), children.rend(),
                                    [kind](const Row* child) { return child->kind == kind; });
    return found != children.rend() ? *found : nullptr;
}

/// Where a camera row goes: behind the camera row with the highest index below, else in front of everything.
template <class Row>
typename std::list<Row*>::const_iterator CameraRowPlace(const std::list<Row*>& children, int cameraIndex) {
    auto place = children.begin();
    int highest = -1;
    for (auto child = children.begin(); child != children.end(); ++child) {
        const int index = (*child)->subIndex;
        if ((*child)->kind == KeyKind::Camera && index < cameraIndex && index > highest) {
            highest = index;
            place = std::next(child);
        }
    }
    return place;
}

/// Whether a filter of kinds has a byte for the kind.
constexpr bool HasFilterByte(int kind) {
    return FindKeyKind(kind) != nullptr;
}

/// Shows the rows that have keys, below a row that is unfolded, and sets the filter byte of each such kind.
template <class Row> void ShowRowsWithKeys(Row& row, bool show) {
    if (row.kind == KeyKind::None) {
        row.visible = true;
        row.kindFlags.fill(0);
    } else {
        row.visible = show && !row.keys.empty();
    }
    for (Row* child : row.children) {
        if (HasFilterByte(child->kind) && !child->keys.empty()) {
            row.kindFlags[static_cast<std::size_t>(child->kind)] = 1;
        }
        ShowRowsWithKeys(*child, show && row.expanded);
    }
}

/// Shows the rows of the kinds whose bytes are set, below a row that is unfolded. Null sets all of them.
template <class Row> void ShowRowsOfKinds(Row& row, const std::uint8_t* flags, bool show) {
    if (flags == nullptr) {
        row.kindFlags.fill(1);
    } else if (flags != row.kindFlags.data()) {
        std::copy_n(flags, row.kindFlags.size(), row.kindFlags.begin());
    }
    if (HasFilterByte(row.kind)) {
        row.visible = show && row.kindFlags[static_cast<std::size_t>(row.kind)] != 0;
    }
    for (Row* child : row.children) {
        ShowRowsOfKinds(*child, row.kindFlags.data(), show && row.expanded);
    }
}
