#include "host/engine/CurveChannel.h"

#include "host/engine/SceneObject.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

std::size_t segmentsBuilt = 0;

constexpr float kForever = std::numeric_limits<float>::infinity();

const CFilmVectorKey& Record(const IFilmKey& key, CurvePoint<3>&) {
    return static_cast<const CFilmVectorKey&>(key);
}

const CFilmScalarKey& Record(const IFilmKey& key, CurvePoint<1>&) {
    return static_cast<const CFilmScalarKey&>(key);
}

const float* ValueOf(const CFilmVectorKey& record) {
    return record.value.Data();
}
const float* ValueOf(const CFilmScalarKey& record) {
    return &record.value;
}
const float* InOf(const CFilmVectorKey& record) {
    return record.inHandle.Data();
}
const float* InOf(const CFilmScalarKey& record) {
    return &record.inValue;
}
const float* OutOf(const CFilmVectorKey& record) {
    return record.outHandle.Data();
}
const float* OutOf(const CFilmScalarKey& record) {
    return &record.outValue;
}

/// Four bits for a method. All numbers that are no method shape curves alike.
std::uint8_t Packed(std::int32_t method) {
    return method >= BezierMethod::Smooth && method <= BezierMethod::Inverse
               ? static_cast<std::uint8_t>(method)
               : static_cast<std::uint8_t>(BezierMethod::Smooth);
}

} // namespace

std::size_t SegmentsBuilt() {
    return segmentsBuilt;
}

template <int N> void CurveChannel<N>::OnRebuilt() const {
    DropSegment();
    const auto keys = Keys();
    knots.resize(keys.size());
    methods.resize(keys.size());
    CurvePoint<N> tag;
    index.allSmooth = true;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto& record = Record(*keys[i], tag);
        knots[i].time = Times()[i];
        std::copy_n(ValueOf(record), N, knots[i].value);
        methods[i] = static_cast<std::uint8_t>(Packed(record.inMethod) | Packed(record.outMethod) << 4);
        index.allSmooth = index.allSmooth && methods[i] == 0;
    }
    index.knots = knots.data();
    index.count = static_cast<int>(knots.size());
    index.first = knots.empty() ? 0.0f : knots.front().time;
    index.last = knots.empty() ? 0.0f : knots.back().time;
    const float perSecond = static_cast<float>(index.count - 1) / (index.last - index.first);
    index.perSecond = std::isfinite(perSecond) ? perSecond : 0.0f;
    index.good = true;
}

template <int N> int CurveChannel<N>::Find(float time) const {
    // Keys mostly stand at even distances: look first where the time would be then.
    const int guess = Guess(time);
    const CurveKnot<N>* at = index.knots + guess;
    if (at[0].time <= time && time < at[1].time) {
        return guess;
    }
    const bool later = at[0].time <= time;
    const CurveKnot<N>* found =
        std::upper_bound(later ? at + 1 : index.knots, later ? index.knots + index.count : at, time,
                         [](float wanted, const CurveKnot<N>& knot) { return wanted < knot.time; });
    return static_cast<int>(found - index.knots) - 1;
}

template <int N> void CurveChannel<N>::LoadKept(std::size_t key, CurvePoint<N>& point) const {
    std::copy_n(knots[key].value, N, point.value);
    point.inMethod = methods[key] & 15;
    point.outMethod = methods[key] >> 4;
    if (point.inMethod == BezierMethod::User || point.outMethod == BezierMethod::User) {
        const auto& record = Record(*Keys()[key], point);
        std::copy_n(InOf(record), N, point.in);
        std::copy_n(OutOf(record), N, point.out);
    }
}

/// Loads one of the first `count` keys. A closed curve goes on in front and behind; in an open one there is
/// nothing.
template <int N> bool CurveChannel<N>::Load(int key, int count, CurvePoint<N>& point) const {
    float shift = 0.0f;
    if (key < 0 || key >= count) {
        if (index.period <= 0.0f) {
            return false;
        }
        shift = key < 0 ? -index.period : index.period;
        key = (key % count + count) % count;
    }
    const auto at = static_cast<std::size_t>(key);
    if (pointsVary) {
        LoadPoint(*Keys()[at], point);
    } else {
        LoadKept(at, point);
    }
    point.time = knots[at].time + shift;
    return true;
}

