#pragma once

#include "host/engine/Math.h"
#include "plugin/contract/Types.h"

#include <memory>
#include <unordered_map>

namespace engine {

class Level;
class SceneObject;

/// Where an object stands outside of films: taken down before a film poses it, so that the film can put it
/// back. The object is known by its id and may be gone.
class OwnPlace {
public:
    bool IsOf(const SceneObject* object) const;
    void Keep(const SceneObject& object);
    /// Back to the place, and the place is no longer kept. An object below another goes back to its place
    /// there, wherever the other stands by now. Null and other objects are left alone.
    void PutBack(SceneObject* object);
    void Forget() { kept = false; }
    const Matrix4& World() const { return world; }

private:
    Matrix4 world;
    Matrix4 parentWorld; ///< of the parent at the same moment
    int objectId = 0;
    int parentId = 0; ///< 0 without a parent
    bool kept = false;
};

/// By the objects' ids.
using OwnPlaces = std::unordered_map<int, OwnPlace>;

/// Takes down where objects stand that the user is about to move while a film is open: until this goes, a
/// film that gets one of them as an actor takes that place for its own, and not the one that it was moved to.
class PlacesBeforeMove {
public:
    PlacesBeforeMove(Level& movedLevel, const ObjectList& objects);
    ~PlacesBeforeMove();
    PlacesBeforeMove(const PlacesBeforeMove&) = delete;
    PlacesBeforeMove& operator=(const PlacesBeforeMove&) = delete;

private:
    Level& level; ///< its data may be others by the end
    std::shared_ptr<const OwnPlaces> places;
    std::shared_ptr<const OwnPlaces> outer; ///< of a move that this one runs inside of
};

} // namespace engine
