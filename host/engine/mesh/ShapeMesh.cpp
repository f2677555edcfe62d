#include "host/engine/mesh/ShapeMesh.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/constants.hpp>

namespace mesh {

namespace {

constexpr int kSteps = 32;    ///< around a round body
constexpr int kArcSteps = 12; ///< from the pole of a sphere to its equator
constexpr std::uint8_t kRoughness = 215;

/// The share of light behind a byte of a screen's colour.
std::uint8_t LinearByte(std::uint32_t screen) {
    const float share = static_cast<float>(screen & 0xFFu) / 255.0f;
    const float linear = share <= 0.04045f ? share / 12.92f : std::pow((share + 0.055f) / 1.055f, 2.4f);
    return static_cast<std::uint8_t>(std::lround(linear * 255.0f));
}

/// A point of the outline that is turned around the y axis: the radius as a share of the body's, the height
/// in units, and the way out in that plane.
struct OutlinePoint {
    float radius = 0.0f;
    float y = 0.0f;
    glm::vec2 out{0.0f};
};

class ShapeBuilder {
public:
    explicit ShapeBuilder(const engine::Shape& made) : shape(made), mesh(std::make_shared<Mesh>()) {
        look.color[0] = LinearByte(shape.color >> 16);
        look.color[1] = LinearByte(shape.color >> 8);
        look.color[2] = LinearByte(shape.color);
        look.color[3] = 255;
        look.surface[0] = kRoughness;
    }

    float Height() const { return shape.size.y; }

    void AddBox() {
        const glm::vec3 low(-shape.size.x * 0.5f, 0.0f, -shape.size.z * 0.5f);
        const glm::vec3 size(shape.size.x, shape.size.y, shape.size.z);
        for (int axis = 0; axis < 3; ++axis) {
            for (const float side : {0.0f, 1.0f}) {
                glm::vec3 normal(0.0f);
                normal[axis] = side * 2.0f - 1.0f;
                AddSquare(low, size, axis, side, normal);
            }
        }
    }

    void AddPlane() {
        const glm::vec3 low(-shape.size.x * 0.5f, 0.0f, -shape.size.z * 0.5f);
        const glm::vec3 size(shape.size.x, 0.0f, shape.size.z);
        AddSquare(low, size, 1, 0.0f, {0.0f, 1.0f, 0.0f});
        AddSquare(low, size, 1, 0.0f, {0.0f, -1.0f, 0.0f});
    }

    /// A disc across the y axis that looks up or down.
    void AddDisc(float y, float up) { Turn({{0.0f, y, {0.0f, up}}, {1.0f, y, {0.0f, up}}}); }

    /// Part of an ellipse: angles from straight down, 0, to straight up, pi.
    void AddArc(float middle, float halfHeight, float from, float to) {
        std::vector<OutlinePoint> outline;
        const int steps =
            std::max(2, static_cast<int>(std::lround(kArcSteps * (to - from) / glm::half_pi<float>())));
        for (int i = 0; i <= steps; ++i) {
            const float angle = from + (to - from) * static_cast<float>(i) / static_cast<float>(steps);
            const float radius = std::max(std::sin(angle), 0.0f); // sin of pi is a little below 0
            const float up = -std::cos(angle);
            outline.push_back({radius, middle + halfHeight * up, {radius, up / halfHeight}});
        }
        Turn(outline);
    }

    void Turn(const std::vector<OutlinePoint>& outline) {
        const auto first = static_cast<std::uint32_t>(mesh->vertices.size());
        const auto row = static_cast<std::uint32_t>(outline.size());
        for (int step = 0; step <= kSteps; ++step) {
            const float angle = glm::two_pi<float>() * static_cast<float>(step % kSteps) / kSteps;
            for (const OutlinePoint& point : outline) {
                AddTurned(point, std::cos(angle), std::sin(angle));
            }
        }
        for (std::uint32_t step = 0; step < kSteps; ++step) {
            for (std::uint32_t i = 0; i + 1 < row; ++i) {
                const std::uint32_t corner = first + step * row + i;
                AddTriangle(corner, corner + 1, corner + row + 1);
                AddTriangle(corner, corner + row + 1, corner + row);
            }
        }
    }

