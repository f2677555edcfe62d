#pragma once

#include <cstdint>
#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>
#include <limits>
#include <string>
#include <vector>

namespace mesh {

/// An axis-aligned box. Empty until a point was added.
struct MeshBox {
    glm::vec3 min{std::numeric_limits<float>::max()};
    glm::vec3 max{std::numeric_limits<float>::lowest()};

    bool IsEmpty() const { return min.x > max.x; }
    void Add(const glm::vec3& point) {
        min = glm::min(min, point);
        max = glm::max(max, point);
    }
    glm::vec3 Center() const { return (min + max) * 0.5f; }
    /// One of 8; bits 0, 1, 2 of the number take the high side of x, y, z.
    glm::vec3 Corner(int number) const {
        return {(number & 1) != 0 ? max.x : min.x, (number & 2) != 0 ? max.y : min.y,
                (number & 4) != 0 ? max.z : min.z};
    }
    glm::vec3 Extent() const { return max - min; }
};

/// A node or bone. Parents stand in front of their children.
struct MeshNode {
    std::string name;
    int parent = -1;
    glm::vec3 translation{0.0f}; ///< units
    glm::quat rotation{1.0f, 0.0f, 0.0f, 0.0f};
    glm::vec3 scale{1.0f};
};

/// What the graphics card reads; 32 bytes.
struct MeshVertex {
    glm::vec3 position; ///< units
    glm::vec3 normal;
    std::uint8_t color[4];   ///< r, g, b linear, alpha unused
    std::uint8_t surface[4]; ///< roughness, metallic, emission, ripple (0: still, 255: water)
};
static_assert(sizeof(MeshVertex) == 32);

/// Influence of up to four joints of a skin on a vertex; the weights add up to 1.
struct MeshWeights {
    std::uint16_t joints[4] = {};
    float weights[4] = {};
};

/// A run of triangles that moves as one.
struct MeshPart {
    int node = -1;       ///< node that carries the part; -1 when the vertices stand in model space
    int skin = -1;       ///< skin that bends the part, -1 for none
    bool glossy = false; ///< some surface of the part mirrors its surroundings
    std::uint32_t firstVertex = 0;
    std::uint32_t vertexCount = 0;
    std::uint32_t firstIndex = 0;
    std::uint32_t indexCount = 0;
};

/// A run of vertices by the node that the file hangs them on, whatever moves them in the end.
struct MeshSource {
    int node = 0;
    std::uint32_t firstVertex = 0;
    std::uint32_t vertexCount = 0;
};

/// The nodes that bend vertices, each with the matrix that takes the vertices at rest into its own space.
struct MeshSkin {
    std::vector<int> joints; ///< nodes
    std::vector<glm::mat4> inverseBind;
};

/// What of a node is animated, and how it goes from one time to the next.
enum class MeshPath { Translation, Rotation, Scale };
enum class MeshCurve { Step, Linear, Cubic };

/// One animated property of one node.
struct MeshChannel {
    int node = 0;
    MeshPath path = MeshPath::Translation;
    MeshCurve curve = MeshCurve::Linear;
    std::vector<float> times;      ///< seconds, rising
    std::vector<glm::vec4> values; ///< one a time; three (in, value, out) for cubic curves
};

/// An animation by its name; it moves the nodes of its channels and leaves the others at rest.
struct MeshClip {
    std::string name;
    float duration = 0.0f; ///< seconds
    std::vector<MeshChannel> channels;
};

} // namespace mesh
