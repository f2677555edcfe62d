#include "helpers/FilmKeyDuplicator.h"

#include "keys/TrackKey.h"

bool CFilmKeyDuplicator::Set(CTrackKey* key, CTrackCtrl* row, bool clone) {
    if (key == nullptr || row == nullptr) {
        return false;
    }
    sourceKey = key;
    sourceRow = row;
    cloneMode = clone;
    sourceTime = key->time;
    return true;
}

bool CFilmKeyDuplicator::Paste(CTrackKey* /*target*/) {
    return false;
}
