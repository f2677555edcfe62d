#pragma once

namespace engine {

/// One unit of a level is a centimetre: the lengths that are fixed in the plug-in (a new camera's target
/// 5,000 units ahead, no position key for a move of less than one) are made for that. Where something counts
/// in metres, as glTF files and the shaders do, this number converts.
constexpr float kUnitsPerMetre = 100.0f;

/// A length in units.
constexpr float Metres(float metres) {
    return metres * kUnitsPerMetre;
}

} // namespace engine
