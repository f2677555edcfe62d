#pragma once

#include "plugin/contract/KeyKind.h"

#include <limits>

namespace engine {

/// One key of a curve of N components. Handles are control points in the space of the value.
template <int N> struct CurvePoint {
    float time = 0.0f; ///< seconds
    float value[N] = {};
    float in[N] = {};
    float out[N] = {};
    int inMethod = BezierMethod::Smooth;
    int outMethod = BezierMethod::Smooth;
};

/// Time and value of a key alone.
template <int N> struct CurveKnot {
    float time = 0.0f;
    float value[N] = {};
};

/// A cubic in u = (t - origin) * inverse, in force from `start` up to, not including, `end`. Fresh segments
/// are in force nowhere.
template <int N> struct CurveSegment {
    float start = std::numeric_limits<float>::infinity();
    float end = -std::numeric_limits<float>::infinity();
    float origin = 0.0f;
    float inverse = 0.0f;
    float c[4][N] = {};

    bool Holds(float t) const { return t >= start && t < end; }
    void Evaluate(float t, float* out) const {
        const float u = (t - origin) * inverse;
        for (int i = 0; i < N; ++i) {
            out[i] = c[0][i] + u * (c[1][i] + u * (c[2][i] + u * c[3][i]));
        }
    }
};

// How the methods shape a curve. A segment between keys A and B is the cubic Bezier curve over the control
// points A, out(A), in(B), B, with its parameter running evenly in time. With d the seconds of the segment:
//
//   Smooth    A + v d/3 and B - v d/3, v the velocity at the key: that of the parabola through the key
//             and its two neighbours; at the ends of the curve, the slope of the one segment
//   Linear    a third of the way to the other key
//   Slowdown  the key itself: the curve has no speed there
//   Speedup   two thirds of the way to the other key
//   User      the handle stored in the key
//   Inverse   the mirror image, about the key, of the control point of the key's other side; where that
//             side has none, or is Inverse too: Smooth
//
// Any other number is Smooth. docs/EVALUATION.md tells the same with pictures.

/// The control points that are in force at a key. A neighbour is null where the curve ends. At an end of
/// the curve the control point of the side without a segment is the key itself, or its handle with User.
template <int N>
void OutControl(const CurvePoint<N>* before, const CurvePoint<N>& key, const CurvePoint<N>* after,
                float* control);
template <int N>
void InControl(const CurvePoint<N>* before, const CurvePoint<N>& key, const CurvePoint<N>* after,
               float* control);

/// The curve between keys `a` and `b`; `before` and `after` are their other neighbours or null.
template <int N>
CurveSegment<N> MakeSegment(const CurvePoint<N>* before, const CurvePoint<N>& a, const CurvePoint<N>& b,
                            const CurvePoint<N>* after);

/// The same for keys that are all Smooth, straight from their times and values.
template <int N>
CurveSegment<N> MakeSmoothSegment(const CurveKnot<N>* before, const CurveKnot<N>& a, const CurveKnot<N>& b,
                                  const CurveKnot<N>* after);

extern template CurveSegment<1> MakeSmoothSegment(const CurveKnot<1>*, const CurveKnot<1>&,
                                                  const CurveKnot<1>&, const CurveKnot<1>*);
extern template CurveSegment<3> MakeSmoothSegment(const CurveKnot<3>*, const CurveKnot<3>&,
                                                  const CurveKnot<3>&, const CurveKnot<3>*);
extern template CurveSegment<1> MakeSegment(const CurvePoint<1>*, const CurvePoint<1>&, const CurvePoint<1>&,
                                            const CurvePoint<1>*);
extern template CurveSegment<3> MakeSegment(const CurvePoint<3>*, const CurvePoint<3>&, const CurvePoint<3>&,
                                            const CurvePoint<3>*);

} // namespace engine
