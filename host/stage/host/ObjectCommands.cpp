#include "host/stage/host/ObjectCommands.h"

#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"
#include "plugin/contract/EventCodes.h"

#include <algorithm>

namespace stage {

namespace {
engine::SceneObject* Scene(EditorObject* object) {
    return static_cast<engine::SceneObject*>(object);
}

int Depth(const EditorObject& object) {
    int depth = 0;
    for (const EditorObject* above = object.parent; above != nullptr; above = above->parent) {
        ++depth;
    }
    return depth;
}

bool IsCameraPoint(const engine::SceneObject& object) {
    const std::string& name = object.Info().className;
    return name == ClassName::CameraPosition || name == ClassName::CameraTarget ||
           name == ClassName::CameraControlPoint;
}

bool InList(const ObjectList& objects, const EditorObject* object) {
    return std::find(objects.begin(), objects.end(), object) != objects.end();
}

void AppendDescendants(const EditorObject& object, ObjectList& list) {
    for (EditorObject* child = object.firstChild; child != nullptr; child = child->nextSibling) {
        if (!InList(list, child)) {
            list.push_back(child);
            AppendDescendants(*child, list);
        }
    }
}
} // namespace

ObjectCommands::ObjectCommands(EditorHost& editorHost, LevelSession& levelSession)
    : host(editorHost), session(levelSession) {
}

std::vector<engine::SceneObject*> ObjectCommands::Selected() const {
    std::vector<engine::SceneObject*> objects;
    for (EditorObject* object : host.level.selection) {
        objects.push_back(Scene(object));
    }
    return objects;
}

void ObjectCommands::Changed() {
    session.MarkChanged();
    host.windows.ObjectsChanged();
    host.RedrawViews();
}

engine::SceneObject* ObjectCommands::Create(const engine::ObjectSpec& spec) {
    engine::SceneObject* object = host.level.CreateObject(spec);
    if (object == nullptr) {
        return nullptr;
    }
    host.Select({object});
    host.plugins.SendEvent(EventCode::ObjectsCreated, nullptr);
    Changed();
    return object;
}

engine::SceneObject* ObjectCommands::Copy(const engine::SceneObject& source) {
    engine::ObjectSpec spec;
    spec.className = source.Info().className;
    spec.name = source.name;
    spec.meshName = source.meshName;
    spec.matrix = source.World();
    spec.parent = source.Parent();
    engine::SceneObject* copy = host.level.CreateObject(spec);
    if (copy != nullptr) {
        copy->objectKind = source.objectKind;
        copy->visible = source.visible;
        copy->light = source.light;
    }
    return copy;
}

int ObjectCommands::Duplicate() {
    ObjectList copies;
    for (const engine::SceneObject* source : Selected()) {
        if (source->transient || source->savedAsObject == 0) {
            continue;
        }
        if (engine::SceneObject* copy = Copy(*source)) {
            copies.push_back(copy);
        }
    }
    if (!copies.empty()) {
        host.Select(copies);
        host.plugins.SendEvent(EventCode::ObjectsCreated, nullptr);
        Changed();
    }
    return static_cast<int>(copies.size());
}

void ObjectCommands::DeleteSelected() {
    const ObjectList doomed = host.level.selection;
    std::list<DeleteMessage> refusals;
    for (EditorObject* object : doomed) {
        if (IsCameraPoint(*Scene(object))) {
            refusals.push_back(
                {object->name + " is a point of a film's camera; delete its key instead", object, 0});
        }
    }
    if (!refusals.empty()) {
        host.windows.ShowDeleteRefusals(refusals);
        return;
    }
    if (!doomed.empty()) {
        const std::size_t before = host.level.Data()->Objects().size();
        host.DeleteObjects(doomed);
        if (host.level.Data()->Objects().size() != before) {
            Changed();
        }
    }
}

bool ObjectCommands::Rename(engine::SceneObject& object, const std::string& name) {
    if (name.empty() || name == object.name) {
        return name == object.name;
    }
    host.level.Rename(&object, name);
    host.plugins.SendEvent(EventCode::ObjectsRenamed, nullptr);
    Changed();
    return true;
}

bool ObjectCommands::GroupSelected() {
    engine::LevelData* data = host.level.Data();
    if (data == nullptr) {
        return false;
    }
    std::vector<engine::SceneObject*> members = Selected();
    std::erase_if(members, [](const engine::SceneObject* object) { return object->transient; });
    const std::string name = "Group " + std::to_string(data->Groups().size() + 1);
    if (data->MakeGroup(name, members) == nullptr) {
        return false;
    }
    Changed();
    return true;
}

bool ObjectCommands::UngroupSelected() {
    bool any = false;
    for (const engine::SceneObject* object : Selected()) {
        if (engine::Group* group = host.level.Data()->GroupOf(object)) {
            host.level.Data()->DissolveGroup(group);
            any = true;
        }
    }
    if (any) {
        Changed();
    }
    return any;
}

bool ObjectCommands::SetParent(engine::SceneObject& object, engine::SceneObject* parent) {
    if (object.Parent() == parent || !host.level.SetParent(&object, parent)) {
        return false;
    }
    host.plugins.SendEvent(EventCode::ObjectSetChanged, nullptr);
    Changed();
    return true;
}

void ObjectCommands::Move(std::vector<ObjectMove> moves) {
    std::erase_if(moves, [this](const ObjectMove& move) {
        return !host.Contains(move.object) || !engine::IsFinite(move.world);
    });
    if (moves.empty()) {
        return;
    }
    // Parents first: they take their children along, and then each child gets its own place.
    std::stable_sort(moves.begin(), moves.end(), [](const ObjectMove& a, const ObjectMove& b) {
        return Depth(*a.object) < Depth(*b.object);
    });
    for (const ObjectMove& move : moves) {
        move.object->SetMatrix(move.world.m, 0);
    }
    TellMoved(moves);
    session.MarkChanged();
    host.windows.ObjectsMoved();
    host.RedrawViews();
}

void ObjectCommands::TellMoved(const std::vector<ObjectMove>& moves) {
    ObjectList moved;
    for (const ObjectMove& move : moves) {
        moved.push_back(move.object);
    }
    ObjectList followers = moved;
    for (const ObjectMove& move : moves) {
        AppendDescendants(*move.object, followers);
    }
    followers.remove_if([&moved](const EditorObject* object) { return InList(moved, object); });
    const bool isSelection = moved.size() == host.level.selection.size() &&
                             std::all_of(moved.begin(), moved.end(), [this](EditorObject* object) {
                                 return host.level.IsSelected(object);
                             });
    if (isSelection) {
        host.plugins.SendEvent(EventCode::ObjectsMoved, nullptr);
    } else {
        host.plugins.listenersA.Deliver([&](IPlugin* plugin) {
            bool unused = false;
            host.plugins.Guarded("OnViewRequest", [&] {
                plugin->OnViewRequest(ViewRequest::ObjectsMoved, 0, &moved, &unused);
            });
        });
    }
    // Children went along. With a film open its pose holds them, and telling would throw that away.
    const engine::LevelData* data = host.level.Data();
    if (!followers.empty() && data->filmManager->currentFilm == nullptr) {
        host.plugins.SendEvent(EventCode::ObjectsChangedOutside, &followers);
    }
}

void ObjectCommands::SetMesh(engine::SceneObject& object, const std::string& meshName) {
    if (object.meshName != meshName) {
        object.SetMeshName(meshName);
        host.plugins.SendEvent(EventCode::ObjectSetChanged, nullptr);
        Changed();
    }
}

void ObjectCommands::SetVisible(engine::SceneObject& object, bool visible) {
    object.visible = visible ? 1 : 0;
    Changed();
}

void ObjectCommands::SetLight(engine::SceneObject& object, const engine::LightProperties& light) {
    if (object.light.has_value()) {
        object.light = light;
        session.MarkChanged();
        host.RedrawViews();
    }
}

void ObjectCommands::SetSun(const Vector3& direction, const engine::LightProperties& light) {
    engine::LevelData* data = host.level.Data();
    if (data != nullptr && data->Sun() != nullptr) {
        data->Sun()->direction = direction;
        data->Sun()->light = light;
        session.MarkChanged();
        host.RedrawViews();
    }
}

ObjectList ObjectCommands::WithGroups(const ObjectList& objects) const {
    ObjectList all;
    for (EditorObject* object : objects) {
        if (!InList(all, object)) {
            all.push_back(object);
        }
        const engine::Group* group = host.level.Data()->GroupOf(Scene(object));
        for (engine::SceneObject* member :
             group != nullptr ? group->members : std::vector<engine::SceneObject*>()) {
            if (!InList(all, member)) {
                all.push_back(member);
            }
        }
    }
    return all;
}

} // namespace stage
