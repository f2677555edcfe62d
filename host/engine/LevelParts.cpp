#include "host/engine/LevelParts.h"

#include "host/engine/ByteStream.h"
#include "host/engine/ChunkClient.h"
#include "host/engine/FileHandles.h"
#include "host/engine/Film.h"
#include "host/engine/FilmFile.h"
#include "host/engine/FilmManager.h"
#include "host/engine/KeyFormat.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/LevelFormat.h"
#include "host/engine/LevelReader.h"
#include "host/engine/LevelRoot.h"
#include "host/engine/LevelWriter.h"
#include "host/engine/MemoryFile.h"
#include "host/engine/ObjectFile.h"
#include "plugin/contract/Chunks.h"

#include <algorithm>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace engine {

namespace {

/// Chunks of parts in memory, which are no files.
constexpr std::uint16_t kForeign = 1;    ///< 16-bit id, 32-bit place, data
constexpr std::uint16_t kTrackOrder = 2; ///< 64-bit serials

/// Rows of so many keys in the open film are read each time: some of their fields are written without a word.
constexpr std::size_t kFewKeys = 64;
/// A version that stays: of what is only read when everything is.
constexpr std::uint64_t kNeverChanges = 1;

class Hidden : public IObjectCollection {
public:
    bool Contains(const EditorObject* object) const override { return objects.contains(object); }
    void Add(EditorObject* object) override { objects.insert(object); }

private:
    std::unordered_set<const EditorObject*> objects;
};

void AppendForeign(std::string& bytes, const std::vector<RawChunk>& chunks) {
    for (const RawChunk& chunk : chunks) {
        const std::size_t begin = BeginChunkAt(bytes, kForeign);
        ByteWriter out(bytes);
        out.U16(chunk.id);
        out.I32(chunk.place);
        out.Raw(chunk.bytes.data(), chunk.bytes.size());
        EndChunkAt(bytes, begin);
    }
}

/// A part taken apart: the chunks that files have, and those that nobody knows.
struct PartChunks {
    explicit PartChunks(std::string_view part) {
        ChunkCursor cursor(part, 0);
        for (FoundChunk chunk; cursor.Next(chunk);) {
            if (chunk.id == kForeign) {
                ByteReader in(chunk.data);
                RawChunk raw{in.U16(), in.I32(), {}};
                raw.bytes = in.Bytes(in.Left());
                foreign.push_back(std::move(raw));
            } else if (chunk.id == kTrackOrder) {
                order = chunk.data;
            } else {
                AppendChunk(known, chunk.id, chunk.data);
            }
        }
    }

    std::string known;
    std::vector<RawChunk> foreign;
    std::string_view order;
};

std::vector<std::uint64_t> Serials(std::string_view order) {
    std::vector<std::uint64_t> serials(order.size() / sizeof(std::uint64_t));
    ByteReader(order).Raw(serials.data(), serials.size() * sizeof(std::uint64_t));
    return serials;
}

std::vector<int> Ids(std::string_view order) {
    std::vector<int> ids(order.size() / sizeof(int));
    ByteReader(order).Raw(ids.data(), ids.size() * sizeof(int));
    return ids;
}

/// Reads one level's parts into a sink.
class PartReader {
public:
    PartReader(Level& readLevel, IPartSink& partSink)
        : level(readLevel), data(*readLevel.Data()), sink(partSink) {}

    void Read() {
        if (level.ChunkClient() != nullptr) {
            level.ChunkClient()->CollectHiddenObjects(hidden);
        }
        ReadRoot();
        ReadObjects();
        Give({PartKind::Groups}, 0, [this](std::string& out) { out = GroupsBytes(data); });
        Give({PartKind::Sun}, 0, [this](std::string& out) { out = SunBytes(data); });
        for (int slot = 0; slot < IFilmManager::kFilms; ++slot) {
            if (Film* film = data.Films().FilmAt(slot)) {
                ReadFilm(*film, slot);
            }
        }
    }

private:
    template <class Write> void Give(const PartKey& key, std::uint64_t version, Write&& write) {
        if (sink.Wants(key, version)) {
            bytes.clear();
            write(bytes);
            sink.Take(key, version, bytes);
        }
    }

