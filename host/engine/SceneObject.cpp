#include "host/engine/SceneObject.h"

#include "host/engine/Changes.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "plugin/contract/ClassIds.h"

#include <cstring>

namespace engine {

SceneObject::SceneObject(LevelData& levelData) : data(&levelData) {
}

SceneObject::~SceneObject() = default;

bool SceneObject::IsA(int classId) const {
    return classId == ClassId::LevelObject ||
           (classId == ClassId::EditorObject && objectKind != ObjectKind::MatrixOnly);
}

void SceneObject::RememberLocal() {
    Matrix4 inverse;
    if (Invert(Parent()->world, inverse)) {
        local = Multiply(world, inverse);
        rememberedWorld = world;
        rememberedParent = Parent()->world;
        localKnown = true;
    }
}

void SceneObject::FollowParent() {
    // A parent that is back where it was gives the child's very numbers back, whatever happened between.
    const bool isBack = Parent()->world == rememberedParent;
    Matrix4 next = isBack ? rememberedWorld : Multiply(local, Parent()->world);
    LeaveGimbal(next);
    if (localKnown && IsFinite(next)) {
        // The place relative to the parent stays as remembered, so that repeated moves do not add up errors.
        SetMatrix(next.m, 0);
        localKnown = true;
    }
}

void SceneObject::SetMatrix(const float* matrix, int) {
    for (EditorObject* child = firstChild; child != nullptr; child = child->nextSibling) {
        auto* object = static_cast<SceneObject*>(child);
        if (!object->localKnown) {
            object->RememberLocal();
        }
    }
    std::memmove(world.m, matrix, sizeof world.m);
    if (transient && !IsFinite(world)) {
        StandUpright();
    }
    localKnown = false;
    for (EditorObject* child = firstChild; child != nullptr; child = child->nextSibling) {
        static_cast<SceneObject*>(child)->FollowParent();
    }
}

void SceneObject::PutWorld(const Matrix4& matrix) {
    world = matrix;
    localKnown = false;
    for (EditorObject* child = firstChild; child != nullptr; child = child->nextSibling) {
        static_cast<SceneObject*>(child)->localKnown = false;
    }
}

void SceneObject::StandUpright() {
    const Vector3 place = world.Translation();
    world = {};
    world.SetTranslation(place);
}

void SceneObject::SetPosition(const float* position, int) {
    Matrix4 next = world;
    std::memcpy(next.m + 12, position, 3 * sizeof(float));
    SetMatrix(next.m, 0);
}

SceneObject::Standing SceneObject::TakeStanding() const {
    return {world, local, rememberedWorld, rememberedParent, localKnown, visible, objectFlags, light};
}

void SceneObject::PutStanding(const Standing& standing) {
    world = standing.world;
    local = standing.local;
    rememberedWorld = standing.rememberedWorld;
    rememberedParent = standing.rememberedParent;
    localKnown = standing.localKnown;
    visible = standing.visible;
    objectFlags = standing.flags;
    light = standing.light;
}

void SceneObject::SetMeshName(const std::string& meshFile) {
    NoteChange();
    meshName = meshFile;
    mesh = nullptr;
    meshSought = false;
    posed = false;
    pose.clear();
}

const IMesh* SceneObject::Mesh() const {
    IMeshLibrary* library = data->Owner().MeshLibrary();
    if (!meshSought && library != nullptr && !meshName.empty()) {
        mesh = library->FindMesh(meshName);
        meshSought = true;
    }
    return mesh;
}

int SceneObject::FindAnimation(const std::string& clip) const {
    const int index = FindClip(clip);
    if (index < 0 && !clip.empty()) {
        data->Owner().OnUnknownAnimation(*this, clip);
    }
    return index;
}

int SceneObject::FindClip(const std::string& clip) const {
    return Mesh() != nullptr ? engine::FindClip(*Mesh(), clip) : -1;
}

const MeshElement* SceneObject::GetMeshElement(int index) const {
    if (Mesh() == nullptr || index < 0 || index >= static_cast<int>(Mesh()->Elements().size())) {
        return nullptr;
    }
    return &Mesh()->Elements()[static_cast<std::size_t>(index)];
}

int SceneObject::FindMeshElement(const std::string& element) const {
    if (element.empty()) {
        return Mesh() != nullptr ? static_cast<int>(Mesh()->Elements().size()) : 0;
    }
    return Mesh() != nullptr ? FindElement(*Mesh(), element) : -1;
}

float SceneObject::GetAnimationDuration(int index) const {
    if (Mesh() == nullptr || index < 0 || index >= static_cast<int>(Mesh()->Clips().size())) {
        return -1.0f;
    }
    return Mesh()->Clips()[static_cast<std::size_t>(index)].duration;
}

Matrix4 SceneObject::ElementWorld(const std::string& element) const {
    return element.empty() ? world : Multiply(ElementMatrix(element), world);
}

Matrix4 SceneObject::ElementMatrix(const std::string& element) const {
    const int index = Mesh() != nullptr ? FindElement(*Mesh(), element) : -1;
    if (index < 0) {
        return {};
    }
    if (posed) {
        return pose[static_cast<std::size_t>(index)];
    }
    // At rest: walk up the element's parents.
    const auto& elements = Mesh()->Elements();
    Matrix4 matrix = Mesh()->RestLocals()[static_cast<std::size_t>(index)];
    int child = index;
    int above = elements[static_cast<std::size_t>(index)].parent;
    while (above >= 0 && above < child) {
        matrix = Multiply(matrix, Mesh()->RestLocals()[static_cast<std::size_t>(above)]);
        child = above;
        above = elements[static_cast<std::size_t>(child)].parent;
    }
    return matrix;
}

Matrix4* SceneObject::PreparePose() {
    const IMesh* own = Mesh();
    if (own == nullptr || own->Elements().empty()) {
        return nullptr;
    }
    if (pose.size() != own->Elements().size()) {
        pose.resize(own->Elements().size());
    }
    return pose.data();
}

} // namespace engine
