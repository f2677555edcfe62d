#pragma once

#include <cstdint>

/// Ids of the plug-in's chunks in the level file.
namespace LevelChunk {
/// Older form of VirtualObjects, without class names; only read.
constexpr std::uint16_t VirtualObjectsOld = 5750;
constexpr std::uint16_t VirtualObjects = 5752;
constexpr std::uint16_t VirtualObject = 5753;
/// Inside the film manager's data; written for the game, read by the engine.
constexpr std::uint16_t GameVirtualObject = 5754;
constexpr std::uint16_t TrackParams = 5780;
/// Older form of ObjectParams with 9 filter bytes; only read.
constexpr std::uint16_t ObjectParamsOld = 5781;
constexpr std::uint16_t LightHelpers = 5782;
constexpr std::uint16_t LightHelper = 5783;
constexpr std::uint16_t ObjectParams = 5784;
constexpr std::uint16_t ViewSettings = 5785;
constexpr std::uint16_t CameraParams = 5786;
} // namespace LevelChunk
