#pragma once

#include "plugin/contract/Chunks.h"

#include <algorithm>
#include <cstdint>
#include <string>

/// Reads from a file inside a chunk and never past its end: sizes and counts of a damaged file can't lead
/// it further. Does not own the file.
class ChunkReader {
public:
    ChunkReader(fs::file& source, std::uint64_t bytes) : file(source), left(bytes) {}

    /// False, with the buffer zeroed, if the chunk or the file ends before `size` bytes.
    bool Read(void* buffer, std::uint32_t size);
    bool ReadString(std::string& text);
    /// Reads and drops up to `size` bytes.
    void Skip(std::uint64_t size);
    void SkipRest() { Skip(left); }
    std::uint64_t Left() const { return left; }

private:
    fs::file& file;
    std::uint64_t left;
};

/// Calls `visit(header, size)` for each sub-chunk of a chunk of `bytes`; `size` is the header's, cut to
/// what the parent has left. The visitor consumes `size` bytes. Stops at the end of the parent or file.
/// Required by the users' files: the sizes alone count, whatever the numbers of the sub-chunks are.
template <class Visit> void ForEachSubChunk(fs::file& file, std::uint32_t bytes, Visit visit) {
    std::uint64_t counted = 0;
    while (counted + ChunkHeader::kBytes <= bytes) {
        ChunkHeader header;
        const std::uint32_t stated = ChunkLoadHeader(file, header);
        if (header.id == 0 && stated == 0) {
            return; // what a header cut short by the end of the file gives too
        }
        const std::uint64_t left = bytes - counted - ChunkHeader::kBytes;
        visit(header, static_cast<std::uint32_t>(std::min<std::uint64_t>(stated, left)));
        counted += std::uint64_t{stated} + ChunkHeader::kBytes;
    }
}
