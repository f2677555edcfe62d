#include "host/stage/render/Picking.h"

#include "host/stage/render/FrameItems.h"

#include <algorithm>

namespace {

/// The item's triangles in model space; a posed item's are put together anew in `scratch`.
const MeshBvh& TreeOf(const RenderItem& item, MeshBvh& scratch) {
    if (item.pose == nullptr || !item.mesh->IsPosable() ||
        item.pose->nodes.size() != item.mesh->nodes.size()) {
        return item.mesh->bvh;
    }
    scratch.Build(item.pose->ModelPositions(*item.mesh), item.mesh->indices);
    return scratch;
}

/// Planes through the four sides of a rectangle of the picture and its near plane, in world space.
std::array<glm::vec4, 5> RectanglePlanes(const glm::mat4& viewProjection, const glm::vec2& low,
                                         const glm::vec2& high) {
    const glm::mat4 rows = glm::transpose(viewProjection);
    return {rows[0] - rows[3] * low.x, rows[3] * high.x - rows[0], rows[1] - rows[3] * low.y,
            rows[3] * high.y - rows[1], rows[3] + rows[2]};
}

} // namespace

std::optional<PickHit> PickItem(const RenderScene& scene, const ViewRay& ray) {
    std::optional<PickHit> best;
    MeshBvh scratch;
    for (const FrameItem& entry : CollectItems(scene)) {
        const glm::mat4 inverse = glm::inverse(entry.item->world);
        if (!IsFinite(inverse)) {
            continue;
        }
        // The direction keeps its length in world space, so that distances of all items compare.
        const glm::vec3 origin(inverse * glm::vec4(ray.origin, 1.0f));
        const glm::vec3 direction(inverse * glm::vec4(ray.direction, 0.0f));
        const float limit = best ? best->distance : 1e9f;
        const std::optional<MeshHit> hit = TreeOf(*entry.item, scratch).RayCast(origin, direction, limit);
        if (hit) {
            best = PickHit{entry.item->objectId, hit->distance, ray.origin + ray.direction * hit->distance};
        }
    }
    return best;
}

std::vector<int> PickRectangle(const RenderScene& scene, const RenderCamera& camera, int width, int height,
                               const glm::vec2& corner, const glm::vec2& opposite) {
    std::vector<int> ids;
    if (width <= 0 || height <= 0) {
        return ids;
    }
    const glm::vec2 size(width, height);
    const glm::vec2 a = glm::min(corner, opposite) / size * 2.0f - 1.0f;
    const glm::vec2 b = glm::max(corner, opposite) / size * 2.0f - 1.0f;
    const glm::mat4 viewProjection = camera.projection * camera.view;
    MeshBvh scratch;
    for (const FrameItem& entry : CollectItems(scene)) {
        // In model space the planes are those of the whole chain; pixel rows count downwards.
        const auto planes =
            RectanglePlanes(viewProjection * entry.item->world, glm::vec2(a.x, -b.y), glm::vec2(b.x, -a.y));
        const bool known = std::find(ids.begin(), ids.end(), entry.item->objectId) != ids.end();
        if (!known && TreeOf(*entry.item, scratch).TouchesConvex(planes)) {
            ids.push_back(entry.item->objectId);
        }
    }
    return ids;
}
