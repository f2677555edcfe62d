#include "host/engine/LevelFile.h"
#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"

#include <cstdint>
#include <cstdlib>

namespace {

void UseFilms(engine::Level& level) {
    for (int i = 0; i < IFilmManager::kFilms; ++i) {
        if (engine::Film* film = level.Data()->Films().FilmAt(i)) {
            film->Activate();
            film->SetTime(0.5f, -1.0f);
            film->SetTime(1.0f, 0.5f);
            film->Stop();
            film->Deactivate();
        }
    }
}

} // namespace

/// Opens the bytes as a level without plug-ins, plays its films, saves it and opens it again: what was opened
/// once can always be saved and opened.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    engine::Level level;
    try {
        const std::string bytes(reinterpret_cast<const char*>(data), size);
        engine::InstallLevel(level, engine::ParseLevel(level, "fuzz", bytes));
    } catch (const engine::LevelFileError&) {
        return 0;
    }
    UseFilms(level);
    engine::LevelMessages messages;
    try {
        const std::string saved = engine::SerializeLevel(level, "fuzz", messages);
        engine::InstallLevel(level, engine::ParseLevel(level, "fuzz", saved));
    } catch (const engine::LevelFileError&) {
        std::abort();
    }
    return 0;
}
