#pragma once

#include "host/engine/Math.h"
#include "plugin/contract/EditorObject.h"

#include <string>
#include <vector>

namespace engine {

/// An animation sequence of a mesh.
struct MeshClip {
    std::string name;
    float duration = 0.0f; ///< seconds
};

/// A mesh file, loaded. Owned by its library; its element table and clips never change.
class IMesh {
public:
    virtual ~IMesh() = default;
    /// Bones and nodes. Parents stand before their children.
    virtual const std::vector<MeshElement>& Elements() const = 0;
    /// Rest matrix of each element in its parent's space, as many as there are elements.
    virtual const std::vector<Matrix4>& RestLocals() const = 0;
    virtual const std::vector<MeshClip>& Clips() const = 0;
    /// Axis-aligned box of the mesh at rest, in mesh space. Both points are 0 in a mesh without triangles.
    virtual void Bounds(Vector3& low, Vector3& high) const = 0;
    /// Writes all elements' matrices in their parents' space at `seconds` of a clip, clamped to the clip.
    /// `locals` has room for all elements; an unknown clip gives the rest pose. Allocates nothing.
    virtual void SampleClip(int clip, float seconds, Matrix4* locals) const = 0;
    /// Nearest triangle between two points in mesh space. `pose` holds the mesh-space matrix of each
    /// element, null for the rest pose. On a hit `fraction` is 0 at `from` and 1 at `to`.
    virtual bool RayCast(const Vector3& from, const Vector3& to, const Matrix4* pose,
                         float& fraction) const = 0;
};

/// Gives meshes by the name that level objects carry. Set by the host at the level; may be missing.
class IMeshLibrary {
public:
    virtual ~IMeshLibrary() = default;
    /// Null if there is no such mesh or it can't be read; asking again is cheap either way.
    virtual const IMesh* FindMesh(const std::string& meshName) = 0;
};

/// Mesh-space matrices from parent-space ones. The arrays may be the same.
void ComposePose(const IMesh& mesh, const Matrix4* locals, Matrix4* pose);
/// Index of the element or clip of that name, -1 if there is none.
int FindElement(const IMesh& mesh, const std::string& name);
int FindClip(const IMesh& mesh, const std::string& name);

} // namespace engine
