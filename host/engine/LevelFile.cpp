#include "host/engine/LevelFile.h"

#include "host/engine/ByteStream.h"
#include "host/engine/ChunkClient.h"
#include "host/engine/FileHandles.h"
#include "host/engine/FilmFile.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/LevelRoot.h"
#include "host/engine/MemoryFile.h"
#include "host/engine/ObjectFile.h"

#include <limits>
#include <unordered_set>

namespace engine {

namespace {

/// Values of PendingLevel::PluginChunk::objectId besides the ids of objects.
constexpr int kInRoot = 0;
constexpr int kInFilms = -1;
constexpr int kInLevel = -2;

class HiddenObjects : public IObjectCollection {
public:
    bool Contains(const EditorObject* object) const override { return objects.count(object) != 0; }
    void Add(EditorObject* object) override { objects.insert(object); }

private:
    std::unordered_set<const EditorObject*> objects;
};

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

// Writing

std::string HeaderBytes(const LevelData& data) {
    std::string bytes;
    ByteWriter out(bytes);
    out.U32(kLevelVersion);
    out.I32(data.NextId());
    return bytes;
}

std::string PluginBytes(Level& level, IHostObject* object) {
    MemoryFile scratch;
    if (level.ChunkClient() != nullptr) {
        level.ChunkClient()->SaveChunks(scratch.file, object);
    }
    return scratch.Take();
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
    if (!films.foreignChunks.empty()) {
        std::string inner = bytes.substr(begin);
        MergeForeign(inner, films.foreignChunks);
        bytes.replace(begin, std::string::npos, inner);
    }
    EndChunkAt(bytes, begin);
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

/// The whole file. The films, which are most of it, are written in place.
std::string LevelBytes(Level& level) {
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
    if (!data.foreignChunks.empty()) {
        std::string inner = bytes.substr(begin);
        MergeForeign(inner, data.foreignChunks);
        bytes.replace(begin, std::string::npos, inner);
    }
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        throw std::length_error("the level is larger than 2 GiB");
    }
    EndChunkAt(bytes, begin);
    return bytes;
}

// Reading

/// Fills a pending level from its bytes. Damage inside one object, film or group costs that one and a
/// message; damage of the outline costs the file.
class LevelReader {
public:
    explicit LevelReader(PendingLevel& pendingLevel) : pending(pendingLevel), data(*pendingLevel.data) {}

    void Read() {
        ChunkCursor file(pending.bytes, 0);
        FoundChunk whole;
        if (!file.Next(whole) || whole.id != LevelChunk::Level) {
            throw ChunkError(0, "this is not a level file");
        }
        ChunkCursor cursor(whole.data, whole.offset);
        FoundChunk chunk;
        for (int place = 0; cursor.Next(chunk);) {
            if (ReadPart(chunk)) {
                ++place;
            } else {
                Postpone(kInLevel, chunk, place);
            }
        }
        if (!headerSeen) {
            throw ChunkError(whole.offset, "the level has no header");
        }
    }

private:
    bool ReadPart(const FoundChunk& chunk) {
        switch (chunk.id) {
        case LevelChunk::Header:
            ReadHeader(chunk);
            return true;
        case LevelChunk::Root:
            ReadRoot(chunk);
            return true;
        case LevelChunk::Objects:
            ReadObjects(chunk);
            return true;
        case LevelChunk::Films:
            ReadFilms(chunk);
            return true;
        case LevelChunk::Groups:
            ReadGroups(chunk);
            return true;
        case LevelChunk::Sun:
            ReadSun(chunk);
            return true;
        case LevelChunk::Views:
            ReadViews(chunk);
            return true;
        default:
            return false;
        }
    }

    void Tell(std::size_t offset, const std::string& what) {
        pending.messages.push_back(pending.path + ": " + what + " at byte " + std::to_string(offset));
    }

    void Postpone(int objectId, const FoundChunk& chunk, int place) {
        pending.chunks.push_back(
            {objectId, chunk.id, place, chunk.offset, static_cast<std::uint32_t>(chunk.data.size())});
    }

    void ReadHeader(const FoundChunk& chunk) {
        ByteReader in(chunk.data);
        const std::uint32_t version = in.U32();
        const std::int32_t next = in.I32();
        if (!in.Good()) {
            throw ChunkError(chunk.offset, "the level's header is cut short");
        }
        if (version != kLevelVersion) {
            throw ChunkError(chunk.offset, "the level is of version " + std::to_string(version) +
                                               ", which this program does not know");
        }
        headerSeen = true;
        data.SetNextId(next);
    }