    void ReadRoot() {
        std::vector<std::uint64_t> places;
        data.savedPlaces = &places;
        std::string chunks;
        try {
            chunks = PluginBytes(level, &data.Root());
        } catch (...) {
            data.savedPlaces = nullptr;
            throw;
        }
        data.savedPlaces = nullptr;
        ChunkCursor cursor(chunks, 0);
        int place = 0;
        for (FoundChunk chunk; cursor.Next(chunk); ++place) {
            const bool hasObjects = std::ranges::any_of(places, [&](std::uint64_t at) {
                return at >= chunk.offset && at < chunk.offset + chunk.data.size();
            });
            Give({hasObjects ? PartKind::RootObjects : PartKind::Root, place}, 0,
                 [&](std::string& out) { AppendChunk(out, chunk.id, chunk.data); });
        }
    }

    void ReadObjects() {
        std::vector<SceneObject*> listed;
        for (const auto& object : data.Objects()) {
            if (!object->transient && object->savedAsObject != 0 && !hidden.Contains(object.get())) {
                listed.push_back(object.get());
            }
        }
        Give({PartKind::ObjectOrder}, 0, [&](std::string& out) {
            for (const SceneObject* object : listed) {
                ByteWriter(out).I32(object->id);
            }
        });
        for (SceneObject* object : listed) {
            Give({PartKind::Object, object->id}, 0, [object](std::string& out) {
                WriteObjectCore(*object, out);
                AppendForeign(out, object->foreignChunks);
            });
            Give({PartKind::ObjectPlugins, object->id}, object->Info().HasPluginData() ? 0 : kNeverChanges,
                 [&](std::string& out) { out = PluginBytes(level, object); });
        }
    }

    void ReadFilm(const Film& film, int slot) {
        Give({PartKind::Film, slot}, 0, [&](std::string& out) {
            const std::size_t head = BeginChunkAt(out, LevelChunk::FilmHead);
            WriteFilmHead(film, slot, out);
            EndChunkAt(out, head);
            const std::size_t order = BeginChunkAt(out, kTrackOrder);
            for (const TrackBase* track : film.Tracks()) {
                ByteWriter(out).Raw(&track->serial, sizeof track->serial);
            }
            EndChunkAt(out, order);
            AppendForeign(out, film.foreignChunks);
        });
        for (const TrackBase* track : film.Tracks()) {
            ReadTrack(*track, slot, film.IsActive());
        }
    }

    void ReadTrack(const TrackBase& track, int slot, bool isOpen) {
        Give({PartKind::Track, slot, track.serial}, 0, [&](std::string& out) {
            const std::size_t head = BeginChunkAt(out, LevelChunk::TrackHead);
            WriteTrackHead(track, out);
            EndChunkAt(out, head);
            AppendForeign(out, track.foreignChunks);
        });
        for (int kind = 0; kind < KeyKind::Count; ++kind) {
            const KeyChannel* channel = track.Channel(kind);
            if (channel == nullptr || channel->Empty()) {
                continue;
            }
            const bool isRead = isOpen && channel->Size() <= kFewKeys;
            Give({PartKind::Keys, slot, track.serial, kind}, isRead ? 0 : channel->Revision(),
                 [&](std::string& out) { WriteKeys(channel->Keys(), kind, out); });
        }
    }

    Level& level;
    LevelData& data;
    IPartSink& sink;
    Hidden hidden;
    std::string bytes; ///< of the part being read
};

} // namespace

bool IsLook(const PartKey& key) {
    return key.kind == PartKind::ObjectPlugins || key.kind == PartKind::Root;
}

