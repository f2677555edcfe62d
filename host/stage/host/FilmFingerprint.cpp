#include "host/stage/host/FilmFingerprint.h"

#include "host/engine/FileHandles.h"
#include "plugin/contract/FilmManager.h"

#include <string>
#include <type_traits>

namespace stage {

namespace {

/// FNV-1a over what it is fed.
class Hash {
public:
    void Bytes(const void* bytes, std::size_t size) {
        const auto* byte = static_cast<const unsigned char*>(bytes);
        for (std::size_t i = 0; i < size; ++i) {
            state = (state ^ byte[i]) * 1099511628211ULL;
        }
    }
    void Text(const std::string& text) {
        Number(text.size());
        Bytes(text.data(), text.size());
    }
    template <class Value> void Number(Value value) {
        static_assert(std::is_arithmetic_v<Value>);
        Bytes(&value, sizeof(value));
    }
    std::uint64_t state = 1469598103934665603ULL;
};

int IdOf(const EditorObject* object) {
    return object != nullptr ? object->id : 0;
}

int ClassOf(const CFilmTrack& track) {
    for (int classId = ClassId::LevelTrack; classId <= ClassId::CameraTrack; ++classId) {
        if (track.IsA(classId)) {
            return classId;
        }
    }
    return 0;
}

void AddCamera(Hash& hash, const CFilmCameraTrack& camera) {
    for (int i = 0; i < CFilmCameraTrack::kSubTracks; ++i) {
        hash.Number(camera.loopMode[i]);
        hash.Number(camera.subTrackLength[i]);
    }
    hash.Number(camera.fieldOfView);
    hash.Number(camera.nearPlane);
    hash.Number(camera.farPlane);
    hash.Text(camera.cameraName);
}

void AddKeys(Hash& hash, const CFilmTrack& track) {
    fs::file file;
    file.handle = engine::OpenMemoryForWriting();
    for (MKTrack* keys : track.subTracks) {
        if (keys != nullptr) {
            keys->Export(file, 0);
        }
    }
    hash.Text(engine::TakeWritten(file.handle));
}

void AddTrack(Hash& hash, CFilmTrack& track) {
    hash.Number(ClassOf(track));
    if (const CFilmObjectTrack* object = AsObjectTrack(&track)) {
        hash.Number(IdOf(object->actor));
        hash.Number(IdOf(object->parentObject));
        hash.Text(object->parentElement);
    }
    if (const CFilmCameraTrack* camera = AsCameraTrack(&track)) {
        AddCamera(hash, *camera);
    }
    AddKeys(hash, track);
}

} // namespace

std::uint64_t FilmFingerprint(const IFilmManager* manager) {
    Hash hash;
    for (int slot = 0; manager != nullptr && slot < IFilmManager::kFilms; ++slot) {
        const IFilm* film = manager->films[slot];
        if (film == nullptr) {
            continue;
        }
        hash.Number(slot);
        hash.Text(film->name != nullptr ? film->name : "");
        hash.Number(film->length);
        for (CFilmTrack* track : film->tracks) {
            AddTrack(hash, *track);
        }
    }
    return hash.state;
}

} // namespace stage
