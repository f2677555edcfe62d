#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/LevelFile.h"

#include <cstdio>
#include <string>

namespace {

/// One key of each kind on a track of each class, objects in a hierarchy, a group.
void FillLevel(engine::Level& level) {
    engine::ObjectSpec spec;
    spec.className = "MeshObject";
    spec.name = "Cart";
    spec.meshName = "cart.glb";
    engine::SceneObject& cart = *level.CreateObject(spec);
    spec.name = "Crate";
    spec.parent = &cart;
    engine::SceneObject& crate = *level.CreateObject(spec);
    level.Data()->MakeGroup("Pair", {&cart, &crate});
    engine::FilmManager& films = level.Data()->Films();
    engine::Film& film = *films.FilmAt(films.AllocateFilm());
    film.SetName("Film");
    for (int classId = ClassId::LevelTrack; classId <= ClassId::CameraTrack; ++classId) {
        CFilmTrack* track = film.CreateTrack(classId);
        film.AddTrack(track);
        for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
            IFilmKey* key = films.keyFactory->CreateKey(kind);
            key->SetTime(0.25f * static_cast<float>(kind));
            key->SetLinkObject(&cart);
            if (!track->AddKey(key)) {
                films.keyFactory->DestroyKey(key);
            }
        }
    }
    AsObjectTrack(*std::next(film.tracks.begin()))->SetActor(&crate, false);
    AsObjectTrack(*std::next(film.tracks.begin()))->SetParent(&cart, false, "wheel");
}

} // namespace

/// Writes the seeds of the level fuzzer into a folder.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: films_fuzz_level_corpus FOLDER\n");
        return 1;
    }
    const std::string folder = std::string(argv[1]) + "/";
    engine::Level level;
    try {
        level.New(folder);
        engine::SaveLevel(level, folder + "empty.level");
        FillLevel(level);
        engine::SaveLevel(level, folder + "sample.level");
        level.Data()->foreignChunks.push_back({7777, 1, "foreign"});
        level.Data()->foreignRootChunks.push_back({5780, 0, "of a plug-in"});
        engine::SaveLevel(level, folder + "foreign.level");
    } catch (const engine::LevelFileError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