namespace {

/// Where an object begins that a plug-in has written behind bytes of its own: from there on chunks follow
/// each other to the end, the object's core first. Nothing if there is none.
std::optional<std::size_t> BeginOfObject(std::string_view record) {
    for (std::size_t begin = 0; begin < record.size(); ++begin) {
        try {
            ChunkCursor cursor(record.substr(begin), 0);
            FoundChunk chunk;
            bool isCore = cursor.Next(chunk) && chunk.id == LevelChunk::ObjectCore;
            while (isCore && cursor.Next(chunk)) {
            }
            if (isCore) {
                return begin;
            }
        } catch (const ChunkError&) { // not there
        }
    }
    return std::nullopt;
}

/// A record of a plug-in's with an object in it, without what plug-ins keep of the object.
std::string BareRecord(std::string_view record) {
    const std::optional<std::size_t> begin = BeginOfObject(record);
    if (!begin) {
        return std::string(record);
    }
    std::string bare(record.substr(0, *begin));
    ChunkCursor cursor(record.substr(*begin), 0);
    for (FoundChunk chunk; cursor.Next(chunk);) {
        const bool isOwn = chunk.id == LevelChunk::ObjectCore || chunk.id == LevelChunk::ObjectLight ||
                           chunk.id == LevelChunk::ObjectNotes;
        if (isOwn) {
            AppendChunk(bare, chunk.id, chunk.data);
        }
    }
    return bare;
}

} // namespace

std::string WithoutLooks(const PartKey& key, std::string_view bytes) {
    if (IsLook(key)) {
        return {};
    }
    if (key.kind != PartKind::RootObjects) {
        return std::string(bytes);
    }
    try {
        std::string bare;
        ChunkCursor outer(bytes, 0);
        for (FoundChunk whole; outer.Next(whole);) {
            ChunkCursor records(whole.data, 0);
            for (FoundChunk record; records.Next(record);) {
                AppendChunk(bare, record.id, BareRecord(record.data));
            }
        }
        return bare;
    } catch (const ChunkError&) {
        return std::string(bytes); // a plug-in may write as it likes
    }
}

void ReadLevelParts(Level& level, IPartSink& sink) {
    PartReader(level, sink).Read();
}

namespace {

/// Data of a part's first chunk, which says what it is about.
std::string_view HeadOf(std::string_view part) {
    FoundChunk head;
    ChunkCursor cursor(part, 0);
    return cursor.Next(head) ? head.data : std::string_view();
}

} // namespace

ObjectFacts ObjectFactsOf(std::string_view part) {
    ByteReader in(HeadOf(part));
    ObjectFacts facts;
    in.I32(); // id
    in.I32(); // kind
    facts.parentId = in.I32();
    in.U32(); // flags
    facts.visible = in.U8() != 0;
    in.U8(); // saved as an object
    facts.className = in.Text();
    facts.name = in.Text();
    facts.meshName = in.Text();
    facts.matrix = in.Bytes(16 * sizeof(float));
    facts.others = part.substr(std::min(part.size(), HeadOf(part).size() + ChunkHeader::kBytes));
    return facts;
}

TrackFacts TrackFactsOf(std::string_view part) {
    ByteReader in(HeadOf(part));
    TrackFacts facts;
    facts.classId = in.I32();
    if (facts.classId == ClassId::ObjectTrack) {
        facts.actorId = in.I32();
    } else if (facts.classId == ClassId::CameraTrack) {
        in.Bytes(CFilmCameraTrack::kSubTracks * (sizeof(std::int32_t) + sizeof(float)) + 3 * sizeof(float));
        facts.camera = in.Text();
    } else if (facts.classId == ClassId::GLLightTrack) {
        in.U8(); // fixed
        facts.isSun = in.U8() != 0;
    }
    return facts;
}

FilmFacts FilmFactsOf(std::string_view part) {
    ByteReader in(HeadOf(part));
    in.U16(); // slot
    FilmFacts facts;
    facts.name = in.Text();
    facts.length = in.F32();
    return facts;
}

