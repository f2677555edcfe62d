#include "host/engine/OwnPlace.h"

#include "host/engine/SceneObject.h"

namespace engine {

bool OwnPlace::IsOf(const SceneObject* object) const {
    return kept && object != nullptr && object->id == objectId;
}

void OwnPlace::Keep(const SceneObject& object) {
    const SceneObject* parent = object.Parent();
    world = object.World();
    parentWorld = parent != nullptr ? parent->World() : Matrix4{};
    objectId = object.id;
    parentId = parent != nullptr ? parent->id : 0;
    kept = true;
}

void OwnPlace::PutBack(SceneObject* object) {
    if (!IsOf(object)) {
        return;
    }
    kept = false;
    const SceneObject* parent = object->Parent();
    const bool sameParent = parent != nullptr && parent->id == parentId;
    Matrix4 inverse;
    // Where nothing else moved, the very numbers come back, so that a look at a film changes no byte.
    if (sameParent && !(parent->World() == parentWorld) && Invert(parentWorld, inverse)) {
        world = Multiply(Multiply(world, inverse), parent->World());
    }
    object->SetMatrix(world.m, 0);
}

} // namespace engine
