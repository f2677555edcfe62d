#include "host/engine/KeyChannel.h"

#include "host/engine/FilmManager.h"
#include "host/engine/KeyFormat.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace engine {

namespace {

/// Keys that are put in place one by one before a whole sort is cheaper.
constexpr int kMostMoves = 8;

/// Whether a key from a file of its own may come among those of a film.
bool CanStandInARow(const IFilmKey* key) {
    const bool hasNoDuration = (key->flags & KeyFlag::NoDuration) != 0;
    return std::isfinite(key->time) && std::isfinite(key->endTime) && hasNoDuration != IsTimedKind(key->kind);
}

float SortTime(const IFilmKey* key) {
    return std::isnan(key->time) ? std::numeric_limits<float>::infinity() : key->time;
}

} // namespace

KeyChannel::KeyChannel(CFilmTrack& owner, int keyKind, FilmManager& filmManager)
    : track(owner), manager(filmManager), kind(keyKind) {
}

KeyChannel::~KeyChannel() {
    for (IFilmKey* key : sortedKeys) {
        manager.Keys().DestroyKey(key);
    }
}

void KeyChannel::Sort() const {
    // Insertion allocates nothing and is stable; one key out of place, a drag's case, costs one pass.
    int moves = 0;
    for (std::size_t i = 1; i < sortedKeys.size(); ++i) {
        if (sortedTimes[i - 1] <= sortedTimes[i]) {
            continue;
        }
        if (++moves > kMostMoves) {
            std::stable_sort(sortedKeys.begin(), sortedKeys.end(),
                             [](const IFilmKey* a, const IFilmKey* b) { return SortTime(a) < SortTime(b); });
            std::transform(sortedKeys.begin(), sortedKeys.end(), sortedTimes.begin(), SortTime);
            return;
        }
        const auto at = static_cast<std::ptrdiff_t>(i);
        const auto place = std::upper_bound(sortedTimes.begin(), sortedTimes.begin() + at, sortedTimes[i]) -
                           sortedTimes.begin();
        std::rotate(sortedTimes.begin() + place, sortedTimes.begin() + at, sortedTimes.begin() + at + 1);
        std::rotate(sortedKeys.begin() + place, sortedKeys.begin() + at, sortedKeys.begin() + at + 1);
    }
}

void KeyChannel::Rebuild() const {
    if (dirty) {
        sortedTimes.resize(sortedKeys.size());
        std::transform(sortedKeys.begin(), sortedKeys.end(), sortedTimes.begin(), SortTime);
        Sort();
    }
    dirty = false;
    stale = false;
    OnRebuilt();
}

void KeyChannel::Insert(IFilmKey* key) {
    const float time = SortTime(key);
    if (dirty) {
        sortedKeys.push_back(key);
    } else if (sortedTimes.empty() || sortedTimes.back() <= time) {
        sortedTimes.push_back(time);
        sortedKeys.push_back(key);
    } else {
        const auto place = std::upper_bound(sortedTimes.begin(), sortedTimes.end(), time);
        sortedKeys.insert(sortedKeys.begin() + (place - sortedTimes.begin()), key);
        sortedTimes.insert(place, time);
    }
    stale = true;
    Touch();
}

void KeyChannel::Append(std::vector<IFilmKey*> added) {
    if (sortedKeys.empty()) {
        sortedKeys.swap(added);
    } else {
        sortedKeys.insert(sortedKeys.end(), added.begin(), added.end());
    }
    MarkDirty();
}

void KeyChannel::SetKeys(std::vector<IFilmKey*> keys) {
    sortedKeys = std::move(keys);
    MarkDirty();
}

bool KeyChannel::Remove(IFilmKey* key) {
    const auto found = std::find(sortedKeys.begin(), sortedKeys.end(), key);
    if (found == sortedKeys.end()) {
        return false;
    }
    if (!dirty) {
        sortedTimes.erase(sortedTimes.begin() + (found - sortedKeys.begin()));
    }
    sortedKeys.erase(found);
    stale = true;
    Touch();
    return true;
}

