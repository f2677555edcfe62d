#include "plugin/parts/LevelChunks.h"

#include "files/base/Log.h"
#include "helpers/FilmsLightHelperMgr.h"
#include "plugin/contract/Chunks.h"
#include "plugin/parts/FilmValidation.h"
#include "plugin/parts/MovieParams.h"
#include "plugin/rules/ChunkReader.h"
#include "plugin/rules/LevelChunkIds.h"
#include "plugin/session/FilmSession.h"

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

bool LevelChunks::IsOwn(std::uint16_t chunkId) {
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

bool LevelChunks::Save(fs::file& file, IHostObject* object) const {
    if (object == nullptr) {
        return false;
    }
    if (EditorObject* root = LevelRootOf(object)) {
        SaveRoot(file, root);
        return false; // Required by the host, which ignores it for this object.
    }
    if (object->IsA(ClassId::EditorObject)) {
        const CPluginFilmsParams* params = FilmSession::GetParams(static_cast<EditorObject*>(object));
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

void LevelChunks::SaveRoot(fs::file& file, EditorObject* root) const {
    WriteValidationFile(session, *root);
    WriteChunk(file, LevelChunk::TrackParams, [&] {
        WriteChunk(file, LevelChunk::ObjectParams, [&] { session.levelParams.Write(file); });
        for (const CPluginFilmsParams& params : session.cameraParams) {
            WriteChunk(file, LevelChunk::CameraParams, [&] { params.WriteWithObjectNames(file); });
        }
    });
    WriteChunk(file, LevelChunk::ViewSettings,
               [&] { file.Write(session.filmViewSettings.data(), sizeof(session.filmViewSettings)); });
    WriteChunk(file, LevelChunk::LightHelpers, [&] { lights.Save(file, session.GetFilmManager()); });
    WriteChunk(file, LevelChunk::VirtualObjects, [&] {
        for (const VirtualObjectRecord& record : virtuals) {
            WriteChunk(file, LevelChunk::VirtualObject, [&] {
                file.WriteString(record.className.c_str());
                record.object->Save(file);
            });
        }
    });
}

/// Required by the level's format: an object that is an actor in two films is written twice.
void LevelChunks::SaveVirtualActors(fs::file& file, const IFilmManager* manager) const {
    for (const IFilm* film : manager->films) {
        if (film == nullptr) {
            continue;
        }
        for (CFilmTrack* track : film->tracks) {
            const auto* objectTrack = AsObjectTrack(track);
            EditorObject* actor = objectTrack != nullptr ? objectTrack->actor : nullptr;
            if (!session.ObjectDerivesFrom(actor, ClassName::VirtualObject)) {
                continue;
            }
            const auto record = std::ranges::find(virtuals, actor, &VirtualObjectRecord::object);
            if (record == virtuals.end()) {
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

bool LevelChunks::Load(IHostObject* object, fs::file& file, std::uint16_t chunkId, std::uint32_t size) {
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
        lights.Load(file, LevelRootOf(object), size);
        return true;
    case LevelChunk::VirtualObjectsOld:
    case LevelChunk::VirtualObjects:
        LoadVirtualObjects(object, file, chunkId == LevelChunk::VirtualObjects, size);
        return true;
    default:
        return false;
    }
}

void LevelChunks::LoadViewSettings(fs::file& file, std::uint32_t size) {
    std::memset(static_cast<void*>(session.filmViewSettings.data()), 0, sizeof(session.filmViewSettings));
    const std::uint32_t kept = std::min<std::uint32_t>(size, sizeof(session.filmViewSettings));
    file.Read(session.filmViewSettings.data(), static_cast<int>(kept));
    ChunkReader(file, size - kept).SkipRest();
}

/// Required by the users' older levels: only the first sub-chunk may be of the older form.
void LevelChunks::LoadTrackParams(fs::file& file, std::uint32_t size) {
    session.levelParams.Clear();
    session.cameraParams.clear();
    bool first = true;
    ForEachSubChunk(file, size, [&](const ChunkHeader& header, std::uint32_t bytes) {
        ChunkReader reader(file, bytes);
        if (first) {
            session.levelParams.Read(reader, header.id != LevelChunk::ObjectParamsOld, "Level");
        } else {
            CPluginFilmsParams params;
            params.ReadWithObjectNames(reader, /*newForm*/ true);
            AddCameraParams(session, params);
        }
        reader.SkipRest();
        first = false;
    });
}

void LevelChunks::LoadObjectParams(IHostObject* object, fs::file& file, bool newForm, std::uint32_t size) {
    ChunkReader reader(file, size);
    if (object == nullptr || !object->IsA(ClassId::LevelObject)) {
        reader.SkipRest();
        return;
    }
    auto* owner = static_cast<EditorObject*>(object);
    auto params = std::make_unique<CPluginFilmsParams>();
    params->Read(reader, newForm, owner->name);
    delete FilmSession::GetParams(owner);
    owner->GetInfo()->SetPluginData(FilmSession::kPluginKind, params.release());
}

void LevelChunks::LoadVirtualObjects(IHostObject* object, fs::file& file, bool withClassNames,
                                     std::uint32_t size) {
    virtuals.clear();
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
            virtuals.push_back({loaded->name, loaded->meshName, className, loaded});
        }
    });
}