std::string_view FilmHeadOf(std::string_view filmPart) {
    return HeadOf(filmPart);
}

std::string_view TrackOrderOf(std::string_view filmPart) {
    ChunkCursor cursor(filmPart, 0);
    for (FoundChunk chunk; cursor.Next(chunk);) {
        if (chunk.id == kTrackOrder) {
            return chunk.data;
        }
    }
    return {};
}

namespace {

/// Makes a level file of parts.
class Assembler {
public:
    Assembler(const LevelData& levelData, const PartSource& source) : data(levelData), parts(source) {}

    std::string Assemble() {
        const std::size_t begin = BeginChunkAt(bytes, LevelChunk::Level);
        std::string header;
        ByteWriter(header).U32(kLevelVersion);
        ByteWriter(header).I32(data.NextId());
        AppendChunk(bytes, LevelChunk::Header, header);
        AddRoot();
        AddObjects();
        const std::size_t films = BeginChunkAt(bytes, LevelChunk::Films);
        for (int slot = 0; slot < IFilmManager::kFilms; ++slot) {
            if (const auto part = parts({PartKind::Film, slot})) {
                AddFilm(slot, *part);
            }
        }
        EndChunkAt(bytes, films);
        AppendChunk(bytes, LevelChunk::Groups, parts({PartKind::Groups}).value_or(""));
        AppendChunk(bytes, LevelChunk::Sun, parts({PartKind::Sun}).value_or(""));
        EndChunkAt(bytes, begin);
        return std::move(bytes);
    }

private:
    void AddRoot() {
        const std::size_t begin = BeginChunkAt(bytes, LevelChunk::Root);
        for (int place = 0;; ++place) {
            auto chunk = parts({PartKind::RootObjects, place});
            chunk = chunk ? chunk : parts({PartKind::Root, place});
            if (!chunk) {
                break;
            }
            bytes += *chunk;
        }
        EndChunkAt(bytes, begin);
    }

    void AddObjects() {
        const std::size_t begin = BeginChunkAt(bytes, LevelChunk::Objects);
        for (const int id : Ids(parts({PartKind::ObjectOrder}).value_or(""))) {
            PartChunks object(parts({PartKind::Object, id}).value_or(""));
            object.known += parts({PartKind::ObjectPlugins, id}).value_or("");
            MergeForeign(object.known, object.foreign);
            AppendChunk(bytes, LevelChunk::Object, object.known);
        }
        EndChunkAt(bytes, begin);
    }

    void AddFilm(int slot, std::string_view part) {
        const std::size_t whole = BeginChunkAt(bytes, LevelChunk::Film);
        const PartChunks film(part);
        bytes += film.known;
        for (const std::uint64_t serial : Serials(film.order)) {
            AddTrack(slot, serial);
        }
        MergeForeignAt(bytes, whole, film.foreign);
        EndChunkAt(bytes, whole);
    }

    void AddTrack(int slot, std::uint64_t serial) {
        const std::size_t whole = BeginChunkAt(bytes, LevelChunk::Track);
        const PartChunks track(parts({PartKind::Track, slot, serial}).value_or(""));
        bytes += track.known;
        for (int kind = 0; kind < KeyKind::Count; ++kind) {
            if (const auto keys = parts({PartKind::Keys, slot, serial, kind})) {
                const std::size_t begin = BeginChunkAt(bytes, LevelChunk::TrackKeys);
                ByteWriter(bytes).U8(static_cast<std::uint8_t>(kind));
                bytes += *keys;
                EndChunkAt(bytes, begin);
            }
        }
        MergeForeignAt(bytes, whole, track.foreign);
        EndChunkAt(bytes, whole);
    }

    const LevelData& data;
    const PartSource& parts;
    std::string bytes;
};

} // namespace

std::string AssembleLevel(const LevelData& data, const PartSource& parts) {
    return Assembler(data, parts).Assemble();
}

