#include "host/engine/OwnPlace.h"

#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
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

PlacesBeforeMove::PlacesBeforeMove(Level& movedLevel, const ObjectList& objects) : level(movedLevel) {
    LevelData* data = level.Data();
    if (data == nullptr || data->filmManager->currentFilm == nullptr) {
        return;
    }
    outer = data->placesBeforeMove;
    auto table = std::make_shared<OwnPlaces>(outer != nullptr ? *outer : OwnPlaces{});
    for (const EditorObject* object : objects) {
        const auto [place, isNew] = table->try_emplace(object->id);
        if (isNew) {
            place->second.Keep(static_cast<const SceneObject&>(*object));
        }
    }
    places = std::move(table);
    data->placesBeforeMove = places;
}

PlacesBeforeMove::~PlacesBeforeMove() {
    if (LevelData* data = level.Data();
        data != nullptr && places != nullptr && data->placesBeforeMove == places) {
        data->placesBeforeMove = outer;
    }
}

} // namespace engine
