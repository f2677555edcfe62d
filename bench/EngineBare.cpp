#include "bench/EngineBare.h"

#include "host/engine/ByteStream.h"
#include "host/engine/FileHandles.h"
#include "host/engine/LevelFormat.h"

#include <algorithm>
#include <cstdlib>

namespace films_bench {

BareFilm::BareFilm(const Case& size) : matrices(static_cast<std::size_t>(size.objects)) {
    for (int object = 0; object < size.objects; ++object) {
        for (int channel = 0; channel < kChannels; ++channel) {
            Channel& made = channels.emplace_back();
            for (int k = 0; k < size.keys; ++k) {
                made.times.push_back(static_cast<float>(k) * kKeySeconds);
                made.keys.push_back({{KeyValue(object, channel, k, 0), KeyValue(object, channel, k, 1),
                                      KeyValue(object, channel, k, 2)}});
            }
        }
    }
}

void BareFilm::Channel::Velocity(std::size_t key, float* out) const {
    const std::size_t before = key > 0 ? key - 1 : key;
    const std::size_t after = key + 1 < keys.size() ? key + 1 : key;
    const float gapBefore = times[key] - times[before];
    const float gapAfter = times[after] - times[key];
    for (int i = 0; i < 3; ++i) {
        const float left = gapBefore > 0.0f ? (keys[key].value[i] - keys[before].value[i]) / gapBefore : 0.0f;
        const float right = gapAfter > 0.0f ? (keys[after].value[i] - keys[key].value[i]) / gapAfter : 0.0f;
        out[i] = gapBefore > 0.0f && gapAfter > 0.0f
                     ? (left * gapAfter + right * gapBefore) / (gapBefore + gapAfter)
                     : left + right;
    }
}

void BareFilm::Channel::Locate(float time) {
    auto index = static_cast<std::size_t>(std::upper_bound(times.begin(), times.end(), time) - times.begin());
    index = std::clamp<std::size_t>(index, 1, times.size() - 1) - 1;
    const float* a = keys[index].value;
    const float* b = keys[index + 1].value;
    float leave[3];
    float arrive[3];
    Velocity(index, leave);
    Velocity(index + 1, arrive);
    start = times[index];
    end = times[index + 1];
    inverse = 1.0f / (end - start);
    const float third = (end - start) / 3.0f;
    for (int i = 0; i < 3; ++i) {
        const float out = a[i] + leave[i] * third;
        const float in = b[i] - arrive[i] * third;
        c[0][i] = a[i];
        c[1][i] = 3.0f * (out - a[i]);
        c[2][i] = 3.0f * (a[i] - 2.0f * out + in);
        c[3][i] = b[i] - a[i] + 3.0f * (out - in);
    }
}

void BareFilm::Channel::Evaluate(float time, float* out) {
    if (!(time >= start && time < end)) {
        Locate(time);
    }
    const float u = (time - start) * inverse;
    for (int i = 0; i < 3; ++i) {
        out[i] = c[0][i] + u * (c[1][i] + u * (c[2][i] + u * c[3][i]));
    }
}

void BareFilm::Pose(float time) {
    for (std::size_t object = 0; object < matrices.size(); ++object) {
        Vector3 position;
        Vector3 rotation;
        Vector3 scale;
        channels[3 * object].Evaluate(time, position.Data());
        channels[3 * object + 1].Evaluate(time, rotation.Data());
        channels[3 * object + 2].Evaluate(time, scale.Data());
        matrices[object] = engine::Compose(position, rotation, scale);
    }
}

void BareRecords::Build(const Case& size) {
    for (int object = 0; object < size.objects; ++object) {
        for (int channel = 0; channel < kChannels; ++channel) {
            for (int k = 0; k < size.keys; ++k) {
                auto* record = static_cast<BareRecord*>(std::calloc(1, sizeof(BareRecord)));
                record->kind = KeyKind::Position + channel;
                record->time = static_cast<float>(k) * kKeySeconds;
                for (int axis = 0; axis < 3; ++axis) {
                    record->value[axis] = KeyValue(object, channel, k, axis);
                }
                all.push_back(record);
                byKind.push_back(record);
            }
        }
    }
}

BareRecords::~BareRecords() {
    for (BareRecord* record : all) {
        std::free(record);
    }
}

void ArenaLevel::DecodeKeys(std::string_view data) {
    engine::ByteReader in(data);
    const int kind = in.U8();
    for (std::uint32_t left = in.U32(); left > 0 && in.Good(); --left) {
        auto* record = new (arena.allocate(sizeof(BareRecord))) BareRecord{};
        record->kind = kind;
        record->flags = in.U8();
        record->time = in.F32();
        in.Floats(record->value, 3);
        in.Floats(record->inHandle, 3);
        in.Floats(record->outHandle, 3);
        record->methods[0] = in.U8();
        record->methods[1] = in.U8();
        all.push_back(record);
        byKind.push_back(record);
    }
}

/// Walks into the containers down to the keys.
void ArenaLevel::DecodeChunks(std::string_view bytes) {
    engine::ChunkCursor cursor(bytes, 0);
    engine::FoundChunk chunk;
    while (cursor.Next(chunk)) {
        switch (chunk.id) {
        case engine::LevelChunk::Level:
        case engine::LevelChunk::Films:
        case engine::LevelChunk::Film:
        case engine::LevelChunk::Track:
            DecodeChunks(chunk.data);
            break;
        case engine::LevelChunk::TrackKeys:
            DecodeKeys(chunk.data);
            break;
        default:
            break;
        }
    }
}

void ArenaLevel::Load(const std::string& path) {
    std::string bytes;
    std::string error;
    engine::ReadWholeFile(path, bytes, error);
    DecodeChunks(bytes);
}

} // namespace films_bench
