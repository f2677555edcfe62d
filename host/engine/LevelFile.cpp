#include "host/engine/LevelFile.h"

#include "host/engine/ChunkClient.h"
#include "host/engine/FileHandles.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/LevelReader.h"
#include "host/engine/LevelRoot.h"
#include "host/engine/LevelWriter.h"
#include "host/engine/MemoryFile.h"
#include "host/engine/References.h"
#include "processor/UpperHalves.h"

#include <limits>
#include <stdexcept>

namespace engine {

namespace {

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

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
    processor::ClearUpperHalves();
    PendingLevel pending;
    pending.path = path;
    pending.folder = FolderOf(path);
    pending.bytes = std::move(bytes);
    pending.data = std::make_unique<LevelData>(level);
    try {
        LevelReader(pending, *pending.data).Read();
    } catch (const ChunkError& error) {
        throw LevelFileError(path, static_cast<std::int64_t>(error.offset), error.what());
    }
    return pending;
}

PendingLevel ReadLevel(Level& level, const std::string& path) {
    std::string bytes;
    std::string error;
    FileStamp stamp;
    if (!ReadWholeFile(path, bytes, error, &stamp)) {
        throw LevelFileError(path, -1, error);
    }
    PendingLevel pending = ParseLevel(level, AbsolutePath(path), std::move(bytes));
    pending.folder = LevelFolder(path);
    pending.stamp = stamp;
    return pending;
}

LevelMessages InstallLevel(Level& level, PendingLevel pending) {
    LevelMessages messages = std::move(pending.messages);
    level.Replace(std::move(pending.data));
    level.SetFolder(pending.folder);
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

LevelMessages RefillLevel(Level& level, std::string bytes) {
    processor::ClearUpperHalves();
    PendingLevel pending;
    pending.path = "the level";
    pending.bytes = std::move(bytes);
    LevelData& data = *level.Data();
    std::string behind = std::move(data.bytesBehind);
    data.Empty();
    LevelReader(pending, data).Read();
    data.bytesBehind = std::move(behind);
    LevelMessages messages = std::move(pending.messages);
    GiveChunks(level, pending, messages);
    data.Relink(messages);
    data.Films().Relink(messages);
    data.Films().DropEmptied();
    return messages;
}

LevelMessages LoadLevel(Level& level, const std::string& path) {
    return InstallLevel(level, ReadLevel(level, path));
}

std::string SerializeLevel(Level& level, const std::string& path, LevelMessages&) {
    if (level.Data() == nullptr) {
        throw LevelFileError(path, -1, "there is no level");
    }
    processor::ClearUpperHalves();
    try {
        return WriteLevelBytes(level);
    } catch (const std::length_error& error) {
        throw LevelFileError(path, -1, error.what());
    } catch (const std::exception& error) {
        throw LevelFileError(path, -1, std::string("a plug-in can't write its part: ") + error.what());
    }
}

LevelMessages SaveLevel(Level& level, const std::string& path, FileStamp* written) {
    LevelMessages messages;
    const std::string folder = level.Folder();
    // Plug-ins write files of their own beside the level, by the root object's name.
    level.SetFolder(LevelFolder(path));
    std::string error;
    Replaced done;
    try {
        const std::string bytes = SerializeLevel(level, path, messages);
        if (!ReplaceFile(path, bytes, error, &done)) {
            throw LevelFileError(path, -1, error);
        }
        if (written != nullptr) {
            *written = done.stamp;
        }
    } catch (...) {
        level.SetFolder(folder);
        throw;
    }
    messages.insert(messages.end(), done.messages.begin(), done.messages.end());
    return messages;
}

} // namespace engine
