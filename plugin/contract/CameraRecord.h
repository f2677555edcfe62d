#pragma once

#include <cstdint>

/// The planes of a camera that was given none, in units.
namespace ClipPlane {
constexpr float Near = 10.0f;
constexpr float Far = 100000.0f;
} // namespace ClipPlane

/// The data of a camera as the engine's views hold it: 243 words, copied flat into a view.
struct CameraData {
    /// [0] the camera in the world (row 2 points backwards), [1] its inverse, [2] the projection,
    /// [3] inverse times projection; the others belong to the engine.
    float matrices[8][16] = {};
    float previousMatrix[16] = {};
    std::uint32_t viewport[4] = {};
    float recordNear = ClipPlane::Near;
    float recordFar = ClipPlane::Far;
    float aspect = 1.0f;
    std::uint32_t cameraFlags = 0;
    float vectorPairs[4][2][3] = {}; ///< frustum rays
    float planePairs[3][2][4] = {};  ///< frustum planes
    std::uint32_t words[5] = {};
    std::uint32_t frame = 0;
    float shadowMatrices[2][16] = {};
    std::uint32_t target[3] = {};
    std::uint32_t reserved[2] = {};
};
static_assert(sizeof(CameraData) == 972, "the record is copied flat between tracks and views");

/// A camera of a track or of a view; the class pointer in front of the data stays with its owner.
class CameraRecord {
public:
    virtual ~CameraRecord() = default;

    CameraData data;
};
