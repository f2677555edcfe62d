#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace engine {

class Level;
class LevelData;

/// What a level is made of, seen by what is edited at a time.
enum class PartKind : std::uint8_t {
    ObjectOrder,   ///< which objects are listed, in their order
    Object,        ///< what the engine knows of an object
    ObjectPlugins, ///< what plug-ins keep of an object
    Root,          ///< a chunk that plug-ins keep of the level
    RootObjects,   ///< the same, with objects in it
    Groups,
    Sun,
    Film,  ///< what a film says of itself, and which tracks it has in which order
    Track, ///< what a track says of itself
    Keys   ///< the keys of one kind of a track; there is none of a kind without keys
};

/// Names a part for the session: it stays the same part through all its changes, also where it goes and comes
/// back by RefillLevel.
struct PartKey {
    PartKind kind = PartKind::Sun;
    int id = 0;              ///< an object's; a film's slot; the place of a chunk of the root's
    std::uint64_t track = 0; ///< TrackBase::serial
    int keys = 0;            ///< kind of the keys

    auto operator<=>(const PartKey&) const = default; // NOLINT(modernize-use-nullptr): its zero is no pointer
};

/// Whether the part says only how the level is shown: rows folded, zoom. Plug-ins write it down while
/// they show something.
bool IsLook(const PartKey& key);

/// The part without what plug-ins keep of the objects in it, which is how they are shown; nothing of a look.
std::string WithoutLooks(const PartKey& key, std::string_view bytes);

/// Takes a level's parts one by one.
class IPartSink {
public:
    virtual ~IPartSink() = default;
    /// The part is there. False: its bytes are not wanted. A version other than 0 promises that the bytes are
    /// as they were at the same version, as far as nobody has written into fields without telling.
    virtual bool Wants(const PartKey& key, std::uint64_t version) = 0;
    /// The bytes of a part that was wanted.
    virtual void Take(const PartKey& key, std::uint64_t version, std::string_view bytes) = 0;
};

/// Gives all parts of the level, as a save would write them now. The open film must be at rest
/// (engine::FilmAtRest). Throws what a plug-in throws.
void ReadLevelParts(Level& level, IPartSink& sink);

/// Gives the bytes of a part, none for one that is not there.
using PartSource = std::function<std::optional<std::string_view>(const PartKey& key)>;

/// A level file with these parts, for RefillLevel: without what no part says.
std::string AssembleLevel(const LevelData& data, const PartSource& parts);
/// After RefillLevel with those bytes: the tracks get the numbers that they have in the parts.
void NumberTracks(const LevelData& data, const PartSource& parts);

/// Puts a part that is there back to former bytes, in place; none are those of keys that are not there.
/// Nobody is told. False if that can't be done in place; what is not whole then is for RefillLevel.
/// Done are keys, heads of cameras and of films with the same tracks, objects that stay listed, groups and
/// the sun. Keys that went wait for FilmManager::DropParked.
bool RestorePart(Level& level, const PartKey& key, std::optional<std::string_view> bytes);

/// A plug-in's chunk in a part of plug-ins' chunks.
void GivePluginChunks(Level& level, const PartKey& key, std::string_view bytes);

/// What parts say, for names of what was done with them.
struct ObjectFacts {
    std::string name;
    std::string className;
    std::string meshName;
    int parentId = 0;
    bool visible = true;
    std::string_view matrix; ///< bytes
    std::string_view others; ///< bytes; the light's among them
};
struct TrackFacts {
    int classId = 0;
    int actorId = 0;    ///< of an object's track
    std::string camera; ///< name of a camera's
    bool isSun = false;
};
struct FilmFacts {
    std::string name;
    float length = 0.0f; ///< seconds
};
ObjectFacts ObjectFactsOf(std::string_view part);
TrackFacts TrackFactsOf(std::string_view part);
FilmFacts FilmFactsOf(std::string_view part);

/// What a film's part says of the film itself, and of its tracks: their serials in their order.
std::string_view FilmHeadOf(std::string_view filmPart);
std::string_view TrackOrderOf(std::string_view filmPart);

} // namespace engine
