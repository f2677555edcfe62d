#pragma once

#include "host/engine/Light.h"
#include "host/engine/TrackBase.h"

#include <optional>

namespace engine {

/// Colour and switch of a light as driven by a track, with what was there before the film.
class LightDriver {
public:
    /// `target` is what the track drives at this moment; null drives nothing.
    void Apply(LightProperties* target, const VectorChannel* colors, float time, bool on);
    void Restore();
    void Drop() { driven = nullptr; }

private:
    LightProperties* driven = nullptr;
    LightProperties before;
};

/// Drives a GL light helper, or the level's sun, whose helper stands where the light comes from.
class GLLightTrack final : public TrackOf<CFilmGLLightTrack, ClassId::GLLightTrack> {
public:
    explicit GLLightTrack(FilmManager& filmManager) : TrackOf(filmManager) {}

    void Pose(float time) override;
    void Rest() override;
    void Forget(const DoomedObjects& doomed) override;

private:
    LightProperties* Target() const;

    LightDriver driver;
    std::optional<Vector3> sunDirectionBefore;
};

/// Drives a dynamic light helper.
class DynLightTrack final : public TrackOf<CFilmDynLightTrack, ClassId::DynLightTrack> {
public:
    explicit DynLightTrack(FilmManager& filmManager) : TrackOf(filmManager) {}

    void Pose(float time) override;
    void Rest() override { driver.Restore(); }
    void Forget(const DoomedObjects& doomed) override;

private:
    LightDriver driver;
};

} // namespace engine
