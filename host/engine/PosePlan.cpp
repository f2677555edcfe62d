#include "host/engine/PosePlan.h"

#include "host/engine/ObjectTrack.h"
#include "host/engine/SceneObject.h"

#include <algorithm>

namespace engine {

void PosePlan::Reserve(std::size_t tracks) {
    Clear();
    if (entries.capacity() < tracks) {
        entries.reserve(2 * tracks);
    }
}

void PosePlan::Clear() {
    for (Entry& entry : entries) {
        for (VectorChannel* channel : entry.channels) {
            channel->KeepSegmentIn(nullptr);
        }
    }
    entries.clear();
}

void PosePlan::Add(ObjectTrack& track) {
    Entry& entry = entries.emplace_back();
    entry.track = &track;
    entry.matrix = track.Actor()->FreeMatrix();
    for (int i = 0; i < kParts; ++i) {
        entry.channels[i] = static_cast<VectorChannel*>(track.Channel(KeyKind::Position + i));
        entry.channels[i]->KeepSegmentIn(&entry.segments[i]);
    }
}

/// Makes the segments that are in force at the time; false if a channel has no keys.
bool PosePlan::Seek(Entry& entry, float time) {
    for (int i = 0; i < kParts; ++i) {
        if (!entry.segments[i].Holds(time) && !entry.channels[i]->Locate(time)) {
            return false;
        }
    }
    return true;
}

void PosePlan::PoseEntry(Entry& entry, float time) {
    if (!Ready(entry, time) && !Seek(entry, time)) {
        entry.track->Pose(time);
        return;
    }
    Vector3 position;
    Vector3 rotation;
    Vector3 scale;
    entry.segments[0].Evaluate(time, position.Data());
    entry.segments[1].Evaluate(time, rotation.Data());
    entry.segments[2].Evaluate(time, scale.Data());
    ComposeInto(position, rotation, scale, entry.matrix);
}

bool PosePlan::Ready(const Entry& entry, float time) {
    return entry.segments[0].Holds(time) && entry.segments[1].Holds(time) && entry.segments[2].Holds(time);
}

void PosePlan::Pose(float time) {
    // A seek is known by its first track. Then what the searches read is called for ahead of them, since it
    // lies all over the heap; the matrices, which stand in the objects, always do.
    const std::size_t last = entries.size() - 1;
    const bool seeks = !entries.empty() && !Ready(entries.front(), time);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        __builtin_prefetch(entries[std::min(i + kFarAhead, last)].matrix, 1);
        for (int part = 0; seeks && part < kParts; ++part) {
            entries[std::min(i + kFarAhead, last)].channels[part]->PrefetchIndex();
            entries[std::min(i + kAhead, last)].channels[part]->PrefetchKeys(time);
        }
        PoseEntry(entries[i], time);
    }
}

} // namespace engine
