#include "host/stage/windows/films/CameraCuts.h"

#include "plugin/contract/Film.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>

namespace stage {

namespace {

constexpr int kPriorityLimit = 2000; ///< keys from here on are never in force

/// A key begins or ends to hold.
struct Change {
    float time;
    bool begins;
    std::size_t place; ///< in the track
    const CFilmCameraKey* key;
};

std::vector<Change> ChangesOf(const CFilmTrack& track) {
    std::vector<Change> changes;
    std::size_t place = 0;
    for (const IFilmKey* key : track.keys) {
        if (key->kind != KeyKind::Camera || !(key->endTime > key->time)) {
            continue;
        }
        const auto* camera = static_cast<const CFilmCameraKey*>(key);
        if (camera->priority < kPriorityLimit) {
            changes.push_back({key->time, true, place, camera});
            changes.push_back({key->endTime, false, place, camera});
            ++place;
        }
    }
    std::ranges::sort(changes, {}, &Change::time);
    return changes;
}

} // namespace

std::vector<float> CameraCuts(const IFilm& film) {
    std::vector<float> cuts;
    if (film.mainTrack == nullptr) {
        return cuts;
    }
    std::set<std::tuple<int, std::size_t, const CFilmCameraKey*>> holding;
    const CFilmCameraKey* winner = nullptr;
    const std::vector<Change> changes = ChangesOf(*film.mainTrack);
    for (std::size_t i = 0; i < changes.size();) {
        const float time = changes[i].time;
        for (; i < changes.size() && changes[i].time == time; ++i) {
            const Change& change = changes[i];
            const std::tuple entry{static_cast<int>(change.key->priority), change.place, change.key};
            if (change.begins) {
                holding.insert(entry);
            } else {
                holding.erase(entry);
            }
        }
        const CFilmCameraKey* now = holding.empty() ? nullptr : std::get<2>(*holding.begin());
        if (now != winner && time <= film.length) {
            cuts.push_back(time);
        }
        winner = now;
    }
    return cuts;
}

int FrameOfCut(float seconds, int framesPerSecond) {
    constexpr double kSlack = 0.001; // of a frame; times are float
    return static_cast<int>(std::ceil(static_cast<double>(seconds) * framesPerSecond - kSlack));
}

} // namespace stage
