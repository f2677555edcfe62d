#pragma once

#include <cstdint>
#include <string>
#include <sys/stat.h>

/// A file that somebody else wrote, open for reading. Closed with the object.
class OutsideFile {
public:
    static constexpr std::uint64_t kMiB = std::uint64_t{1} << 20;

    /// Opens a regular file of at most `limit` bytes, through links too. Whatever else stands there, a
    /// folder, a FIFO, a device, is refused without waiting for it.
    OutsideFile(const std::string& path, std::uint64_t limit);
    ~OutsideFile();
    OutsideFile(const OutsideFile&) = delete;
    OutsideFile& operator=(const OutsideFile&) = delete;

    bool IsOpen() const { return descriptor >= 0; }
    /// Why the file is not open or could not be read.
    const std::string& Error() const { return error; }
    int Descriptor() const { return descriptor; }
    /// Hands the descriptor over to the caller.
    int Release();
    /// As the file was found when it was opened.
    const struct stat& Status() const { return status; }
    std::uint64_t Size() const { return static_cast<std::uint64_t>(status.st_size); }

    /// The whole file into a string or a vector of bytes. A file that shrinks meanwhile gives what there is,
    /// one that grows no more than its first size. False if it can't be read.
    template <class Bytes> bool ReadAll(Bytes& bytes) {
        bytes.resize(static_cast<std::size_t>(Size()));
        std::size_t count = 0;
        const bool good = Read(bytes.data(), bytes.size(), count);
        bytes.resize(count);
        return good;
    }

private:
    bool Read(void* target, std::size_t size, std::size_t& count);
    void Close(const std::string& why);

    int descriptor = -1;
    struct stat status = {};
    std::string error;
};

/// Whether a path, with its links and ".." followed as far as they exist, lies in the folder or below it.
bool IsInside(const std::string& path, const std::string& folder);
