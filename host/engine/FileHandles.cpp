#include "host/engine/FileHandles.h"

#include "plugin/contract/FileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace engine {

namespace {

constexpr std::size_t kBufferBytes = 64UL * 1024UL;

struct OpenChunk {
    std::uint16_t id;
    std::uint64_t begin; ///< place of the chunk's data
};

struct OpenFile {
    bool writes = false;
    bool failed = false;
    int descriptor = -1;      ///< -1: memory
    std::string buffer;       ///< read ahead, waiting to be written, or all that was written to memory
    std::string_view memory;  ///< what a memory reader reads
    std::uint64_t base = 0;   ///< place of the buffer in the file
    std::size_t position = 0; ///< in the buffer or the memory
    std::uint64_t length = 0; ///< of a file that is read
    std::vector<OpenChunk> chunks;

    bool Flush();
    int Read(void* target, int size);
    int Write(const void* source, int size);
    bool Patch(std::uint64_t place, const unsigned char (&bytes)[4]);
    std::uint64_t Tell() const { return base + (writes ? buffer.size() : position); }
};

bool WriteFully(int descriptor, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t count = LowLevel().write(descriptor, bytes, size);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool OpenFile::Flush() {
    if (descriptor >= 0 && !failed && !buffer.empty()) {
        failed = !WriteFully(descriptor, buffer.data(), buffer.size());
        base += buffer.size();
        buffer.clear();
    }
    return !failed;
}

int OpenFile::Read(void* target, int size) {
    auto* out = static_cast<char*>(target);
    int total = 0;
    while (total < size) {
        const std::string_view source = descriptor < 0 ? memory : std::string_view(buffer);
        const std::size_t count = std::min(source.size() - position, static_cast<std::size_t>(size - total));
        if (count > 0) {
            std::memcpy(out + total, source.data() + position, count);
        }
        position += count;
        total += static_cast<int>(count);
        if (total == size || descriptor < 0) {
            break;
        }
        base += buffer.size();
        position = 0;
        buffer.resize(kBufferBytes);
        const ssize_t got = read(descriptor, buffer.data(), kBufferBytes);
        buffer.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
        if (got <= 0) {
            return got < 0 && total == 0 ? -1 : total;
        }
    }
    return total;
}

int OpenFile::Write(const void* source, int size) {
    if (failed) {
        return -1;
    }
    buffer.append(static_cast<const char*>(source), static_cast<std::size_t>(size));
    if (descriptor >= 0 && buffer.size() >= kBufferBytes && !Flush()) {
        return -1;
    }
    return size;
}

bool OpenFile::Patch(std::uint64_t place, const unsigned char (&bytes)[4]) {
    if (place >= base) {
        std::memcpy(buffer.data() + (place - base), bytes, sizeof bytes);
        return true;
    }
    // The place has gone to the disk, perhaps in part: write all out first.
    if (!Flush() || lseek(descriptor, static_cast<off_t>(place), SEEK_SET) < 0) {
        failed = true;
        return false;
    }
    failed = !WriteFully(descriptor, reinterpret_cast<const char*>(bytes), sizeof bytes) ||
             lseek(descriptor, static_cast<off_t>(base), SEEK_SET) < 0;
    return !failed;
}

/// Open files by handle. The low 16 bits of a handle are the slot plus 1, the others tell the slot's users
/// apart, so that a handle kept too long is found out.
class HandleTable {
public:
    std::uint32_t Add(std::unique_ptr<OpenFile> file) {
        std::size_t slot = 0;
        while (slot < slots.size() && slots[slot].file != nullptr) {
            ++slot;
        }
        if (slot >= kMaxOpen) {
            return 0;
        }
        if (slot == slots.size()) {
            slots.emplace_back();
        }
        slots[slot].file = std::move(file);
        return (static_cast<std::uint32_t>(slots[slot].user) << 16) | static_cast<std::uint32_t>(slot + 1);
    }
    OpenFile* Find(std::uint32_t handle) {
        const std::size_t slot = (handle & 0xFFFFu) - 1u;
        return slot < slots.size() && slots[slot].user == handle >> 16 ? slots[slot].file.get() : nullptr;
    }
    std::unique_ptr<OpenFile> Remove(std::uint32_t handle) {
        if (Find(handle) == nullptr) {
            return nullptr;
        }
        Slot& slot = slots[(handle & 0xFFFFu) - 1u];
        ++slot.user;
        return std::move(slot.file);
    }

private:
    static constexpr std::size_t kMaxOpen = 4096;
    struct Slot {
        std::unique_ptr<OpenFile> file;
        std::uint16_t user = 0;
    };
    std::vector<Slot> slots;
};

HandleTable& Table() {
    static HandleTable table;
    return table;
}

int SystemRename(const char* from, const char* to) {
    return std::rename(from, to);
}

int OpenForWriting(const char* path) {
    return open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
}

} // namespace

LowLevelFiles& LowLevel() {
    static LowLevelFiles files{::write, ::fsync, ::close, SystemRename};
    return files;
}

std::uint32_t OpenMemoryForReading(std::string_view bytes) {
    auto file = std::make_unique<OpenFile>();
    file->memory = bytes;
    file->length = bytes.size();
    return Table().Add(std::move(file));
}

std::uint32_t OpenMemoryForWriting() {
    auto file = std::make_unique<OpenFile>();
    file->writes = true;
    return Table().Add(std::move(file));
}

std::string* WrittenBytes(std::uint32_t handle) {
    OpenFile* file = Table().Find(handle);
    return file != nullptr && file->writes && file->descriptor < 0 ? &file->buffer : nullptr;
}

std::string TakeWritten(std::uint32_t handle) {
    if (WrittenBytes(handle) == nullptr) {
        return {};
    }
    return std::move(Table().Remove(handle)->buffer);
}

std::uint64_t FilePosition(std::uint32_t handle) {
    const OpenFile* file = Table().Find(handle);
    return file != nullptr ? file->Tell() : 0;
}

std::uint64_t BytesLeft(std::uint32_t handle) {
    const OpenFile* file = Table().Find(handle);
    return file != nullptr && !file->writes && file->length > file->Tell() ? file->length - file->Tell() : 0;
}

bool SeekTo(std::uint32_t handle, std::uint64_t position) {
    OpenFile* file = Table().Find(handle);
    if (file == nullptr || file->writes) {
        return false;
    }
    const std::uint64_t place = std::min(position, file->length);
    if (file->descriptor < 0) {
        file->position = static_cast<std::size_t>(place);
        return true;
    }
    if (place >= file->base && place <= file->base + file->buffer.size()) {
        file->position = static_cast<std::size_t>(place - file->base);
        return true;
    }
    if (lseek(file->descriptor, static_cast<off_t>(place), SEEK_SET) < 0) {
        return false;
    }
    file->base = place;
    file->buffer.clear();
    file->position = 0;
    return true;
}

bool BeginChunk(std::uint32_t handle, std::uint16_t id) {
    OpenFile* file = Table().Find(handle);
    if (file == nullptr || !file->writes) {
        return false;
    }
    file->chunks.push_back({id, file->Tell()});
    return true;
}

bool EndChunk(std::uint32_t handle, std::uint16_t id) {
    OpenFile* file = Table().Find(handle);
    if (file == nullptr || !file->writes || file->chunks.empty() || file->chunks.back().id != id) {
        return false;
    }
    const std::uint64_t begin = file->chunks.back().begin;
    file->chunks.pop_back();
    const std::uint64_t size = file->Tell() - begin;
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        return false;
    }
    unsigned char bytes[4];
    for (int i = 0; i < 4; ++i) {
        bytes[i] = static_cast<unsigned char>(size >> (8 * i));
    }
    return file->Patch(begin - sizeof bytes, bytes);
}

