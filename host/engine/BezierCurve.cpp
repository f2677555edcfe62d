#include "host/engine/BezierCurve.h"

#include <algorithm>

namespace engine {

namespace {

enum class Side { In, Out };

/// Seconds between neighbouring keys, 0 where there is no neighbour or no time between; and one over them.
struct Gap {
    float seconds = 0.0f;
    float inverse = 0.0f;
};

Gap Between(float earlier, float later) {
    const float seconds = later - earlier;
    return seconds > 0.0f ? Gap{seconds, 1.0f / seconds} : Gap{};
}

/// Velocity of the Smooth method at a key: each neighbour's slope counts by the length of the other gap, and
/// at an end of the curve there is one slope only.
template <int N>
void SmoothVelocity(const float* before, Gap gapBefore, const float* key, const float* after, Gap gapAfter,
                    float* velocity) {
    const float both = gapBefore.seconds + gapAfter.seconds;
    const bool inside = gapBefore.seconds > 0.0f && gapAfter.seconds > 0.0f;
    const float shareBefore = inside ? gapAfter.seconds / both : 1.0f;
    const float shareAfter = inside ? gapBefore.seconds / both : 1.0f;
    for (int i = 0; i < N; ++i) {
        velocity[i] = (key[i] - before[i]) * gapBefore.inverse * shareBefore +
                      (after[i] - key[i]) * gapAfter.inverse * shareAfter;
    }
}

template <int N>
void SmoothControl(const CurvePoint<N>* before, const CurvePoint<N>& key, const CurvePoint<N>* after,
                   Side side, float* control) {
    const Gap gapBefore = before != nullptr ? Between(before->time, key.time) : Gap{};
    const Gap gapAfter = after != nullptr ? Between(key.time, after->time) : Gap{};
    float velocity[N];
    SmoothVelocity<N>(before != nullptr ? before->value : key.value, gapBefore, key.value,
                      after != nullptr ? after->value : key.value, gapAfter, velocity);
    const float third = (side == Side::Out ? gapAfter.seconds : -gapBefore.seconds) / 3.0f;
    for (int i = 0; i < N; ++i) {
        control[i] = key.value[i] + velocity[i] * third;
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

namespace {

template <int N>
CurveSegment<N> FromControls(float start, float end, const float* a, const float* out, const float* in,
                             const float* b) {
    CurveSegment<N> segment;
    segment.start = start;
    segment.end = end;
    segment.origin = start;
    segment.inverse = Between(start, end).inverse;
    for (int i = 0; i < N; ++i) {
        segment.c[0][i] = a[i];
        segment.c[1][i] = 3.0f * (out[i] - a[i]);
        segment.c[2][i] = 3.0f * (a[i] - 2.0f * out[i] + in[i]);
        segment.c[3][i] = b[i] - a[i] + 3.0f * (out[i] - in[i]);
    }
    return segment;
}

} // namespace

template <int N>
CurveSegment<N> MakeSegment(const CurvePoint<N>* before, const CurvePoint<N>& a, const CurvePoint<N>& b,
                            const CurvePoint<N>* after) {
    float out[N];
    float in[N];
    OutControl(before, a, &b, out);
    InControl(&a, b, after, in);
    return FromControls<N>(a.time, b.time, a.value, out, in, b.value);
}

template <int N>
CurveSegment<N> MakeSmoothSegment(const CurveKnot<N>* before, const CurveKnot<N>& a, const CurveKnot<N>& b,
                                  const CurveKnot<N>* after) {
    const Gap gapBefore = before != nullptr ? Between(before->time, a.time) : Gap{};
    const Gap gap = Between(a.time, b.time);
    const Gap gapAfter = after != nullptr ? Between(b.time, after->time) : Gap{};
    float out[N];
    float in[N];
    SmoothVelocity<N>(before != nullptr ? before->value : a.value, gapBefore, a.value, b.value, gap, out);
    SmoothVelocity<N>(a.value, gap, b.value, after != nullptr ? after->value : b.value, gapAfter, in);
    const float third = gap.seconds / 3.0f;
    for (int i = 0; i < N; ++i) {
        out[i] = a.value[i] + out[i] * third;
        in[i] = b.value[i] - in[i] * third;
    }
    return FromControls<N>(a.time, b.time, a.value, out, in, b.value);
}

template CurveSegment<1> MakeSmoothSegment(const CurveKnot<1>*, const CurveKnot<1>&, const CurveKnot<1>&,
                                           const CurveKnot<1>*);
template CurveSegment<3> MakeSmoothSegment(const CurveKnot<3>*, const CurveKnot<3>&, const CurveKnot<3>&,
                                           const CurveKnot<3>*);
template void OutControl(const CurvePoint<1>*, const CurvePoint<1>&, const CurvePoint<1>*, float*);
template void OutControl(const CurvePoint<3>*, const CurvePoint<3>&, const CurvePoint<3>*, float*);
template void InControl(const CurvePoint<1>*, const CurvePoint<1>&, const CurvePoint<1>*, float*);
template void InControl(const CurvePoint<3>*, const CurvePoint<3>&, const CurvePoint<3>*, float*);
template CurveSegment<1> MakeSegment(const CurvePoint<1>*, const CurvePoint<1>&, const CurvePoint<1>&,
                                     const CurvePoint<1>*);
template CurveSegment<3> MakeSegment(const CurvePoint<3>*, const CurvePoint<3>&, const CurvePoint<3>&,
                                     const CurvePoint<3>*);

} // namespace engine
