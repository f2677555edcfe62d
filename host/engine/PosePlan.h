#pragma once

#include "host/engine/CurveChannel.h"

#include <vector>

namespace engine {

class ObjectTrack;

/// The plain object tracks of a film side by side: their segments, and where the matrices go. A frame that
/// needs no new segment reads this and nothing else. Part of a film; the tracks' channels keep their segments
/// in it while it is filled.
class PosePlan {
public:
    PosePlan() = default;
    ~PosePlan() = default;
    PosePlan(const PosePlan&) = delete;
    PosePlan& operator=(const PosePlan&) = delete;

    /// Room for so many tracks, so that filling allocates nothing. Empties the plan.
    void Reserve(std::size_t tracks);
    /// Gives the channels their segments back; to be called before a track of the plan changes or goes.
    void Clear();
    /// The track must be plain.
    void Add(ObjectTrack& track);
    void Pose(float time);

private:
    static constexpr int kParts = 3; ///< position, rotation, scale

    struct alignas(64) Entry {
        CurveSegment<3> segments[kParts];
        VectorChannel* channels[kParts];
        float* matrix;
        ObjectTrack* track;
    };

    static constexpr std::size_t kAhead = 4;    ///< entries that keys are called for in advance
    static constexpr std::size_t kFarAhead = 8; ///< the same of matrices and channels

    static bool Ready(const Entry& entry, float time);
    static bool Seek(Entry& entry, float time);
    void PoseEntry(Entry& entry, float time);

    std::vector<Entry> entries;
};

} // namespace engine
