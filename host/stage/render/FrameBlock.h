#pragma once

#include "host/stage/render/RenderScene.h"

namespace render {

/// The uniform block that all shaders read (std140: vec4 and mat4 only).
struct FrameBlock {
    glm::mat4 viewProjection;
    glm::mat4 inverseViewProjection;
    glm::mat4 shadow;       ///< world to shadow map, 0 to 1
    glm::vec4 eye;          ///< xyz; w seconds
    glm::vec4 sunDirection; ///< unit, towards the sun
    glm::vec4 sunColor;     ///< rgb; w exposure
    glm::vec4 zenith;       ///< rgb; w fog density
    glm::vec4 horizon;      ///< rgb; w cloud cover
    glm::vec4 ground;       ///< rgb
    glm::vec4 viewport;     ///< pixels: width, height, 1/width, 1/height
};

} // namespace render
