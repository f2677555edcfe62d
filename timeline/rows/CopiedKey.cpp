#include "timeline/rows/CopiedKey.h"

#include "keys/views/TrackKey.h"

bool CopiedKey::Set(CTrackKey* key, CTrackCtrl* row, bool clone) {
    if (key == nullptr || row == nullptr) {
        return false;
    }
    sourceKey = key;
    sourceRow = row;
    cloneMode = clone;
    sourceTime = key->time;
    return true;
}
