#include "host/engine/BezierCurve.h"

#include <algorithm>

namespace engine {

namespace {

enum class Side { In, Out };

/// Seconds between neighbouring keys; 0 where there is no neighbour or no time between.
template <int N> float Gap(const CurvePoint<N>* earlier, const CurvePoint<N>* later) {
    return earlier != nullptr && later != nullptr ? std::max(later->time - earlier->time, 0.0f) : 0.0f;
}

template <int N>
void SmoothControl(const CurvePoint<N>* before, const CurvePoint<N>& key, const CurvePoint<N>* after,
                   Side side, float* control) {
    const float gapBefore = Gap(before, &key);
    const float gapAfter = Gap(&key, after);
    const float third = (side == Side::Out ? gapAfter : -gapBefore) / 3.0f;
    for (int i = 0; i < N; ++i) {
        const float slopeBefore = gapBefore > 0.0f ? (key.value[i] - before->value[i]) / gapBefore : 0.0f;
        const float slopeAfter = gapAfter > 0.0f ? (after->value[i] - key.value[i]) / gapAfter : 0.0f;
        const float velocity =
            gapBefore > 0.0f && gapAfter > 0.0f
                ? (slopeBefore * gapAfter + slopeAfter * gapBefore) / (gapBefore + gapAfter)
                : slopeBefore + slopeAfter;
        control[i] = key.value[i] + velocity * third;
    }
}

template <int N>
void ChordControl(const CurvePoint<N>& key, const CurvePoint<N>* other, float share, float* control) {
    for (int i = 0; i < N; ++i) {
        const float chord = other != nullptr ? other->value[i] - key.value[i] : 0.0f;
        control[i] = key.value[i] + chord * share;
    }
}

template <int N>
void Control(const CurvePoint<N>* before, const CurvePoint<N>& key, const CurvePoint<N>* after, Side side,
             float* control) {
    const bool out = side == Side::Out;
    const CurvePoint<N>* other = out ? after : before;
    switch (out ? key.outMethod : key.inMethod) {
    case BezierMethod::Linear:
        return ChordControl(key, other, 1.0f / 3.0f, control);
    case BezierMethod::Slowdown:
        return ChordControl(key, other, 0.0f, control);
    case BezierMethod::Speedup:
        return ChordControl(key, other, 2.0f / 3.0f, control);
    case BezierMethod::User:
        std::copy_n(out ? key.out : key.in, N, control);
        return;
    case BezierMethod::Inverse: {
        const int farMethod = out ? key.inMethod : key.outMethod;
        const bool farSegment = (out ? before : after) != nullptr;
        if (farMethod == BezierMethod::User || (farSegment && farMethod != BezierMethod::Inverse)) {
            Control(before, key, after, out ? Side::In : Side::Out, control);
            for (int i = 0; i < N; ++i) {
                control[i] = 2.0f * key.value[i] - control[i];
            }
            return;
        }
        break;
    }
    default:
        break;
    }
    SmoothControl(before, key, after, side, control);
}

} // namespace

template <int N>
void OutControl(const CurvePoint<N>* before, const CurvePoint<N>& key, const CurvePoint<N>* after,
                float* control) {
    Control(before, key, after, Side::Out, control);
}

template <int N>
void InControl(const CurvePoint<N>* before, const CurvePoint<N>& key, const CurvePoint<N>* after,
               float* control) {
    Control(before, key, after, Side::In, control);
}

template <int N>
CurveSegment<N> MakeSegment(const CurvePoint<N>* before, const CurvePoint<N>& a, const CurvePoint<N>& b,
                            const CurvePoint<N>* after) {
    float out[N];
    float in[N];
    OutControl(before, a, &b, out);
    InControl(&a, b, after, in);
    CurveSegment<N> segment;
    segment.start = a.time;
    segment.end = b.time;
    segment.origin = a.time;
    segment.inverse = b.time > a.time ? 1.0f / (b.time - a.time) : 0.0f;
    for (int i = 0; i < N; ++i) {
        segment.c[0][i] = a.value[i];
        segment.c[1][i] = 3.0f * (out[i] - a.value[i]);
        segment.c[2][i] = 3.0f * (a.value[i] - 2.0f * out[i] + in[i]);
        segment.c[3][i] = b.value[i] - a.value[i] + 3.0f * (out[i] - in[i]);
    }
    return segment;
}

template void OutControl(const CurvePoint<1>*, const CurvePoint<1>&, const CurvePoint<1>*, float*);
template void OutControl(const CurvePoint<3>*, const CurvePoint<3>&, const CurvePoint<3>*, float*);
template void InControl(const CurvePoint<1>*, const CurvePoint<1>&, const CurvePoint<1>*, float*);
template void InControl(const CurvePoint<3>*, const CurvePoint<3>&, const CurvePoint<3>*, float*);
template CurveSegment<1> MakeSegment(const CurvePoint<1>*, const CurvePoint<1>&, const CurvePoint<1>&,
                                     const CurvePoint<1>*);
template CurveSegment<3> MakeSegment(const CurvePoint<3>*, const CurvePoint<3>&, const CurvePoint<3>&,
                                     const CurvePoint<3>*);

} // namespace engine
