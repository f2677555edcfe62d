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

void SaveSceneObject(SceneObject& object, fs::file& file) {
    std::string bytes;
    AppendChunk(bytes, LevelChunk::ObjectCore, CoreBytes(object));
    if (object.light) {
        AppendChunk(bytes, LevelChunk::ObjectLight, LightBytes(*object.light));
    }
    if (object.notes != ObjectNotes()) {
        AppendChunk(bytes, LevelChunk::ObjectNotes, NotesBytes(object.notes));
    }
    if (IChunkClient* client = object.Data().Owner().ChunkClient()) {
        MemoryFile scratch;
        client->SaveChunks(scratch.file, &object);
        bytes += scratch.Take();
    }
    MergeForeign(bytes, object.foreignChunks);
    file.Write(bytes.data(), static_cast<int>(bytes.size()));
}

SceneObject& ParseObject(LevelData& data, std::string_view parts, std::size_t offset,
                         std::vector<ObjectExtra>& extras, std::vector<std::string>* told) {
    std::size_t rest = 0;
    std::optional<ObjectCore> core;
    std::optional<LightProperties> light;
    std::optional<ObjectNotes> notes;
    ChunkCursor cursor(parts, offset);
    FoundChunk chunk;
    for (int place = 0; cursor.Next(chunk);) {
        if (chunk.id == LevelChunk::ObjectCore && !core) {
            core = ReadCore(chunk, rest);
            ++place;
        } else if (chunk.id == LevelChunk::ObjectLight && !light) {
            light = ReadLight(chunk, rest);
            ++place;
        } else if (chunk.id == LevelChunk::ObjectNotes && !notes) {
            notes = ReadNotes(chunk, rest);
            ++place;
        } else {
            extras.push_back({chunk, place});
        }
    }
    if (!core) {
        throw ChunkError(offset, "an object has no description");
    }
    if (rest > 0 && told != nullptr) {
        told->push_back(RestMessage(rest, "object \"" + core->name + "\""));
    }
    SceneObject& object = data.AddLoaded(core->id);
    object.objectKind = core->kind;
    object.pendingParentId = core->parentId;
    object.SetFlags(core->flags);
    object.visible = core->visible;
    object.savedAsObject = core->savedAsObject;
    object.Info().SetClassName(core->className);
    object.name = core->name;
    object.SetMeshName(core->meshName);
    object.SetMatrix(core->matrix.m, 0);
    object.light = light;
    object.notes = notes.value_or(ObjectNotes());
    if (!light && IsLightClass(core->className)) {
        object.light.emplace();
    }
    return object;
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
