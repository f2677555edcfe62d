#include "host/engine/DescribedKey.h"

#include <utility>

namespace engine {

namespace {
const IFilmKey* described = nullptr;
}

const IFilmKey* TakeDescribedKey() {
    return std::exchange(described, nullptr);
}

void NoteDescribed(const IFilmKey& key) {
    described = &key;
}

} // namespace engine
