#include "host/engine/ObjectFile.h"

#include "host/engine/SceneObject.h"

namespace engine {

void SaveSceneObject(SceneObject&, fs::file&) {
}

EditorObject* LoadSceneObject(LevelData&, fs::file&, std::uint32_t, int, EditorObject*) {
    return nullptr;
}

void SceneObject::Save(fs::file& file) {
    SaveSceneObject(*this, file);
}

EditorObject* SceneObject::LoadObject(fs::file& file, std::uint32_t dataSize, int classId,
                                      EditorObject* owner) {
    return LoadSceneObject(*data, file, dataSize, classId, owner);
}

} // namespace engine
