#include "host/engine/CameraTrack.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace engine {

namespace {

/// Keys nearer than this stand at the time asked for; the plug-in's camera frames use the same distance.
constexpr float kKeyTolerance = 0.0001f;
/// Width over height until a view gives its own.
constexpr float kDefaultAspect = 16.0f / 9.0f;

} // namespace

CameraTrack::CameraTrack(FilmManager& filmManager) : TrackOf(filmManager) {
    cameraData = &record;
    record.data.aspect = kDefaultAspect;
}

CFilmLinkedKey* CameraTrack::KeyAt(int kind, float time) const {
    const KeyChannel* channel = Channel(kind);
    if (channel == nullptr) {
        return nullptr;
    }
    const auto times = channel->Times();
    const auto sorted = channel->Keys();
    CFilmLinkedKey* nearest = nullptr;
    float distance = kKeyTolerance;
    // The difference alone decides; the bounds only leave out what is far off.
    const auto first = std::ranges::lower_bound(times, time - 2.0f * kKeyTolerance) - times.begin();
    for (auto i = static_cast<std::size_t>(first);
         i < times.size() && times[i] <= time + 2.0f * kKeyTolerance; ++i) {
        if (std::fabs(times[i] - time) < distance) {
            distance = std::fabs(times[i] - time);
            nearest = static_cast<CFilmLinkedKey*>(sorted[i]);
        }
    }
    return nearest;
}

float CameraTrack::LoopTime(int mode, float length, float time) {
    if (!(length > 0.0f) || !std::isfinite(length)) {
        return time;
    }
    switch (mode) {
    case LoopMode::Loop:
    case LoopMode::SmoothLoop: {
        const float inside = std::fmod(time, length);
        return inside < 0.0f ? inside + length : inside;
    }
    case LoopMode::PingPong: {
        const float inside = std::fabs(std::fmod(time, 2.0f * length));
        return inside > length ? 2.0f * length - inside : inside;
    }
    default:
        return time;
    }
}

template <int N> float CameraTrack::SubTrackTime(int kind, const CurveChannel<N>& channel, float time) const {
    const int index = kind - KeyKind::CameraPosition;
    const int mode = loopMode[index];
    // A length that was never set is that of the keys.
    const auto times = channel.Times();
    const float length =
        subTrackLength[index] > 0.0f ? subTrackLength[index] : (times.empty() ? 0.0f : times.back());
    channel.SetPeriod(mode == LoopMode::SmoothLoop && std::isfinite(length) ? length : 0.0f);
    return LoopTime(mode, length, time);
}

Vector3 CameraTrack::CurvePointAt(int kind, float time, const ILinkSpace& links) const {
    Vector3 point;
    if (const auto* channel = ChannelAs<LinkedChannel>(kind)) {
        channel->SetPeriod(0.0f);
        channel->EvaluateWorld(time, links, point.Data());
    }
    return point;
}

Vector3 CameraTrack::PointAt(int kind, float time, const ILinkSpace& links) const {
    Vector3 point;
    if (const auto* channel = ChannelAs<LinkedChannel>(kind)) {
        channel->EvaluateWorld(SubTrackTime(kind, *channel, time), links, point.Data());
    }
    return point;
}

float CameraTrack::ScalarAt(int kind, float time, float missing) const {
    float value = missing;
    if (const auto* channel = ChannelAs<ScalarChannel>(kind)) {
        channel->Evaluate(SubTrackTime(kind, *channel, time), &value);
    }
    return value;
}

float CameraTrack::OwnFieldOfView() const {
    // By bits, so that what is not a number compares too. Anything else was set by somebody since.
    const bool isPosed = posedFieldOfView && std::bit_cast<std::uint32_t>(*posedFieldOfView) ==
                                                 std::bit_cast<std::uint32_t>(fieldOfView);
    return isPosed ? fieldOfViewBefore : fieldOfView;
}

void CameraTrack::Pose(float time) {
    const PresentPose present;
    eyePoint = PointAt(KeyKind::CameraPosition, time, present);
    targetPoint = PointAt(KeyKind::CameraTarget, time, present);
    const float roll = ScalarAt(KeyKind::Roll, time, 0.0f);
    fieldOfViewBefore = OwnFieldOfView();
    posedFieldOfView = ScalarAt(KeyKind::FieldOfView, time, fieldOfViewBefore);
    fieldOfView = *posedFieldOfView;

    CameraData& data = record.data;
    data.recordNear = nearPlane;
    data.recordFar = farPlane;
    const Matrix4 world = CameraMatrix(eyePoint, targetPoint, roll);
    const Matrix4 projection = Perspective(fieldOfView, data.aspect, nearPlane, farPlane);
    Matrix4 inverse;
    Invert(world, inverse);
    std::memcpy(data.matrices[0], world.m, sizeof world.m);
    std::memcpy(data.matrices[1], inverse.m, sizeof inverse.m);
    std::memcpy(data.matrices[2], projection.m, sizeof projection.m);
    std::memcpy(data.matrices[3], Multiply(inverse, projection).m, sizeof projection.m);
}

} // namespace engine
