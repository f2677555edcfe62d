#pragma once

#include "host/engine/Level.h"
#include "host/engine/SceneObject.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace stage {

class EditorHost;
class LevelSession;
struct Deed;

/// A new world matrix for an object.
struct ObjectMove {
    engine::SceneObject* object = nullptr;
    engine::Matrix4 world;
};

/// The user's commands on level objects. Each tells the plug-ins what happened and marks the level changed.
class ObjectCommands {
public:
    ObjectCommands(EditorHost& editorHost, LevelSession& levelSession);

    /// Makes an object and selects it alone: event 3. Null without a level.
    engine::SceneObject* Create(const engine::ObjectSpec& spec);
    /// Copies of the selected objects, selected instead of them: event 3. Copies of two or more of a group
    /// are a group of their own. Bodies of a plug-in's own are left out. The number of copies.
    int Duplicate();
    /// Deletes the selected objects, unless a plug-in refuses. Camera points belong to their film and are
    /// refused by the editor itself.
    void DeleteSelected();
    /// A name like this that nobody has: event 7. False for an empty name.
    bool Rename(engine::SceneObject& object, const std::string& name);
    /// False if fewer than two of the selected objects are free to be grouped.
    bool GroupSelected();
    bool UngroupSelected();
    /// The group whose members are selected, all of them and nothing else; null for none.
    engine::Group* SelectedGroup() const;
    /// False for an empty name.
    bool RenameGroup(engine::Group& group, const std::string& name);
    /// The objects leave the groups that they were in. A group that is left with one object ends. The number
    /// of those that were not in it.
    int JoinGroup(const std::vector<engine::SceneObject*>& objects, engine::Group& group);
    /// The objects are in no group, but for `stay`, and for a group all of whose members are among them. A
    /// group that is left with one object ends. The number of those that left one.
    int LeaveGroups(const std::vector<engine::SceneObject*>& objects, const engine::Group* stay);
    /// Keeps the world matrices: event 8, once. A null parent sets the objects free; what hangs on another of
    /// them stays there. Nothing changes if one of them can't have the parent: then says why, else empty.
    std::string SetParent(const std::vector<engine::SceneObject*>& objects, engine::SceneObject* parent);
    /// Why one of the objects can't have the parent, empty if all can.
    std::string WhyNoParent(const std::vector<engine::SceneObject*>& objects,
                            const engine::SceneObject* parent) const;
    /// Event 14 if exactly the selected objects move, else request 10 with them. What goes along is told too:
    /// with request 10 while a film is open, else with event 10. With a film open a large turn is told as a
    /// series of small ones. Matrices that are not finite are left out.
    void Move(std::vector<ObjectMove> moves);
    void SetMesh(engine::SceneObject& object, const std::string& meshName);
    /// Lock, lens and text; no event, as plug-ins know nothing of them.
    void SetNotes(engine::SceneObject& object, const engine::ObjectNotes& notes);
    void SetVisible(engine::SceneObject& object, bool visible);
    void SetLight(engine::SceneObject& object, const engine::LightProperties& light);
    void SetSun(const Vector3& direction, const engine::LightProperties& light);
    /// The objects and all that are in a group with one of them, each once.
    ObjectList WithGroups(const ObjectList& objects) const;
    /// The level's objects that the user sees in lists: not the bodies that a plug-in hides.
    std::vector<engine::SceneObject*> Selected() const;

    /// Objects were deleted that others use; told in words.
    std::function<void(const std::string& uses)> deletedInUse;

private:
    /// The matrices that an object is told with, one after another; at least one.
    struct MovePath {
        engine::SceneObject* object = nullptr;
        std::vector<engine::Matrix4> matrices;
    };

    engine::SceneObject* Copy(const engine::SceneObject& source, engine::UniqueNames& names);
    void Changed();
    /// After the deed's objects came into other groups than these, or into none. Their number.
    int EndMoves(const Deed& deed, const std::set<const engine::Group*>& left);
    void DissolveSingles(const std::set<const engine::Group*>& left);
    /// Moves the objects, and says how to report it: paths of the moves in their order, then of what
    /// followed.
    std::vector<MovePath> PathsOf(const std::vector<ObjectMove>& moves, const ObjectList& followers);
    void TellMoved(const ObjectList& moved, const ObjectList& followers);
    void RequestMoved(ObjectList objects);

    EditorHost& host;
    LevelSession& session;
};

} // namespace stage
