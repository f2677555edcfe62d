#include "host/stage/render/FrameItems.h"

#include "host/engine/Units.h"

#include <algorithm>
#include <cmath>

namespace render {

bool IsFinite(const glm::mat4& matrix) {
    for (int c = 0; c < 4; ++c) {
        for (int r = 0; r < 4; ++r) {
            if (!std::isfinite(matrix[c][r])) {
                return false;
            }
        }
    }
    return true;
}

mesh::MeshBox TransformBox(const mesh::MeshBox& box, const glm::mat4& matrix) {
    mesh::MeshBox result;
    for (int corner = 0; corner < 8; ++corner) {
        result.Add(glm::vec3(matrix * glm::vec4(box.Corner(corner), 1.0f)));
    }
    return result;
}

void AddScreenBox(const mesh::MeshBox& box, const glm::mat4& viewProjection, mesh::MeshBox& seen) {
    constexpr float kAtTheEye = engine::Metres(1e-4f);
    for (int corner = 0; corner < 8; ++corner) {
        const glm::vec4 point = viewProjection * glm::vec4(box.Corner(corner), 1.0f);
        if (point.w <= kAtTheEye) {
            seen.Add(glm::vec3(-1.0f));
            seen.Add(glm::vec3(1.0f));
        } else {
            seen.Add(glm::vec3(point) / point.w);
        }
    }
}

namespace {

/// Lights below this strength change no pixel.
constexpr float kFaintest = 0.002f;

/// A pose may reach beyond the rest pose's box by about a limb's length.
mesh::MeshBox PosedBox(const RenderItem& item) {
    mesh::MeshBox box = item.mesh->box;
    if (item.pose != nullptr && item.mesh->IsPosable()) {
        const glm::vec3 reach(glm::length(box.Extent()) * 0.5f);
        box.min -= reach;
        box.max += reach;
    }
    return box;
}

} // namespace

std::vector<FrameItem> CollectItems(const RenderScene& scene) {
    std::vector<FrameItem> result;
    for (const RenderItem& item : scene.items) {
        if (item.mesh == nullptr || item.mesh->indices.empty() || !IsFinite(item.world)) {
            continue;
        }
        FrameItem entry;
        entry.item = &item;
        entry.index = result.size();
        entry.box = TransformBox(PosedBox(item), item.world);
        entry.center = entry.box.Center();
        entry.radius = glm::length(entry.box.Extent()) * 0.5f;
        result.push_back(entry);
    }
    return result;
}

ItemLights LightsReaching(const RenderScene& scene, const glm::vec3& center, float radius) {
    ItemLights result;
    const std::size_t count = std::min(scene.lights.size(), RenderScene::kMaxLights);
    for (std::size_t i = 0; i < count; ++i) {
        const RenderLight& light = scene.lights[i];
        const float strength = std::max({light.color.r, light.color.g, light.color.b});
        if (strength > kFaintest && glm::distance(light.position, center) < light.range + radius) {
            result.index[result.count++] = static_cast<int>(i);
        }
    }
    return result;
}

std::array<glm::vec4, 6> FrustumPlanes(const glm::mat4& viewProjection) {
    const glm::mat4 rows = glm::transpose(viewProjection);
    return {rows[3] + rows[0], rows[3] - rows[0], rows[3] + rows[1],
            rows[3] - rows[1], rows[3] + rows[2], rows[3] - rows[2]};
}

glm::mat4 PartMatrix(const RenderItem& item, const mesh::MeshPart& part) {
    if (part.node < 0) {
        return item.world;
    }
    const auto node = static_cast<std::size_t>(part.node);
    if (item.pose != nullptr && node < item.pose->nodes.size()) {
        return item.world * item.pose->nodes[node];
    }
    return item.world * item.mesh->restNodes[node];
}

} // namespace render
