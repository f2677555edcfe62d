#include "plugin/contract/File.h"

#include "files/base/Log.h"
#include "plugin/contract/FileSystem.h"

#include <cstring>

namespace fs {

namespace {

constexpr const char* kMessages[] = {"Error opening file",
                                     "Error reading file",
                                     "Error writing file",
                                     "Error getting file length",
                                     "Error getting position in file",
                                     "Error when seeking",
                                     "Null string",
                                     "Null string"};
constexpr std::int32_t kMessageCount = sizeof kMessages / sizeof kMessages[0];

} // namespace

const char* file_exception::what() const noexcept {
    return code >= 0 && code < kMessageCount ? kMessages[code] : "Unknown error";
}

void file::Open(const char* path, int mode) {
    handle = FS_open(path, mode);
    if (handle == 0) {
        DebugPrint("WARNING [file] cannot open file %s\n", path != nullptr ? path : "");
        throw file_exception(file_exception::kOpen);
    }
}

int file::Read(void* buffer, int size) {
    const int count = FS_read(handle, buffer, size);
    if (count < 0) {
        throw file_exception(file_exception::kRead);
    }
    return count;
}

int file::Write(const void* buffer, int size) {
    const int count = FS_write(handle, buffer, size);
    if (count < 0) {
        throw file_exception(file_exception::kWrite);
    }
    return count;
}

file& file::WriteString(const char* text) {
    if (text == nullptr) {
        throw file_exception(file_exception::kNullString);
    }
    // Required: a longer text keeps only as many bytes as the low 16 bits of its length say.
    const auto length = static_cast<std::uint16_t>(std::strlen(text));
    const unsigned char prefix[2] = {static_cast<unsigned char>(length & 0xFFu),
                                     static_cast<unsigned char>(length >> 8)};
    Write(prefix, 2);
    if (length != 0) {
        Write(text, length);
    }
    return *this;
}

int file::Close() {
    const int result = handle != 0 ? FS_close(handle) : 0;
    handle = 0;
    return result;
}

} // namespace fs
