#pragma once

#include "host/engine/Math.h"

namespace engine {

class SceneObject;

/// Where an object stands outside of films: taken down before a film poses it, so that the film can put it
/// back. The object is known by its id and may be gone.
class OwnPlace {
public:
    bool IsKept() const { return kept; }
    bool IsOf(const SceneObject* object) const;
    void Keep(const SceneObject& object);
    /// Back to the place, and the place is no longer kept. An object below another goes back to its place
    /// there, wherever the other stands by now. Null and other objects are left alone.
    void PutBack(SceneObject* object);
    void Forget() { kept = false; }

private:
    Matrix4 world;
    Matrix4 parentWorld; ///< of the parent at the same moment
    int objectId = 0;
    int parentId = 0; ///< 0 without a parent
    bool kept = false;
};

} // namespace engine
