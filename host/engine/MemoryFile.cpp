#include "host/engine/MemoryFile.h"

#include "plugin/contract/FileSystem.h"

namespace engine {

void MemoryFile::Close() {
    if (file.handle != 0) {
        FS_close(file.handle);
        file.handle = 0;
    }
}

} // namespace engine
