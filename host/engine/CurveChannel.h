#pragma once

#include "host/engine/BezierCurve.h"
#include "host/engine/KeyChannel.h"
#include "host/engine/Math.h"

#include <memory>

namespace engine {

class SceneObject;

/// How many segments were made from keys since the program's start, for tests of the cost of posing.
std::size_t SegmentsBuilt();

/// A channel of keys that are interpolated: N = 3 for the vector kinds, 1 for roll and field of view. Keeps
/// the segment last used, so that playing on costs no search.
template <int N> class CurveChannel : public KeyChannel {
public:
    using KeyChannel::KeyChannel;

    /// False, and `out` untouched, without keys. Constant before the first and after the last key.
    bool Evaluate(float time, float* out) const {
        Refresh();
        if (!segment.Holds(time) && !Locate(time)) {
            return false;
        }
        segment.Evaluate(time, out);
        return true;
    }
    /// With a period above 0 the curve is closed: behind the last key before the period it goes on to the
    /// first key, which comes again one period later.
    void SetPeriod(float seconds) const {
        if (seconds != period) {
            period = seconds;
            segment = {};
        }
    }

protected:
    void OnRebuilt() const override { segment = {}; }
    virtual void LoadPoint(const IFilmKey& key, CurvePoint<N>& point) const;
    /// Makes the segment in force at the time.
    bool Locate(float time) const;
    /// Forgets the segment, for points that depend on more than the keys.
    void DropSegment() const { segment = {}; }

private:
    bool Load(int index, int count, CurvePoint<N>& point) const;
    bool LocateClosed(float time, int count) const;
    void HoldPoint(int index, float start, float end) const;

    mutable CurveSegment<N> segment;
    mutable float period = 0.0f; ///< seconds, 0 for an open curve
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
    mutable bool linked = false; ///< some key is tied, so segments last no longer than the objects' places
    mutable const ILinkSpace* space = nullptr; ///< during EvaluateWorld
};

/// The channel class for a kind.
std::unique_ptr<KeyChannel> MakeChannel(CFilmTrack& track, int kind, FilmManager& manager);

} // namespace engine
