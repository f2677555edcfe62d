#include "host/engine/LevelContent.h"

#include "host/engine/LevelFormat.h"

#include <functional>

namespace engine {

namespace {

/// Bytes of the header in front of the next id: the version.
constexpr std::size_t kVersionBytes = 4;

class Content {
public:
    void Add(std::uint16_t id, std::string_view part) {
        constexpr std::uint64_t kOdd =
            0x9E3779B97F4A7C15; // spreads the bits; any odd number of this size does
        state = (state ^ id) * kOdd;
        state = (state ^ std::hash<std::string_view>{}(part)) * kOdd;
        state ^= state >> 32;
    }
    std::uint64_t state = 0;
};

} // namespace

std::uint64_t LevelContent(std::string_view bytes) {
    Content content;
    try {
        ChunkCursor file(bytes, 0);
        FoundChunk whole;
        if (!file.Next(whole)) {
            return 0;
        }
        ChunkCursor cursor(whole.data, whole.offset);
        FoundChunk chunk;
        while (cursor.Next(chunk)) {
            if (chunk.id == LevelChunk::Header) {
                content.Add(chunk.id, chunk.data.substr(0, kVersionBytes));
            } else if (chunk.id != LevelChunk::Views && chunk.id != LevelChunk::Bookmarks) {
                content.Add(chunk.id, chunk.data);
            }
        }
        content.Add(0, bytes.substr(whole.offset + whole.data.size()));
    } catch (const ChunkError&) {
        content.Add(0, bytes); // no level, and so all of it
    }
    return content.state;
}

} // namespace engine
