#include "host/engine/LevelTrack.h"

#include "host/engine/Film.h"
#include "host/engine/FilmKeys.h"

#include <algorithm>

namespace engine {

namespace {

/// Priorities from here on are not shown.
constexpr std::int32_t kPriorityLimit = 2000;

} // namespace

LevelTrack::LevelTrack(FilmManager& filmManager) : TrackOf(filmManager) {
    cameraHolder = &holder;
}

const std::string* LevelTrack::CameraNameAt(float time) const {
    const KeyChannel* channel = Channel(KeyKind::Camera);
    const CFilmCameraKey* best = nullptr;
    bool tie = false;
    for (const IFilmKey* key : channel != nullptr ? channel->Keys() : std::span<IFilmKey* const>{}) {
        const auto& record = static_cast<const CFilmCameraKey&>(*key);
        if (record.time <= time && record.endTime > time && record.priority < kPriorityLimit) {
            tie = tie || (best != nullptr && record.priority == best->priority);
            best = best == nullptr || record.priority < best->priority ? &record : best;
        }
    }
    if (tie) {
        // The list may not be in the order of time before Finish.
        const auto first = std::find_if(keys.begin(), keys.end(), [&](const IFilmKey* key) {
            return key->kind == KeyKind::Camera && key->time <= time && key->endTime > time &&
                   static_cast<const CFilmCameraKey*>(key)->priority == best->priority;
        });
        best = first != keys.end() ? static_cast<const CFilmCameraKey*>(*first) : best;
    }
    return best != nullptr ? &best->cameraName : nullptr;
}

void LevelTrack::Pose(float time) {
    const std::string* name = CameraNameAt(time);
    holder.activeCamera =
        name != nullptr && OwnFilm() != nullptr ? AsCameraTrack(OwnFilm()->FindCamera(*name)) : nullptr;
    blackBars = (FlagsAt(time, 0) & TrackFlag::BlackBars) != 0;
}

void LevelTrack::Rest() {
    blackBars = false;
}

} // namespace engine