    void ReadRoot(const FoundChunk& container) {
        ChunkCursor cursor(container.data, container.offset);
        FoundChunk chunk;
        while (cursor.Next(chunk)) {
            Postpone(kInRoot, chunk, 0);
        }
    }

    void ReadObjects(const FoundChunk& container) {
        ChunkCursor cursor(container.data, container.offset);
        FoundChunk chunk;
        while (cursor.Next(chunk)) {
            if (chunk.id != LevelChunk::Object) {
                Tell(chunk.offset, "chunk " + std::to_string(chunk.id) + " among the objects is left out");
                continue;
            }
            try {
                std::vector<ObjectExtra> extras;
                SceneObject& object = ParseObject(data, chunk.data, chunk.offset, extras);
                for (const ObjectExtra& extra : extras) {
                    Postpone(object.id, extra.chunk, extra.place);
                }
            } catch (const ChunkError& error) {
                Tell(error.offset, std::string("an object is left out: ") + error.what());
            }
        }
    }

    void ReadFilms(const FoundChunk& container) {
        ChunkCursor cursor(container.data, container.offset);
        FoundChunk chunk;
        std::vector<std::string> told;
        for (int place = 0; cursor.Next(chunk);) {
            if (chunk.id == LevelChunk::Film) {
                ReadFilm(data.Films(), chunk, told);
                ++place;
            } else {
                Postpone(kInFilms, chunk, place);
            }
        }
        for (const std::string& message : told) {
            pending.messages.push_back(pending.path + ": " + message);
        }
    }

    void ReadGroups(const FoundChunk& chunk) {
        ByteReader in(chunk.data);
        const std::uint32_t count = in.U32();
        for (std::uint32_t i = 0; i < count && in.Good(); ++i) {
            auto group = std::make_unique<Group>();
            group->name = in.Text();
            const std::uint32_t members = in.U32();
            for (std::uint32_t k = 0; k < members && in.Good(); ++k) {
                group->missingIds.push_back(in.I32());
            }
            if (in.Good()) {
                data.AddLoadedGroup(std::move(group));
            }
        }
        if (!in.Good()) {
            Tell(chunk.offset, "the groups are cut short");
        }
    }

    void ReadSun(const FoundChunk& chunk) {
        ByteReader in(chunk.data);
        data.SetSun(in.U8() != 0);
        SunObject* sun = data.Sun();
        if (sun != nullptr) {
            in.Floats(sun->direction.Data(), 3);
            in.Floats(sun->light.color.Data(), 3);
            sun->light.intensity = in.F32();
            sun->light.on = in.U8() != 0;
        }
        if (!in.Good()) {
            data.SetSun(true);
            Tell(chunk.offset, "the sun is damaged and shines as in a new level");
        }
    }

    void ReadViews(const FoundChunk& chunk) {
        ByteReader in(chunk.data);
        const std::uint32_t count = in.U32();
        for (std::uint32_t i = 0; i < count && in.Good(); ++i) {
            SavedView view;
            in.Floats(view.camera.m, 16);
            view.fieldOfView = in.F32();
            view.nearPlane = in.F32();
            view.farPlane = in.F32();
            if (in.Good()) {
                data.savedViews.push_back(view);
            }
        }
        if (!in.Good()) {
            Tell(chunk.offset, "the views are cut short");
        }
    }

