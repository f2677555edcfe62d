#pragma once

#include "host/engine/Units.h"
#include "plugin/contract/HostObject.h"
#include "plugin/contract/Level.h"
#include "plugin/contract/Types.h"

namespace engine {

/// What a light object shines with.
struct LightProperties {
    Vector3 color{1.0f, 1.0f, 1.0f}; ///< r, g, b in 0 to 1
    float range = Metres(10.0f);     ///< units to where the light has faded out
    float intensity = 1.0f;          ///< factor on the colour
    bool on = true;

    bool operator==(const LightProperties&) const = default;
};

/// The level's sun. Owned by the level data.
class SunObject : public ISunObject {
public:
    bool IsA(int) const override { return false; }

    LightProperties light; ///< the range is not used
};

} // namespace engine
