#include "host/stage/host/ObjectCommands.h"

#include "host/engine/ClassDatabase.h"
#include "host/engine/UniqueNames.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"
#include "host/stage/host/ObjectUses.h"
#include "host/stage/host/SelectedIds.h"
#include "host/stage/host/TurnSteps.h"
#include "plugin/contract/EventCodes.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>

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
    return engine::IsCameraPointClass(object.Info().className);
}

void AppendDescendants(const EditorObject& object, ObjectList& list,
                       std::unordered_set<const EditorObject*>& known) {
    for (EditorObject* child = object.firstChild; child != nullptr; child = child->nextSibling) {
        if (known.insert(child).second) {
            list.push_back(child);
            AppendDescendants(*child, list, known);
        }
    }
}

/// What goes along with the objects and is none of them.
ObjectList FollowersOf(const ObjectList& moved) {
    ObjectList followers;
    std::unordered_set<const EditorObject*> known(moved.begin(), moved.end());
    for (const EditorObject* object : moved) {
        AppendDescendants(*object, followers, known);
    }
    return followers;
}

bool IsBelow(const EditorObject& object, const EditorObject& upper) {
    const EditorObject* above = object.parent;
    while (above != nullptr && above != &upper) {
        above = above->parent;
    }
    return above != nullptr;
}

/// Why the object can't hang on the parent, empty if it can.
std::string WhyNoParent(const engine::SceneObject& object, const engine::SceneObject* parent) {
    if (object.transient || (parent != nullptr && parent->transient)) {
        const engine::SceneObject& helper = object.transient ? object : *parent;
        return helper.name + " is a helper of a film: it has neither parent nor children";
    }
    if (parent == nullptr) {
        return {};
    }
    if (parent == &object) {
        return object.name + " can't be its own parent";
    }
    if (IsBelow(*parent, object)) {
        return parent->name + " hangs on " + object.name + ": it can't be its parent too";
    }
    return {};
}

/// Those that hang on none of the others.
std::vector<engine::SceneObject*> Uppermost(std::vector<engine::SceneObject*> objects) {
    const std::vector<engine::SceneObject*> all = objects;
    std::erase_if(objects, [&](const engine::SceneObject* object) {
        return std::ranges::any_of(all, [&](const auto* other) { return IsBelow(*object, *other); });
    });
    return objects;
}

/// A body that only has a place: a turn means nothing to it.
bool IsMarker(const engine::SceneObject& object) {
    return object.transient || object.objectKind == ObjectKind::MatrixOnly;
}
struct CopyPair {
    const engine::SceneObject* source;
    engine::SceneObject* copy;
};

/// The copy of a child hangs on the copy of its parent, if there is one.
void HangCopies(engine::Level& level, const std::vector<CopyPair>& pairs) {
    std::unordered_map<const engine::SceneObject*, engine::SceneObject*> copyOf;
    for (const CopyPair& pair : pairs) {
        copyOf[pair.source] = pair.copy;
    }
    for (const CopyPair& child : pairs) {
        const auto parent = copyOf.find(child.source->Parent());
        if (parent != copyOf.end()) {
            level.SetParent(child.copy, parent->second);
        }
    }
}

