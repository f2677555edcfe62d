// Imports the bytes, a track file with its kind in front, into a film in the order in which the timeline does
// it. Whatever they say, the film holds the whole file afterwards or no key of the kind, and what was taken
// can be exported and taken again.
#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/MemoryFile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kKindBytes = 4;
constexpr int kFormerKeys = 3;

void Check(bool holds, int line = __builtin_LINE()) {
    if (!holds) {
        std::fprintf(stderr, "fuzz/TrackFile.cpp:%d: doesn't hold\n", line);
        std::abort();
    }
}

/// A level with one open film that has a track of each class, each with keys of all its kinds.
class Stand {
public:
    Stand() {
        level.New("");
        engine::ObjectSpec spec;
        spec.className = "MeshObject";
        spec.name = "Cart";
        EditorObject* cart = level.CreateObject(spec);
        film = Films().FilmAt(Films().AllocateFilm());
        for (int classId = ClassId::LevelTrack; classId <= ClassId::CameraTrack; ++classId) {
            CFilmTrack* track = film->CreateTrack(classId);
            film->AddTrack(track);
            if (CFilmObjectTrack* actor = AsObjectTrack(track)) {
                actor->SetActor(cart, false);
            }
            for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
                AddKeys(*track, kind);
            }
        }
        film->Activate();
    }

    engine::FilmManager& Films() { return level.Data()->Films(); }
    /// The actor's track for the kinds that are offered to the user, else the first that has the kind.
    CFilmTrack* TrackFor(int kind) const {
        const auto holds = [kind](CFilmTrack* track) {
            return kind >= 0 && kind < KeyKind::Count && track->subTracks[kind] != nullptr;
        };
        const auto found = std::ranges::find_if(film->tracks, holds);
        return found != film->tracks.end() ? *found : nullptr;
    }
    void Play() const {
        film->SetTime(0.0f, -1.0f);
        film->SetTime(0.75f, 0.0f);
        film->SetTime(1.0e6f, 0.75f);
        film->Stop();
    }

    engine::Level level;
    engine::Film* film = nullptr;

private:
    void AddKeys(CFilmTrack& track, int kind) {
        for (int i = 0; i < kFormerKeys; ++i) {
            IFilmKey* key = Films().keyFactory->CreateKey(kind);
            key->SetTime(0.5f * static_cast<float>(i));
            if (!track.AddKey(key)) {
                Films().keyFactory->DestroyKey(key);
            }
        }
    }
};

std::size_t CountListed(const CFilmTrack& track, int kind) {
    return static_cast<std::size_t>(
        std::ranges::count_if(track.keys, [kind](const IFilmKey* key) { return key->kind == kind; }));
}

void Import(CFilmTrack& track, int kind, fs::file& file) {
    track.ClearKind(kind);
    track.subTracks[kind]->Import(file, 0, kind);
    track.subTracks[kind]->CollectKeys(track.keys);
    track.Finish();
}

void CheckTaken(const CFilmTrack& track, int kind) {
    KeyList held;
    track.subTracks[kind]->CollectKeys(held);
    Check(held.size() == CountListed(track, kind));
    float before = -INFINITY;
    for (const IFilmKey* key : track.keys) {
        Check(key->track == &track && std::isfinite(key->time) && key->time >= before);
        before = key->time;
    }
}

std::string Export(const CFilmTrack& track, int kind) {
    engine::MemoryFile memory;
    track.subTracks[kind]->Export(memory.file, 0);
    return memory.Take();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Stand stand;
    engine::MemoryFile memory({reinterpret_cast<const char*>(data), size});
    unsigned char bytes[kKindBytes] = {};
    if (memory.file.Read(bytes, kKindBytes) != kKindBytes) {
        return 0;
    }
    const auto kind = static_cast<int>(bytes[0] | bytes[1] << 8 | bytes[2] << 16 | bytes[3] << 24);
    CFilmTrack* track = stand.TrackFor(kind);
    if (track == nullptr) {
        return 0;
    }
    const std::size_t others = stand.Films().Keys().Count() - CountListed(*track, kind);
    try {
        Import(*track, kind, memory.file);
    } catch (const fs::file_exception& error) {
        Check(error.code == fs::file_exception::kRead);
        Check(CountListed(*track, kind) == 0 && stand.Films().Keys().Count() == others);
        stand.Play();
        return 0;
    }
    CheckTaken(*track, kind);
    Check(stand.Films().Keys().Count() == others + CountListed(*track, kind));
    stand.Play();
    const std::string written = Export(*track, kind);
    engine::MemoryFile again{std::string_view(written)};
    Import(*track, kind, again.file); // throws, and so ends the run, if it can't be taken
    CheckTaken(*track, kind);
    Check(Export(*track, kind) == written);
    return 0;
}
