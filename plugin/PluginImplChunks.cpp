#include "plugin/PluginImpl.h"

#include "files/Log.h"
#include "plugin/contract/Chunks.h"
#include "plugin/LevelChunkIds.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

template <class Body> void WriteChunk(fs::file& file, std::uint16_t id, Body body) {
    ChunkSaveStart(file, id);
    body();
    ChunkSaveEnd(file, id);
}

/// Bytes that are kept of a class name in the file, as of a buffer of 256 with its terminator.
constexpr std::size_t kLongestClassName = 255;

/// While an object is written for the game it has its real class; afterwards, also when the file fails, it is
/// virtual again.
class RealClassWhileSaving {
public:
    RealClassWhileSaving(EditorObjectInfo& objectInfo, const std::string& realClass) : info(objectInfo) {
        info.saveClassName = realClass;
    }
    ~RealClassWhileSaving() { info.SetClassName(ClassName::VirtualObject); }
    RealClassWhileSaving(const RealClassWhileSaving&) = delete;
    RealClassWhileSaving& operator=(const RealClassWhileSaving&) = delete;

private:
    EditorObjectInfo& info;
};

/// The object that reads other objects from the file, null for any other object.
EditorObject* LevelRootOf(IHostObject* object) {
    return object != nullptr && object->IsA(ClassId::LevelRoot) ? static_cast<EditorObject*>(object)
                                                                : nullptr;
}

} // namespace

bool IPluginImpl::IsOwnChunk(Word, std::uint16_t chunkId) {
    switch (chunkId) {
    case LevelChunk::VirtualObjectsOld:
    case LevelChunk::VirtualObjects:
    case LevelChunk::GameVirtualObject:
    case LevelChunk::TrackParams:
    case LevelChunk::ObjectParamsOld:
    case LevelChunk::LightHelpers:
    case LevelChunk::ObjectParams:
    case LevelChunk::ViewSettings:
        return true;
    default:
        return false;
    }
}

bool IPluginImpl::SaveChunks(fs::file& file, IHostObject* object) {
    if (object == nullptr) {
        return false;
    }
    if (EditorObject* root = LevelRootOf(object)) {
        SaveRootChunks(file, root);
        return false; // Required: the host ignores it.
    }
    if (object->IsA(ClassId::EditorObject)) {
        const CPluginFilmsParams* params = GetParams(static_cast<EditorObject*>(object));
        if (params != nullptr) {
            WriteChunk(file, LevelChunk::ObjectParams, [&] { params->Write(file); });
        }
        return params != nullptr;
    }
    if (object->IsA(ClassId::FilmManager)) {
        SaveVirtualActors(file, static_cast<IFilmManager*>(object));
        return true;
    }
    return false;
}

void IPluginImpl::SaveRootChunks(fs::file& file, EditorObject* root) {
    WriteValidationFile(*root);
    WriteChunk(file, LevelChunk::TrackParams, [&] {
        WriteChunk(file, LevelChunk::ObjectParams, [&] { levelParams.Write(file); });
        for (const CPluginFilmsParams& params : cameraParams) {
            WriteChunk(file, LevelChunk::CameraParams, [&] { params.WriteWithObjectNames(file); });
        }
    });
    WriteChunk(file, LevelChunk::ViewSettings,
               [&] { file.Write(filmViewSettings.data(), sizeof(filmViewSettings)); });
    WriteChunk(file, LevelChunk::LightHelpers, [&] { lightHelpers.Save(file, GetFilmManager()); });
    WriteChunk(file, LevelChunk::VirtualObjects, [&] {
        for (const VirtualObjectRecord& record : virtualObjects) {
            WriteChunk(file, LevelChunk::VirtualObject, [&] {
                file.WriteString(record.className.c_str());
                record.object->Save(file);
            });
        }
    });
}

/// Required: an object that is an actor in two films is written twice.
void IPluginImpl::SaveVirtualActors(fs::file& file, IFilmManager* manager) {
    for (const IFilm* film : manager->films) {
        if (film == nullptr) {
            continue;
        }
        for (CFilmTrack* track : film->tracks) {
            const auto* objectTrack = AsObjectTrack(track);
            EditorObject* actor = objectTrack != nullptr ? objectTrack->actor : nullptr;
            if (!ObjectDerivesFrom(actor, ClassName::VirtualObject)) {
                continue;
            }
            const auto record = std::ranges::find(virtualObjects, actor, &VirtualObjectRecord::object);
            if (record == virtualObjects.end()) {
                DebugPrint("Cannot find VirtualObjectHelper for object: %s\n", actor->name.c_str());
                continue;
            }
            WriteChunk(file, LevelChunk::GameVirtualObject, [&] {
                const RealClassWhileSaving realClass(*actor->GetInfo(), record->className);
                actor->Save(file);
            });
        }
    }
}

