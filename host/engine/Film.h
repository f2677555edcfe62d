#pragma once

#include "host/engine/Changes.h"
#include "host/engine/PosePlan.h"
#include "host/engine/RawChunk.h"
#include "host/engine/TrackBase.h"
#include "plugin/contract/Film.h"

#include <vector>

namespace engine {

class CameraTrack;
class ObjectTrack;

/// Link space of things as they are posed now.
class PresentPose : public ILinkSpace {
public:
    Matrix4 WorldOf(const SceneObject& object, const std::string& element) const override;
};

/// Link space of another time of a film, worked out from the keys without posing anything.
class PoseAtTime : public ILinkSpace {
public:
    /// `freePlaces`, if given, takes every matrix that is read from things that the film leaves alone. Which
    /// ones they are does not depend on the time.
    PoseAtTime(const Film& ownFilm, float filmTime, std::vector<Matrix4>* freePlaces = nullptr)
        : film(ownFilm), time(filmTime), free(freePlaces) {}
    Matrix4 WorldOf(const SceneObject& object, const std::string& element) const override;

private:
    Matrix4 Place(const SceneObject& object, int depth) const;
    Matrix4 Place(const SceneObject& object, const std::string& element, int depth) const;
    const Matrix4& Free(const Matrix4& place) const {
        if (free != nullptr) {
            free->push_back(place);
        }
        return place;
    }

    const Film& film;
    float time;
    std::vector<Matrix4>* free;
};

/// A film. Owned by its manager.
class Film final : public IFilm {
public:
    Film(FilmManager& filmManager, int slot);
    ~Film() override;
    Film(const Film&) = delete;
    Film& operator=(const Film&) = delete;

    void SetName(const char* text) override;
    void AddTrack(CFilmTrack* track) override;
    CFilmTrack* CreateLevelTrack() override;
    CFilmTrack* CreateObjectTrack() override;
    CFilmTrack* CreateGLLightTrack() override;
    CFilmTrack* CreateDynLightTrack() override;
    CFilmTrack* CreateCameraTrack() override;
    void RemoveTrack(CFilmTrack* track, int one) override;
    CFilmTrack* FindObjectTrack(const EditorObject* object) const override;
    /// From here on the film may pose the level.
    void Activate() override;
    /// Puts everything back that the film posed, matrices too; from here on it leaves the level alone.
    void Deactivate() override;
    /// The film's start counts as passed by the first step forward from it, so that keys at time 0 fire. A
    /// pose between two steps of a playing film is no new start unless it goes back. A film that is not
    /// active poses its cameras alone, which move nothing of the level, and fires nothing.
    void SetTime(float time, float previousTime) override;
    void Stop() override;
    void OnLevelLoaded() override;
    void NewCameraName(std::string& cameraName) const override;
    CFilmTrack* FindCamera(const std::string& cameraName) const override;
    Vector3 GetCameraPosition(CFilmTrack* camera, float time) override;
    Vector3 GetCameraTarget(CFilmTrack* camera, float time) override;
    void SampleCameraPath(TrackRenderData* data, int one) override;

    FilmManager& Manager() const { return manager; }
    /// Between Activate and Deactivate.
    bool IsActive() const { return active; }
    /// Some step was fired since the last Stop.
    bool IsPlaying() const { return playing; }
    /// The last Stop ended a playing.
    bool EndedPlaying() const { return endedPlaying; }
    /// The tracks in an order in which what drives a parent comes before what drives its children.
    std::vector<TrackBase*> UpperFirst() const;
    /// Seconds of the last SetTime while active.
    float PosedTime() const { return posedTime; }
    /// A track of this class, not yet added; null for another number.
    CFilmTrack* CreateTrack(int classId);
    const std::vector<TrackBase*>& Tracks() const { return bases; }
    std::vector<RawChunk> foreignChunks; ///< in the film's part of the file and known to nobody
    /// As a film that was just made: no track, no name.
    void Empty();
    /// The film is about to be deleted and its lights stay in the level.
    void TellFreedLights() const;
    void Forget(const DoomedObjects& doomed);
    void Relink(std::vector<std::string>& messages);
    void OnStructureChanged() {
        NoteChange();
        orderKnown = false;
        plan.Clear();
    }

private:
    Vector3 CameraPoint(CFilmTrack* camera, int kind, float time);
    void PoseCameras(float time);
    void TellFreedLight(const TrackBase& track) const;
    void MakeOrder();
    void PlaceInOrder(ObjectTrack& track, int depth);
    ObjectTrack* TrackOfActor(const EditorObject* object) const;

    FilmManager& manager;
    std::string nameText;
    std::vector<TrackBase*> bases; ///< of `tracks`, in their order
    PosePlan plan;                 ///< the plain object tracks, which are posed first
    std::vector<TrackBase*> order; ///< the others: posing parents first, then lights, cameras, level track
    bool orderKnown = false;
    bool active = false;
    float posedTime = 0.0f; ///< seconds; of the last SetTime
    bool playing = false;   ///< some step was fired since the last Stop
    bool endedPlaying = false;
    bool startFired = false; ///< the keys at the start were
};

} // namespace engine
