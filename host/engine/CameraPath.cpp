#include "host/engine/CameraPath.h"

#include "host/engine/CameraTrack.h"
#include "host/engine/Changes.h"
#include "host/engine/Film.h"
#include "host/engine/SceneObject.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace engine {

namespace {

bool SameBits(const std::vector<Matrix4>& a, const std::vector<Matrix4>& b) {
    using Words = std::array<std::uint32_t, sizeof(Matrix4) / sizeof(std::uint32_t)>;
    return std::ranges::equal(a, b, [](const Matrix4& x, const Matrix4& y) {
        return std::bit_cast<Words>(x) == std::bit_cast<Words>(y);
    });
}

} // namespace

std::span<const Vector3> CameraPath::Sample(const Film& film, const CameraTrack& camera, int kind,
                                            int detail) {
    if (detail == sampledDetail && IsGood(film, camera, kind)) {
        return points;
    }
    points.clear();
    const KeyChannel* channel = camera.Channel(kind);
    const auto times = channel != nullptr ? channel->Times() : std::span<const float>{};
    points.reserve(times.size() * static_cast<std::size_t>(detail));
    for (std::size_t i = 0; i < times.size(); ++i) {
        const bool last = i + 1 == times.size();
        for (int step = 0; step < (last ? 1 : detail); ++step) {
            const float share = static_cast<float>(step) / static_cast<float>(detail);
            const float time = SafeTime(last ? times[i] : times[i] + (times[i + 1] - times[i]) * share);
            points.push_back(camera.CurvePointAt(kind, time, PoseAtTime(film, time)));
        }
    }
    FindLinks(camera, kind);
    places = FreePlaces(film);
    stamp = links.empty() ? (channel != nullptr ? channel->Revision() : 0) : changeCount;
    sampledDetail = detail;
    return points;
}

bool CameraPath::IsGood(const Film& film, const CameraTrack& camera, int kind) const {
    if (links.empty()) {
        const KeyChannel* channel = camera.Channel(kind);
        return channel != nullptr && channel->Revision() == stamp;
    }
    return changeCount == stamp && SameBits(FreePlaces(film), places);
}

void CameraPath::FindLinks(const CameraTrack& camera, int kind) {
    links.clear();
    const KeyChannel* channel = camera.Channel(kind);
    for (const IFilmKey* key : channel != nullptr ? channel->Keys() : std::span<IFilmKey* const>{}) {
        const auto& record = static_cast<const CFilmLinkedKey&>(*key);
        const Link link{static_cast<const SceneObject*>(record.linkObject), record.linkElement};
        if (link.object != nullptr && std::ranges::find(links, link) == links.end()) {
            links.push_back(link);
        }
    }
}

std::vector<Matrix4> CameraPath::FreePlaces(const Film& film) const {
    std::vector<Matrix4> found;
    const PoseAtTime pose(film, 0.0f, &found);
    for (const Link& link : links) {
        pose.WorldOf(*link.object, link.element);
    }
    return found;
}

} // namespace engine
