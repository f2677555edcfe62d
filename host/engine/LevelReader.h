#pragma once

#include "host/engine/ByteStream.h"
#include "host/engine/LevelFile.h"
#include "host/engine/LevelFormat.h"

namespace engine {

/// Values of PendingLevel::PluginChunk::objectId besides the ids of objects.
constexpr int kInRoot = 0;
constexpr int kInFilms = -1;
constexpr int kInLevel = -2;

/// The data of the two chunks; false if they are damaged, with what could be read.
bool ReadGroups(ByteReader& in, LevelData& data);
bool ReadSun(ByteReader& in, LevelData& data);

/// Fills a level's data from a pending level's bytes. Damage inside one object, film or group costs that one
/// and a message; damage of the outline throws ChunkError.
class LevelReader {
public:
    LevelReader(PendingLevel& pendingLevel, LevelData& levelData);
    void Read();

private:
    bool ReadPart(const FoundChunk& chunk);
    void ReadHeader(const FoundChunk& chunk);
    void ReadRoot(const FoundChunk& container);
    void ReadObjects(const FoundChunk& container);
    void ReadFilms(const FoundChunk& container);
    void ReadGroups(const FoundChunk& chunk);
    void ReadSun(const FoundChunk& chunk);
    void ReadViews(const FoundChunk& chunk);
    void ReadBookmarks(const FoundChunk& chunk);
    void Tell(std::size_t offset, const std::string& what);
    /// A newer program has written more into a part than this one reads.
    void TellRest(const FoundChunk& chunk, std::size_t left, const std::string& part);
    void Postpone(int objectId, const FoundChunk& chunk, int place);

    PendingLevel& pending;
    LevelData& data;
    bool headerSeen = false;
};

} // namespace engine
