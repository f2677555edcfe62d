// Groups of objects. Plug-ins are told nothing of them.
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/host/SelectedIds.h"

#include <algorithm>
#include <set>
#include <unordered_set>

namespace stage {

namespace {

engine::SceneObject* Scene(EditorObject* object) {
    return static_cast<engine::SceneObject*>(object);
}

} // namespace

bool ObjectCommands::GroupSelected() {
    engine::LevelData* data = host.level.Data();
    if (data == nullptr) {
        return false;
    }
    std::vector<engine::SceneObject*> members = Selected();
    std::erase_if(members, [](const engine::SceneObject* object) { return object->transient; });
    const std::string name = data->FreeGroupName("Group");
    const engine::Group* group = data->MakeGroup(name, members);
    if (group == nullptr) {
        return false;
    }
    session.History().Tell({Deed::Kind::Group, IdsOf(group->members)});
    Changed();
    return true;
}

bool ObjectCommands::UngroupSelected() {
    Deed deed{Deed::Kind::Ungroup, {}};
    for (const engine::SceneObject* object : Selected()) {
        if (engine::Group* group = host.level.Data()->GroupOf(object)) {
            const std::vector<int> members = IdsOf(group->members);
            deed.objects.insert(deed.objects.end(), members.begin(), members.end());
            host.level.Data()->DissolveGroup(group);
        }
    }
    const bool any = !deed.objects.empty();
    if (any) {
        session.History().Tell(std::move(deed));
        Changed();
    }
    return any;
}

engine::Group* ObjectCommands::SelectedGroup() const {
    const std::vector<engine::SceneObject*> selected = Selected();
    engine::Group* group = selected.empty() ? nullptr : host.level.Data()->GroupOf(selected.front());
    const bool isWhole = group != nullptr && group->members.size() == selected.size() &&
                         std::ranges::all_of(group->members, [this](engine::SceneObject* member) {
                             return host.level.IsSelected(member);
                         });
    return isWhole ? group : nullptr;
}

bool ObjectCommands::RenameGroup(engine::Group& group, const std::string& name) {
    if (name.empty() || name == group.name) {
        return name == group.name;
    }
    group.name = name;
    session.History().Tell({Deed::Kind::RenameGroup, IdsOf(group.members)});
    Changed();
    return true;
}

int ObjectCommands::JoinGroup(const std::vector<engine::SceneObject*>& objects, engine::Group& group) {
    Deed deed{Deed::Kind::JoinGroup, {}};
    std::set<const engine::Group*> left;
    for (engine::SceneObject* object : objects) {
        const engine::Group* former = host.level.Data()->GroupOf(object);
        if (!object->transient && host.level.Data()->JoinGroup(group, *object)) {
            left.insert(former);
            deed.objects.push_back(object->id);
        }
    }
    return EndMoves(deed, left);
}

int ObjectCommands::LeaveGroups(const std::vector<engine::SceneObject*>& objects, const engine::Group* stay) {
    const std::unordered_set<const engine::SceneObject*> going(objects.begin(), objects.end());
    Deed deed{Deed::Kind::LeaveGroup, {}};
    std::set<const engine::Group*> left;
    for (const engine::SceneObject* object : objects) {
        const engine::Group* group = host.level.Data()->GroupOf(object);
        const bool isWhole = group != nullptr && std::ranges::all_of(group->members, [&](const auto* member) {
                                 return going.contains(member);
                             });
        if (group != nullptr && group != stay && !isWhole) {
            deed.objects.push_back(object->id);
            left.insert(group);
        }
    }
    for (const int id : deed.objects) {
        host.level.Data()->LeaveGroup(*host.level.FindObject(id));
    }
    return EndMoves(deed, left);
}

int ObjectCommands::EndMoves(const Deed& deed, const std::set<const engine::Group*>& left) {
    const int count = static_cast<int>(deed.objects.size());
    if (count > 0) {
        DissolveSingles(left);
        session.History().Tell(deed);
        Changed();
    }
    return count;
}

/// One object is no group, unless others of it are missing in the level. Some of `left` may have gone.
void ObjectCommands::DissolveSingles(const std::set<const engine::Group*>& left) {
    std::vector<engine::Group*> singles;
    for (const auto& group : host.level.Data()->Groups()) {
        if (left.contains(group.get()) && group->members.size() == 1 && group->missingIds.empty()) {
            singles.push_back(group.get());
        }
    }
    for (engine::Group* single : singles) {
        host.level.Data()->DissolveGroup(single);
    }
}

ObjectList ObjectCommands::WithGroups(const ObjectList& objects) const {
    ObjectList all;
    std::unordered_set<const EditorObject*> known;
    const auto add = [&](EditorObject* object) {
        if (known.insert(object).second) {
            all.push_back(object);
        }
    };
    for (EditorObject* object : objects) {
        add(object);
        const engine::Group* group = host.level.Data()->GroupOf(Scene(object));
        for (engine::SceneObject* member :
             group != nullptr ? group->members : std::vector<engine::SceneObject*>()) {
            add(member);
        }
    }
    return all;
}

} // namespace stage
