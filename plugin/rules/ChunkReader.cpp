#include "plugin/rules/ChunkReader.h"

#include <cstring>

namespace {

/// Bytes read at a time while dropping.
constexpr std::uint64_t kSkipBlock = 4096;

} // namespace

bool ChunkReader::Read(void* buffer, std::uint32_t size) {
    const std::uint64_t wanted = std::min<std::uint64_t>(size, left);
    const int count = file.Read(buffer, static_cast<int>(wanted));
    left -= wanted;
    if (count == static_cast<int>(size)) {
        return true;
    }
    left = 0;
    std::memset(buffer, 0, size);
    return false;
}

bool ChunkReader::ReadString(std::string& text) {
    text.clear();
    std::uint8_t length[2];
    if (!Read(length, sizeof(length))) {
        return false;
    }
    const std::uint32_t size = length[0] | (length[1] << 8);
    if (size > left) {
        left = 0;
        return false;
    }
    text.resize(size);
    return size == 0 || Read(text.data(), size);
}

void ChunkReader::Skip(std::uint64_t size) {
    char dropped[kSkipBlock];
    std::uint64_t rest = std::min(size, left);
    while (rest > 0) {
        const auto block = static_cast<std::uint32_t>(std::min(rest, kSkipBlock));
        if (!Read(dropped, block)) {
            return;
        }
        rest -= block;
    }
}
