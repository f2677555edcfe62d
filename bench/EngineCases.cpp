#include "bench/EngineCases.h"

#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"

#include <cmath>
#include <ctime>
#include <malloc.h>
#include <random>

namespace films_bench {

float KeyValue(int object, int channel, int key, int axis) {
    const float wave = std::sin(static_cast<float>(object * 7 + channel * 3 + key * (axis + 1)) * 0.37f);
    return channel == 2 ? 1.0f + 0.1f * wave : 20.0f * wave;
}

double ProcessorSeconds() {
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

void StartCold() {
    malloc_trim(0);
}

std::vector<float> RandomTimes(const Case& size) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> spread(0.0f, static_cast<float>(size.keys - 1) * kKeySeconds);
    std::vector<float> times(kFrames);
    for (float& time : times) {
        time = spread(random);
    }
    return times;
}

EngineFilm::EngineFilm(const Case& filmSize) : size(filmSize) {
    level.New("");
    for (int i = 0; i < size.objects; ++i) {
        engine::ObjectSpec spec;
        spec.className = "MeshObject";
        spec.name = "Object" + std::to_string(i);
        level.Data()->AddLoaded(0).name = spec.name;
    }
    engine::FilmManager& films = level.Data()->Films();
    film = films.FilmAt(films.AllocateFilm());
    film->AddTrack(film->CreateLevelTrack());
    film->Activate();
}

EngineFilm::~EngineFilm() = default;

void EngineFilm::Build() {
    IKeyFactory& factory = *level.Data()->Films().keyFactory;
    for (int object = 0; object < size.objects; ++object) {
        CFilmObjectTrack* track = AsObjectTrack(film->CreateObjectTrack());
        film->AddTrack(track);
        tracks.push_back(track);
        track->SetActor(level.Data()->Objects()[static_cast<std::size_t>(object)].get(), false);
        for (int channel = 0; channel < kChannels; ++channel) {
            for (int k = 0; k < size.keys; ++k) {
                IFilmKey* key = factory.CreateKey(KeyKind::Position + channel);
                const float value[3] = {KeyValue(object, channel, k, 0), KeyValue(object, channel, k, 1),
                                        KeyValue(object, channel, k, 2)};
                key->SetTime(static_cast<float>(k) * kKeySeconds);
                key->SetValue(value);
                track->AddKey(key);
            }
        }
    }
}

} // namespace films_bench
