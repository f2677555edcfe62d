#include "keys/views/GroupDrag.h"

#include "keys/views/KeyRow.h"
#include "keys/views/KeyViewList.h"
#include "keys/views/TrackKey.h"

#include <algorithm>

GroupDrag::GroupDrag(const CTrackKey& key, const KeyRow& row)
    : dragged(key), axis(row.GetAxis()), rows(row.GetGroup().value_or(std::vector<KeyRow*>())) {
}

bool GroupDrag::StaysOnAxis(float target) const {
    const auto isOutside = [this](float moved) { return moved < axis.start || moved > axis.end; };
    if (isOutside(target)) {
        return false;
    }
    const auto wouldLeave = [&](const CTrackKey* key) {
        return key->marked && key->time != dragged.time && isOutside(target - dragged.time + key->time);
    };
    return std::ranges::none_of(
        rows, [&](const KeyRow* row) { return std::ranges::any_of(row->GetKeys(), wouldLeave); });
}

void GroupDrag::Follow(float oldTime, float target) const {
    for (KeyRow* row : rows) {
        bool anyMoved = false;
        for (CTrackKey* key : row->GetKeys()) {
            if (!key->marked || key == &dragged) {
                continue;
            }
            const float moved = key->time == oldTime ? target : key->time + (target - oldTime);
            key->SetPosition(moved, /*viewOnly*/ false);
            key->lastMouseTime = dragged.lastMouseTime;
            anyMoved = true;
        }
        if (anyMoved) {
            row->Repaint();
        }
    }
}

void GroupDrag::ClearMarks() const {
    for (const KeyRow* row : rows) {
        for (CTrackKey* key : row->GetKeys()) {
            key->marked = false;
        }
    }
}
