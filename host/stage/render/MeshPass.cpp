#include "host/stage/render/MeshPass.h"

#include "host/engine/Units.h"
#include "host/stage/render/Shaders.h"

#include <algorithm>
#include <epoxy/gl.h>
#include <string>

namespace render {

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

void SetLights(const GlProgram& program, const RenderScene& scene, const ItemLights& lights) {
    if (lights.count == 0) {
        return;
    }
    glm::vec4 places[RenderScene::kMaxLights];
    glm::vec3 colors[RenderScene::kMaxLights];
    for (int i = 0; i < lights.count; ++i) {
        const RenderLight& light = scene.lights[static_cast<std::size_t>(lights.index[i])];
        const float range =
            std::max(light.range / engine::kUnitsPerMetre, 0.01f); // the shader counts in metres
        places[i] = glm::vec4(light.position, 1.0f / (range * range));
        colors[i] = light.color;
    }
    glUniform4fv(program.Location("lightPosition"), lights.count, &places[0].x);
    glUniform3fv(program.Location("lightColor"), lights.count, &colors[0].x);
}

} // namespace

MeshPass::MeshPass()
    : depth(Shaders::kFramePrelude, Shaders::kDepthVertex, Shaders::kDepthFragment),
      mask(Shaders::kFramePrelude, Shaders::kDepthVertex, Shaders::kMaskFragment),
      wire(Shaders::kFramePrelude, Shaders::kDepthVertex, Shaders::kWireFragment) {
    // The plainest form at once, so that a driver that can't do it is found out at the start.
    Program({});
}

const GlProgram& MeshPass::Program(const Variant& variant) {
    std::unique_ptr<GlProgram>& program = lit[variant];
    if (program == nullptr) {
        std::string defines = "#define LIGHTS " + std::to_string(variant.lights) + "\n";
        defines += variant.glossy ? "#define GLOSSY\n" : "";
        defines += variant.fine ? "#define FINE\n" : "";
        program = std::make_unique<GlProgram>(Shaders::kFramePrelude, Shaders::kMeshVertex,
                                              Shaders::kMeshFragment, defines.c_str());
    }
    return *program;
}

void MeshPass::Prepare(const std::vector<FrameItem>& items) {
    std::vector<const RenderItem*> sources;
    sources.reserve(items.size());
    for (const FrameItem& entry : items) {
        sources.push_back(entry.item);
    }
    buffers.Prepare(sources);
}

void MeshPass::DrawLitPart(const GlProgram& program, const FrameItem& entry, const mesh::MeshPart& part,
                           const View& view) {
    const glm::mat4 matrix = PartMatrix(*entry.item, part);
    const glm::mat3 normalMatrix = glm::transpose(glm::inverse(glm::mat3(matrix)));
    SetMatrix(program, "model", matrix);
    SetMatrix(program, "clip", view.viewProjection * matrix);
    glUniformMatrix3fv(program.Location("normalModel"), 1, GL_FALSE, &normalMatrix[0][0]);
    FaceFront(matrix);
    buffers.Draw(entry.index, part);
}

void MeshPass::DrawLitItem(const FrameItem& entry, const RenderScene& scene, const View& view, bool glossy) {
    const std::vector<mesh::MeshPart>& meshParts = entry.item->mesh->parts;
    if (std::none_of(meshParts.begin(), meshParts.end(),
                     [&](const mesh::MeshPart& part) { return part.glossy == glossy; })) {
        return;
    }
    const ItemLights lights = LightsReaching(scene, entry.center, entry.radius);
    const GlProgram& program = Program({glossy, view.fine, lights.count});
    program.Use();
    glUniform1i(program.Location("shadowMap"), 0);
    glUniform3fv(program.Location("tint"), 1, &entry.item->tint.x);
    SetLights(program, scene, lights);
    for (const mesh::MeshPart& part : meshParts) {
        if (part.glossy == glossy) {
            DrawLitPart(program, entry, part, view);
        }
    }
}

void MeshPass::SelectSeen(const std::vector<FrameItem>& items, const View& view) {
    const std::array<glm::vec4, 6> planes = FrustumPlanes(view.viewProjection);
    order.clear();
    for (const FrameItem& entry : items) {
        if (IsSeen(entry, planes)) {
            order.push_back(&entry);
        }
    }
    // Grounds and waters come last: what stands on them would be drawn over them.
    const auto nearness = [&](const FrameItem* entry) {
        constexpr float kGroundRadius = engine::Metres(12.0f);
        constexpr float kFar = engine::Metres(1e6f);
        const float away = glm::distance(glm::clamp(view.eye, entry->box.min, entry->box.max), view.eye);
        return away + (entry->radius > kGroundRadius ? kFar : 0.0f);
    };
    std::stable_sort(order.begin(), order.end(),
                     [&](const FrameItem* a, const FrameItem* b) { return nearness(a) < nearness(b); });
}

void MeshPass::DrawLit(const std::vector<FrameItem>& items, const RenderScene& scene, const View& view) {
    SelectSeen(items, view);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, view.shadowTexture);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    for (const bool glossy : {false, true}) {
        for (const FrameItem* entry : order) {
            DrawLitItem(*entry, scene, view, glossy);
        }
    }
    glDisable(GL_CULL_FACE);
}

void MeshPass::DrawFlat(const GlProgram& program, const FrameItem& entry, const glm::mat4& projection) {
    for (const mesh::MeshPart& part : entry.item->mesh->parts) {
        SetMatrix(program, "clip", projection * PartMatrix(*entry.item, part));
        buffers.Draw(entry.index, part);
    }
}

void MeshPass::DrawDepth(const std::vector<const FrameItem*>& items, const glm::mat4& projection) {
    depth.Use();
    for (const FrameItem* entry : items) {
        DrawFlat(depth, *entry, projection);
    }
}

void MeshPass::DrawWires(const std::vector<FrameItem>& items, const glm::mat4& projection) {
    constexpr glm::vec3 kWire(0.10f, 0.12f, 0.16f);
    constexpr glm::vec3 kChosenWire(0.80f, 0.35f, 0.0f);
    wire.Use();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    for (const bool outlined : {false, true}) {
        const glm::vec3& color = outlined ? kChosenWire : kWire;
        glUniform3fv(wire.Location("color"), 1, &color.x);
        for (const FrameItem& entry : items) {
            if (entry.item->outline == outlined) {
                DrawFlat(wire, entry, projection);
            }
        }
    }
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

void MeshPass::DrawMask(const std::vector<FrameItem>& items, const glm::mat4& projection) {
    mask.Use();
    for (const FrameItem& entry : items) {
        if (entry.item->outline) {
            DrawFlat(mask, entry, projection);
        }
    }
}

} // namespace render