void GroupCopies(engine::LevelData& data, const std::vector<CopyPair>& pairs) {
    std::map<const engine::Group*, std::vector<engine::SceneObject*>> groups;
    for (const CopyPair& pair : pairs) {
        groups[data.GroupOf(pair.source)].push_back(pair.copy);
    }
    const std::size_t before = data.Groups().size();
    for (std::size_t i = 0; i < before; ++i) {
        const engine::Group* group = data.Groups()[i].get();
        data.MakeGroup(data.FreeGroupName(group->name), groups[group]);
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

engine::SceneObject* ObjectCommands::Copy(const engine::SceneObject& source, engine::UniqueNames& names) {
    engine::ObjectSpec spec;
    spec.className = source.Info().className;
    spec.name = source.name;
    spec.meshName = source.meshName;
    spec.matrix = source.World();
    spec.parent = source.Parent();
    spec.notes = source.notes;
    engine::SceneObject* copy = host.level.CreateObject(spec, &names);
    if (copy != nullptr) {
        copy->objectKind = source.objectKind;
        copy->visible = source.visible;
        copy->light = source.light;
    }
    return copy;
}

int ObjectCommands::Duplicate() {
    if (host.level.Data() == nullptr) {
        return 0;
    }
    engine::UniqueNames names(*host.level.Data());
    std::vector<CopyPair> pairs;
    ObjectList copies;
    for (const engine::SceneObject* source : Selected()) {
        if (source->transient || source->savedAsObject == 0) {
            continue;
        }
        if (engine::SceneObject* copy = Copy(*source, names)) {
            pairs.push_back({source, copy});
            copies.push_back(copy);
        }
    }
    HangCopies(host.level, pairs);
    GroupCopies(*host.level.Data(), pairs);
    if (!copies.empty()) {
        session.History().Tell({Deed::Kind::Duplicate, IdsOf(copies)});
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
        const std::string uses = TellUses(*host.level.Data(), doomed);
        host.DeleteObjects(doomed);
        if (host.level.Data()->Objects().size() != before) {
            Changed();
            if (!uses.empty() && deletedInUse) {
                deletedInUse(uses);
            }
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

std::string ObjectCommands::WhyNoParent(const std::vector<engine::SceneObject*>& objects,
                                        const engine::SceneObject* parent) const {
    for (const engine::SceneObject* object : Uppermost(objects)) {
        if (std::string refusal = stage::WhyNoParent(*object, parent); !refusal.empty()) {
            return refusal;
        }
    }
    return {};
}

std::string ObjectCommands::SetParent(const std::vector<engine::SceneObject*>& objects,
                                      engine::SceneObject* parent) {
    std::string refusal = WhyNoParent(objects, parent);
    if (!refusal.empty()) {
        return refusal;
    }
    std::vector<engine::SceneObject*> others = Uppermost(objects);
    std::erase_if(others, [parent](const engine::SceneObject* object) { return object->Parent() == parent; });
    const auto attached =
        std::ranges::count_if(others, [&](auto* object) { return host.level.SetParent(object, parent); });
    if (attached > 0) {
        host.plugins.SendEvent(EventCode::ObjectSetChanged, nullptr);
        Changed();
    }
    return attached == std::ssize(others) ? "" : "Too many objects would hang one on another";
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
    ObjectList moved;
    for (const ObjectMove& move : moves) {
        moved.push_back(move.object);
    }
    const ObjectList followers = FollowersOf(moved);
    ObjectList all = moved;
    all.insert(all.end(), followers.begin(), followers.end());
    const engine::PlacesBeforeMove before(host.level, all); // a move may make them actors
    const std::vector<MovePath> paths = PathsOf(moves, followers);
    std::size_t steps = 1;
    for (const MovePath& path : paths) {
        steps = std::max(steps, path.matrices.size());
    }
    for (std::size_t step = 0; step < steps; ++step) {
        // In one step the followers went along; their places below the others stay exact that way.
        const std::size_t placed = steps > 1 ? paths.size() : moves.size();
        for (std::size_t i = 0; i < placed; ++i) {
            const MovePath& path = paths[i];
            if (host.Contains(path.object)) {
                path.object->SetMatrix(path.matrices[std::min(step, path.matrices.size() - 1)].m, 0);
            }
        }
        TellMoved(moved, followers);
    }
    session.MarkChanged();
    host.windows.ObjectsMoved();
    host.RedrawViews();
}

std::vector<ObjectCommands::MovePath> ObjectCommands::PathsOf(const std::vector<ObjectMove>& moves,
                                                              const ObjectList& followers) {
    const engine::LevelData& data = *host.level.Data();
    const bool isFilmOpen = data.filmManager->currentFilm != nullptr;
    std::vector<MovePath> paths;
    std::vector<TurnStart> starts;
    const auto add = [&](engine::SceneObject* object) {
        paths.push_back({object, {}});
        starts.push_back(isFilmOpen && !IsMarker(*object) ? StartOfTurn(data, *object) : TurnStart{});
    };
    for (const ObjectMove& move : moves) {
        add(move.object);
    }
    for (EditorObject* follower : followers) {
        add(Scene(follower));
    }
    // Everything arrives at once, which tells where the followers come to.
    for (const ObjectMove& move : moves) {
        move.object->SetMatrix(move.world.m, 0);
    }
    for (std::size_t i = 0; i < paths.size(); ++i) {
        engine::Matrix4 end = i < moves.size() ? moves[i].world : paths[i].object->World();
        const bool turns = !IsMarker(*paths[i].object) && engine::IsFinite(end);
        if (turns && !isFilmOpen) {
            LeaveGimbal(end);
        }
        paths[i].matrices = turns && isFilmOpen ? TurnSteps(starts[i], end) : std::vector{end};
    }
    return paths;
}

void ObjectCommands::TellMoved(const ObjectList& moved, const ObjectList& followers) {
    const auto present = [this](const ObjectList& objects) {
        ObjectList known = objects;
        known.remove_if([this](const EditorObject* object) { return !host.Contains(object); });
        return known;
    };
    const ObjectList told = present(moved);
    const std::unordered_set<const EditorObject*> selected(host.level.selection.begin(),
                                                           host.level.selection.end());
    const bool isSelection =
        told.size() == selected.size() &&
        std::ranges::all_of(told, [&](const EditorObject* object) { return selected.contains(object); });
    if (isSelection && !told.empty()) {
        host.plugins.SendEvent(EventCode::ObjectsMoved, nullptr);
    } else if (!told.empty()) {
        RequestMoved(told);
    }
    // Children went along. With a film open they are moved objects too; without one nothing poses them, and
    // their new places are all there is to tell.
    ObjectList went = present(followers);
    const engine::LevelData* data = host.level.Data();
    if (went.empty() || data == nullptr) {
        return;
    }
    if (data->filmManager->currentFilm != nullptr) {
        RequestMoved(went);
    } else {
        host.plugins.SendEvent(EventCode::ObjectsChangedOutside, &went);
    }
}

void ObjectCommands::RequestMoved(ObjectList objects) {
    host.plugins.listenersA.Deliver([&](IPlugin* plugin) {
        bool unused = false;
        host.plugins.Guarded("OnViewRequest",
                             [&] { plugin->OnViewRequest(ViewRequest::ObjectsMoved, 0, &objects, &unused); });
    });
}

void ObjectCommands::SetMesh(engine::SceneObject& object, const std::string& meshName) {
    if (object.meshName != meshName) {
        object.SetMeshName(meshName);
        host.plugins.SendEvent(EventCode::ObjectSetChanged, nullptr);
        Changed();
    }
}

void ObjectCommands::SetNotes(engine::SceneObject& object, const engine::ObjectNotes& notes) {
    if (object.notes != notes) {
        object.notes = notes;
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

} // namespace stage