template <int N> void CurveChannel<N>::HoldPoint(int key, float start, float end) const {
    CurvePoint<N> point;
    Load(key, index.count, point);
    *segment = {};
    segment->start = start;
    segment->end = end;
    std::copy_n(point.value, N, segment->c[0]);
}

template <int N> void CurveChannel<N>::LocateClosed(float time, int count) const {
    const int key = time < index.first ? -1 : std::min(LastAtOrBefore(time), count - 1);
    CurvePoint<N> points[4];
    for (int i = 0; i < 4; ++i) {
        Load(key + i - 1, count, points[i]);
    }
    *segment = MakeSegment(&points[0], points[1], points[2], &points[3]);
}

/// The segment of an open curve behind a key that is not the last.
template <int N> CurveSegment<N> CurveChannel<N>::SegmentFrom(int key) const {
    const bool first = key == 0;
    const bool last = key + 2 == index.count;
    if (index.allSmooth && !pointsVary) {
        const CurveKnot<N>* at = index.knots + key;
        return MakeSmoothSegment(first ? nullptr : at - 1, at[0], at[1], last ? nullptr : at + 2);
    }
    CurvePoint<N> points[4];
    for (int i = first ? 1 : 0; i < (last ? 3 : 4); ++i) {
        Load(key + i - 1, index.count, points[i]);
    }
    return MakeSegment(first ? nullptr : &points[0], points[1], points[2], last ? nullptr : &points[3]);
}

template <int N> bool CurveChannel<N>::Locate(float time) const {
    if (!index.good) {
        Refresh();
    }
    if (index.count == 0) {
        return false;
    }
    ++segmentsBuilt;
    if (index.period > 0.0f && time >= 0.0f && time < index.period) {
        const std::span<const float> times = Times();
        const auto inside = std::lower_bound(times.begin(), times.end(), index.period) - times.begin();
        if (inside > 1) {
            LocateClosed(time, static_cast<int>(inside));
            return true;
        }
    }
    if (!(time >= index.first)) {
        // Also a time that is not a number ends here.
        HoldPoint(0, -kForever, index.first);
    } else if (time >= index.last) {
        HoldPoint(index.count - 1, index.last, kForever);
    } else {
        *segment = SegmentFrom(Find(time));
    }
    return true;
}

template class CurveChannel<1>;
template class CurveChannel<3>;

void LinkedChannel::OnRebuilt() const {
    VectorChannel::OnRebuilt();
    const auto keys = Keys();
    pointsVary = std::any_of(keys.begin(), keys.end(), [](const IFilmKey* key) {
        return static_cast<const CFilmLinkedKey*>(key)->linkObject != nullptr;
    });
}

void LinkedChannel::LoadPoint(const IFilmKey& key, CurvePoint<3>& point) const {
    const auto& record = static_cast<const CFilmLinkedKey&>(key);
    std::copy_n(record.value.Data(), 3, point.value);
    std::copy_n(record.inHandle.Data(), 3, point.in);
    std::copy_n(record.outHandle.Data(), 3, point.out);
    point.inMethod = record.inMethod;
    point.outMethod = record.outMethod;
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
    if (!pointsVary) {
        return Evaluate(time, out);
    }
    // Segments last no longer than the places of what the keys are tied to.
    DropSegment();
    space = &links;
    const bool found = Evaluate(time, out);
    space = nullptr;
    DropSegment();
    return found;
}

namespace {

/// The channel that evaluates keys of a record class; for those without curves the plain one.
template <class Record> struct ChannelOf { using Type = KeyChannel; };
template <> struct ChannelOf<CFilmVectorKey> { using Type = VectorChannel; };
template <> struct ChannelOf<CFilmLinkedKey> { using Type = LinkedChannel; };
template <> struct ChannelOf<CFilmScalarKey> { using Type = ScalarChannel; };

} // namespace

std::unique_ptr<KeyChannel> MakeChannel(CFilmTrack& track, int kind, FilmManager& manager) {
    std::unique_ptr<KeyChannel> channel;
    WithKeyRecord(kind, [&]<class Record>(std::type_identity<Record>) {
        channel = std::make_unique<typename ChannelOf<Record>::Type>(track, kind, manager);
    });
    return channel != nullptr ? std::move(channel) : std::make_unique<KeyChannel>(track, kind, manager);
}

} // namespace engine
