#include "host/stage/headless/MissingFiles.h"

#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/mesh/GltfMeshLibrary.h"
#include "host/engine/References.h"
#include "host/sound/SoundFile.h"
#include "plugin/contract/Film.h"

#include <set>

namespace headless {

namespace {

/// Sentences in the order in which they were first said.
class Sentences {
public:
    void Say(const std::string& text) {
        if (said.insert(text).second) {
            inOrder.push_back(text);
        }
    }
    std::vector<std::string> Take() { return std::move(inOrder); }

private:
    std::set<std::string> said;
    std::vector<std::string> inOrder;
};

std::string Quoted(const std::string& name) {
    return "\"" + name + "\"";
}

void CheckModels(engine::Level& level, mesh::GltfMeshLibrary& meshes, Sentences& missing) {
    for (const auto& object : level.Data()->Objects()) {
        if (!object->meshName.empty() && meshes.FindMesh(object->meshName) == nullptr) {
            missing.Say("object " + Quoted(object->name) +
                        " has no model: " + meshes.ErrorOf(object->meshName));
        }
    }
}

void CheckSound(const std::string& folder, const std::string& name, Sentences& missing) {
    const std::string path = engine::ReferencePath(folder, name);
    if (!name.empty() && sound::SoundSeconds(path) < 0.0f) {
        missing.Say("sound " + path + " can't be played");
    }
}

/// An actor without a model is told as such.
void CheckAnimation(CFilmTrack& track, const std::string& name, Sentences& missing) {
    const CFilmObjectTrack* row = AsObjectTrack(&track);
    const auto* actor = row != nullptr ? static_cast<const engine::SceneObject*>(row->actor) : nullptr;
    if (actor != nullptr && actor->Mesh() != nullptr && !name.empty() && actor->FindClip(name) < 0) {
        missing.Say("object " + Quoted(actor->name) + " has no animation " + Quoted(name));
    }
}

void CheckKey(const std::string& folder, CFilmTrack& track, const IFilmKey& key, Sentences& missing) {
    if (key.kind == KeyKind::Sound) {
        CheckSound(folder, static_cast<const CFilmSoundKey&>(key).wavPath, missing);
    } else if (key.kind == KeyKind::Speech) {
        CheckSound(folder, static_cast<const CFilmSpeechKey&>(key).speechPath, missing);
    } else if (key.kind == KeyKind::Animation) {
        CheckAnimation(track, static_cast<const CFilmAnimationKey&>(key).animationName, missing);
    }
}

} // namespace

std::vector<std::string> MissingFiles(engine::Level& level, mesh::GltfMeshLibrary& meshes,
                                      const IFilm& film) {
    Sentences missing;
    CheckModels(level, meshes, missing);
    for (CFilmTrack* track : film.tracks) {
        for (const IFilmKey* key : track->keys) {
            CheckKey(level.Folder(), *track, *key, missing);
        }
    }
    return missing.Take();
}

} // namespace headless
