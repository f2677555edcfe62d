#include "timeline/rows/CloneDrag.h"

#include "timeline/rows/CopiedKey.h"

#include <utility>

void CloneDrag::Begin(CopiedKey& copied, CTrackKey& key, CTrackCtrl& row) {
    copied.Set(&key, &row, /*clone*/ true);
    on = true;
}

bool CloneDrag::Update(CopiedKey& copied, float from, float to) {
    if (!copied.HasSource() || !copied.cloneMode) {
        return false;
    }
    copied.sourceTime = static_cast<float>(copied.sourceTime + (static_cast<double>(to) - from));
    return true;
}

bool CloneDrag::Lose(CopiedKey& copied) {
    if (!std::exchange(on, false) || !copied.cloneMode) {
        return false;
    }
    copied.ClearSource();
    return true;
}
