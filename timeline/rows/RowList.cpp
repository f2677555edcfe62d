#include "timeline/rows/RowList.h"

#include "plugin/contract/FilmKey.h"
#include "timeline/rows/TrackCtrl.h"

#include <algorithm>
#include <iterator>

std::size_t RowList::TopIndex() const {
    const auto place = std::ranges::find(visibleTracks, topRow);
    return static_cast<std::size_t>(place - visibleTracks.begin());
}

CTrackCtrl* RowList::RowAt(std::size_t index) const {
    return index < visibleTracks.size() ? visibleTracks[index] : nullptr;
}

CTrackCtrl* RowList::NearestVisibleRow(const CTrackCtrl* row) const {
    CTrackCtrl* behind = nullptr;
    auto place = tracks.rbegin();
    for (; place != tracks.rend() && *place != row; ++place) {
        if ((*place)->visible) {
            behind = *place;
        }
    }
    if (place == tracks.rend()) {
        return nullptr;
    }
    const auto before =
        std::find_if(std::next(place), tracks.rend(), [](CTrackCtrl* r) { return r->visible; });
    return before != tracks.rend() ? *before : behind;
}

CTrackCtrl* RowList::RootRowOf(const CFilmTrack* track) const {
    const auto row = std::ranges::find_if(
        tracks, [track](const CTrackCtrl* r) { return r->IsRoot() && r->track == track; });
    return row != tracks.end() ? *row : nullptr;
}

CTrackCtrl* RowList::FindRowOfKeyView(const CTrackKey* view, bool byValue) const {
    const auto row = std::ranges::find_if(
        tracks, [view, byValue](const CTrackCtrl* r) { return r->FindKeyView(view, byValue) != nullptr; });
    return row != tracks.end() ? *row : nullptr;
}

CTrackCtrl* RowList::RowOfRecord(const IFilmKey* record) const {
    if (record == nullptr || record->track == nullptr) {
        return nullptr;
    }
    const auto row =
        std::ranges::find_if(tracks, [record](const CTrackCtrl* r) { return r->track == record->track; });
    if (row == tracks.end()) {
        return nullptr;
    }
    // Required: for an animation key the first animation row, whatever its element.
    const int index = record->kind == KeyKind::Camera ? static_cast<const CFilmCameraKey*>(record)->priority
                                                      : CTrackCtrl::kAnySubIndex;
    return (*row)->FindChild(record->kind, index);
}

void RowList::GetTopRowHandle(RowHandle& handle) const {
    handle = topRow != nullptr ? RowHandle{topRow->track, topRow->kind, topRow->subIndex} : RowHandle{};
}

void RowList::SetTopRowHandle(const RowHandle& handle) {
    for (CTrackCtrl* row : tracks) {
        if (row->track == handle.track && row->kind == handle.kind && row->subIndex == handle.subIndex) {
            topRow = row;
            return;
        }
    }
}

void RowList::MendTopRow(int fitting) {
    if (topRow == nullptr && !visibleTracks.empty()) {
        topRow = visibleTracks.front();
    }
    if (topRow != nullptr && !topRow->visible) {
        topRow = NearestVisibleRow(topRow);
    }
    const std::size_t top = TopIndex();
    if (top >= visibleTracks.size()) {
        return;
    }
    const int remaining = static_cast<int>(visibleTracks.size() - top);
    if (remaining < fitting) {
        const auto back = static_cast<std::size_t>(fitting - remaining - 1);
        topRow = visibleTracks[top - std::min(back, top)];
    }
}

void RowList::Unlink(CTrackCtrl* row) {
    if (topRow == row) {
        topRow = NearestVisibleRow(row);
    }
    std::erase(visibleTracks, row);
    if (row->parent != nullptr) {
        row->parent->children.remove(row);
        if (row->parent->lastAnimationRow == row) {
            row->parent->lastAnimationRow = nullptr;
        }
    }
    for (CTrackCtrl* child : row->children) {
        child->parent = nullptr;
    }
}

std::optional<CTrackCtrl*> RowList::LineAhead(int fitting) const {
    const std::size_t top = TopIndex();
    if (RowAt(top + 1) != nullptr &&
        static_cast<int>(top) + fitting < static_cast<int>(visibleTracks.size())) {
        return RowAt(top + 1);
    }
    return std::nullopt;
}

std::optional<CTrackCtrl*> RowList::LineBack() const {
    const std::size_t top = TopIndex();
    return top > 0 && top < visibleTracks.size() ? std::optional(RowAt(top - 1)) : std::nullopt;
}

std::optional<CTrackCtrl*> RowList::PageAhead(int fitting) const {
    const std::size_t top = TopIndex();
    if (top >= visibleTracks.size()) {
        return std::nullopt;
    }
    const int remaining = static_cast<int>(visibleTracks.size() - top);
    const int page = std::max(fitting, 0);
    // Required: with fewer rows left than fit there is no row to go to, and the list shows none until it is
    // rebuilt.
    return remaining >= page ? RowAt(top + static_cast<std::size_t>(std::min(remaining - page, page)))
                             : nullptr;
}

CTrackCtrl* RowList::PageBack(int fitting) const {
    const std::size_t index = TopIndex();
    const std::size_t top = index < visibleTracks.size() ? index : 0;
    const auto page = static_cast<std::size_t>(std::max(fitting, 0));
    return top >= page ? RowAt(top - page) : RowAt(0);
}

float RowList::FitThumb(float position, int fitting) const {
    const int size = static_cast<int>(visibleTracks.size());
    position = std::max(position, 0.0f);
    if (position + static_cast<float>(fitting) > static_cast<float>(size - 1)) {
        position = static_cast<float>(size - fitting); // required, also when it is a row further
    }
    return position;
}
