#include "host/engine/LevelFormat.h"

#include "host/engine/ByteStream.h"
#include "plugin/contract/Chunks.h"

#include <cstring>

namespace engine {

bool ChunkCursor::Next(FoundChunk& chunk) {
    if (at == bytes.size()) {
        return false;
    }
    if (bytes.size() - at < ChunkHeader::kBytes) {
        throw ChunkError(offset + at, "a chunk header is cut short");
    }
    ByteReader header(bytes.substr(at, ChunkHeader::kBytes));
    chunk.id = header.U16();
    const std::uint32_t size = header.U32();
    const std::size_t begin = at + ChunkHeader::kBytes;
    if (size > bytes.size() - begin) {
        throw ChunkError(offset + at, "chunk " + std::to_string(chunk.id) + " claims " +
                                          std::to_string(size) + " bytes where " +
                                          std::to_string(bytes.size() - begin) + " are left");
    }
    chunk.data = bytes.substr(begin, size);
    chunk.offset = offset + begin;
    at = begin + size;
    return true;
}

std::string RestMessage(std::size_t left, const std::string& part) {
    return part + " ends with " + std::to_string(left) +
           " bytes that this program does not know; a save leaves them out";
}

void AppendChunk(std::string& bytes, std::uint16_t id, std::string_view data) {
    ByteWriter out(bytes);
    out.U16(id);
    out.U32(static_cast<std::uint32_t>(data.size()));
    out.Raw(data.data(), data.size());
}

std::size_t BeginChunkAt(std::string& bytes, std::uint16_t id) {
    AppendChunk(bytes, id, {});
    return bytes.size();
}

void EndChunkAt(std::string& bytes, std::size_t begin) {
    const auto size = static_cast<std::uint32_t>(bytes.size() - begin);
    std::memcpy(bytes.data() + begin - sizeof size, &size, sizeof size);
}

void MergeForeign(std::string& known, const std::vector<RawChunk>& foreign) {
    if (foreign.empty()) {
        return;
    }
    std::string merged;
    std::size_t next = 0;
    int place = 0;
    const auto addForeign = [&](bool all) {
        for (; next < foreign.size() && (all || foreign[next].place <= place); ++next) {
            AppendChunk(merged, foreign[next].id, foreign[next].bytes);
        }
    };
    ChunkCursor cursor(known, 0);
    FoundChunk chunk;
    addForeign(false);
    while (cursor.Next(chunk)) {
        AppendChunk(merged, chunk.id, chunk.data);
        ++place;
        addForeign(false);
    }
    addForeign(true);
    known = std::move(merged);
}

void MergeForeignAt(std::string& bytes, std::size_t begin, const std::vector<RawChunk>& foreign) {
    if (!foreign.empty()) {
        std::string inner = bytes.substr(begin);
        MergeForeign(inner, foreign);
        bytes.replace(begin, std::string::npos, inner);
    }
}

} // namespace engine
