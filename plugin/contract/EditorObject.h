#pragma once

#include "plugin/contract/File.h"
#include "plugin/contract/HostObject.h"
#include "plugin/contract/Types.h"

#include <cstdint>
#include <string>

/// The editor's record of an object. Owned by the object.
class EditorObjectInfo : public IHostObject {
public:
    /// Makes the record follow its object; from then on `IsActive` answers true.
    virtual void Update(int zero) = 0;
    /// True while the host hides the object (see IEditor::SetObjectsHidden).
    virtual bool IsPlaced() const = 0;
    virtual bool IsActive() const = 0;
    /// Sets className and saveClassName.
    virtual void SetClassName(const std::string& name) = 0;
    /// Plug-in data is not owned by the host; the plug-in frees it in OnObjectDestroyed.
    virtual void SetPluginData(int pluginKind, void* data) = 0;
    virtual void* GetPluginData(int pluginKind) const = 0;

    static constexpr std::uint32_t kSelected = 1;
    bool IsSelected() const { return (flags & kSelected) != 0; }

    std::string className;
    std::string saveClassName; ///< the class under which the object is written
    std::uint32_t flags = 0;   ///< kSelected while the object is selected
};

/// A named part of an object's mesh: a bone or a node. Owned by the host.
struct MeshElement {
    std::string name;
    int parent = -1; ///< index in the object's mesh table, -1 at the top
    int type = 1;    ///< 1: a bone or node
};

/// An object of the level. Owned by the level.
class EditorObject : public IHostObject {
public:
    virtual EditorObjectInfo* GetInfo() = 0;
    /// Writes the object's data, without a chunk of its own around it.
    virtual void Save(fs::file& file) = 0;
    /// Reads one object of `dataSize` bytes and enters it in the level; null if it can't be read.
    /// Always consumes `dataSize` bytes as far as the file has them. Called on the level root object.
    virtual EditorObject* LoadObject(fs::file& file, std::uint32_t dataSize, int classId,
                                     EditorObject* owner) = 0;
    /// 16 floats in world space, row-major, row vectors: right, up, forward, translation.
    virtual void SetMatrix(const float* matrix, int zero) = 0;
    /// The live world matrix; copy it before changing the object.
    virtual const float* GetMatrix(int flag) const = 0;
    virtual void SetPosition(const float* position, int zero) = 0;
    virtual const float* GetPosition(int flag) const = 0;
    /// Index of an animation sequence of the object's mesh, -1 if it has none of that name.
    virtual int FindAnimation(const std::string& name) const = 0;

    /// Flag word. Bit 2 (value 4): the engine leaves the object out, as it does a light whose film is closed.
    virtual std::uint32_t GetFlags() const = 0;
    virtual void SetFlags(std::uint32_t flags) = 0;
    /// The mesh table: bones and nodes by index. Null beyond its end.
    virtual const MeshElement* GetMeshElement(int index) const = 0;
    /// Index in the mesh table, -1 if the mesh has no such element. The empty name means the whole object,
    /// which every object has: it stands one past the end, where there is no record.
    virtual int FindMeshElement(const std::string& name) const = 0;
    /// Seconds of an animation sequence, -1 for an unknown index.
    virtual float GetAnimationDuration(int index) const = 0;

    std::int32_t objectKind = 0;
    std::uint8_t savedAsObject = 1; ///< 0: the host leaves it out of the level's object list
    std::int32_t id = 0;            ///< unique in the level
    std::string name;
    EditorObject* parent = nullptr;
    EditorObject* firstChild = nullptr;
    EditorObject* nextSibling = nullptr;
    std::string meshName;

    std::uint8_t visible = 1; ///< drawn in the views
};
