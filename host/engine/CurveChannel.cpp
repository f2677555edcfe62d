#include "host/engine/CurveChannel.h"

#include "host/engine/SceneObject.h"

#include <algorithm>

namespace engine {

namespace {

std::size_t segmentsBuilt = 0;

constexpr float kForever = std::numeric_limits<float>::infinity();

void Load(const IFilmKey& key, CurvePoint<3>& point) {
    const auto& record = static_cast<const CFilmVectorKey&>(key);
    std::copy_n(record.value.Data(), 3, point.value);
    std::copy_n(record.inHandle.Data(), 3, point.in);
    std::copy_n(record.outHandle.Data(), 3, point.out);
    point.inMethod = record.inMethod;
    point.outMethod = record.outMethod;
}

void Load(const IFilmKey& key, CurvePoint<1>& point) {
    const auto& record = static_cast<const CFilmScalarKey&>(key);
    point.value[0] = record.value;
    point.in[0] = record.inValue;
    point.out[0] = record.outValue;
    point.inMethod = record.inMethod;
    point.outMethod = record.outMethod;
}

} // namespace

std::size_t SegmentsBuilt() {
    return segmentsBuilt;
}

template <int N> void CurveChannel<N>::LoadPoint(const IFilmKey& key, CurvePoint<N>& point) const {
    engine::Load(key, point);
}

/// Loads key `index` of the first `count` ones. A closed curve goes on in front and behind.
template <int N> bool CurveChannel<N>::Load(int index, int count, CurvePoint<N>& point) const {
    float shift = 0.0f;
    if (index < 0 || index >= count) {
        if (period <= 0.0f) {
            return false;
        }
        shift = index < 0 ? -period : period;
        index = (index % count + count) % count;
    }
    const auto at = static_cast<std::size_t>(index);
    LoadPoint(*Keys()[at], point);
    point.time = Times()[at] + shift;
    return true;
}

template <int N> void CurveChannel<N>::HoldPoint(int index, float start, float end) const {
    CurvePoint<N> point;
    LoadPoint(*Keys()[static_cast<std::size_t>(index)], point);
    segment = {};
    segment.start = start;
    segment.end = end;
    std::copy_n(point.value, N, segment.c[0]);
}

template <int N> bool CurveChannel<N>::LocateClosed(float time, int count) const {
    int index = std::min(LastAtOrBefore(time), count - 1);
    CurvePoint<N> points[4];
    for (int i = 0; i < 4; ++i) {
        Load(index + i - 1, count, points[i]);
    }
    segment = MakeSegment(&points[0], points[1], points[2], &points[3]);
    return true;
}

template <int N> bool CurveChannel<N>::Locate(float time) const {
    const int count = static_cast<int>(Size());
    if (count == 0) {
        return false;
    }
    ++segmentsBuilt;
    const std::span<const float> times = Times();
    if (period > 0.0f) {
        const auto inside =
            static_cast<int>(std::lower_bound(times.begin(), times.end(), period) - times.begin());
        if (inside > 1 && time >= 0.0f && time < period) {
            return LocateClosed(time, inside);
        }
    }
    const int index = LastAtOrBefore(time);
    if (index < 0) {
        // Also a time that is not a number ends here.
        HoldPoint(0, -kForever, times.front());
        return true;
    }
    if (index == count - 1) {
        HoldPoint(index, times.back(), kForever);
        return true;
    }
    CurvePoint<N> points[4];
    const float open = period;
    period = 0.0f;
    const bool before = Load(index - 1, count, points[0]);
    Load(index, count, points[1]);
    Load(index + 1, count, points[2]);
    const bool after = Load(index + 2, count, points[3]);
    period = open;
    segment = MakeSegment(before ? &points[0] : nullptr, points[1], points[2], after ? &points[3] : nullptr);
    return true;
}

template class CurveChannel<1>;
template class CurveChannel<3>;

void LinkedChannel::OnRebuilt() const {
    VectorChannel::OnRebuilt();
    const auto& keys = Keys();
    linked = std::any_of(keys.begin(), keys.end(), [](const IFilmKey* key) {
        return static_cast<const CFilmLinkedKey*>(key)->linkObject != nullptr;
    });
}

void LinkedChannel::LoadPoint(const IFilmKey& key, CurvePoint<3>& point) const {
    VectorChannel::LoadPoint(key, point);
    const auto& record = static_cast<const CFilmLinkedKey&>(key);
    if (space == nullptr || record.linkObject == nullptr) {
        return;
    }
    const Matrix4 world =
        space->WorldOf(static_cast<const SceneObject&>(*record.linkObject), record.linkElement);
    for (float* part : {point.value, point.in, point.out}) {
        const Vector3 placed = TransformPoint({part[0], part[1], part[2]}, world);
        std::copy_n(placed.Data(), 3, part);
    }
}

bool LinkedChannel::EvaluateWorld(float time, const ILinkSpace& links, float* out) const {
    Refresh();
    if (!linked) {
        return Evaluate(time, out);
    }
    DropSegment();
    space = &links;
    const bool found = Evaluate(time, out);
    space = nullptr;
    DropSegment();
    return found;
}

std::unique_ptr<KeyChannel> MakeChannel(CFilmTrack& track, int kind, FilmManager& manager) {
    switch (kind) {
    case KeyKind::Position:
    case KeyKind::Rotation:
    case KeyKind::Scale:
    case KeyKind::Color:
        return std::make_unique<VectorChannel>(track, kind, manager);
    case KeyKind::CameraPosition:
    case KeyKind::CameraTarget:
        return std::make_unique<LinkedChannel>(track, kind, manager);
    case KeyKind::Roll:
    case KeyKind::FieldOfView:
        return std::make_unique<ScalarChannel>(track, kind, manager);
    default:
        return std::make_unique<KeyChannel>(track, kind, manager);
    }
}

} // namespace engine