    PendingLevel& pending;
    LevelData& data;
    bool headerSeen = false;
};

// Installing

IHostObject* ContainerObject(LevelData& data, int objectId) {
    if (objectId == kInFilms) {
        return &data.Films();
    }
    if (objectId == kInRoot) {
        return &data.Root();
    }
    return data.Find(objectId);
}

std::vector<RawChunk>& ForeignOf(LevelData& data, int objectId) {
    if (objectId == kInLevel) {
        return data.foreignChunks;
    }
    if (objectId == kInFilms) {
        return data.Films().foreignChunks;
    }
    SceneObject* object = data.Find(objectId);
    return object != nullptr ? object->foreignChunks : data.foreignRootChunks;
}

void GiveChunk(IChunkClient& client, LevelData& data, const PendingLevel& pending, fs::file& file,
               const PendingLevel::PluginChunk& chunk, LevelMessages& messages) {
    try {
        SeekTo(file.handle, chunk.begin);
        client.LoadChunk(ContainerObject(data, chunk.objectId), file, chunk.id, chunk.size);
    } catch (const std::exception& error) {
        messages.push_back(pending.path + ": a plug-in can't read chunk " + std::to_string(chunk.id) +
                           " at byte " + std::to_string(chunk.begin) + ": " + error.what());
    }
}

void GiveChunks(Level& level, const PendingLevel& pending, LevelMessages& messages) {
    LevelData& data = *level.Data();
    IChunkClient* client = level.ChunkClient();
    MemoryFile reader{std::string_view(pending.bytes)};
    int container = std::numeric_limits<int>::min();
    int owned = 0;
    for (const PendingLevel::PluginChunk& chunk : pending.chunks) {
        owned = chunk.objectId == container ? owned : 0;
        container = chunk.objectId;
        if (client != nullptr && chunk.objectId != kInLevel && client->IsOwnChunk(chunk.id)) {
            GiveChunk(*client, data, pending, reader.file, chunk, messages);
            ++owned;
        } else {
            ForeignOf(data, chunk.objectId)
                .push_back({chunk.id, chunk.place + owned, pending.bytes.substr(chunk.begin, chunk.size)});
        }
    }
}

void ShowViews(Level& level) {
    const auto& saved = level.Data()->savedViews;
    for (int i = 0; i < level.Views().Count() && static_cast<std::size_t>(i) < saved.size(); ++i) {
        const SavedView& from = saved[static_cast<std::size_t>(i)];
        View& view = *level.Views().At(i);
        if (IsFinite(from.camera)) {
            view.SetCamera(from.camera.m);
            view.SetProjection(from.fieldOfView, from.nearPlane, from.farPlane, 0);
        }
    }
}

} // namespace

LevelFileError::LevelFileError(const std::string& filePath, std::int64_t byteOffset, const std::string& why)
    : std::runtime_error(filePath + ": " + why +
                         (byteOffset >= 0 ? " (byte " + std::to_string(byteOffset) + ")" : "")),
      path(filePath), offset(byteOffset), reason(why) {
}

PendingLevel::PendingLevel() = default;
PendingLevel::~PendingLevel() = default;
PendingLevel::PendingLevel(PendingLevel&&) noexcept = default;
PendingLevel& PendingLevel::operator=(PendingLevel&&) noexcept = default;

PendingLevel ParseLevel(Level& level, const std::string& path, std::string bytes) {
    PendingLevel pending;
    pending.path = path;
    pending.bytes = std::move(bytes);
    pending.data = std::make_unique<LevelData>(level);
    try {
        LevelReader(pending).Read();
    } catch (const ChunkError& error) {
        throw LevelFileError(path, static_cast<std::int64_t>(error.offset), error.what());
    }
    return pending;
}

PendingLevel ReadLevel(Level& level, const std::string& path) {
    std::string bytes;
    std::string error;
    if (!ReadWholeFile(path, bytes, error)) {
        throw LevelFileError(path, -1, error);
    }
    return ParseLevel(level, path, std::move(bytes));
}

LevelMessages InstallLevel(Level& level, PendingLevel pending) {
    LevelMessages messages = std::move(pending.messages);
    level.Replace(std::move(pending.data));
    level.SetFolder(FolderOf(pending.path));
    GiveChunks(level, pending, messages);
    LevelMessages missing;
    level.Data()->Relink(missing);
    level.Data()->Films().Relink(missing);
    for (const std::string& message : missing) {
        messages.push_back(pending.path + ": " + message);
    }
    ShowViews(level);
    return messages;
}

LevelMessages LoadLevel(Level& level, const std::string& path) {
    return InstallLevel(level, ReadLevel(level, path));
}

std::string SerializeLevel(Level& level, const std::string& path, LevelMessages&) {
    if (level.Data() == nullptr) {
        throw LevelFileError(path, -1, "there is no level");
    }
    try {
        return LevelBytes(level);
    } catch (const std::length_error& error) {
        throw LevelFileError(path, -1, error.what());
    } catch (const std::exception& error) {
        throw LevelFileError(path, -1, std::string("a plug-in can't write its part: ") + error.what());
    }
}

LevelMessages SaveLevel(Level& level, const std::string& path) {
    LevelMessages messages;
    const std::string folder = level.Folder();
    // Plug-ins write files of their own beside the level, by the root object's name.
    level.SetFolder(FolderOf(path));
    std::string error;
    try {
        const std::string bytes = SerializeLevel(level, path, messages);
        if (!ReplaceFile(path, bytes, error)) {
            throw LevelFileError(path, -1, error);
        }
    } catch (...) {
        level.SetFolder(folder);
        throw;
    }
    return messages;
}

} // namespace engine
