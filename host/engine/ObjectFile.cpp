#include "host/engine/ObjectFile.h"

#include "files/base/Log.h"
#include "host/engine/ByteStream.h"
#include "host/engine/ChunkClient.h"
#include "host/engine/ClassDatabase.h"
#include "host/engine/FileHandles.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/MemoryFile.h"

#include <algorithm>
#include <optional>

namespace engine {

namespace {

struct ObjectCore {
    std::int32_t id = 0;
    std::int32_t kind = 0;
    std::int32_t parentId = 0;
    std::uint32_t flags = 0;
    std::uint8_t visible = 1;
    std::uint8_t savedAsObject = 1;
    std::string className;
    std::string name;
    std::string meshName;
    Matrix4 matrix;
};

std::string CoreBytes(SceneObject& object) {
    std::string bytes;
    ByteWriter out(bytes);
    out.I32(object.id);
    out.I32(object.objectKind);
    out.I32(object.parent != nullptr ? object.parent->id : object.pendingParentId);
    out.U32(object.GetFlags());
    out.U8(object.visible);
    out.U8(object.savedAsObject);
    out.Text(object.Info().saveClassName);
    out.Text(object.name);
    out.Text(object.meshName);
    out.Floats(object.World().m, 16);
    return bytes;
}

ObjectCore ReadCore(const FoundChunk& chunk, std::size_t& rest) {
    ByteReader in(chunk.data);
    ObjectCore core;
    core.id = in.I32();
    core.kind = in.I32();
    core.parentId = in.I32();
    core.flags = in.U32();
    core.visible = in.U8();
    core.savedAsObject = in.U8();
    core.className = in.Text();
    core.name = in.Text();
    core.meshName = in.Text();
    in.Floats(core.matrix.m, 16);
    if (!in.Good()) {
        throw ChunkError(chunk.offset, "the description of an object is cut short");
    }
    rest += in.Left();
    return core;
}

std::string LightBytes(const LightProperties& light) {
    std::string bytes;
    ByteWriter out(bytes);
    out.Floats(light.color.Data(), 3);
    out.F32(light.range);
    out.F32(light.intensity);
    out.U8(light.on ? 1 : 0);
    return bytes;
}

LightProperties ReadLight(const FoundChunk& chunk, std::size_t& rest) {
    ByteReader in(chunk.data);
    LightProperties light;
    in.Floats(light.color.Data(), 3);
    light.range = in.F32();
    light.intensity = in.F32();
    light.on = in.U8() != 0;
    if (!in.Good()) {
        throw ChunkError(chunk.offset, "the light of an object is cut short");
    }
    rest += in.Left();
    return light;
}

std::string NotesBytes(const ObjectNotes& notes) {
    std::string bytes;
    ByteWriter out(bytes);
    out.U8(notes.locked ? 1 : 0);
    out.F32(notes.fieldOfView);
    out.Text(notes.text);
    return bytes;
}

ObjectNotes ReadNotes(const FoundChunk& chunk, std::size_t& rest) {
    ByteReader in(chunk.data);
    ObjectNotes notes;
    notes.locked = in.U8() != 0;
    notes.fieldOfView = in.F32();
    notes.text = in.Text();
    if (!in.Good()) {
        throw ChunkError(chunk.offset, "the notes of an object are cut short");
    }
    rest += in.Left();
    return notes;
}

/// Gives the plug-ins their chunks of a freshly read object; the others are kept.
void GiveExtras(SceneObject& object, fs::file& file, std::uint64_t start,
                const std::vector<ObjectExtra>& extras) {
    IChunkClient* client = object.Data().Owner().ChunkClient();
    int owned = 0;
    for (const ObjectExtra& extra : extras) {
        const FoundChunk& chunk = extra.chunk;
        if (client == nullptr || !client->IsOwnChunk(chunk.id)) {
            object.foreignChunks.push_back({chunk.id, extra.place + owned, std::string(chunk.data)});
            continue;
        }
        ++owned;
        SeekTo(file.handle, start + chunk.offset);
        client->LoadChunk(&object, file, chunk.id, static_cast<std::uint32_t>(chunk.data.size()));
    }
}

} // namespace

void WriteObjectCore(SceneObject& object, std::string& bytes) {
    AppendChunk(bytes, LevelChunk::ObjectCore, CoreBytes(object));
    if (object.light) {
        AppendChunk(bytes, LevelChunk::ObjectLight, LightBytes(*object.light));
    }
    if (object.notes != ObjectNotes()) {
        AppendChunk(bytes, LevelChunk::ObjectNotes, NotesBytes(object.notes));
    }
}

void SaveSceneObject(SceneObject& object, fs::file& file) {
    if (auto* places = object.Data().savedPlaces) {
        places->push_back(FilePosition(file.handle));
    }
    std::string bytes;
    WriteObjectCore(object, bytes);
    if (IChunkClient* client = object.Data().Owner().ChunkClient()) {
        MemoryFile scratch;
        client->SaveChunks(scratch.file, &object);
        bytes += scratch.Take();
    }
    MergeForeign(bytes, object.foreignChunks);
    file.Write(bytes.data(), static_cast<int>(bytes.size()));
}

namespace {

/// The engine's own parts of an object.
struct OwnParts {
    ObjectCore core;
    std::optional<LightProperties> light;
    std::optional<ObjectNotes> notes;
    std::size_t rest = 0; ///< bytes that are not known
};

OwnParts ReadOwnParts(std::string_view parts, std::size_t offset, std::vector<ObjectExtra>& extras) {
    OwnParts own;
    std::optional<ObjectCore> core;
    ChunkCursor cursor(parts, offset);
    FoundChunk chunk;
    for (int place = 0; cursor.Next(chunk);) {
        if (chunk.id == LevelChunk::ObjectCore && !core) {
            core = ReadCore(chunk, own.rest);
            ++place;
        } else if (chunk.id == LevelChunk::ObjectLight && !own.light) {
            own.light = ReadLight(chunk, own.rest);
            ++place;
        } else if (chunk.id == LevelChunk::ObjectNotes && !own.notes) {
            own.notes = ReadNotes(chunk, own.rest);
            ++place;
        } else {
            extras.push_back({chunk, place});
        }
    }
    if (!core) {
        throw ChunkError(offset, "an object has no description");
    }
    own.core = std::move(*core);
    return own;
}

/// Everything but the mesh, the place and the parent.
void GiveFields(SceneObject& object, const OwnParts& own) {
    object.objectKind = own.core.kind;
    object.SetFlags(own.core.flags);
    object.visible = own.core.visible;
    object.savedAsObject = own.core.savedAsObject;
    object.Info().SetClassName(own.core.className);
    object.name = own.core.name;
    object.light = own.light;
    object.notes = own.notes.value_or(ObjectNotes());
    if (!own.light && IsLightClass(own.core.className)) {
        object.light.emplace();
    }
}

} // namespace

SceneObject& ParseObject(LevelData& data, std::string_view parts, std::size_t offset,
                         std::vector<ObjectExtra>& extras, std::vector<std::string>* told) {
    const OwnParts own = ReadOwnParts(parts, offset, extras);
    if (own.rest > 0 && told != nullptr) {
        told->push_back(RestMessage(own.rest, "object \"" + own.core.name + "\""));
    }
    SceneObject& object = data.AddLoaded(own.core.id);
    GiveFields(object, own);
    object.pendingParentId = own.core.parentId;
    object.SetMeshName(own.core.meshName);
    object.SetMatrix(own.core.matrix.m, 0);
    return object;
}

bool ReadObjectCore(SceneObject& object, std::string_view parts) {
    try {
        std::vector<ObjectExtra> extras;
        const OwnParts own = ReadOwnParts(parts, 0, extras);
        SceneObject* parent = object.Data().Find(own.core.parentId);
        const bool isParentKnown = parent != nullptr || own.core.parentId == 0;
        if (own.core.id != object.id || !isParentKnown || !object.Data().SetParent(object, parent)) {
            return false;
        }
        GiveFields(object, own);
        if (object.meshName != own.core.meshName) {
            object.SetMeshName(own.core.meshName);
        }
        object.PutWorld(own.core.matrix);
        return true;
    } catch (const ChunkError&) {
        return false;
    }
}

EditorObject* LoadSceneObject(LevelData& data, fs::file& file, std::uint32_t dataSize, int, EditorObject*) {
    const std::uint64_t start = FilePosition(file.handle);
    const std::uint64_t size = std::min<std::uint64_t>(dataSize, BytesLeft(file.handle));
    std::string parts(static_cast<std::size_t>(size), '\0');
    parts.resize(static_cast<std::size_t>(file.Read(parts.data(), static_cast<int>(size))));
    SceneObject* object = nullptr;
    try {
        if (size < dataSize) {
            throw ChunkError(0, "the file ends inside an object");
        }
        std::vector<ObjectExtra> extras;
        object = &ParseObject(data, parts, 0, extras);
        GiveExtras(*object, file, start, extras);
    } catch (const ChunkError& error) {
        DebugPrint("[LoadObject] %s at byte %lu\n", error.what(), start + error.offset);
    } catch (const fs::file_exception& error) {
        // The object itself was read whole; what a plug-in can't read of it is left.
        DebugPrint("[LoadObject] a plug-in's chunk: %s\n", error.what());
    }
    SeekTo(file.handle, start + size);
    return object;
}

void SceneObject::Save(fs::file& file) {
    SaveSceneObject(*this, file);
}

EditorObject* SceneObject::LoadObject(fs::file& file, std::uint32_t dataSize, int classId,
                                      EditorObject* owner) {
    return LoadSceneObject(*data, file, dataSize, classId, owner);
}

} // namespace engine
