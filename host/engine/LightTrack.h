#pragma once

#include "host/engine/FilmManager.h"
#include "host/engine/Light.h"
#include "host/engine/OwnPlace.h"
#include "host/engine/SceneObject.h"
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

/// What the two kinds of light tracks share: a light with a place of its own, driven while the film is open.
template <class Base, int Id> class LightTrackOf : public TrackOf<Base, Id> {
public:
    using TrackOf<Base, Id>::TrackOf;

    void Begin() override { ownPlace.Forget(); }
    void Rest() override {
        ownPlace.PutBack(Light());
        driver.Restore(this->Manager().Data());
    }
    void ShowAtRest() const override {
        OwnPlace(ownPlace).PutBack(Light());
        LightDriver(driver).Restore(this->Manager().Data());
    }
    void Forget(const DoomedObjects& doomed) override {
        TrackBase::Forget(doomed);
        driver.Forget(doomed);
        if (doomed.Has(this->lightObject)) {
            this->lightObject = nullptr;
        }
    }
    const EditorObject* Driven() const override { return this->lightObject; }

protected:
    SceneObject* Light() const { return static_cast<SceneObject*>(this->lightObject); }
    /// The light of a track is set without a word to the track, so its place is taken down when it is posed.
    void KeepPlace() {
        if (!ownPlace.IsOf(Light())) {
            ownPlace.Keep(*Light());
        }
    }
    /// A helper that a plug-in made for a light is no body of the session any more: the film has it.
    void Adopt() {
        if (Light() != nullptr) {
            Light()->transient = false;
        }
    }

    LightDriver driver;

private:
    OwnPlace ownPlace;
};

/// Drives a GL light helper, or the level's sun, whose helper stands where the light comes from.
class GLLightTrack final : public LightTrackOf<CFilmGLLightTrack, ClassId::GLLightTrack> {
public:
    explicit GLLightTrack(FilmManager& filmManager) : LightTrackOf(filmManager) {}

    void Pose(float time) override;
    void Rest() override;
    void ShowAtRest() const override;
    void Refresh() override;

private:
    std::optional<Vector3> sunDirectionBefore;
};

/// Drives a dynamic light helper.
class DynLightTrack final : public LightTrackOf<CFilmDynLightTrack, ClassId::DynLightTrack> {
public:
    explicit DynLightTrack(FilmManager& filmManager) : LightTrackOf(filmManager) {}

    void Pose(float time) override;
    void Refresh() override;
};

} // namespace engine
