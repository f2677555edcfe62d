#include "host/engine/mesh/MeshBvh.h"

#include <algorithm>
#include <cmath>

namespace mesh {

namespace {

constexpr std::uint32_t kLeafTriangles = 4;

bool IsFinite(const glm::vec3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// Distance at which the ray enters the box, or a negative number for a miss.
float EnterBox(const MeshBox& box, const glm::vec3& origin, const glm::vec3& inverse, float maximum) {
    float enter = 0.0f;
    float leave = maximum;
    for (int axis = 0; axis < 3; ++axis) {
        if (std::isinf(inverse[axis])) {
            // Parallel to the slab: 0 * infinity must not decide.
            if (origin[axis] < box.min[axis] || origin[axis] > box.max[axis]) {
                return -1.0f;
            }
            continue;
        }
        const float a = (box.min[axis] - origin[axis]) * inverse[axis];
        const float b = (box.max[axis] - origin[axis]) * inverse[axis];
        enter = std::max(enter, std::min(a, b));
        leave = std::min(leave, std::max(a, b));
    }
    return enter <= leave ? enter : -1.0f;
}

std::optional<float> HitTriangle(const glm::vec3 (&p)[3], const glm::vec3& origin,
                                 const glm::vec3& direction) {
    const glm::vec3 edge1 = p[1] - p[0];
    const glm::vec3 edge2 = p[2] - p[0];
    const glm::vec3 across = glm::cross(direction, edge2);
    const float determinant = glm::dot(edge1, across);
    if (determinant == 0.0f) {
        return std::nullopt;
    }
    const float inverse = 1.0f / determinant;
    const glm::vec3 toOrigin = origin - p[0];
    const float u = glm::dot(toOrigin, across) * inverse;
    const glm::vec3 side = glm::cross(toOrigin, edge1);
    const float v = glm::dot(direction, side) * inverse;
    if (!(u >= 0.0f && v >= 0.0f && u + v <= 1.0f)) {
        return std::nullopt;
    }
    return glm::dot(edge2, side) * inverse;
}

} // namespace

void MeshBvh::Build(std::span<const glm::vec3> positions, std::span<const std::uint32_t> indices) {
    triangles.clear();
    tree.clear();
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const Triangle triangle{{positions[indices[i]], positions[indices[i + 1]], positions[indices[i + 2]]},
                                static_cast<std::uint32_t>(i / 3)};
        if (IsFinite(triangle.points[0]) && IsFinite(triangle.points[1]) && IsFinite(triangle.points[2])) {
            triangles.push_back(triangle);
        }
    }
    if (!triangles.empty()) {
        tree.reserve(triangles.size());
        Split(0, static_cast<std::uint32_t>(triangles.size()));
    }
}

std::uint32_t MeshBvh::Split(std::uint32_t first, std::uint32_t count) {
    const auto self = static_cast<std::uint32_t>(tree.size());
    tree.emplace_back();
    MeshBox box;
    MeshBox centers;
    const auto begin = triangles.begin() + first;
    const auto center = [](const Triangle& t) { return t.points[0] + t.points[1] + t.points[2]; };
    for (auto it = begin; it != begin + count; ++it) {
        for (const glm::vec3& point : it->points) {
            box.Add(point);
        }
        centers.Add(center(*it));
    }
    tree[self].box = box;
    if (count <= kLeafTriangles) {
        tree[self].first = first;
        tree[self].count = count;
        return self;
    }
    const glm::vec3 size = centers.Extent();
    const int axis = size.x >= size.y && size.x >= size.z ? 0 : size.y >= size.z ? 1 : 2;
    const std::uint32_t half = count / 2;
    std::nth_element(begin, begin + half, begin + count,
                     [&](const Triangle& a, const Triangle& b) { return center(a)[axis] < center(b)[axis]; });
    Split(first, half);
    const std::uint32_t right = Split(first + half, count - half);
    tree[self].first = right;
    return self;
}

std::optional<MeshHit> MeshBvh::RayCast(const glm::vec3& origin, const glm::vec3& direction,
                                        float maximum) const {
    std::optional<MeshHit> best;
    if (tree.empty() || !IsFinite(origin) || !IsFinite(direction)) {
        return best;
    }
    const glm::vec3 inverse = 1.0f / direction;
    std::uint32_t stack[64] = {0};
    int depth = 1;
    while (depth > 0) {
        const std::uint32_t index = stack[--depth];
        const Node& node = tree[index];
        if (EnterBox(node.box, origin, inverse, maximum) < 0.0f) {
            continue;
        }
        for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
            const std::optional<float> distance = HitTriangle(triangles[i].points, origin, direction);
            if (distance && *distance >= 0.0f && *distance <= maximum) {
                maximum = *distance;
                best = MeshHit{*distance, triangles[i].index};
            }
        }
        if (node.count == 0) {
            stack[depth++] = node.first;
            stack[depth++] = index + 1;
        }
    }
    return best;
}

} // namespace mesh
