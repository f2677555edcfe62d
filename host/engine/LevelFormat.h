#pragma once

#include "host/engine/RawChunk.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace engine {

/// Chunks of the engine's own in level files. The plug-ins' ids, 5750 to 5786 among them, are others.
namespace LevelChunk {
constexpr std::uint16_t Level = 6000; ///< the whole file
constexpr std::uint16_t Header = 6001;
constexpr std::uint16_t Root = 6002; ///< the plug-ins' chunks of the root object
constexpr std::uint16_t Objects = 6003;
constexpr std::uint16_t Films = 6004; ///< films, then the plug-ins' chunks of the film manager
constexpr std::uint16_t Groups = 6005;
constexpr std::uint16_t Sun = 6006;
constexpr std::uint16_t Views = 6007;
constexpr std::uint16_t Bookmarks = 6008;
constexpr std::uint16_t Object = 6010; ///< in Objects
constexpr std::uint16_t ObjectCore = 6011;
constexpr std::uint16_t ObjectLight = 6012;
constexpr std::uint16_t ObjectNotes = 6013;
constexpr std::uint16_t Film = 6020; ///< in Films
constexpr std::uint16_t FilmHead = 6021;
constexpr std::uint16_t Track = 6022; ///< in Film
constexpr std::uint16_t TrackHead = 6023;
constexpr std::uint16_t TrackKeys = 6024;
} // namespace LevelChunk

constexpr std::uint32_t kLevelVersion = 1;

/// A part of a level file that does not hold together; `offset` is in the file.
class ChunkError : public std::runtime_error {
public:
    ChunkError(std::size_t where, const std::string& why) : std::runtime_error(why), offset(where) {}

    std::size_t offset;
};

/// A chunk as found: its data and where that begins in the file.
struct FoundChunk {
    std::uint16_t id = 0;
    std::string_view data;
    std::size_t offset = 0;
};

/// Walks the chunks of one container. Throws ChunkError where a header is cut short or a size goes beyond
/// the container.
class ChunkCursor {
public:
    ChunkCursor(std::string_view container, std::size_t containerOffset)
        : bytes(container), offset(containerOffset) {}
    /// False at the end.
    bool Next(FoundChunk& chunk);

private:
    std::string_view bytes;
    std::size_t offset;
    std::size_t at = 0;
};

/// What is told of a part to which a newer program has added fields: they are not kept.
std::string RestMessage(std::size_t left, const std::string& part);

/// Appends a chunk's header and data.
void AppendChunk(std::string& bytes, std::uint16_t id, std::string_view data);
/// Appends a chunk's header and gives the place of its data; EndChunkAt fills in the size when all is there.
std::size_t BeginChunkAt(std::string& bytes, std::uint16_t id);
void EndChunkAt(std::string& bytes, std::size_t begin);
/// Puts the foreign chunks between the chunks of `known`: each behind as many as its place says.
void MergeForeign(std::string& known, const std::vector<RawChunk>& foreign);
/// The same for a container at the end of `bytes` that began at `begin`.
void MergeForeignAt(std::string& bytes, std::size_t begin, const std::vector<RawChunk>& foreign);

} // namespace engine
