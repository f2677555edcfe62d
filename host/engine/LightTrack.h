#pragma once

#include "host/engine/Light.h"
#include "host/engine/OwnPlace.h"
#include "host/engine/TrackBase.h"

#include <optional>

namespace engine {

/// Switch of a light, and its colour where there are keys, as driven by a track, with what was there before
/// the film. Range and strength are the user's also while the film is open. The light is that of an object
/// or, with a null object, the level's sun; it is looked up at each use and may be gone.
class LightDriver {
public:
    void Apply(const LevelData& data, SceneObject* object, const VectorChannel* colors, float time, bool on);
    void Restore(const LevelData& data);
    /// The object goes, whoever holds it now.
    void Forget(const DoomedObjects& doomed);

private:
    bool driving = false;
    SceneObject* driven = nullptr; ///< null while driving: the sun
    bool onBefore = true;
    std::optional<Vector3> colorBefore; ///< none while no keys say a colour
};

/// Drives a GL light helper, or the level's sun, whose helper stands where the light comes from.
class GLLightTrack final : public TrackOf<CFilmGLLightTrack, ClassId::GLLightTrack> {
public:
    explicit GLLightTrack(FilmManager& filmManager) : TrackOf(filmManager) {}

    void Pose(float time) override;
    void Begin() override { ownPlace.Forget(); }
    void Rest() override;
    void ShowAtRest() const override;
    void Forget(const DoomedObjects& doomed) override;
    void Refresh() override;
    const EditorObject* Driven() const override { return lightObject; }

private:
    LightDriver driver;
    OwnPlace ownPlace;
    std::optional<Vector3> sunDirectionBefore;
};

/// Drives a dynamic light helper.
class DynLightTrack final : public TrackOf<CFilmDynLightTrack, ClassId::DynLightTrack> {
public:
    explicit DynLightTrack(FilmManager& filmManager) : TrackOf(filmManager) {}

    void Pose(float time) override;
    void Begin() override { ownPlace.Forget(); }
    void Rest() override;
    void ShowAtRest() const override;
    void Forget(const DoomedObjects& doomed) override;
    void Refresh() override;
    const EditorObject* Driven() const override { return lightObject; }

private:
    LightDriver driver;
    OwnPlace ownPlace;
};

} // namespace engine
