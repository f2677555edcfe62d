#pragma once

#include "host/engine/FileStamp.h"

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace engine {

class Level;
class LevelData;

/// A level file that can't be read or written.
class LevelFileError : public std::runtime_error {
public:
    LevelFileError(const std::string& filePath, std::int64_t byteOffset, const std::string& why);

    std::string path;
    std::int64_t offset; ///< bytes from the start of the file, -1 where it has no meaning
    std::string reason;
};

/// What went wrong without stopping the work, one sentence each.
using LevelMessages = std::vector<std::string>;

/// A level that was read but not yet shown, with the plug-ins' chunks still to be given out.
struct PendingLevel {
    PendingLevel();
    ~PendingLevel();
    PendingLevel(PendingLevel&&) noexcept;
    PendingLevel& operator=(PendingLevel&&) noexcept;

    /// A plug-in's chunk by the place of its data in `bytes`. Object 0 is the root, -1 the film manager.
    struct PluginChunk {
        int objectId = 0;
        std::uint16_t id = 0;
        int place = 0;
        std::size_t begin = 0;
        std::uint32_t size = 0;
    };

    std::string path;
    std::string folder; ///< of the level, absolute when it was read from a file
    std::string bytes;  ///< the whole file
    FileStamp stamp;    ///< of the file, if there was one
    std::unique_ptr<LevelData> data;
    std::vector<PluginChunk> chunks;
    LevelMessages messages;
};

/// Level files. A host opens one in two steps, so that a file that can't be read leaves the open level
/// alone: ReadLevel; then, if that threw nothing, it sends its closing events and OnNew; then InstallLevel;
/// then event 6.
///
/// ReadLevel throws LevelFileError. The level is only asked for its services. The path is made absolute,
/// since file dialogs change the working directory.
PendingLevel ReadLevel(Level& level, const std::string& path);
/// The same from memory; `path` is for messages and the level's folder.
PendingLevel ParseLevel(Level& level, const std::string& path, std::string bytes);
/// Replaces the level's data, gives the plug-ins their chunks and links films with objects. What a plug-in
/// throws becomes a message.
LevelMessages InstallLevel(Level& level, PendingLevel pending);
/// Puts the level's own data back to what the bytes say, which WriteLevelParts wrote of it; see
/// LevelData::Empty. The selection is empty then. No film may be open.
LevelMessages RefillLevel(Level& level, std::string bytes);
/// Both steps.
LevelMessages LoadLevel(Level& level, const std::string& path);

/// Writes as ReplaceFile does, so that a failure leaves an old file whole. Throws LevelFileError. The level's
/// chunk client writes the plug-ins' chunks. `written` gets what is known of the new file.
LevelMessages SaveLevel(Level& level, const std::string& path, FileStamp* written = nullptr);
/// The bytes that SaveLevel writes. `path` is for messages.
std::string SerializeLevel(Level& level, const std::string& path, LevelMessages& messages);

} // namespace engine
