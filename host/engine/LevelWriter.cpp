#include "host/engine/LevelWriter.h"

#include "host/engine/ByteStream.h"
#include "host/engine/ChunkClient.h"
#include "host/engine/FilmFile.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/LevelFormat.h"
#include "host/engine/LevelRoot.h"
#include "host/engine/MemoryFile.h"

#include <limits>
#include <stdexcept>
#include <unordered_set>

namespace engine {

std::string PluginBytes(Level& level, IHostObject* object) {
    MemoryFile scratch;
    if (level.ChunkClient() != nullptr) {
        level.ChunkClient()->SaveChunks(scratch.file, object);
    }
    return scratch.Take();
}

std::string GroupsBytes(const LevelData& data) {
    std::string bytes;
    ByteWriter out(bytes);
    out.U32(static_cast<std::uint32_t>(data.Groups().size()));
    for (const auto& group : data.Groups()) {
        out.Text(group->name);
        out.U32(static_cast<std::uint32_t>(group->members.size() + group->missingIds.size()));
        for (const SceneObject* member : group->members) {
            out.I32(member->id);
        }
        for (const int id : group->missingIds) {
            out.I32(id);
        }
    }
    return bytes;
}

std::string SunBytes(const LevelData& data) {
    std::string bytes;
    ByteWriter out(bytes);
    const SunObject* sun = data.Sun();
    out.U8(sun != nullptr ? 1 : 0);
    if (sun != nullptr) {
        out.Floats(sun->direction.Data(), 3);
        out.Floats(sun->light.color.Data(), 3);
        out.F32(sun->light.intensity);
        out.U8(sun->light.on ? 1 : 0);
    }
    return bytes;
}

namespace {

class HiddenObjects : public IObjectCollection {
public:
    bool Contains(const EditorObject* object) const override { return objects.count(object) != 0; }
    void Add(EditorObject* object) override { objects.insert(object); }

private:
    std::unordered_set<const EditorObject*> objects;
};

std::string HeaderBytes(const LevelData& data) {
    std::string bytes;
    ByteWriter out(bytes);
    out.U32(kLevelVersion);
    out.I32(data.NextId());
    return bytes;
}

std::string RootBytes(Level& level) {
    std::string bytes = PluginBytes(level, &level.Data()->Root());
    MergeForeign(bytes, level.Data()->foreignRootChunks);
    return bytes;
}

std::string ObjectsBytes(LevelData& data, const HiddenObjects& hidden) {
    std::string bytes;
    for (const auto& object : data.Objects()) {
        if (object->transient || object->savedAsObject == 0 || hidden.Contains(object.get())) {
            continue;
        }
        MemoryFile scratch;
        object->Save(scratch.file);
        AppendChunk(bytes, LevelChunk::Object, scratch.Take());
    }
    return bytes;
}

void AppendFilms(Level& level, std::string& bytes) {
    FilmManager& films = level.Data()->Films();
    const std::size_t begin = BeginChunkAt(bytes, LevelChunk::Films);
    bytes.reserve(bytes.size() + FilmsSizeGuess(films));
    WriteFilms(films, bytes);
    bytes += PluginBytes(level, &films);
    MergeForeignAt(bytes, begin, films.foreignChunks);
    EndChunkAt(bytes, begin);
}

std::string ViewsBytes(Level& level) {
    // A host that shows fewer views than the file told of keeps the others as they were.
    std::vector<SavedView> views = level.Data()->savedViews;
    for (int i = 0; i < level.Views().Count(); ++i) {
        const View& view = *level.Views().At(i);
        const SavedView saved{MatrixFrom(view.CameraMatrix()), view.GetFieldOfView(),
                              view.camera->data.recordNear, view.camera->data.recordFar};
        if (static_cast<std::size_t>(i) < views.size()) {
            views[static_cast<std::size_t>(i)] = saved;
        } else {
            views.push_back(saved);
        }
    }
    std::string bytes;
    ByteWriter out(bytes);
    out.U32(static_cast<std::uint32_t>(views.size()));
    for (const SavedView& view : views) {
        out.Floats(view.camera.m, 16);
        out.F32(view.fieldOfView);
        out.F32(view.nearPlane);
        out.F32(view.farPlane);
    }
    return bytes;
}

std::string BookmarksBytes(const LevelData& data) {
    std::string bytes;
    ByteWriter out(bytes);
    out.U32(static_cast<std::uint32_t>(data.bookmarks.size()));
    for (const auto& [number, mark] : data.bookmarks) {
        out.I32(number);
        out.Floats(mark.pivot.Data(), 3);
        out.F32(mark.yaw);
        out.F32(mark.pitch);
        out.F32(mark.distance);
        out.F32(mark.fieldOfView);
    }
    return bytes;
}

} // namespace

/// The films, which are most of it, are written in place.
std::string WriteLevelBytes(Level& level) {
    LevelData& data = *level.Data();
    HiddenObjects hidden;
    if (level.ChunkClient() != nullptr) {
        level.ChunkClient()->CollectHiddenObjects(hidden);
    }
    std::string bytes;
    const std::size_t begin = BeginChunkAt(bytes, LevelChunk::Level);
    AppendChunk(bytes, LevelChunk::Header, HeaderBytes(data));
    AppendChunk(bytes, LevelChunk::Root, RootBytes(level));
    AppendChunk(bytes, LevelChunk::Objects, ObjectsBytes(data, hidden));
    AppendFilms(level, bytes);
    AppendChunk(bytes, LevelChunk::Groups, GroupsBytes(data));
    AppendChunk(bytes, LevelChunk::Sun, SunBytes(data));
    AppendChunk(bytes, LevelChunk::Views, ViewsBytes(level));
    if (!data.bookmarks.empty()) {
        AppendChunk(bytes, LevelChunk::Bookmarks, BookmarksBytes(data));
    }
    MergeForeignAt(bytes, begin, data.foreignChunks);
    if (bytes.size() + data.bytesBehind.size() >
        static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        throw std::length_error("the level is larger than 2 GiB");
    }
    EndChunkAt(bytes, begin);
    bytes += data.bytesBehind;
    return bytes;
}

} // namespace engine
