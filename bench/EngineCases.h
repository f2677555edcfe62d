#pragma once

#include "host/engine/Film.h"
#include "host/engine/Level.h"

#include <memory>
#include <string>
#include <vector>

namespace films_bench {

/// Size of a film: so many objects with a position, a rotation and a scale channel of so many keys each.
struct Case {
    const char* name;
    int objects;
    int keys;
};

constexpr int kChannels = 3;
constexpr int kFrames = 300;
constexpr float kFrameSeconds = 1.0f / 30.0f;
constexpr float kKeySeconds = 0.2f; ///< between neighbouring keys

constexpr Case kSmall{"S", 20, 50};
constexpr Case kMedium{"M", 200, 500};
constexpr Case kWide{"W", 2000, 50};

inline int KeyCount(const Case& size) {
    return size.objects * kChannels * size.keys;
}
/// The value of component `axis` of a key, the same for the engine and for the bare loops.
float KeyValue(int object, int channel, int key, int axis);
/// Processor time of this thread: other programs hardly count in it.
double ProcessorSeconds();
/// Gives the heap's free memory back to the system, so that what follows starts as in a fresh program: else
/// one side of a ratio may find its memory warm from the round before and the other not.
void StartCold();
/// 300 times in no order over the film of a case.
std::vector<float> RandomTimes(const Case& size);

/// A level with a film of a case.
class EngineFilm {
public:
    /// Objects only; Build adds the tracks and keys.
    explicit EngineFilm(const Case& filmSize);
    ~EngineFilm();

    void Build();
    engine::Level level;
    engine::Film* film = nullptr;
    std::vector<CFilmTrack*> tracks;
    Case size;
};

} // namespace films_bench
