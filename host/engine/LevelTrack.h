#pragma once

#include "host/engine/TrackBase.h"

namespace engine {

/// The film-wide keys. Posing chooses the camera that is cut to.
class LevelTrack final : public TrackOf<CFilmLevelTrack, ClassId::LevelTrack> {
public:
    explicit LevelTrack(FilmManager& filmManager);

    void Pose(float time) override;
    void Rest() override;
    /// Name of the camera in force, the same rule as the plug-in's: a key counts from its time up to, not
    /// including, its end; the lowest priority below 2000 wins, of equals the first in `keys`. Null for none.
    const std::string* CameraNameAt(float time) const;
    /// True while the keys of kind 15 ask for the wide picture.
    bool BlackBars() const { return blackBars; }

private:
    CameraHolder holder;
    bool blackBars = false;
};

} // namespace engine