    std::shared_ptr<const Mesh> Finish() {
        MeshPart part;
        part.vertexCount = static_cast<std::uint32_t>(mesh->vertices.size());
        part.indexCount = static_cast<std::uint32_t>(mesh->indices.size());
        mesh->parts.push_back(part);
        mesh->Finish();
        return mesh;
    }

private:
    std::uint32_t AddVertex(const glm::vec3& position, const glm::vec3& normal) {
        look.position = position;
        look.normal = normal;
        mesh->vertices.push_back(look);
        return static_cast<std::uint32_t>(mesh->vertices.size() - 1);
    }

    void AddTurned(const OutlinePoint& point, float cosine, float sine) {
        const float across = shape.size.x * 0.5f;
        const float deep = shape.size.z * 0.5f;
        const glm::vec3 position(point.radius * cosine * across, point.y, point.radius * sine * deep);
        const glm::vec3 out(point.out.x * cosine / across, point.out.y, point.out.x * sine / deep);
        AddVertex(position, glm::normalize(out));
    }

    /// Anticlockwise as seen from where the corners' normals point; nothing where two corners meet.
    void AddTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
        const MeshVertex& corner = mesh->vertices[a];
        const glm::vec3 way = glm::cross(mesh->vertices[b].position - corner.position,
                                         mesh->vertices[c].position - corner.position);
        const glm::vec3 normals = corner.normal + mesh->vertices[b].normal + mesh->vertices[c].normal;
        const float side = glm::dot(way, normals);
        if (glm::length(way) == 0.0f) {
            return;
        }
        mesh->indices.insert(mesh->indices.end(), {a, side < 0.0f ? c : b, side < 0.0f ? b : c});
    }

    void AddSquare(const glm::vec3& low, const glm::vec3& size, int axis, float side,
                   const glm::vec3& normal) {
        std::uint32_t corners[4];
        for (int i = 0; i < 4; ++i) {
            glm::vec3 share(0.0f);
            share[axis] = side;
            share[(axis + 1) % 3] = i == 1 || i == 2 ? 1.0f : 0.0f;
            share[(axis + 2) % 3] = i >= 2 ? 1.0f : 0.0f;
            corners[i] = AddVertex(low + size * share, normal);
        }
        AddTriangle(corners[0], corners[1], corners[2]);
        AddTriangle(corners[0], corners[2], corners[3]);
    }

    const engine::Shape& shape;
    std::shared_ptr<Mesh> mesh;
    MeshVertex look{};
};

void AddCapsule(ShapeBuilder& builder, const engine::Shape& shape) {
    const float cap = std::min(std::max(shape.size.x, shape.size.z), shape.size.y) * 0.5f;
    builder.AddArc(cap, cap, 0.0f, glm::half_pi<float>());
    if (shape.size.y > 2.0f * cap) {
        builder.Turn({{1.0f, cap, {1.0f, 0.0f}}, {1.0f, shape.size.y - cap, {1.0f, 0.0f}}});
    }
    builder.AddArc(shape.size.y - cap, cap, glm::half_pi<float>(), glm::pi<float>());
}

} // namespace

std::shared_ptr<const Mesh> MakeShapeMesh(const engine::Shape& shape) {
    ShapeBuilder builder(shape);
    const float height = builder.Height();
    switch (shape.kind) {
    case engine::ShapeKind::Box:
        builder.AddBox();
        break;
    case engine::ShapeKind::Plane:
        builder.AddPlane();
        break;
    case engine::ShapeKind::Sphere:
        builder.AddArc(height * 0.5f, height * 0.5f, 0.0f, glm::pi<float>());
        break;
    case engine::ShapeKind::Cylinder:
        builder.AddDisc(0.0f, -1.0f);
        builder.Turn({{1.0f, 0.0f, {1.0f, 0.0f}}, {1.0f, height, {1.0f, 0.0f}}});
        builder.AddDisc(height, 1.0f);
        break;
    case engine::ShapeKind::Cone:
        builder.AddDisc(0.0f, -1.0f);
        builder.Turn({{1.0f, 0.0f, {1.0f, 1.0f / height}}, {0.0f, height, {1.0f, 1.0f / height}}});
        break;
    case engine::ShapeKind::Capsule:
        AddCapsule(builder, shape);
        break;
    }
    return builder.Finish();
}

} // namespace mesh
