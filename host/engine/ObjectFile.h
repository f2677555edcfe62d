#pragma once

#include "host/engine/LevelFormat.h"
#include "plugin/contract/EditorObject.h"

#include <vector>

namespace engine {

class LevelData;
class SceneObject;

/// A chunk of an object that is not the engine's, with the number of engine chunks in front of it.
struct ObjectExtra {
    FoundChunk chunk;
    int place = 0;
};

/// Appends the chunks of what the engine itself knows of an object.
void WriteObjectCore(SceneObject& object, std::string& bytes);
/// Gives an object of the level what WriteObjectCore wrote of one with its id. Children stay where they are.
/// False if the bytes say no such thing; then the object may be changed in part.
bool ReadObjectCore(SceneObject& object, std::string_view parts);
/// Writes what SceneObject::Save writes: the object's own parts and the plug-ins' chunks for it.
void SaveSceneObject(SceneObject& object, fs::file& file);
/// Body of EditorObject::LoadObject: consumes `dataSize` bytes as far as the file has them; null, and no
/// object, if they make no object. Throws fs::file_exception as the file does.
EditorObject* LoadSceneObject(LevelData& data, fs::file& file, std::uint32_t dataSize, int classId,
                              EditorObject* owner);
/// Makes an object from the parts that SaveSceneObject wrote. Throws ChunkError, and then made none. `told`
/// takes what is not kept of it.
SceneObject& ParseObject(LevelData& data, std::string_view parts, std::size_t offset,
                         std::vector<ObjectExtra>& extras, std::vector<std::string>* told = nullptr);

} // namespace engine
