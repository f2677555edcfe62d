#pragma once

#include "host/engine/Light.h"
#include "host/engine/MeshLibrary.h"
#include "host/engine/ObjectNotes.h"
#include "host/engine/RawChunk.h"
#include "host/engine/SceneObjectInfo.h"
#include "plugin/contract/ObjectFlags.h"

#include <optional>
#include <vector>

namespace engine {

class LevelData;

/// An object of the level with a matrix. Owned by its LevelData, which alone makes and deletes it.
class SceneObject : public EditorObject {
public:
    explicit SceneObject(LevelData& levelData);
    ~SceneObject() override;
    SceneObject(const SceneObject&) = delete;
    SceneObject& operator=(const SceneObject&) = delete;

    bool IsA(int classId) const override;
    EditorObjectInfo* GetInfo() override { return &info; }
    void Save(fs::file& file) override;
    /// As the root's LoadObject, with this object's level.
    EditorObject* LoadObject(fs::file& file, std::uint32_t dataSize, int classId,
                             EditorObject* owner) override;
    /// Children follow by their matrices relative to this one. Numbers that are not finite are stored as
    /// they are, and then the children stay where they are. Only a transient body stands upright then, so
    /// that it can be seen and dragged.
    void SetMatrix(const float* matrix, int zero) override;
    const float* GetMatrix(int) const override { return world.m; }
    void SetPosition(const float* position, int zero) override;
    const float* GetPosition(int) const override { return world.m + 12; }
    /// An animation that the object lacks is told to the level's owner: it is a plug-in that asks here.
    int FindAnimation(const std::string& name) const override;
    /// The same for the engine and the host, without a word.
    int FindClip(const std::string& name) const;
    std::uint32_t GetFlags() const override { return objectFlags; }
    void SetFlags(std::uint32_t flags) override { objectFlags = flags; }
    const MeshElement* GetMeshElement(int index) const override;
    int FindMeshElement(const std::string& name) const override;
    float GetAnimationDuration(int index) const override;

    SceneObjectInfo& Info() { return info; }
    const SceneObjectInfo& Info() const { return info; }
    LevelData& Data() const { return *data; }
    const Matrix4& World() const { return world; }
    /// Gives another mesh; the pose is at rest again.
    void SetMeshName(const std::string& name);
    /// The object's mesh, null without one or without a mesh library.
    const IMesh* Mesh() const;
    bool IsLight() const { return light.has_value(); }
    SceneObject* Parent() const { return static_cast<SceneObject*>(parent); }
    /// False while the object or what the host says about it keeps it out of the views.
    bool IsShown() const { return visible != 0 && !info.hidden && (objectFlags & ObjectFlag::LeftOut) == 0; }

    /// Mesh-space matrix of each mesh element as posed by the film, null at rest.
    const Matrix4* Pose() const { return posed ? pose.data() : nullptr; }
    /// World matrix of an element at the present pose; the object's own matrix for an unknown element.
    Matrix4 ElementWorld(const std::string& element) const;
    /// Mesh-space matrix of an element at the present pose, the identity for an unknown element.
    Matrix4 ElementMatrix(const std::string& element) const;
    /// Makes room for a pose, so that posing allocates nothing. Null without a mesh.
    Matrix4* PreparePose();
    /// Where a film may write the matrix itself: null for an object in a hierarchy, whose matrix moves
    /// others.
    float* FreeMatrix() { return parent == nullptr && firstChild == nullptr ? world.m : nullptr; }
    /// Stands the object somewhere by itself: children stay, and go along from there with the next move.
    void PutWorld(const Matrix4& matrix);
    /// Shows or drops what was written to PreparePose's matrices.
    void SetPosed(bool shown) { posed = shown && !pose.empty(); }

    /// Where and how the object stands, links apart.
    struct Standing {
        Matrix4 world;
        Matrix4 local;
        Matrix4 rememberedWorld;
        Matrix4 rememberedParent;
        bool localKnown = false;
        std::uint8_t visible = 1;
        std::uint32_t flags = 0;
        std::optional<LightProperties> light;
    };
    Standing TakeStanding() const;
    /// Back to a former standing; children are left alone.
    void PutStanding(const Standing& standing);

    std::optional<LightProperties> light; ///< set in the two light classes
    ObjectNotes notes;
    /// Kept out of level files: bodies that a plug-in makes anew in each session.
    bool transient = false;
    int pendingParentId = 0;             ///< parent by the file's id while it was not found
    std::vector<RawChunk> foreignChunks; ///< of the file and known to nobody, in the file's order

private:
    friend class LevelData;
    void FollowParent();
    void StandUpright();
    void RememberLocal();

    LevelData* data;
    EditorObject* lastChild = nullptr; ///< kept by the level data, as the other links
    SceneObjectInfo info;
    alignas(64) Matrix4 world; ///< one cache line: films write one in each object in each frame
    Matrix4 local;             ///< relative to the parent, good while localKnown
    Matrix4 rememberedWorld;   ///< the two that `local` was worked out from
    Matrix4 rememberedParent;
    bool localKnown = false;
    bool posed = false;
    std::uint32_t objectFlags = 0;
    std::vector<Matrix4> pose;
    mutable const IMesh* mesh = nullptr;
    mutable bool meshSought = false;
};

} // namespace engine
