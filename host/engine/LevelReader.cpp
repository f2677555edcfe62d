#include "host/engine/LevelReader.h"

#include "host/engine/FilmFile.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "host/engine/ObjectFile.h"

#include <cmath>

namespace engine {

bool ReadGroups(ByteReader& in, LevelData& data) {
    const std::uint32_t count = in.U32();
    for (std::uint32_t i = 0; i < count && in.Good(); ++i) {
        auto group = std::make_unique<Group>();
        group->name = in.Text();
        const std::uint32_t members = in.U32();
        for (std::uint32_t k = 0; k < members && in.Good(); ++k) {
            group->missingIds.push_back(in.I32());
        }
        if (in.Good()) {
            data.AddLoadedGroup(std::move(group));
        }
    }
    return in.Good();
}

bool ReadSun(ByteReader& in, LevelData& data) {
    const bool isThere = in.U8() != 0;
    if (isThere != (data.Sun() != nullptr)) {
        data.SetSun(isThere);
    }
    SunObject* sun = data.Sun();
    if (sun != nullptr) {
        in.Floats(sun->direction.Data(), 3);
        in.Floats(sun->light.color.Data(), 3);
        sun->light.intensity = in.F32();
        sun->light.on = in.U8() != 0;
    }
    return in.Good();
}

LevelReader::LevelReader(PendingLevel& pendingLevel, LevelData& levelData)
    : pending(pendingLevel), data(levelData) {
}

void LevelReader::Read() {
    ChunkCursor file(pending.bytes, 0);
    FoundChunk whole;
    if (!file.Next(whole) || whole.id != LevelChunk::Level) {
        throw ChunkError(0, "this is not a level file");
    }
    data.bytesBehind = pending.bytes.substr(whole.offset + whole.data.size());
    ChunkCursor cursor(whole.data, whole.offset);
    FoundChunk chunk;
    for (int place = 0; cursor.Next(chunk);) {
        if (ReadPart(chunk)) {
            ++place;
        } else {
            Postpone(kInLevel, chunk, place);
        }
    }
    if (!headerSeen) {
        throw ChunkError(whole.offset, "the level has no header");
    }
}

bool LevelReader::ReadPart(const FoundChunk& chunk) {
    switch (chunk.id) {
    case LevelChunk::Header:
        ReadHeader(chunk);
        return true;
    case LevelChunk::Root:
        ReadRoot(chunk);
        return true;
    case LevelChunk::Objects:
        ReadObjects(chunk);
        return true;
    case LevelChunk::Films:
        ReadFilms(chunk);
        return true;
    case LevelChunk::Groups:
        ReadGroups(chunk);
        return true;
    case LevelChunk::Sun:
        ReadSun(chunk);
        return true;
    case LevelChunk::Views:
        ReadViews(chunk);
        return true;
    case LevelChunk::Bookmarks:
        ReadBookmarks(chunk);
        return true;
    default:
        return false;
    }
}

void LevelReader::Tell(std::size_t offset, const std::string& what) {
    pending.messages.push_back(pending.path + ": " + what + " at byte " + std::to_string(offset));
}

void LevelReader::TellRest(const FoundChunk& chunk, std::size_t left, const std::string& part) {
    if (left > 0) {
        Tell(chunk.offset, RestMessage(left, part));
    }
}

void LevelReader::Postpone(int objectId, const FoundChunk& chunk, int place) {
    pending.chunks.push_back(
        {objectId, chunk.id, place, chunk.offset, static_cast<std::uint32_t>(chunk.data.size())});
}

void LevelReader::ReadHeader(const FoundChunk& chunk) {
    ByteReader in(chunk.data);
    const std::uint32_t version = in.U32();
    const std::int32_t next = in.I32();
    if (!in.Good()) {
        throw ChunkError(chunk.offset, "the level's header is cut short");
    }
    if (version != kLevelVersion) {
        throw ChunkError(chunk.offset, "the level is of version " + std::to_string(version) +
                                           ", which this program does not know");
    }
    headerSeen = true;
    TellRest(chunk, in.Left(), "the level's header");
    data.SetNextId(next);
}

void LevelReader::ReadRoot(const FoundChunk& container) {
    ChunkCursor cursor(container.data, container.offset);
    FoundChunk chunk;
    while (cursor.Next(chunk)) {
        Postpone(kInRoot, chunk, 0);
    }
}

void LevelReader::ReadObjects(const FoundChunk& container) {
    ChunkCursor cursor(container.data, container.offset);
    FoundChunk chunk;
    while (cursor.Next(chunk)) {
        if (chunk.id != LevelChunk::Object) {
            Tell(chunk.offset, "chunk " + std::to_string(chunk.id) +
                                   " among the objects is not known; a save leaves it out");
            continue;
        }
        try {
            std::vector<ObjectExtra> extras;
            std::vector<std::string> told;
            SceneObject& object = ParseObject(data, chunk.data, chunk.offset, extras, &told);
            for (const std::string& message : told) {
                Tell(chunk.offset, message);
            }
            for (const ObjectExtra& extra : extras) {
                Postpone(object.id, extra.chunk, extra.place);
            }
        } catch (const ChunkError& error) {
            Tell(error.offset, std::string("an object is left out: ") + error.what());
        }
    }
}

void LevelReader::ReadFilms(const FoundChunk& container) {
    ChunkCursor cursor(container.data, container.offset);
    FoundChunk chunk;
    std::vector<std::string> told;
    for (int place = 0; cursor.Next(chunk);) {
        if (chunk.id == LevelChunk::Film) {
            ReadFilm(data.Films(), chunk, told);
            ++place;
        } else {
            Postpone(kInFilms, chunk, place);
        }
    }
    for (const std::string& message : told) {
        pending.messages.push_back(pending.path + ": " + message);
    }
}

void LevelReader::ReadGroups(const FoundChunk& chunk) {
    ByteReader in(chunk.data);
    if (!engine::ReadGroups(in, data)) {
        Tell(chunk.offset, "the groups are cut short");
    }
    TellRest(chunk, in.Good() ? in.Left() : 0, "the list of groups");
}

void LevelReader::ReadSun(const FoundChunk& chunk) {
    ByteReader in(chunk.data);
    if (!engine::ReadSun(in, data)) {
        data.SetSun(true);
        Tell(chunk.offset, "the sun is damaged and shines as in a new level");
    }
    TellRest(chunk, in.Good() ? in.Left() : 0, "the sun");
}

void LevelReader::ReadViews(const FoundChunk& chunk) {
    ByteReader in(chunk.data);
    const std::uint32_t count = in.U32();
    for (std::uint32_t i = 0; i < count && in.Good(); ++i) {
        SavedView view;
        in.Floats(view.camera.m, 16);
        view.fieldOfView = in.F32();
        view.nearPlane = in.F32();
        view.farPlane = in.F32();
        if (in.Good()) {
            data.savedViews.push_back(view);
        }
    }
    if (!in.Good()) {
        Tell(chunk.offset, "the views are cut short");
    }
    TellRest(chunk, in.Good() ? in.Left() : 0, "the list of views");
}

void LevelReader::ReadBookmarks(const FoundChunk& chunk) {
    ByteReader in(chunk.data);
    const std::uint32_t count = in.U32();
    for (std::uint32_t i = 0; i < count && in.Good(); ++i) {
        const int number = in.I32();
        ViewBookmark mark;
        in.Floats(mark.pivot.Data(), 3);
        mark.yaw = in.F32();
        mark.pitch = in.F32();
        mark.distance = in.F32();
        mark.fieldOfView = in.F32();
        const bool usable = IsFinite(mark.pivot) && std::isfinite(mark.yaw + mark.pitch) &&
                            mark.distance > 0.0f && std::isfinite(mark.distance) && mark.fieldOfView > 0.0f &&
                            mark.fieldOfView < 3.1f;
        if (in.Good() && usable) {
            data.bookmarks[number] = mark;
        }
    }
    if (!in.Good()) {
        Tell(chunk.offset, "the bookmarks are cut short");
    }
    TellRest(chunk, in.Good() ? in.Left() : 0, "the list of bookmarks");
}

} // namespace engine
