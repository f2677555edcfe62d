#pragma once

#include "host/engine/BezierCurve.h"
#include "host/engine/KeyChannel.h"
#include "host/engine/Math.h"

#include <algorithm>
#include <memory>

namespace engine {

class SceneObject;

/// How many segments were made from keys since the program's start, for tests of the cost of posing.
std::size_t SegmentsBuilt();

/// A channel of keys that are interpolated: N = 3 for the vector kinds, 1 for roll and field of view. Keeps
/// the segment last used, so that playing on costs no search, and the keys' values side by side, so that a
/// seek does not go through the records.
template <int N> class CurveChannel : public KeyChannel {
public:
    using KeyChannel::KeyChannel;

    /// False, and `out` untouched, without keys. Constant before the first and after the last key.
    bool Evaluate(float time, float* out) const {
        if (!segment->Holds(time) && !Locate(time)) {
            return false;
        }
        segment->Evaluate(time, out);
        return true;
    }
    /// With a period above 0 the curve is closed: behind the last key before the period it goes on to the
    /// first key, which comes again one period later.
    void SetPeriod(float seconds) const {
        if (seconds != index.period) {
            index.period = seconds;
            DropSegment();
        }
    }
    /// Makes the segment in force at the time; false without keys.
    bool Locate(float time) const;
    /// Keeps the segment in `place` from now on, which outlives this use; null for a place of its own.
    void KeepSegmentIn(CurveSegment<N>* place) {
        segment = place != nullptr ? place : &ownSegment;
        DropSegment();
    }
    /// Bring near what Locate will read: first the channel's own line, then the keys about the time.
    void PrefetchIndex() const { __builtin_prefetch(&index); }
    void PrefetchKeys(float time) const { __builtin_prefetch(index.knots + Guess(time)); }

protected:
    void OnTouched() override {
        // The keys' places are forgotten at once, since Prefetch may come before the next search.
        const float period = index.period;
        index = {};
        index.period = period;
        DropSegment();
    }
    void OnRebuilt() const override;
    /// The key as a point of the curve, all but its time; used in place of the values kept while
    /// `pointsVary`.
    virtual void LoadPoint(const IFilmKey&, CurvePoint<N>&) const {}
    /// Forgets the segment.
    void DropSegment() const { *segment = {}; }

    mutable bool pointsVary = false; ///< what a key stands for depends on more than its record

private:
    /// What a search needs, in one cache line.
    struct alignas(64) Index {
        const CurveKnot<N>* knots = nullptr;
        int count = 0;
        float first = 0.0f; ///< time of the first key
        float last = 0.0f;
        float perSecond = 0.0f; ///< keys a second, were they evenly spread
        float period = 0.0f;    ///< seconds, 0 for an open curve
        bool allSmooth = false;
        bool good = false; ///< false when keys have changed
    };

    /// Where the key at or before a time would stand, were they evenly spread; within the keys but the last.
    int Guess(float time) const {
        const float place = (time - index.first) * index.perSecond;
        return place > 0.0f ? (place < static_cast<float>(index.count - 2) ? static_cast<int>(place)
                                                                           : std::max(index.count - 2, 0))
                            : 0;
    }
    /// Last key at or before a time that is within the keys.
    int Find(float time) const;
    bool Load(int key, int count, CurvePoint<N>& point) const;
    void LoadKept(std::size_t key, CurvePoint<N>& point) const;
    void LocateClosed(float time, int count) const;
    void HoldPoint(int key, float start, float end) const;
    CurveSegment<N> SegmentFrom(int key) const;

    mutable Index index;
    mutable CurveSegment<N>* segment = &ownSegment;
    mutable std::vector<CurveKnot<N>> knots;
    mutable std::vector<std::uint8_t> methods; ///< in-method, and out-method times 16
    mutable CurveSegment<N> ownSegment;
};

using VectorChannel = CurveChannel<3>;
using ScalarChannel = CurveChannel<1>;

extern template class CurveChannel<1>;
extern template class CurveChannel<3>;

/// Gives the world matrix of an object or of one of its elements: as posed now, or at another time.
class ILinkSpace {
public:
    virtual ~ILinkSpace() = default;
    virtual Matrix4 WorldOf(const SceneObject& object, const std::string& element) const = 0;
};

/// A channel of camera points, which may each be tied to an object.
class LinkedChannel : public VectorChannel {
public:
    using VectorChannel::VectorChannel;

    /// The world point at a time.
    bool EvaluateWorld(float time, const ILinkSpace& links, float* out) const;

protected:
    void OnRebuilt() const override;
    void LoadPoint(const IFilmKey& key, CurvePoint<3>& point) const override;

private:
    mutable const ILinkSpace* space = nullptr; ///< during EvaluateWorld
};

/// The channel class for a kind.
std::unique_ptr<KeyChannel> MakeChannel(CFilmTrack& track, int kind, FilmManager& manager);

} // namespace engine
