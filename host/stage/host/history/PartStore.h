#pragma once

#include "host/engine/LevelParts.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace stage {

/// A part that is not what it was; without bytes it is not there.
struct PartChange {
    engine::PartKey key;
    std::optional<std::string> before;
    std::optional<std::string> after;
};
using PartChanges = std::vector<PartChange>;

/// The level's parts as they were when last looked at.
class PartStore {
public:
    enum class Look {
        Told, ///< leaves out what has the version it had
        All
    };

    /// Takes the level as it is, and says what is different. Throws what a plug-in throws; then nothing is
    /// known any more until Clear.
    PartChanges Update(engine::Level& level, Look look);
    /// FullHash as it would be after an update; nothing is taken.
    std::uint64_t HashNow(engine::Level& level, Look look) const;
    /// Writes a part that was put back; it is read again at the next update.
    void Set(const engine::PartKey& key, std::optional<std::string> bytes);
    void Clear();

    std::optional<std::string_view> Find(const engine::PartKey& key) const;
    engine::PartSource Source() const;
    /// A number of all parts but those that are looks only.
    std::uint64_t WorkHash() const { return workHash; }
    /// The same with the looks.
    std::uint64_t FullHash() const { return workHash ^ lookHash; }
    /// Bytes that it takes, about.
    std::size_t Size() const;

private:
    struct Part {
        std::string bytes;
        std::uint64_t hash = 0;
        std::uint64_t version = 0;
        std::uint64_t seen = 0; ///< number of the update that saw it last
    };
    class Sink;
    class HashSink;

    void Hash(const engine::PartKey& key, Part& part);
    void Unhash(const engine::PartKey& key, const Part& part);

    std::map<engine::PartKey, Part> parts;
    std::uint64_t updates = 0;
    std::uint64_t workHash = 0;
    std::uint64_t lookHash = 0;
};

} // namespace stage
