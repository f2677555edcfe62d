#include "host/engine/LevelData.h"

#include "host/engine/ClassDatabase.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelRoot.h"
#include "host/engine/UniqueNames.h"

#include <algorithm>
#include <limits>

namespace engine {

namespace {

/// Levels of objects from this one down.
int HeightOf(const EditorObject& object) {
    int height = 0;
    for (const EditorObject* child = object.firstChild; child != nullptr; child = child->nextSibling) {
        height = std::max(height, HeightOf(*child));
    }
    return height + 1;
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

void LevelData::OnShowing() const {
    if (level.Data() == this) {
        level.OnShowing();
    }
}

void LevelData::OnEdited() const {
    if (level.Data() == this) {
        level.OnEdited();
    }
}

void LevelData::SetSun(bool present) {
    sun = present ? std::make_unique<SunObject>() : nullptr;
    if (sun != nullptr) {
        sun->direction = {0.4f, 0.8f, 0.45f};
    }
    sunObject = sun.get();
}

const OwnPlace* LevelData::PlaceBeforeMove(const SceneObject& object) const {
    if (placesBeforeMove == nullptr) {
        return nullptr;
    }
    const auto place = placesBeforeMove->find(object.id);
    return place != placesBeforeMove->end() ? &place->second : nullptr;
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
    addresses.insert(&object);
    SetNextId(taken);
    return object;
}

void LevelData::SetNextId(int id) {
    nextId = std::max(nextId, id);
    while (byId.count(nextId) != 0) {
        nextId = nextId == std::numeric_limits<int>::max() ? 1 : nextId + 1;
    }
}

SceneObject& LevelData::Create(const ObjectSpec& spec, UniqueNames* names) {
    SceneObject& object = AddLoaded(0);
    object.info.SetClassName(spec.className);
    object.info.active = spec.active;
    object.meshName = spec.meshName;
    object.world = spec.matrix;
    object.notes = spec.notes;
    if (IsLightClass(spec.className)) {
        object.light.emplace();
    }
    object.name = names != nullptr ? names->Take(spec.name) : UniqueNames(*this, &object).Take(spec.name);
    if (spec.parent != nullptr) {
        SetParent(object, spec.parent);
    }
    return object;
}

void LevelData::Unlink(SceneObject& object) {
    if (object.parent == nullptr) {
        return;
    }
    SceneObject& parent = *object.Parent();
    EditorObject* before = nullptr;
    for (EditorObject* child = parent.firstChild; child != &object; child = child->nextSibling) {
        before = child;
    }
    (before != nullptr ? before->nextSibling : parent.firstChild) = object.nextSibling;
    if (parent.lastChild == &object) {
        parent.lastChild = before;
    }
    object.parent = nullptr;
    object.nextSibling = nullptr;
    object.localKnown = false;
}

bool LevelData::SetParent(SceneObject& object, SceneObject* parent) {
    int depth = 0;
    for (EditorObject* above = parent; above != nullptr; above = above->parent) {
        if (above == &object) {
            return false;
        }
        ++depth;
    }
    if (depth + HeightOf(object) > kDeepestChild) {
        return false;
    }
    object.pendingParentId = 0;
    if (object.parent == parent) {
        return true;
    }
    Unlink(object);
    films->OnStructureChanged();
    if (parent == nullptr) {
        return true;
    }
    Append(object, *parent);
    return true;
}

void LevelData::Append(SceneObject& object, SceneObject& parent) {
    (parent.lastChild != nullptr ? parent.lastChild->nextSibling : parent.firstChild) = &object;
    parent.lastChild = &object;
    object.parent = &parent;
}

void LevelData::Forget(SceneObject& object) {
    films->OnObjectsDeleted({&object});
    level.Deselect(&object);
    while (object.firstChild != nullptr) {
        Unlink(static_cast<SceneObject&>(*object.firstChild));
    }
    Unlink(object);
    LeaveGroup(object);
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
    addresses.erase(object);
    objects.erase(found);
}

void LevelData::Empty() {
    for (const auto& object : objects) {
        level.OnDestroying(object.get());
    }
    level.ClearSelection();
    films->Empty();
    groups.clear();
    byId.clear();
    addresses.clear();
    objects.clear();
}

void LevelData::RelinkParents(std::vector<std::string>& messages) {
    for (const auto& owned : objects) {
        SceneObject& object = *owned;
        SceneObject* parent = object.parent == nullptr ? Find(object.pendingParentId) : nullptr;
        if (object.pendingParentId == 0 || object.parent != nullptr) {
            continue;
        }
        if (parent == nullptr) {
            messages.push_back("\"" + object.name + "\" hangs on object " +
                               std::to_string(object.pendingParentId) + ", which is not in the level.");
            continue;
        }
        int depth = 0;
        for (const SceneObject* above = parent; above != nullptr && depth <= kDeepestChild; ++depth) {
            const SceneObject* next =
                above->Parent() != nullptr ? above->Parent() : Find(above->pendingParentId);
            above = next;
        }
        object.pendingParentId = depth > kDeepestChild ? 0 : object.pendingParentId;
        if (depth > kDeepestChild) {
            messages.push_back("\"" + object.name + "\" hangs on itself or too deep and is set free.");
            continue;
        }
        Append(object, *parent);
    }
    for (const auto& object : objects) {
        object->pendingParentId = object->parent != nullptr ? 0 : object->pendingParentId;
    }
}

void LevelData::RelinkGroups(std::vector<std::string>& messages) {
    std::unordered_map<const SceneObject*, const Group*> taken;
    for (const auto& group : groups) {
        for (const SceneObject* member : group->members) {
            taken[member] = group.get();
        }
    }
    for (const auto& group : groups) {
        std::vector<int> missing;
        for (const int id : group->missingIds) {
            SceneObject* member = Find(id);
            if (member == nullptr) {
                missing.push_back(id);
            } else if (taken.emplace(member, group.get()).second) {
                group->members.push_back(member);
            }
        }
        if (!missing.empty()) {
            messages.push_back("Group \"" + group->name + "\" lacks " + std::to_string(missing.size()) +
                               " objects that are not in the level.");
        }
        group->missingIds = std::move(missing);
    }
    std::erase_if(groups,
                  [](const auto& group) { return group->members.empty() && group->missingIds.empty(); });
}

void LevelData::Relink(std::vector<std::string>& messages) {
    RelinkParents(messages);
    RelinkGroups(messages);
    films->OnStructureChanged();
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

bool LevelData::JoinGroup(Group& group, SceneObject& object) {
    if (GroupOf(&object) == &group) {
        return false;
    }
    LeaveGroup(object);
    group.members.push_back(&object);
    return true;
}

bool LevelData::LeaveGroup(const SceneObject& object) {
    Group* group = GroupOf(&object);
    if (group == nullptr) {
        return false;
    }
    std::erase(group->members, &object);
    if (group->members.empty()) {
        DissolveGroup(group);
    }
    return true;
}

std::string LevelData::FreeGroupName(const std::string& name) const {
    std::string free = name;
    for (int number = 2; std::ranges::any_of(groups, [&](const auto& group) { return group->name == free; });
         ++number) {
        free = name + ' ' + std::to_string(number);
    }
    return free;
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
