#include "timeline/CloneDrag.h"

#include "helpers/FilmKeyDuplicator.h"

#include <utility>

void CloneDrag::Begin(CFilmKeyDuplicator& duplicator, CTrackKey& key, CTrackCtrl& row) {
    duplicator.Set(&key, &row, /*clone*/ true);
    on = true;
}

bool CloneDrag::Update(CFilmKeyDuplicator& duplicator, float from, float to) {
    if (!duplicator.HasSource() || !duplicator.cloneMode) {
        return false;
    }
    duplicator.sourceTime = static_cast<float>(duplicator.sourceTime + (static_cast<double>(to) - from));
    return true;
}

bool CloneDrag::Lose(CFilmKeyDuplicator& duplicator) {
    if (!std::exchange(on, false) || !duplicator.cloneMode) {
        return false;
    }
    duplicator.ClearSource();
    return true;
}
