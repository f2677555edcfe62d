#include "host/engine/TrackBase.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"

#include <algorithm>
#include <limits>

namespace engine {

namespace {

constexpr std::uint32_t Bit(int kind) {
    return 1u << kind;
}

/// The kinds that fit, a bit each.
template <class Fits> constexpr std::uint32_t KindsThat(Fits&& fits) {
    std::uint32_t kinds = 0;
    for (std::size_t kind = 0; kind < kKeyKinds.size(); ++kind) {
        kinds |= fits(kKeyKinds[kind]) ? Bit(static_cast<int>(kind)) : 0u;
    }
    return kinds;
}

constexpr std::uint32_t kFiredKinds = KindsThat([](const KeyKindInfo& info) { return info.isFired; });

std::uint32_t KindsOf(int classId) {
    return KindsThat([=](const KeyKindInfo& info) { return (info.tracks & TrackBitOf(classId)) != 0; });
}

/// A key and the time that it is sorted by: not-a-number counts as the end of time.
struct TimedKey {
    float time;
    IFilmKey* key;

    static bool Earlier(const TimedKey& a, const TimedKey& b) { return a.time < b.time; }
};

/// Sorts stably by merging the runs that are in order already: a track's list mostly is a few such runs.
void SortRuns(std::vector<TimedKey>& keys) {
    std::vector<std::size_t> starts{0};
    for (std::size_t i = 1; i < keys.size(); ++i) {
        if (TimedKey::Earlier(keys[i], keys[i - 1])) {
            starts.push_back(i);
        }
    }
    std::vector<TimedKey> merged(keys.size());
    while (starts.size() > 1) {
        std::vector<std::size_t> next;
        for (std::size_t run = 0; run < starts.size(); run += 2) {
            const auto at = [&](std::size_t index) {
                return keys.begin() +
                       static_cast<std::ptrdiff_t>(index < starts.size() ? starts[index] : keys.size());
            };
            std::merge(at(run), at(run + 1), at(run + 1), at(run + 2),
                       merged.begin() + static_cast<std::ptrdiff_t>(starts[run]), TimedKey::Earlier);
            next.push_back(starts[run]);
        }
        keys.swap(merged);
        starts.swap(next);
    }
}

} // namespace

bool DoomedObjects::Has(const EditorObject* object) const {
    return object != nullptr && std::find(list.begin(), list.end(), object) != list.end();
}

bool DoomedObjects::HasId(int id) const {
    return id != 0 && std::any_of(list.begin(), list.end(), [id](const EditorObject* object) {
               return object != nullptr && object->id == id;
           });
}

TrackBase::TrackBase(CFilmTrack& track, int trackClass, FilmManager& filmManager)
    : self(track), manager(filmManager), classId(trackClass), kinds(KindsOf(trackClass)) {
}

Film* TrackBase::OwnFilm() const {
    return static_cast<Film*>(self.film);
}

KeyChannel& TrackBase::Require(int kind) {
    std::unique_ptr<KeyChannel>& channel = channels[kind];
    if (channel == nullptr) {
        channel = MakeChannel(self, kind, manager);
        self.subTracks[kind] = channel.get();
        hasEvents = hasEvents || (kFiredKinds & Bit(kind)) != 0;
        if (self.film != nullptr) {
            OwnFilm()->OnStructureChanged();
        }
    }
    return *channel;
}

bool TrackBase::Add(IFilmKey* key) {
    if (key == nullptr || key->track != nullptr || !Holds(key->kind)) {
        return false;
    }
    self.keys.push_back(key);
    Require(key->kind).Insert(key);
    key->track = &self;
    return true;
}

void TrackBase::Remove(IFilmKey* key, bool destroy) {
    if (key == nullptr || key->track != &self || !Holds(key->kind) || Channel(key->kind) == nullptr) {
        return;
    }
    Channel(key->kind)->Remove(key);
    const auto found = std::find(self.keys.begin(), self.keys.end(), key);
    if (found != self.keys.end()) {
        self.keys.erase(found);
    }
    key->track = nullptr;
    if (destroy) {
        manager.Keys().DestroyKey(key);
    }
}

void TrackBase::Clear(int kind) {
    if (!Holds(kind) || Channel(kind) == nullptr) {
        return;
    }
    self.keys.remove_if([kind](const IFilmKey* key) { return key->kind == kind; });
    Channel(kind)->DestroyAll();
}

void TrackBase::MarkChanged(int kind) {
    if (Holds(kind) && Channel(kind) != nullptr) {
        Channel(kind)->MarkDirty();
    }
}

void TrackBase::MarkAllChanged() {
    for (const auto& channel : channels) {
        if (channel != nullptr) {
            channel->MarkDirty();
        }
    }
}

void TrackBase::FinishKeys() {
    manager.Data().OnShowing();
    std::vector<TimedKey> sorted;
    sorted.reserve(self.keys.size());
    for (IFilmKey* key : self.keys) {
        // A key may have been put into the list directly.
        if (key->track == nullptr && Holds(key->kind)) {
            key->track = &self;
            Require(key->kind).Insert(key);
        }
        sorted.push_back({std::isnan(key->time) ? std::numeric_limits<float>::infinity() : key->time, key});
    }
    if (!std::is_sorted(sorted.begin(), sorted.end(), TimedKey::Earlier)) {
        SortRuns(sorted);
        std::transform(sorted.begin(), sorted.end(), self.keys.begin(),
                       [](const TimedKey& timed) { return timed.key; });
    }
    MarkAllChanged();
}

Vector3 TrackBase::VectorAt(int kind, float time) const {
    Vector3 result;
    if (const auto* channel = ChannelAs<VectorChannel>(kind)) {
        channel->Evaluate(time, result.Data());
    }
    return result;
}

std::uint32_t TrackBase::FlagsAt(float time, std::uint32_t missing) const {
    const KeyChannel* channel = Channel(KeyKind::Flags);
    const int index = channel != nullptr ? channel->LastAtOrBefore(time) : -1;
    return index < 0 ? missing
                     : static_cast<const CFilmFlagsKey*>(channel->Keys()[static_cast<std::size_t>(index)])
                           ->keyFlags;
}

void TrackBase::Fire(float previous, float time, bool fromStart) {
    for (int kind = KeyKind::FxSequence; hasEvents && kind <= KeyKind::JavaMethod; ++kind) {
        if ((kFiredKinds & Bit(kind)) != 0 && channels[kind] != nullptr && !channels[kind]->Empty()) {
            FireChannel(*channels[kind], previous, time, fromStart);
        }
    }
}

void TrackBase::FireChannel(KeyChannel& channel, float previous, float time, bool fromStart) {
    IFilmSink* sink = manager.Data().Owner().FilmSink();
    if (sink == nullptr || self.film == nullptr || !(time >= previous)) {
        return;
    }
    const auto& times = channel.Times();
    const auto first = fromStart ? std::lower_bound(times.begin(), times.end(), previous)
                                 : std::upper_bound(times.begin(), times.end(), previous);
    for (auto i = static_cast<std::size_t>(first - times.begin()); i < channel.Size(); ++i) {
        const IFilmKey& key = *channel.Keys()[i];
        if (channel.Times()[i] > time) {
            return;
        }
        const bool waits =
            key.kind == KeyKind::JavaMethod && static_cast<const CFilmJavaKey&>(key).callAfterStop != 0;
        if (!waits) {
            sink->OnKeyFired(*self.film, self, key, time - key.time);
        }
    }
}

void TrackBase::PoseAlone(float time, float previousTime) {
    const bool active = self.film != nullptr && OwnFilm()->IsActive();
    if (!active && classId != ClassId::CameraTrack) {
        return;
    }
    Pose(SafeTime(time));
    if (active && previousTime != -1.0f) {
        Fire(SafeTime(previousTime), SafeTime(time), false);
    }
}

void TrackBase::FireAtStop() {
    IFilmSink* sink = manager.Data().Owner().FilmSink();
    KeyChannel* channel = channels[KeyKind::JavaMethod].get();
    if (sink == nullptr || channel == nullptr || self.film == nullptr) {
        return;
    }
    for (const IFilmKey* key : channel->Keys()) {
        if (static_cast<const CFilmJavaKey*>(key)->callAfterStop != 0) {
            sink->OnKeyFired(*self.film, self, *key, 0.0f);
        }
    }
}

void TrackBase::Forget(const DoomedObjects& doomed) {
    for (int kind = KeyKind::FxSequence; kind <= KeyKind::FxFlare; ++kind) {
        for (IFilmKey* key :
             channels[kind] != nullptr ? channels[kind]->Keys() : std::span<IFilmKey* const>{}) {
            auto& record = static_cast<CFilmFxKey&>(*key);
            record.objectId = doomed.HasId(record.objectId) ? 0 : record.objectId;
        }
    }
    for (const int kind : {KeyKind::CameraPosition, KeyKind::CameraTarget}) {
        for (IFilmKey* key :
             channels[kind] != nullptr ? channels[kind]->Keys() : std::span<IFilmKey* const>{}) {
            auto& record = static_cast<CFilmLinkedKey&>(*key);
            if (doomed.Has(record.linkObject)) {
                record.SetLinkObject(nullptr);
            }
        }
    }
}

void TrackBase::Relink(const LevelData& data, std::vector<std::string>& messages) {
    for (const int kind : {KeyKind::CameraPosition, KeyKind::CameraTarget}) {
        for (IFilmKey* key :
             channels[kind] != nullptr ? channels[kind]->Keys() : std::span<IFilmKey* const>{}) {
            auto& record = static_cast<CFilmLinkedKey&>(*key);
            if (record.linkObject == nullptr && record.linkObjectId != 0) {
                record.linkObject = data.Find(record.linkObjectId);
                if (record.linkObject == nullptr) {
                    messages.push_back("A camera key follows object " + std::to_string(record.linkObjectId) +
                                       ", which is not in the level.");
                }
            }
        }
        MarkChanged(kind);
    }
}

template <class Base, int Id>
TrackOf<Base, Id>::TrackOf(FilmManager& filmManager)
    : Base(&filmManager.Pool()), TrackBase(*this, Id, filmManager) {
    // The two kinds that are imported from files have their channels from the start, so that a track
    // without such keys can take a file.
    for (const int kind : {KeyKind::Position, KeyKind::Rotation}) {
        if (Holds(kind)) {
            Require(kind);
        }
    }
}

template class TrackOf<CFilmLevelTrack, ClassId::LevelTrack>;
template class TrackOf<CFilmObjectTrack, ClassId::ObjectTrack>;
template class TrackOf<CFilmGLLightTrack, ClassId::GLLightTrack>;
template class TrackOf<CFilmDynLightTrack, ClassId::DynLightTrack>;
template class TrackOf<CFilmCameraTrack, ClassId::CameraTrack>;

} // namespace engine
