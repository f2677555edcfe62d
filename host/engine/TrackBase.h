#pragma once

#include "host/engine/CurveChannel.h"
#include "host/engine/RawChunk.h"
#include "plugin/contract/Film.h"

#include <cmath>
#include <memory>
#include <vector>

namespace engine {

class Film;
class FilmManager;
class LevelData;
class SceneObject;

/// A time that curves can be asked for: not-a-number is 0, infinite times are cut to some thousand years.
inline float SafeTime(float time) {
    constexpr float kFar = 1e11f;
    if (std::isnan(time)) {
        return 0.0f;
    }
    return time > kFar ? kFar : (time < -kFar ? -kFar : time);
}

/// Reference to a level object that a file knows by its id. The id outlives a missing object, so that a level
/// opened without the plug-in that keeps the object is saved as it was.
struct ObjectLink {
    int pendingId = 0; ///< 0 once found, set or cleared

    static int IdOf(const EditorObject* object, int pending) {
        return object != nullptr ? object->id : pending;
    }
};

/// Says whether objects are about to go.
class DoomedObjects {
public:
    explicit DoomedObjects(const ObjectList& objects) : list(objects) {}
    bool Has(const EditorObject* object) const;
    bool HasId(int id) const;

private:
    const ObjectList& list;
};

/// What the five track classes share: the channels, adding and removing keys, firing. A track class derives
/// from its contract class and from this one.
class TrackBase {
public:
    virtual ~TrackBase() = default;
    TrackBase(const TrackBase&) = delete;
    TrackBase& operator=(const TrackBase&) = delete;

    CFilmTrack& Self() const { return self; }
    int TrackClass() const { return classId; }
    FilmManager& Manager() const { return manager; }

    bool Add(IFilmKey* key);
    void Remove(IFilmKey* key, bool destroy);
    void Clear(int kind);
    void MarkChanged(int kind);
    void MarkAllChanged();
    void FinishKeys();
    bool Holds(int kind) const { return kind >= 0 && kind < KeyKind::Count && (kinds >> kind & 1u) != 0; }
    KeyChannel* Channel(int kind) const { return channels[kind].get(); }
    /// Makes the channel if the track does not have it yet; the track must hold the kind.
    KeyChannel& Require(int kind);
    Vector3 VectorAt(int kind, float time) const;

    /// Poses what the track drives. The time is a SafeTime.
    virtual void Pose(float time) = 0;
    /// Fires the keys of kinds 2 to 9 and 13 that start in (previous, time], with the start of the film
    /// counted in if `fromStart`.
    void Fire(float previous, float time, bool fromStart);
    /// Poses and fires this track alone. One of a film that is not active does neither, unless it is a
    /// camera, whose pose is its own.
    void PoseAlone(float time, float previousTime);
    /// Fires the script keys that wait for the film's end.
    void FireAtStop();
    /// The film is shown from now on.
    virtual void Begin() {}
    /// Puts back what the track posed: the object's place, lights, visibility, poses of meshes.
    virtual void Rest() {}
    /// Puts what the track posed where Rest would put it, and forgets nothing: the film stays open. Whoever
    /// asks for it puts everything back.
    virtual void ShowAtRest() const {}
    virtual void Forget(const DoomedObjects& doomed);
    /// The object whose place the track poses, null for none.
    virtual const EditorObject* Driven() const { return nullptr; }
    /// Finds objects by the ids of a file. What is missing is told and stays null.
    virtual void Relink(const LevelData& data, std::vector<std::string>& messages);
    virtual void Refresh() { MarkAllChanged(); }

    std::vector<RawChunk> foreignChunks; ///< in the track's part of the file and known to nobody
    /// Tells the track from all others of the session. One that takes the place of a former one gets its
    /// number; see LevelParts.
    std::uint64_t serial = NoteChange();

protected:
    TrackBase(CFilmTrack& track, int trackClass, FilmManager& filmManager);
    Film* OwnFilm() const;
    template <class Keys> Keys* ChannelAs(int kind) const { return static_cast<Keys*>(Channel(kind)); }
    /// Value of kind 15 at the time, `missing` without a key in force.
    std::uint32_t FlagsAt(float time, std::uint32_t missing) const;

private:
    void FireChannel(KeyChannel& channel, float previous, float time, bool fromStart);

    CFilmTrack& self;
    FilmManager& manager;
    int classId;
    std::uint32_t kinds; ///< bit k: kind k may stand here
    std::unique_ptr<KeyChannel> channels[KeyKind::Count];
    bool hasEvents = false; ///< some channel holds keys that fire
};

/// Joins a contract class of tracks with TrackBase.
template <class Base, int Id> class TrackOf : public Base, public TrackBase {
public:
    explicit TrackOf(FilmManager& filmManager);
    ~TrackOf() override { this->keys.clear(); }

    bool IsA(int id) const override { return id == Id; }
    bool AddKey(IFilmKey* key) override { return Add(key); }
    void RemoveKey(IFilmKey* key, bool destroy) override { Remove(key, destroy); }
    void ClearKind(int kind) override { Clear(kind); }
    void NotifyKeysChanged(int kind) override { MarkChanged(kind); }
    void Finish() override { FinishKeys(); }
    void RefreshTrack() override { Refresh(); }
    void ApplyAt(float time, float previousTime, int) override { PoseAlone(time, previousTime); }
    Vector3 GetPositionAt(float time) const override { return VectorAt(KeyKind::Position, SafeTime(time)); }
    Vector3 GetRotationAt(float time) const override { return VectorAt(KeyKind::Rotation, SafeTime(time)); }
};

} // namespace engine
