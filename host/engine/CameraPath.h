#pragma once

#include "host/engine/Math.h"
#include "plugin/contract/Types.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace engine {

class CameraTrack;
class Film;
class SceneObject;

/// The path of a camera's eye or target in world points, kept as long as nothing moves it. Owned by its
/// track.
class CameraPath {
public:
    /// From key to key of a kind (16 or 17), with `detail` segments between neighbours; empty without keys.
    /// Good until the next call.
    std::span<const Vector3> Sample(const Film& film, const CameraTrack& camera, int kind, int detail);

private:
    /// What some key follows.
    struct Link {
        const SceneObject* object = nullptr;
        std::string element;

        bool operator==(const Link&) const = default;
    };

    bool IsGood(const Film& film, const CameraTrack& camera, int kind) const;
    void FindLinks(const CameraTrack& camera, int kind);
    /// Where the things stand that the links depend on and that the film leaves alone.
    std::vector<Matrix4> FreePlaces(const Film& film) const;

    std::vector<Vector3> points;
    std::vector<Link> links;     ///< each once
    std::vector<Matrix4> places; ///< free places at the time of sampling
    std::uint64_t stamp = 0;     ///< change count of the keys or, with links, of all; 0: never sampled
    int sampledDetail = 0;
};

} // namespace engine
