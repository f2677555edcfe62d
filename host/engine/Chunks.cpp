#include "plugin/contract/Chunks.h"

#include "host/engine/FileHandles.h"

#include <algorithm>
#include <cstring>

void ChunkSaveStart(fs::file& file, std::uint16_t id) {
    const unsigned char header[ChunkHeader::kBytes] = {static_cast<unsigned char>(id & 0xFFu),
                                                       static_cast<unsigned char>(id >> 8)};
    file.Write(header, sizeof header);
    if (!engine::BeginChunk(file.handle, id)) {
        throw fs::file_exception(fs::file_exception::kWrite);
    }
}

void ChunkSaveEnd(fs::file& file, std::uint16_t id) {
    if (!engine::EndChunk(file.handle, id)) {
        throw fs::file_exception(fs::file_exception::kWrite);
    }
}

std::uint32_t ChunkLoadHeader(fs::file& file, ChunkHeader& header) {
    unsigned char bytes[ChunkHeader::kBytes] = {};
    header = {};
    if (file.Read(bytes, sizeof bytes) == static_cast<int>(sizeof bytes)) {
        header.id = static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
        for (int i = 0; i < 4; ++i) {
            header.size |= static_cast<std::uint32_t>(bytes[2 + i]) << (8 * i);
        }
    }
    return header.size;
}

int freadstringstl2(fs::file& file, std::string& text) {
    unsigned char prefix[2] = {};
    text.clear();
    if (file.Read(prefix, sizeof prefix) < 2) {
        return 0;
    }
    const int length = prefix[0] | prefix[1] << 8;
    text.resize(static_cast<std::size_t>(length));
    text.resize(static_cast<std::size_t>(file.Read(text.data(), length)));
    return length;
}

int freadstring2(fs::file& file, char* buffer, int bufferSize) {
    std::string text;
    const int length = freadstringstl2(file, text);
    if (buffer != nullptr && bufferSize > 0) {
        const std::size_t kept = std::min(text.size(), static_cast<std::size_t>(bufferSize - 1));
        std::memcpy(buffer, text.data(), kept);
        buffer[kept] = '\0';
    }
    return length;
}
