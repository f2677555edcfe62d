#pragma once

#include "plugin/contract/CameraRecord.h"
#include "plugin/contract/ClassIds.h"
#include "plugin/contract/File.h"
#include "plugin/contract/HostObject.h"
#include "plugin/contract/KeyKind.h"
#include "plugin/contract/Types.h"

#include <cstdint>
#include <list>
#include <memory_resource>
#include <string>

class CFilmCameraTrack;
class CFilmLinkedKey;
class IFilm;

/// Keys in insertion order. The nodes of a track's own list come from the host's pool.
using KeyList = std::pmr::list<IFilmKey*>;

/// The keys of one kind of one track.
class MKTrack {
public:
    virtual ~MKTrack() = default;
    /// Its keys become those that Export wrote; `kind` is the file's. A fault throws and changes nothing.
    virtual void Import(fs::file& file, int zero, int kind) = 0;
    virtual void Export(fs::file& file, int zero) = 0;
    /// Appends the keys of this kind in time order.
    virtual void CollectKeys(KeyList& keys) const = 0;
};

/// A track of a film: what one thing of the level does. Owned by its film once added.
class CFilmTrack : public IHostObject {
public:
    /// Takes the key over; false if the track can't hold its kind or the key is in a track already.
    virtual bool AddKey(IFilmKey* key) = 0;
    virtual void RemoveKey(IFilmKey* key, bool destroy) = 0;
    virtual void ClearKind(int kind) = 0;
    /// Keys of this kind were written directly; what was derived from them is rebuilt.
    virtual void NotifyKeysChanged(int kind) = 0;
    /// Sorts by time, stably, and closes the track after a batch of changes.
    virtual void Finish() = 0;
    virtual void RefreshTrack() = 0;
    /// Poses what the track drives; a previous time of -1.0 fires no keys.
    virtual void ApplyAt(float time, float previousTime, int zero) = 0;
    virtual Vector3 GetPositionAt(float time) const = 0;
    virtual Vector3 GetRotationAt(float time) const = 0;

    IFilm* film = nullptr;
    KeyList keys;
    MKTrack* subTracks[KeyKind::Count] = {}; ///< null where the track has no such kind

protected:
    explicit CFilmTrack(std::pmr::memory_resource* pool) : keys(pool) {}
};

/// Holds the camera now in force.
struct CameraHolder {
    CFilmCameraTrack* activeCamera = nullptr;
};

/// Class 53250: carries the film-wide keys. Every film has exactly one.
class CFilmLevelTrack : public CFilmTrack {
public:
    CameraHolder* cameraHolder = nullptr;

protected:
    using CFilmTrack::CFilmTrack;
};

/// Class 53251: drives one level object.
class CFilmObjectTrack : public CFilmTrack {
public:
    virtual void SetActor(EditorObject* object, bool isVirtual) = 0;
    virtual void SetParent(EditorObject* object, bool isVirtual, const std::string& element) = 0;
    /// Turns a world matrix of 16 floats into the space of `parentObject` (or of its element) at the
    /// present pose.
    virtual void ToParentSpace(float* matrix) const = 0;

    EditorObject* actor = nullptr;        ///< null in a broken track
    EditorObject* parentObject = nullptr; ///< what the track is attached to
    std::string parentElement;            ///< mesh element of that attachment

protected:
    using CFilmTrack::CFilmTrack;
};

/// Class 53252: drives a GL light helper, or the level's sun.
class CFilmGLLightTrack : public CFilmTrack {
public:
    std::uint8_t isFixedLight = 0;
    std::uint8_t isSun = 0;
    EditorObject* lightObject = nullptr;

protected:
    using CFilmTrack::CFilmTrack;
};

/// Class 53253: drives a dynamic light helper.
class CFilmDynLightTrack : public CFilmTrack {
public:
    EditorObject* lightObject = nullptr;

protected:
    using CFilmTrack::CFilmTrack;
};

/// Class 53254: a film camera. The four sub-tracks are kinds 16, 17, 18, 19 in this order.
class CFilmCameraTrack : public CFilmTrack {
public:
    static constexpr int kSubTracks = 4;

    /// The key that stands at the time, within 0.0001 seconds, or null.
    virtual CFilmLinkedKey* GetEyeKeyAt(float time) const = 0;
    virtual CFilmLinkedKey* GetTargetKeyAt(float time) const = 0;

    std::int32_t loopMode[kSubTracks] = {};
    float subTrackLength[kSubTracks] = {}; ///< seconds
    float fieldOfView = 60.0f;             ///< degrees
    float nearPlane = ClipPlane::Near;
    float farPlane = ClipPlane::Far;
    std::string cameraName;
    CameraRecord* cameraData = nullptr; ///< owned by the track

    Vector3 eyePoint;    ///< world, at the time last posed
    Vector3 targetPoint; ///< world, at the time last posed

protected:
    using CFilmTrack::CFilmTrack;
};

/// The track as its class, or null if it is null or of another class.
template <class Track> Track* TrackAs(CFilmTrack* track, int classId) {
    return track != nullptr && track->IsA(classId) ? static_cast<Track*>(track) : nullptr;
}
inline CFilmLevelTrack* AsLevelTrack(CFilmTrack* track) {
    return TrackAs<CFilmLevelTrack>(track, ClassId::LevelTrack);
}
inline CFilmObjectTrack* AsObjectTrack(CFilmTrack* track) {
    return TrackAs<CFilmObjectTrack>(track, ClassId::ObjectTrack);
}
inline CFilmGLLightTrack* AsGLLightTrack(CFilmTrack* track) {
    return TrackAs<CFilmGLLightTrack>(track, ClassId::GLLightTrack);
}
inline CFilmDynLightTrack* AsDynLightTrack(CFilmTrack* track) {
    return TrackAs<CFilmDynLightTrack>(track, ClassId::DynLightTrack);
}
inline CFilmCameraTrack* AsCameraTrack(CFilmTrack* track) {
    return TrackAs<CFilmCameraTrack>(track, ClassId::CameraTrack);
}