bool IPluginImpl::LoadChunk(IHostObject* object, fs::file& file, std::uint16_t chunkId, std::uint32_t size) {
    switch (chunkId) {
    case LevelChunk::ViewSettings:
        LoadViewSettings(file, size);
        return true;
    case LevelChunk::TrackParams:
        LoadTrackParams(file, size);
        return true;
    case LevelChunk::ObjectParamsOld:
    case LevelChunk::ObjectParams:
        LoadObjectParams(object, file, chunkId == LevelChunk::ObjectParams, size);
        return true;
    case LevelChunk::LightHelpers:
        lightHelpers.Load(file, LevelRootOf(object), size);
        return true;
    case LevelChunk::VirtualObjectsOld:
    case LevelChunk::VirtualObjects:
        LoadVirtualObjects(object, file, chunkId == LevelChunk::VirtualObjects, size);
        return true;
    default:
        return false;
    }
}

void IPluginImpl::LoadViewSettings(fs::file& file, std::uint32_t size) {
    std::memset(static_cast<void*>(filmViewSettings.data()), 0, sizeof(filmViewSettings));
    const std::uint32_t kept = std::min<std::uint32_t>(size, sizeof(filmViewSettings));
    file.Read(filmViewSettings.data(), static_cast<int>(kept));
    ChunkReader(file, size - kept).SkipRest();
}

/// Required: only the first sub-chunk may be of the older form.
void IPluginImpl::LoadTrackParams(fs::file& file, std::uint32_t size) {
    levelParams.Clear();
    cameraParams.clear();
    bool first = true;
    ForEachSubChunk(file, size, [&](const ChunkHeader& header, std::uint32_t bytes) {
        ChunkReader reader(file, bytes);
        if (first) {
            levelParams.Read(reader, header.id != LevelChunk::ObjectParamsOld, "Level");
        } else {
            CPluginFilmsParams params;
            params.ReadWithObjectNames(reader, /*newForm*/ true);
            AddCameraParams(params);
        }
        reader.SkipRest();
        first = false;
    });
}

void IPluginImpl::LoadObjectParams(IHostObject* object, fs::file& file, bool newForm, std::uint32_t size) {
    ChunkReader reader(file, size);
    if (object == nullptr || !object->IsA(ClassId::LevelObject)) {
        reader.SkipRest();
        return;
    }
    auto* owner = static_cast<EditorObject*>(object);
    auto params = std::make_unique<CPluginFilmsParams>();
    params->Read(reader, newForm, owner->name);
    delete GetParams(owner);
    owner->GetInfo()->SetPluginData(kPluginKind, params.release());
}

void IPluginImpl::LoadVirtualObjects(IHostObject* object, fs::file& file, bool withClassNames,
                                     std::uint32_t size) {
    virtualObjects.clear();
    EditorObject* root = LevelRootOf(object);
    ForEachSubChunk(file, size, [&](const ChunkHeader&, std::uint32_t bytes) {
        ChunkReader reader(file, bytes);
        std::string className = ClassName::Mesh;
        if (root == nullptr || (withClassNames && !reader.ReadString(className))) {
            reader.SkipRest();
            return;
        }
        className.resize(std::min(className.find('\0'), std::min(className.size(), kLongestClassName)));
        const auto objectBytes = static_cast<std::uint32_t>(reader.Left());
        if (EditorObject* loaded = root->LoadObject(file, objectBytes, ClassId::EditorObject, root)) {
            virtualObjects.push_back({loaded->name, loaded->meshName, className, loaded});
        }
    });
}

/// Only the first record decides whether the store is known; an empty store always enters.
void IPluginImpl::AddCameraParams(const CPluginFilmsParams& params) {
    if (!params.records.empty()) {
        const MovieParamsRecord& first = params.records.front();
        for (CPluginFilmsParams& known : cameraParams) {
            if (known.Find(first.filmName, first.objectName, nullptr) != nullptr) {
                return;
            }
        }
    }
    cameraParams.push_back(params);
}

void IPluginImpl::DeleteMovieParams(IFilm* film) {
    if (film == nullptr) {
        DebugPrint("[IPluginImpl::DeleteMovieParams] Film doesn't exist\n");
        return;
    }
    levelParams.RemoveFilm(film->name);
    for (CPluginFilmsParams& params : cameraParams) {
        params.RemoveFilm(film->name);
    }
    for (CFilmTrack* track : film->tracks) {
        const auto* objectTrack = AsObjectTrack(track);
        if (objectTrack == nullptr) {
            continue;
        }
        if (objectTrack->actor == nullptr) {
            DebugPrint("[IPluginImpl::DeleteMovieParams] Object not found for film %s\n", film->name);
        } else if (CPluginFilmsParams* params = GetParams(objectTrack->actor)) {
            params->RemoveFilm(film->name);
        } else {
            DebugPrint("[IPluginImpl::DeleteMovieParams] Params not found for object %s\n",
                       objectTrack->actor->name.c_str());
        }
    }
}