void NumberTracks(const LevelData& data, const PartSource& parts) {
    for (int slot = 0; slot < IFilmManager::kFilms; ++slot) {
        const Film* film = data.Films().FilmAt(slot);
        if (film == nullptr) {
            continue;
        }
        const std::vector<std::uint64_t> serials =
            Serials(TrackOrderOf(parts({PartKind::Film, slot}).value_or("")));
        for (std::size_t i = 0; i < serials.size() && i < film->Tracks().size(); ++i) {
            film->Tracks()[i]->serial = serials[i];
        }
    }
}

namespace {

TrackBase* FindTrack(const LevelData& data, const PartKey& key) {
    const Film* film = data.Films().FilmAt(key.id);
    if (film == nullptr) {
        return nullptr;
    }
    const auto found = std::ranges::find(film->Tracks(), key.track, &TrackBase::serial);
    return found != film->Tracks().end() ? *found : nullptr;
}

/// How many pieces at the start, or at the end behind `taken`, are the same.
std::size_t SamePieces(const std::vector<std::string_view>& a, const std::vector<std::string_view>& b,
                       std::size_t taken, bool atEnd) {
    const std::size_t most = std::min(a.size(), b.size()) - taken;
    std::size_t same = 0;
    while (same < most && (atEnd ? a[a.size() - 1 - same] == b[b.size() - 1 - same] : a[same] == b[same])) {
        ++same;
    }
    return same;
}

/// Which records say the pieces between the front and the back from now on, in the pieces' order: a key that
/// is there already says itself, and the others take what is left. Null where one has to be made. `old` has
/// the present records and pieces, and keeps those that are not needed.
std::vector<IFilmKey*> Reused(std::vector<std::pair<std::string_view, IFilmKey*>>& old,
                              std::span<const std::string_view> wanted) {
    std::unordered_multimap<std::string_view, IFilmKey*> known(old.begin(), old.end());
    std::vector<IFilmKey*> records(wanted.size());
    std::unordered_set<const IFilmKey*> taken;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (const auto same = known.find(wanted[i]); same != known.end()) {
            taken.insert(records[i] = same->second);
            known.erase(same);
        }
    }
    std::erase_if(old, [&](const auto& entry) { return taken.contains(entry.second); });
    auto next = old.begin();
    for (IFilmKey*& record : records) {
        if (record == nullptr && next != old.end()) {
            record = (next++)->second;
        }
    }
    old.erase(old.begin(), next);
    return records;
}

IFilmKey* MakeKey(TrackBase& track, int kind) {
    IFilmKey* key = track.Manager().Keys().CreateKey(kind);
    key->track = &track.Self();
    track.Self().keys.push_back(key);
    return key;
}

/// Takes keys out of the track's list; whoever shows one may go on until rows are made anew.
void ParkKeys(TrackBase& track, const std::vector<std::pair<std::string_view, IFilmKey*>>& gone) {
    std::unordered_set<const IFilmKey*> doomed;
    for (const auto& [piece, key] : gone) {
        doomed.insert(key);
        key->track = nullptr;
        track.Manager().Park(key);
    }
    track.Self().keys.remove_if([&](const IFilmKey* key) { return doomed.contains(key); });
}

