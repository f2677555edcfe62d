#include "host/stage/render/ShadowMap.h"

#include "host/engine/Units.h"

#include <epoxy/gl.h>
#include <glm/gtc/matrix_transform.hpp>

namespace render {

glm::mat4 ShadowProjection(const mesh::MeshBox& world, const glm::vec3& toSun) {
    const glm::vec3 up =
        std::abs(toSun.y) > 0.95f ? glm::vec3(0.0f, 0.0f, 1.0f) : glm::vec3(0.0f, 1.0f, 0.0f);
    const glm::vec3 center = world.Center();
    // One unit away the direction would be lost in the digits of the centre.
    const glm::mat4 view = glm::lookAt(center + toSun * engine::Metres(1.0f), center, up);
    mesh::MeshBox seen;
    for (int corner = 0; corner < 8; ++corner) {
        seen.Add(glm::vec3(view * glm::vec4(world.Corner(corner), 1.0f)));
    }
    constexpr float kMargin = engine::Metres(0.5f);
    return glm::ortho(seen.min.x - kMargin, seen.max.x + kMargin, seen.min.y - kMargin, seen.max.y + kMargin,
                      -seen.max.z - kMargin, -seen.min.z + kMargin) *
           view;
}

ShadowMap::ShadowMap() {
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT24, kSize, kSize, 0, GL_DEPTH_COMPONENT, GL_UNSIGNED_INT,
                 nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    // Beyond the map the sun shines.
    constexpr float kLit[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_BORDER);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_BORDER);
    glTexParameterfv(GL_TEXTURE_2D, GL_TEXTURE_BORDER_COLOR, kLit);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_MODE, GL_COMPARE_REF_TO_TEXTURE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_FUNC, GL_LEQUAL);
    glGenFramebuffers(1, &frame);
    glBindFramebuffer(GL_FRAMEBUFFER, frame);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D, texture, 0);
    glDrawBuffer(GL_NONE);
    glReadBuffer(GL_NONE);
}

ShadowMap::~ShadowMap() {
    glDeleteFramebuffers(1, &frame);
    glDeleteTextures(1, &texture);
}

void ShadowMap::Begin(const mesh::MeshBox& world, const glm::vec3& toSun) {
    projection = ShadowProjection(world, toSun);
    glBindFramebuffer(GL_FRAMEBUFFER, frame);
    glViewport(0, 0, kSize, kSize);
    glEnable(GL_DEPTH_TEST);
    glDepthMask(GL_TRUE);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1.5f, 2.0f);
    glEnable(GL_SCISSOR_TEST);
}

void ShadowMap::BeginArea(const ShadowArea& area) {
    glScissor(area.left, area.bottom, area.right - area.left, area.top - area.bottom);
    glClear(GL_DEPTH_BUFFER_BIT);
}

void ShadowMap::End() {
    glDisable(GL_SCISSOR_TEST);
    glDisable(GL_POLYGON_OFFSET_FILL);
}

glm::mat4 ShadowMap::TextureMatrix() const {
    const glm::mat4 half = glm::scale(glm::translate(glm::mat4(1.0f), glm::vec3(0.5f)), glm::vec3(0.5f));
    return half * projection;
}

} // namespace render
