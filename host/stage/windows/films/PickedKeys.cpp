#include "host/stage/windows/films/PickedKeys.h"

#include "framework/Wnd.h"
#include "host/stage/windows/films/FilmsIds.h"
#include "host/stage/windows/films/TimelineHand.h"

#include <algorithm>

namespace stage {

namespace {
constexpr int kSearchStep = 2; ///< pixels; the narrowest key is hit over six
}

void PickedKeys::NotePress(CWnd& row, CPoint place, bool ctrl) {
    const IFilmKey* key = hand.KeyAt(row, place);
    if (!ctrl) {
        keys.clear();
    }
    if (key == nullptr) {
        return;
    }
    // With Ctrl a second press takes the key out again, as it does with the timeline's own mark.
    const bool wasIn = std::erase_if(keys, [key](const Picked& picked) { return picked.key == key; }) != 0;
    if (!wasIn || !ctrl) {
        keys.push_back({row.GetSafeHwnd(), place, key});
    }
}

void PickedKeys::NoteRelease(CPoint place) {
    if (!keys.empty()) {
        keys.back().place.x = place.x; // the height is that of the key's row
    }
}

/// The row with the key at `place`, which is where it lies now; null if it can't be seen.
CWnd* PickedKeys::Find(Picked& picked) const {
    const std::vector<CWnd*> rows = hand.Rows();
    const auto own =
        std::ranges::find_if(rows, [&picked](const CWnd* row) { return row->GetSafeHwnd() == picked.row; });
    if (own == rows.end()) {
        return nullptr;
    }
    if (hand.KeyAt(**own, picked.place) == picked.key) {
        return *own;
    }
    CRect area;
    (*own)->GetClientRect(&area);
    for (int x = 0; x < area.Width(); x += kSearchStep) {
        if (hand.KeyAt(**own, {x, picked.place.y}) == picked.key) {
            picked.place.x = x;
            return *own;
        }
    }
    return nullptr;
}

int PickedKeys::Remove() {
    int removed = 0;
    // By value: what the removal calls may pick others.
    for (Picked picked : std::vector<Picked>(keys)) {
        CWnd* row = Find(picked);
        if (row != nullptr && hand.ChooseAt(*row, picked.place, films_id::kRemoveKey)) {
            ++removed;
        }
    }
    keys.clear();
    return removed;
}

bool PickedKeys::Copy() {
    if (keys.empty()) {
        return false;
    }
    CWnd* row = Find(keys.back());
    return row != nullptr && hand.ChooseAt(*row, keys.back().place, films_id::kCopyKey);
}

} // namespace stage
