#include "host/engine/FileHandles.h"

#include "host/outside/OutsideFile.h"
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
        const ssize_t got = RetryInterrupted([&] { return read(descriptor, buffer.data(), kBufferBytes); });
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

/// Opens a regular file for writing and empties it. Nothing else is opened: a FIFO would wait for its reader,
/// and a device is no place for a file.
int OpenForWriting(const char* path) {
    const int descriptor =
        LowLevel().open(path, O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kNewFileMode);
    struct stat status = {};
    const bool good = descriptor >= 0 && fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                      ftruncate(descriptor, 0) == 0;
    if (descriptor >= 0 && !good) {
        ::close(descriptor);
    }
    return good ? descriptor : -1;
}

} // namespace

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

} // namespace engine

std::uint32_t FS_open(const char* path, int mode) {
    if (path == nullptr || (mode != 0 && mode != 1)) {
        return 0;
    }
    auto file = std::make_unique<engine::OpenFile>();
    file->writes = mode == 1;
    if (file->writes) {
        file->descriptor = engine::OpenForWriting(path);
    } else {
        OutsideFile outside(path, engine::kMaxFileBytes);
        file->length = outside.Size();
        file->descriptor = outside.Release();
    }
    if (file->descriptor < 0) {
        return 0;
    }
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