void KeyChannel::DestroyAll() {
    for (IFilmKey* key : sortedKeys) {
        manager.Keys().DestroyKey(key);
    }
    sortedKeys.clear();
    sortedTimes.clear();
    MarkDirty();
}

void KeyChannel::CollectKeys(KeyList& list) const {
    for (IFilmKey* key : Keys()) {
        list.push_back(key);
    }
}

int KeyChannel::LastAtOrBefore(float time) const {
    Refresh();
    const std::size_t count = sortedTimes.size();
    if (count == 0 || !(time >= sortedTimes.front())) {
        return -1;
    }
    if (time >= sortedTimes.back()) {
        return static_cast<int>(count) - 1;
    }
    // Keys mostly stand at even distances: look first where the time would be then.
    const float share = (time - sortedTimes.front()) / (sortedTimes.back() - sortedTimes.front());
    const auto guess =
        std::isfinite(share) ? static_cast<std::size_t>(share * static_cast<float>(count - 1)) : 0;
    const std::size_t at = std::min(guess, count - 2);
    if (sortedTimes[at] <= time && time < sortedTimes[at + 1]) {
        return static_cast<int>(at);
    }
    const auto begin = sortedTimes.begin() + (sortedTimes[at] <= time ? static_cast<long>(at) + 1 : 0);
    const auto end =
        sortedTimes[at] <= time ? sortedTimes.end() : sortedTimes.begin() + static_cast<long>(at);
    return static_cast<int>(std::upper_bound(begin, end, time) - sortedTimes.begin()) - 1;
}

void KeyChannel::Export(fs::file& file, int) {
    std::string body;
    WriteKeys(Keys(), kind, body);
    const auto size = static_cast<std::uint32_t>(body.size());
    unsigned char prefix[4];
    for (int i = 0; i < 4; ++i) {
        prefix[i] = static_cast<unsigned char>(size >> (8 * i));
    }
    file.Write(prefix, sizeof prefix);
    file.Write(body.data(), static_cast<int>(body.size()));
}

std::optional<std::string> KeyChannel::ReadBody(fs::file& file) const {
    unsigned char prefix[4] = {};
    const int got = file.Read(prefix, sizeof prefix);
    std::uint32_t size = 0;
    for (int i = 0; i < 4; ++i) {
        size |= static_cast<std::uint32_t>(prefix[i]) << (8 * i);
    }
    // The size is not trusted: memory grows only with what the file really has.
    std::string body;
    char block[16 * 1024];
    while (got == 4 && body.size() < size) {
        const auto wanted = std::min(sizeof block, size - body.size());
        const int count = file.Read(block, static_cast<int>(wanted));
        if (count == 0) {
            break;
        }
        body.append(block, static_cast<std::size_t>(count));
    }
    if (got == 0) {
        WriteKeys({}, kind, body);
        return body;
    }
    char behind = 0;
    const bool isWhole = got == 4 && body.size() == size && file.Read(&behind, 1) == 0;
    return isWhole ? std::optional(std::move(body)) : std::nullopt;
}

void KeyChannel::Import(fs::file& file, int, int fileKind) {
    std::vector<IFilmKey*> loaded;
    const std::optional<std::string> body = ReadBody(file);
    if (!body || fileKind != kind || !ReadKeys(*body, kind, manager, track, /*listed*/ false, loaded)) {
        throw fs::file_exception(fs::file_exception::kRead);
    }
    if (!std::ranges::all_of(loaded, CanStandInARow)) {
        std::ranges::for_each(loaded, [this](IFilmKey* key) { manager.Keys().DestroyKey(key); });
        throw fs::file_exception(fs::file_exception::kRead);
    }
    track.ClearKind(kind);
    Append(std::move(loaded));
}

void MarkChannelDirty(const IFilmKey& key) {
    if (key.track != nullptr && key.kind >= 0 && key.kind < KeyKind::Count) {
        if (MKTrack* channel = key.track->subTracks[key.kind]) {
            static_cast<KeyChannel*>(channel)->MarkDirty();
        }
    }
}

} // namespace engine
