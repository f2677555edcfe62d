#pragma once

#include "host/stage/render/RenderScene.h"

namespace render {

/// The sky that goes with a sun: blue by day, warm when the sun is low, dark when it has set. `direction`
/// points to the sun, any length; `color` is the sun's own, 0 to 1 each.
RenderSky SkyForSun(const glm::vec3& direction, const glm::vec3& color);

/// The light of a sun of this colour and direction, less the lower it stands, none below the horizon.
RenderSun SunLight(const glm::vec3& direction, const glm::vec3& color);

} // namespace render
