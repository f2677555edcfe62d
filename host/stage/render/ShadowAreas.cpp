#include "host/stage/render/ShadowAreas.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

/// From this share of the map on, drawing all of it anew costs no more than its parts.
constexpr double kLargeShare = 0.5;
/// Texels: a filter reads its neighbours, and edges are rounded outwards.
constexpr int kBorder = 2;

void AddArea(std::vector<ShadowArea>& areas, ShadowArea area) {
    if (area.IsEmpty()) {
        return;
    }
    // What it grows around may make it meet those that it did not meet before.
    for (auto met = areas.begin(); met != areas.end();) {
        if (met->Meets(area)) {
            area.Join(*met);
            areas.erase(met);
            met = areas.begin();
        } else {
            ++met;
        }
    }
    areas.push_back(area);
}

/// Where the item's triangles are in the world; a pose may carry them out of the mesh's box.
mesh::MeshBox DrawnBox(const RenderItem& item) {
    const mesh::Mesh& mesh = *item.mesh;
    if (item.pose == nullptr || !mesh.IsPosable()) {
        return TransformBox(mesh.box, item.world);
    }
    const bool isBent = item.pose->skinned.size() == mesh.vertices.size();
    mesh::MeshBox box;
    for (const mesh::MeshPart& part : mesh.parts) {
        const glm::mat4 matrix = PartMatrix(item, part);
        const std::vector<mesh::MeshVertex>& vertices =
            part.skin >= 0 && isBent ? item.pose->skinned : mesh.vertices;
        for (std::size_t i = part.firstVertex; i < part.firstVertex + std::size_t{part.vertexCount}; ++i) {
            box.Add(glm::vec3(matrix * glm::vec4(vertices[i].position, 1.0f)));
        }
    }
    return box;
}

double TexelsIn(const std::vector<ShadowArea>& areas) {
    double sum = 0.0;
    for (const ShadowArea& area : areas) {
        sum += static_cast<double>(area.right - area.left) * (area.top - area.bottom);
    }
    return sum;
}

} // namespace

bool ShadowArea::Meets(const ShadowArea& other) const {
    return left < other.right && other.left < right && bottom < other.top && other.bottom < top;
}

void ShadowArea::Join(const ShadowArea& other) {
    left = std::min(left, other.left);
    bottom = std::min(bottom, other.bottom);
    right = std::max(right, other.right);
    top = std::max(top, other.top);
}

ShadowArea ShadowAreas::AreaOf(const mesh::MeshBox& world, const glm::mat4& projection) const {
    const mesh::MeshBox seen = TransformBox(world, projection);
    const float sum = glm::dot(seen.min, glm::vec3(1.0f)) + glm::dot(seen.max, glm::vec3(1.0f));
    if (!std::isfinite(sum)) {
        return WholeMap();
    }
    const auto size = static_cast<float>(mapSize);
    const auto texel = [size](float clip, int border) {
        return static_cast<int>(
            std::floor(std::clamp((clip * 0.5f + 0.5f) * size + static_cast<float>(border), 0.0f, size)));
    };
    return {texel(seen.min.x, -kBorder), texel(seen.min.y, -kBorder), texel(seen.max.x, 1 + kBorder),
            texel(seen.max.y, 1 + kBorder)};
}

bool ShadowAreas::IsSame(const Caster& caster, const RenderItem& item) {
    return caster.mesh.lock() == item.mesh && caster.world == item.world &&
           (item.pose != nullptr ? caster.nodes == item.pose->nodes : caster.nodes.empty());
}

void ShadowAreas::Take(Caster& caster, const FrameItem& entry) const {
    caster.entry = &entry;
    caster.mesh = entry.item->mesh;
    caster.world = entry.item->world;
    caster.nodes.clear();
    if (entry.item->pose != nullptr) {
        caster.nodes = entry.item->pose->nodes;
    }
    caster.area = AreaOf(DrawnBox(*entry.item), drawnProjection);
}

std::vector<const FrameItem*> ShadowAreas::CastersIn(const ShadowArea& area) const {
    std::vector<const FrameItem*> found;
    for (const Caster& caster : casters) {
        if (caster.area.Meets(area)) {
            found.push_back(caster.entry);
        }
    }
    return found;
}

std::vector<ShadowArea> ShadowAreas::Whole(const std::vector<const FrameItem*>& shown) {
    casters.assign(shown.size(), {});
    for (std::size_t i = 0; i < shown.size(); ++i) {
        Take(casters[i], *shown[i]);
    }
    return {WholeMap()};
}

std::vector<ShadowArea> ShadowAreas::Update(const std::vector<FrameItem>& items,
                                            const glm::mat4& projection) {
    std::vector<const FrameItem*> shown;
    for (const FrameItem& entry : items) {
        if (entry.item->castsShadow) {
            shown.push_back(&entry);
        }
    }
    const bool isFirst = projection != drawnProjection || shown.size() != casters.size();
    drawnProjection = projection;
    if (isFirst) {
        return Whole(shown);
    }
    std::vector<ShadowArea> areas;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        casters[i].entry = shown[i];
        if (!IsSame(casters[i], *shown[i]->item)) {
            AddArea(areas, casters[i].area);
            Take(casters[i], *shown[i]);
            AddArea(areas, casters[i].area);
        }
    }
    return TexelsIn(areas) > kLargeShare * mapSize * mapSize ? std::vector{WholeMap()} : areas;
}

} // namespace render
