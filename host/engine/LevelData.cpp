#include "host/engine/LevelData.h"

#include "host/engine/ClassDatabase.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelRoot.h"
#include "plugin/contract/ClassIds.h"

#include <algorithm>

namespace engine {

namespace {

bool IsLightClass(const std::string& className) {
    return DefaultClasses().IsDerivedFrom(className, ClassName::GLLight) ||
           DefaultClasses().IsDerivedFrom(className, ClassName::DynLight);
}

} // namespace

LevelData::LevelData(Level& owner) : level(owner) {
    root = std::make_unique<LevelRoot>(*this);
    films = std::make_unique<FilmManager>(*this);
    filmManager = films.get();
    SetSun(true);
}

LevelData::~LevelData() {
    for (const auto& object : objects) {
        level.OnDestroying(object.get());
    }
}

void LevelData::SetSun(bool present) {
    sun = present ? std::make_unique<SunObject>() : nullptr;
    if (sun != nullptr) {
        sun->direction = {0.4f, 0.8f, 0.45f};
    }
    sunObject = sun.get();
}

SceneObject* LevelData::Find(int id) const {
    const auto found = byId.find(id);
    return found == byId.end() ? nullptr : found->second;
}

SceneObject* LevelData::FindByName(const std::string& name) const {
    const auto found = std::find_if(objects.begin(), objects.end(),
                                    [&](const auto& object) { return object->name == name; });
    return found == objects.end() ? nullptr : found->get();
}

SceneObject& LevelData::AddLoaded(int id) {
    const int taken = id > 0 && byId.count(id) == 0 ? id : nextId;
    objects.push_back(std::make_unique<SceneObject>(*this));
    SceneObject& object = *objects.back();
    object.id = taken;
    byId[taken] = &object;
    SetNextId(taken + 1);
    return object;
}

void LevelData::SetNextId(int id) {
    nextId = std::max(nextId, id);
    while (byId.count(nextId) != 0) {
        ++nextId;
    }
}

SceneObject& LevelData::Create(const ObjectSpec& spec) {
    SceneObject& object = AddLoaded(0);
    object.info.SetClassName(spec.className);
    object.info.active = spec.active;
    object.meshName = spec.meshName;
    object.world = spec.matrix;
    if (IsLightClass(spec.className)) {
        object.light.emplace();
    }
    level.MakeUniqueName(spec.name.c_str(), &object, 0);
    if (spec.parent != nullptr) {
        SetParent(object, spec.parent);
    }
    return object;
}

void LevelData::Unlink(SceneObject& object) {
    if (object.parent == nullptr) {
        return;
    }
    EditorObject** link = &object.parent->firstChild;
    while (*link != nullptr && *link != &object) {
        link = &(*link)->nextSibling;
    }
    if (*link != nullptr) {
        *link = object.nextSibling;
    }
    object.parent = nullptr;
    object.nextSibling = nullptr;
    object.localKnown = false;
}

bool LevelData::SetParent(SceneObject& object, SceneObject* parent) {
    for (EditorObject* above = parent; above != nullptr; above = above->parent) {
        if (above == &object) {
            return false;
        }
    }
    if (object.parent == parent) {
        return true;
    }
    Unlink(object);
    if (parent == nullptr) {
        return true;
    }
    EditorObject** link = &parent->firstChild;
    while (*link != nullptr) {
        link = &(*link)->nextSibling;
    }
    *link = &object;
    object.parent = parent;
    return true;
}

void LevelData::Forget(SceneObject& object) {
    films->OnObjectsDeleted({&object});
    level.Deselect(&object);
    while (object.firstChild != nullptr) {
        Unlink(static_cast<SceneObject&>(*object.firstChild));
    }
    Unlink(object);
    if (Group* group = GroupOf(&object)) {
        std::erase(group->members, &object);
        if (group->members.empty()) {
            DissolveGroup(group);
        }
    }
}

void LevelData::Delete(SceneObject* object) {
    const auto found = std::find_if(objects.begin(), objects.end(),
                                    [&](const auto& owned) { return owned.get() == object; });
    if (found == objects.end()) {
        return;
    }
    level.OnDestroying(object);
    Forget(*object);
    byId.erase(object->id);
    objects.erase(found);
}

Group* LevelData::MakeGroup(const std::string& name, const std::vector<SceneObject*>& members) {
    auto group = std::make_unique<Group>();
    group->name = name;
    for (SceneObject* member : members) {
        const bool doubled =
            std::find(group->members.begin(), group->members.end(), member) != group->members.end();
        if (member != nullptr && !doubled && GroupOf(member) == nullptr) {
            group->members.push_back(member);
        }
    }
    if (group->members.size() < 2) {
        return nullptr;
    }
    groups.push_back(std::move(group));
    return groups.back().get();
}

void LevelData::DissolveGroup(Group* group) {
    std::erase_if(groups, [&](const auto& owned) { return owned.get() == group; });
}

Group* LevelData::GroupOf(const SceneObject* object) const {
    for (const auto& group : groups) {
        if (std::find(group->members.begin(), group->members.end(), object) != group->members.end()) {
            return group.get();
        }
    }
    return nullptr;
}

int LevelData::RayCast(const float* from, float* to, int) {
    const Vector3 start{from[0], from[1], from[2]};
    const Vector3 end{to[0], to[1], to[2]};
    float nearest = 2.0f;
    for (const auto& object : objects) {
        const IMesh* mesh = object->IsShown() ? object->Mesh() : nullptr;
        Matrix4 inverse;
        float fraction = 0.0f;
        // Fractions along the segment are the same in mesh space and in the world.
        if (mesh != nullptr && Invert(object->World(), inverse) &&
            mesh->RayCast(TransformPoint(start, inverse), TransformPoint(end, inverse), object->Pose(),
                          fraction) &&
            fraction < nearest) {
            nearest = fraction;
        }
    }
    if (nearest > 1.0f) {
        return 0;
    }
    const Vector3 hit = start + (end - start) * nearest;
    std::copy_n(hit.Data(), 3, to);
    return 1;
}

} // namespace engine
