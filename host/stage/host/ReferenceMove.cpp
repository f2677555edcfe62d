#include "host/stage/host/ReferenceMove.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "host/engine/References.h"

namespace stage {

ReferenceMove::ReferenceMove(engine::LevelData& data, const std::string& from, const std::string& to) {
    for (const auto& object : data.Objects()) {
        const std::string moved = engine::RebasedReference(object->meshName, from, to);
        if (moved != object->meshName) {
            meshes.push_back({object.get(), object->meshName});
            object->SetMeshName(moved);
        }
    }
    for (int slot = 0; slot < IFilmManager::kFilms; ++slot) {
        if (engine::Film* film = data.Films().FilmAt(slot)) {
            for (CFilmTrack* track : film->tracks) {
                for (IFilmKey* key : track->keys) {
                    MoveSound(*key, from, to);
                }
            }
        }
    }
}

void ReferenceMove::MoveSound(IFilmKey& key, const std::string& from, const std::string& to) {
    if (key.kind != KeyKind::Speech && key.kind != KeyKind::Sound) {
        return;
    }
    const std::string& name = key.kind == KeyKind::Speech ? static_cast<CFilmSpeechKey&>(key).speechPath
                                                          : static_cast<CFilmSoundKey&>(key).wavPath;
    const std::string moved = engine::RebasedReference(name, from, to);
    if (moved != name) {
        sounds.push_back({&key, name});
        key.SetValue(&moved);
    }
}

void ReferenceMove::Undo() {
    for (const Mesh& mesh : meshes) {
        mesh.object->SetMeshName(mesh.before);
    }
    for (const Sound& sound : sounds) {
        sound.key->SetValue(&sound.before);
    }
    meshes.clear();
    sounds.clear();
}

} // namespace stage