bool RestoreKeys(TrackBase& track, int kind, std::string_view target) {
    KeyChannel& channel = track.Require(kind);
    const std::vector<IFilmKey*> keys(channel.Keys().begin(), channel.Keys().end());
    std::string present;
    WriteKeys(keys, kind, present);
    const std::vector<std::string_view> now = KeyPieces(present, kind);
    const std::vector<std::string_view> then = KeyPieces(target, kind);
    if (now.size() != keys.size()) {
        return false;
    }
    const std::size_t front = SamePieces(now, then, 0, false);
    const std::size_t back = SamePieces(now, then, front, true);
    std::vector<std::pair<std::string_view, IFilmKey*>> old;
    for (std::size_t i = front; i < now.size() - back; ++i) {
        old.emplace_back(now[i], keys[i]);
    }
    const auto wanted = std::span(then).subspan(front, then.size() - front - back);
    std::vector<IFilmKey*> order(keys.begin(), keys.begin() + static_cast<std::ptrdiff_t>(front));
    bool good = true;
    std::size_t i = 0;
    for (IFilmKey* record : Reused(old, wanted)) {
        order.push_back(record != nullptr ? record : MakeKey(track, kind));
        good = ReadKeyPiece(wanted[i++], *order.back()) && good;
    }
    order.insert(order.end(), keys.end() - static_cast<std::ptrdiff_t>(back), keys.end());
    channel.SetKeys(std::move(order));
    ParkKeys(track, old);
    std::vector<std::string> messages; // of objects that are not in the level: the former bytes said so too
    track.Relink(track.Manager().Data(), messages);
    track.Refresh();
    return good;
}

bool RestoreFilmHead(const LevelData& data, int slot, std::string_view part) {
    Film* film = data.Films().FilmAt(slot);
    if (film == nullptr) {
        return false;
    }
    const std::vector<std::uint64_t> serials = Serials(TrackOrderOf(part));
    return std::ranges::equal(serials, film->Tracks(), {}, {}, &TrackBase::serial) &&
           ReadFilmHead(*film, FilmHeadOf(part));
}

bool RestoreTrackHead(const LevelData& data, const PartKey& key, std::string_view part) {
    TrackBase* track = FindTrack(data, key);
    if (track == nullptr || track->TrackClass() != ClassId::CameraTrack) {
        return false; // what a track drives is not changed under a film
    }
    const bool good = ReadTrackHead(*track, HeadOf(part));
    track->Refresh();
    return good;
}

bool RestoreObject(const LevelData& data, int id, std::string_view part) {
    SceneObject* object = data.Find(id);
    return object != nullptr && ReadObjectCore(*object, PartChunks(part).known);
}

} // namespace

bool RestorePart(Level& level, const PartKey& key, std::optional<std::string_view> bytes) {
    LevelData& data = *level.Data();
    if (!bytes) {
        TrackBase* track = key.kind == PartKind::Keys ? FindTrack(data, key) : nullptr;
        return track != nullptr && RestoreKeys(*track, key.keys, {});
    }
    switch (key.kind) {
    case PartKind::Keys: {
        TrackBase* track = FindTrack(data, key);
        return track != nullptr && RestoreKeys(*track, key.keys, *bytes);
    }
    case PartKind::Track:
        return RestoreTrackHead(data, key, *bytes);
    case PartKind::Film:
        return RestoreFilmHead(data, key.id, *bytes);
    case PartKind::Object:
        return RestoreObject(data, key.id, *bytes);
    case PartKind::Groups: {
        data.ClearGroups();
        ByteReader in(*bytes);
        std::vector<std::string> messages; // the former bytes said the same
        const bool good = ReadGroups(in, data);
        data.Relink(messages);
        return good;
    }
    case PartKind::Sun: {
        ByteReader in(*bytes);
        return ReadSun(in, data);
    }
    default:
        return false;
    }
}

void GivePluginChunks(Level& level, const PartKey& key, std::string_view bytes) {
    LevelData& data = *level.Data();
    IHostObject* owner = &data.Root();
    if (key.kind == PartKind::ObjectPlugins) {
        owner = data.Find(key.id);
    }
    IChunkClient* client = level.ChunkClient();
    if (owner == nullptr || client == nullptr) {
        return;
    }
    MemoryFile file(bytes);
    ChunkCursor cursor(bytes, 0);
    for (FoundChunk chunk; cursor.Next(chunk);) {
        if (client->IsOwnChunk(chunk.id)) {
            SeekTo(file.file.handle, chunk.offset);
            client->LoadChunk(owner, file.file, chunk.id, static_cast<std::uint32_t>(chunk.data.size()));
        }
    }
}

} // namespace engine
