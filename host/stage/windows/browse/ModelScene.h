#pragma once

#include "host/stage/host/ViewNavigation.h"
#include "host/stage/render/CameraMath.h"
#include "host/stage/render/RenderScene.h"

#include <memory>
#include <vector>

namespace stage {

/// One mesh alone, lit from over the viewer's shoulder: what a ModelPicture shows. It has a pose of its own
/// and knows nothing of the level. Mesh space, units.
class ModelScene {
public:
    /// How elements are shown.
    enum class Marks { None, Elements };

    /// The mesh may be null: then there is nothing to see.
    explicit ModelScene(std::shared_ptr<const mesh::Mesh> shownMesh);

    /// Lights an element up; -1 is the whole object. Seen with Marks::Elements.
    void SetElement(int index);
    /// Mesh-space matrices, one a node; another number of them gives the rest pose, as do numbers that are
    /// not finite.
    void SetPose(std::vector<glm::mat4> nodes);
    /// Poses by an animation of the mesh, limited to it; an unknown clip gives the rest pose.
    void SetClip(int clip, float seconds);

    /// The scene from where the camera stands; good until the next call of any function here.
    const render::RenderScene& Update(const ViewNavigation& navigation, int height);
    render::RenderCamera Camera(const ViewNavigation& navigation, float aspect) const;
    /// Turns the camera to the front and takes it so far away that the mesh is seen whole, at rest and, with
    /// an animation, on its way.
    void Frame(ViewNavigation& navigation, float aspect, int clip = -1) const;
    /// The element under a pixel: a bone's joint nearby, else what carries the triangle. -1 for none.
    int ElementAt(const ViewNavigation& navigation, int width, int height, const glm::vec2& pixel);

    int Element() const { return element; }
    const std::shared_ptr<const mesh::Mesh>& Shown() const { return mesh; }

    Marks marks = Marks::None;

private:
    mesh::MeshBox Extent(int clip) const;
    glm::vec3 PlaceOf(std::size_t node) const { return glm::vec3(pose.nodes[node][3]); }
    void AddSkeleton(const ViewNavigation& navigation, int height);
    void AddElement(const ViewNavigation& navigation, int height);
    void AddDot(const glm::vec3& place, float pixels, const glm::vec4& color,
                const ViewNavigation& navigation, int height);

    std::shared_ptr<const mesh::Mesh> mesh;
    std::shared_ptr<const mesh::Mesh> tinted; ///< null until it is drawn
    std::vector<bool> isJoint;                ///< one a node
    mesh::MeshPose pose;
    render::RenderScene scene;
    int element = -1;
};

} // namespace stage
