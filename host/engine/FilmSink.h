#pragma once

#include "plugin/contract/Film.h"

namespace engine {

/// Hears what films set off. Installed by the host at the level; the calls come from IFilm::SetTime and
/// IFilm::Stop, so a sink must not change the film's tracks.
class IFilmSink {
public:
    virtual ~IFilmSink() = default;
    /// A key of kinds 2 to 9 or 13 was passed. `late` is how many seconds ago it started, 0 or more.
    /// Script keys that wait for the end come with the film's Stop and 0.
    virtual void OnKeyFired(IFilm& film, CFilmTrack& track, const IFilmKey& key, float late) = 0;
    /// The playing ended: sounds and effects of the film are over.
    virtual void OnFilmStopped(IFilm& film) = 0;
};

/// Seconds of a sound file by the path that a key holds, -1.0 if it can't be read.
using SoundDurationFunction = float (*)(const std::string& path);

} // namespace engine
