#pragma once

#include "host/engine/Units.h"
#include "plugin/contract/Types.h"

#include <cmath>

/// Units of a length that is written down in metres, whole where that means them: 1.2 m become 120, not
/// 120.0000076.
inline float InUnits(float metres) {
    constexpr double kDigits = 1000.0;
    return static_cast<float>(std::round(double{metres} * double{engine::kUnitsPerMetre} * kDigits) /
                              kDigits);
}

inline Vector3 InUnits(const Vector3& metres) {
    return {InUnits(metres.x), InUnits(metres.y), InUnits(metres.z)};
}
