#pragma once

#include "plugin/contract/EditorObject.h"

namespace engine {

class LevelData;
class SceneObject;

/// Writes what SceneObject::Save writes: the object's own parts and the plug-ins' chunks for it.
void SaveSceneObject(SceneObject& object, fs::file& file);
/// Body of EditorObject::LoadObject: consumes `dataSize` bytes as far as the file has them; null, and no
/// object, if they make no object. Throws fs::file_exception as the file does.
EditorObject* LoadSceneObject(LevelData& data, fs::file& file, std::uint32_t dataSize, int classId,
                              EditorObject* owner);

} // namespace engine
