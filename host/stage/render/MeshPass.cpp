#include "host/stage/render/MeshPass.h"

#include "host/stage/render/Shaders.h"

#include <algorithm>
#include <epoxy/gl.h>

namespace {

bool IsSeen(const FrameItem& entry, const std::array<glm::vec4, 6>& planes) {
    return std::none_of(planes.begin(), planes.end(), [&](const glm::vec4& plane) {
        return glm::dot(glm::vec3(plane), entry.center) + plane.w <
               -entry.radius * glm::length(glm::vec3(plane));
    });
}

/// A mirrored matrix turns the triangles' sense around.
void FaceFront(const glm::mat4& matrix) {
    glFrontFace(glm::determinant(glm::mat3(matrix)) < 0.0f ? GL_CW : GL_CCW);
}

void SetMatrix(const GlProgram& program, const char* name, const glm::mat4& matrix) {
    glUniformMatrix4fv(program.Location(name), 1, GL_FALSE, &matrix[0][0]);
}

} // namespace

MeshPass::MeshPass()
    : plain(Shaders::kFramePrelude, Shaders::kMeshVertex, Shaders::kMeshFragment),
      glossy(Shaders::kFramePrelude, Shaders::kMeshVertex, Shaders::kMeshFragment, "#define GLOSSY\n"),
      depth(Shaders::kFramePrelude, Shaders::kDepthVertex, Shaders::kDepthFragment),
      mask(Shaders::kFramePrelude, Shaders::kDepthVertex, Shaders::kMaskFragment) {
}

void MeshPass::Prepare(const std::vector<FrameItem>& items) {
    std::vector<const RenderItem*> sources;
    sources.reserve(items.size());
    for (const FrameItem& entry : items) {
        sources.push_back(entry.item);
    }
    buffers.Prepare(sources);
}

void MeshPass::DrawLitPart(const GlProgram& program, const FrameItem& entry, const MeshPart& part) {
    const glm::mat4 matrix = PartMatrix(*entry.item, part);
    const glm::mat3 normalMatrix = glm::transpose(glm::inverse(glm::mat3(matrix)));
    SetMatrix(program, "model", matrix);
    glUniformMatrix3fv(program.Location("normalModel"), 1, GL_FALSE, &normalMatrix[0][0]);
    FaceFront(matrix);
    buffers.Draw(entry.index, part);
}

void MeshPass::DrawLitParts(const GlProgram& program, bool isGlossy, const RenderScene& scene,
                            unsigned shadowTexture) {
    program.Use();
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, shadowTexture);
    glUniform1i(program.Location("shadowMap"), 0);
    for (const FrameItem* entry : order) {
        const std::vector<MeshPart>& meshParts = entry->item->mesh->parts;
        if (std::none_of(meshParts.begin(), meshParts.end(),
                         [&](const MeshPart& part) { return part.glossy == isGlossy; })) {
            continue;
        }
        const ItemLights lights = LightsReaching(scene, entry->center, entry->radius);
        glUniform3fv(program.Location("tint"), 1, &entry->item->tint.x);
        glUniform1i(program.Location("lightCount"), lights.count);
        glUniform1iv(program.Location("lightIndex"), static_cast<GLsizei>(RenderScene::kMaxLights),
                     lights.index);
        for (const MeshPart& part : meshParts) {
            if (part.glossy == isGlossy) {
                DrawLitPart(program, *entry, part);
            }
        }
    }
}

void MeshPass::DrawLit(const std::vector<FrameItem>& items, const RenderScene& scene,
                       const glm::mat4& viewProjection, const glm::vec3& eye, unsigned shadowTexture) {
    const std::array<glm::vec4, 6> planes = FrustumPlanes(viewProjection);
    order.clear();
    for (const FrameItem& entry : items) {
        if (IsSeen(entry, planes)) {
            order.push_back(&entry);
        }
    }
    const auto nearness = [&](const FrameItem* entry) {
        return glm::distance(entry->center, eye) - entry->radius * 0.5f;
    };
    std::stable_sort(order.begin(), order.end(),
                     [&](const FrameItem* a, const FrameItem* b) { return nearness(a) < nearness(b); });
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    DrawLitParts(plain, /*isGlossy*/ false, scene, shadowTexture);
    DrawLitParts(glossy, /*isGlossy*/ true, scene, shadowTexture);
    glDisable(GL_CULL_FACE);
}

void MeshPass::DrawFlat(const GlProgram& program, const FrameItem& entry) {
    for (const MeshPart& part : entry.item->mesh->parts) {
        SetMatrix(program, "model", PartMatrix(*entry.item, part));
        buffers.Draw(entry.index, part);
    }
}

void MeshPass::DrawDepth(const std::vector<FrameItem>& items, const glm::mat4& projection) {
    depth.Use();
    SetMatrix(depth, "projection", projection);
    for (const FrameItem& entry : items) {
        if (entry.item->castsShadow) {
            DrawFlat(depth, entry);
        }
    }
}

void MeshPass::DrawMask(const std::vector<FrameItem>& items, const glm::mat4& viewProjection) {
    mask.Use();
    SetMatrix(mask, "projection", viewProjection);
    for (const FrameItem& entry : items) {
        if (entry.item->outline) {
            DrawFlat(mask, entry);
        }
    }
}
