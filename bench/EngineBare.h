#pragma once

#include "bench/EngineCases.h"
#include "host/engine/Math.h"

#include <list>
#include <memory_resource>
#include <string_view>

namespace films_bench {

/// What a hand-written loop over plain arrays does for the same film: each channel keeps its last Bezier
/// segment, looks for the next by binary search and shapes it as the engine's Smooth method does; each
/// object's three channels make its matrix.
class BareFilm {
public:
    explicit BareFilm(const Case& size);
    void Pose(float time);

    std::vector<engine::Matrix4> matrices;

private:
    struct Key {
        float value[3];
    };
    struct Channel {
        float start = 1.0f;
        float end = 0.0f;
        float inverse = 0.0f;
        float c[4][3] = {};
        std::vector<float> times;
        std::vector<Key> keys;

        void Evaluate(float time, float* out);
        void Locate(float time);
        void Velocity(std::size_t key, float* out) const;
    };

    std::vector<Channel> channels;
};

/// A record of a vector key's size.
struct BareRecord {
    void* track;
    std::uint32_t flags;
    float time;
    float endTime;
    std::int32_t kind;
    float value[3];
    float inHandle[3];
    float outHandle[3];
    std::int32_t methods[2];
    void* spare;
};
static_assert(sizeof(BareRecord) == 80);

/// The least that building a case costs: a malloc'ed record a key and a node in each of two lists.
class BareRecords {
public:
    ~BareRecords();
    void Build(const Case& size);

private:
    std::list<BareRecord*> all;
    std::list<BareRecord*> byKind;
};

/// The least that loading costs: the file in one piece, then each key decoded into an arena, with a node in
/// each of two lists.
class ArenaLevel {
public:
    void Load(const std::string& path);
    std::size_t KeyCount() const { return all.size(); }

private:
    void DecodeChunks(std::string_view bytes);
    void DecodeKeys(std::string_view data);

    std::pmr::monotonic_buffer_resource arena{64 * 1024};
    std::pmr::list<BareRecord*> all{&arena};
    std::pmr::list<BareRecord*> byKind{&arena};
};

} // namespace films_bench
