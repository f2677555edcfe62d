#pragma once

#include "host/engine/Group.h"
#include "host/engine/Light.h"
#include "host/engine/OwnPlace.h"
#include "host/engine/RawChunk.h"
#include "host/engine/SceneObject.h"
#include "plugin/contract/Level.h"

#include <map>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace engine {

class FilmManager;
class Level;
class LevelRoot;
class UniqueNames;

/// What a new object is made from.
struct ObjectSpec {
    std::string className;
    std::string name; ///< made unique
    std::string meshName;
    Matrix4 matrix;
    SceneObject* parent = nullptr; ///< the matrix is a world matrix all the same
    bool active = true;            ///< false for helpers, which wait for EditorObjectInfo::Update
    ObjectNotes notes{};
};

/// A view's camera as a level file keeps it.
struct SavedView {
    Matrix4 camera;                    ///< in the world, row 2 backwards
    float fieldOfView = 1.0471976f;    ///< radians
    float nearPlane = ClipPlane::Near; ///< units
    float farPlane = ClipPlane::Far;
};

/// A place to look from that the user has kept.
struct ViewBookmark {
    Vector3 pivot; ///< what the view turns about
    float yaw = 0.0f;
    float pitch = 0.0f;
    float distance = 0.0f; ///< of the eye from the pivot, units
    float fieldOfView = 1.0471976f;
};

/// Everything of one level: objects, groups, sun and films. Owned by the Level.
class LevelData : public ILevelData {
public:
    explicit LevelData(Level& level);
    ~LevelData() override;
    LevelData(const LevelData&) = delete;
    LevelData& operator=(const LevelData&) = delete;

    int RayCast(const float* from, float* to, int zero) override;
    EditorObject* FindObject(int id) const override { return Find(id); }

    Level& Owner() const { return level; }
    LevelRoot& Root() const { return *root; }
    /// A film's rows are about to be made anew; see Level::SetShowHook. Nothing while this level is being
    /// read.
    void OnShowing() const;
    void OnEdited() const;
    FilmManager& Films() const { return *films; }
    SunObject* Sun() const { return sun.get(); }
    /// Makes or drops the sun.
    void SetSun(bool present);

    /// Objects in the order of their making.
    const std::vector<std::unique_ptr<SceneObject>>& Objects() const { return objects; }
    SceneObject* Find(int id) const;
    SceneObject* FindByName(const std::string& name) const;
    /// Whether this is the address of an object; it may be that of one that is gone.
    bool Holds(const EditorObject* object) const { return addresses.contains(object); }
    SceneObject& Create(const ObjectSpec& spec, UniqueNames* names = nullptr);
    /// Films, groups, selection and children forget the object; children keep their world matrices.
    void Delete(SceneObject* object);
    /// Keeps the world matrix. False if the parent is the object itself or stands below it.
    bool SetParent(SceneObject& object, SceneObject* parent);

    /// Null if fewer than two objects remain that are in no group yet.
    Group* MakeGroup(const std::string& name, const std::vector<SceneObject*>& members);
    void DissolveGroup(Group* group);
    /// Leaves the group that it is in. False if it is in this one.
    bool JoinGroup(Group& group, SceneObject& object);
    /// A group without members goes. False if it is in none.
    bool LeaveGroup(const SceneObject& object);
    /// The name, or with the first number behind it that makes it one of its own among the groups.
    std::string FreeGroupName(const std::string& name) const;
    Group* GroupOf(const SceneObject* object) const;
    const std::vector<std::unique_ptr<Group>>& Groups() const { return groups; }

    /// For readers of files: an object of this id, or of a fresh one if the id is taken or not positive.
    SceneObject& AddLoaded(int id);
    void ClearGroups() { groups.clear(); }
    /// The members stand in the group's missingIds until Relink.
    void AddLoadedGroup(std::unique_ptr<Group> group) { groups.push_back(std::move(group)); }
    int NextId() const { return nextId; }
    void SetNextId(int id);
    /// Everything goes that a file of the level makes anew: objects, groups, tracks, films. Chunks that
    /// nobody knows in the level, its root and among its films stay, and so do ids. Films that are made in
    /// the same slots before DropEmptied are the same objects, so that who remembers one finds it again.
    void Empty();
    /// Finds the parents and group members that a file knows by id. Rings and chains deeper than
    /// kDeepestChild are cut and told.
    void Relink(std::vector<std::string>& messages);

    /// Where an object stood before a move that is under way; null if it is not moved.
    const OwnPlace* PlaceBeforeMove(const SceneObject& object) const;

    static constexpr int kDeepestChild = 200;

    /// While set, takes where in their files objects are written: which chunks of a plug-in hold objects.
    std::vector<std::uint64_t>* savedPlaces = nullptr;
    std::shared_ptr<const OwnPlaces> placesBeforeMove; ///< set by PlacesBeforeMove, null outside of one

    std::vector<SavedView> savedViews;
    std::map<int, ViewBookmark> bookmarks;   ///< by number
    std::vector<RawChunk> foreignChunks;     ///< of the level's file and known to nobody
    std::vector<RawChunk> foreignRootChunks; ///< the same inside the root object's part
    std::string bytesBehind;                 ///< what stood in the file behind the level, written back there

private:
    void Unlink(SceneObject& object);
    /// As the parent's last child; the object must have no parent.
    static void Append(SceneObject& object, SceneObject& parent);
    void RelinkParents(std::vector<std::string>& messages);
    void RelinkGroups(std::vector<std::string>& messages);
    void Forget(SceneObject& object);

    Level& level;
    std::vector<std::unique_ptr<SceneObject>> objects;
    std::unordered_map<int, SceneObject*> byId;
    std::unordered_set<const EditorObject*> addresses;
    std::vector<std::unique_ptr<Group>> groups;
    std::unique_ptr<SunObject> sun;
    std::unique_ptr<LevelRoot> root;
    std::unique_ptr<FilmManager> films;
    int nextId = 1;
};

} // namespace engine