bool ReplaceFile(const std::string& path, std::string_view bytes, std::string& error) {
    const std::string beside = path + ".saving";
    const int descriptor = OpenForWriting(beside.c_str());
    if (descriptor < 0) {
        error = "can't create " + beside + ": " + std::strerror(errno);
        return false;
    }
    const bool written = WriteFully(descriptor, bytes.data(), bytes.size());
    const bool synced = written && LowLevel().sync(descriptor) == 0;
    const std::string reason = std::strerror(errno);
    const bool closed = LowLevel().close(descriptor) == 0;
    if (!written || !synced || !closed) {
        error = "can't write " + beside + ": " + (written && synced ? std::strerror(errno) : reason);
        unlink(beside.c_str());
        return false;
    }
    if (LowLevel().rename(beside.c_str(), path.c_str()) != 0) {
        error = "can't give " + beside + " its name: " + std::strerror(errno);
        unlink(beside.c_str());
        return false;
    }
    return true;
}

bool ReadWholeFile(const std::string& path, std::string& bytes, std::string& error) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    if (descriptor < 0 || fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        error = descriptor < 0 ? std::strerror(errno) : "not a file";
        if (descriptor >= 0) {
            ::close(descriptor);
        }
        return false;
    }
    if (status.st_size > std::numeric_limits<std::int32_t>::max()) {
        error = "larger than 2 GiB";
        ::close(descriptor);
        return false;
    }
    bytes.resize(static_cast<std::size_t>(status.st_size));
    std::size_t total = 0;
    ssize_t count = 1;
    while (total < bytes.size() && count > 0) {
        count = read(descriptor, bytes.data() + total, bytes.size() - total);
        total += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    bytes.resize(total);
    error = count < 0 ? std::strerror(errno) : "";
    ::close(descriptor);
    return count >= 0;
}

} // namespace engine

std::uint32_t FS_open(const char* path, int mode) {
    if (path == nullptr || (mode != 0 && mode != 1)) {
        return 0;
    }
    auto file = std::make_unique<engine::OpenFile>();
    file->writes = mode == 1;
    file->descriptor = file->writes ? engine::OpenForWriting(path) : open(path, O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    if (file->descriptor < 0) {
        return 0;
    }
    if (fstat(file->descriptor, &status) != 0 || S_ISDIR(status.st_mode)) {
        close(file->descriptor);
        return 0;
    }
    file->length = static_cast<std::uint64_t>(status.st_size);
    const int descriptor = file->descriptor;
    const std::uint32_t handle = engine::Table().Add(std::move(file));
    if (handle == 0) {
        close(descriptor);
    }
    return handle;
}

int FS_read(std::uint32_t handle, void* buffer, int size) {
    engine::OpenFile* file = engine::Table().Find(handle);
    if (file == nullptr || file->writes || size < 0 || (buffer == nullptr && size > 0)) {
        return -1;
    }
    return file->Read(buffer, size);
}

int FS_write(std::uint32_t handle, const void* buffer, int size) {
    engine::OpenFile* file = engine::Table().Find(handle);
    if (file == nullptr || !file->writes || size < 0 || (buffer == nullptr && size > 0)) {
        return -1;
    }
    return size == 0 ? 0 : file->Write(buffer, size);
}

int FS_close(std::uint32_t handle) {
    const std::unique_ptr<engine::OpenFile> file = engine::Table().Remove(handle);
    if (file == nullptr) {
        return -1;
    }
    const bool flushed = !file->writes || file->Flush();
    const bool closed = file->descriptor < 0 || engine::LowLevel().close(file->descriptor) == 0;
    return flushed && closed ? 0 : -1;
}

bool FS_exists(const char* path) {
    struct stat status = {};
    return path != nullptr && stat(path, &status) == 0;
}
