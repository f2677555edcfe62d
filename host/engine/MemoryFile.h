#pragma once

#include "host/engine/FileHandles.h"
#include "plugin/contract/File.h"

namespace engine {

/// A file of the wrapper's kind over memory, closed at the end of its life.
class MemoryFile {
public:
    /// For writing.
    MemoryFile() { file.handle = OpenMemoryForWriting(); }
    /// For reading bytes that outlive it.
    explicit MemoryFile(std::string_view bytes) { file.handle = OpenMemoryForReading(bytes); }
    ~MemoryFile() { Close(); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// What was written; the file is closed then.
    std::string Take() {
        std::string bytes = TakeWritten(file.handle);
        file.handle = 0;
        return bytes;
    }

    fs::file file;

private:
    void Close();
};

} // namespace engine
