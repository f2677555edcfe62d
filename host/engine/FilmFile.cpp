#include "host/engine/FilmFile.h"

#include "host/engine/ByteStream.h"
#include "host/engine/CameraTrack.h"
#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/KeyFormat.h"
#include "host/engine/LightTrack.h"
#include "host/engine/ObjectTrack.h"

#include <memory>
#include <utility>

namespace engine {

namespace {

void WriteObjectHead(ByteWriter& out, const ObjectTrack& track) {
    out.I32(ObjectLink::IdOf(track.actor, track.actorLink.pendingId));
    out.U8(track.actorIsVirtual ? 1 : 0);
    out.I32(ObjectLink::IdOf(track.parentObject, track.parentLink.pendingId));
    out.U8(track.parentIsVirtual ? 1 : 0);
    out.Text(track.parentElement);
}

void ReadObjectHead(ByteReader& in, ObjectTrack& track) {
    track.actorLink.pendingId = in.I32();
    track.actorIsVirtual = in.U8() != 0;
    track.parentLink.pendingId = in.I32();
    track.parentIsVirtual = in.U8() != 0;
    track.parentElement = in.Text();
}

void WriteCameraHead(ByteWriter& out, const CameraTrack& track) {
    for (int i = 0; i < CFilmCameraTrack::kSubTracks; ++i) {
        out.I32(track.loopMode[i]);
        out.F32(track.subTrackLength[i]);
    }
    out.F32(track.OwnFieldOfView());
    out.F32(track.nearPlane);
    out.F32(track.farPlane);
    out.Text(track.cameraName);
}

void ReadCameraHead(ByteReader& in, CameraTrack& track) {
    for (int i = 0; i < CFilmCameraTrack::kSubTracks; ++i) {
        track.loopMode[i] = in.I32();
        track.subTrackLength[i] = in.F32();
    }
    track.fieldOfView = in.F32();
    track.nearPlane = in.F32();
    track.farPlane = in.F32();
    track.cameraName = in.Text();
}

void WriteTrack(const TrackBase& track, std::string& bytes) {
    const std::size_t whole = BeginChunkAt(bytes, LevelChunk::Track);
    const std::size_t head = BeginChunkAt(bytes, LevelChunk::TrackHead);
    WriteTrackHead(track, bytes);
    EndChunkAt(bytes, head);
    ByteWriter out(bytes);
    for (int kind = 0; kind < KeyKind::Count; ++kind) {
        const KeyChannel* channel = track.Channel(kind);
        if (channel != nullptr && !channel->Empty()) {
            const std::size_t keys = BeginChunkAt(bytes, LevelChunk::TrackKeys);
            out.U8(static_cast<std::uint8_t>(kind));
            WriteKeys(channel->Keys(), kind, bytes);
            EndChunkAt(bytes, keys);
        }
    }
    MergeForeignAt(bytes, whole, track.foreignChunks);
    EndChunkAt(bytes, whole);
}

void TellRest(const FoundChunk& chunk, std::size_t left, const std::string& part,
              std::vector<std::string>& messages) {
    if (left > 0) {
        messages.push_back(RestMessage(left, part) + " at byte " + std::to_string(chunk.offset));
    }
}

/// What follows the track's class.
void ReadHeadFields(ByteReader& in, CFilmTrack* track) {
    if (CFilmObjectTrack* object = AsObjectTrack(track)) {
        ReadObjectHead(in, static_cast<ObjectTrack&>(*object));
    } else if (CFilmCameraTrack* camera = AsCameraTrack(track)) {
        ReadCameraHead(in, static_cast<CameraTrack&>(*camera));
    } else if (CFilmGLLightTrack* light = AsGLLightTrack(track)) {
        light->isFixedLight = in.U8();
        light->isSun = in.U8();
    }
}

/// Null for a class that no track has.
std::unique_ptr<CFilmTrack> MakeTrack(Film& film, const FoundChunk& chunk,
                                      std::vector<std::string>& messages) {
    ByteReader in(chunk.data);
    std::unique_ptr<CFilmTrack> track(film.CreateTrack(in.I32()));
    ReadHeadFields(in, track.get());
    if (!in.Good()) {
        return nullptr;
    }
    TellRest(chunk, in.Left(), "a track of film \"" + std::string(film.name) + "\"", messages);
    return track;
}

void ReadTrackKeys(TrackBase& track, const FoundChunk& chunk) {
    ByteReader in(chunk.data);
    const int kind = in.U8();
    std::vector<IFilmKey*> keys;
    if (!in.Good() || !track.Holds(kind) ||
        !ReadKeys(chunk.data.substr(1), kind, track.Manager(), track.Self(), /*listed*/ true, keys)) {
        throw ChunkError(chunk.offset,
                         "the keys of kind " + std::to_string(kind) + " of a track are damaged");
    }
    track.Require(kind).Append(std::move(keys));
}

void ReadTrack(Film& film, const FoundChunk& chunk, std::vector<std::string>& messages) {
    ChunkCursor cursor(chunk.data, chunk.offset);
    FoundChunk part;
    TrackBase* track = nullptr;
    std::vector<RawChunk> foreign;
    int place = 0;
    while (cursor.Next(part)) {
        if (part.id == LevelChunk::TrackHead && track == nullptr) {
            ++place;
            std::unique_ptr<CFilmTrack> made = MakeTrack(film, part, messages);
            if (made == nullptr) {
                throw ChunkError(part.offset, "a track is damaged");
            }
            film.AddTrack(made.release());
            track = film.Tracks().back();
        } else if (part.id == LevelChunk::TrackKeys && track != nullptr) {
            ++place;
            try {
                ReadTrackKeys(*track, part);
            } catch (const ChunkError& error) {
                messages.push_back(std::string(error.what()) + " at byte " + std::to_string(error.offset));
            }
        } else {
            foreign.push_back({part.id, place, std::string(part.data)});
        }
    }
    if (track == nullptr) {
        messages.push_back("a track without a head is left out at byte " + std::to_string(chunk.offset));
        return;
    }
    track->foreignChunks = std::move(foreign);
}

Film& MakeFilm(FilmManager& films, const FoundChunk& chunk, std::vector<std::string>& messages) {
    ByteReader in(chunk.data);
    const int slot = in.U16();
    const std::string name = in.Text();
    const float length = in.F32();
    const std::uint8_t validated = in.U8();
    if (!in.Good() || slot >= IFilmManager::kFilms || films.FilmAt(slot) != nullptr) {
        throw ChunkError(chunk.offset, "a film is damaged");
    }
    Film& film = films.MakeFilm(slot);
    film.SetName(name.c_str());
    film.length = length;
    film.validated = validated;
    TellRest(chunk, in.Left(), "film \"" + name + "\"", messages);
    return film;
}

} // namespace

std::size_t FilmsSizeGuess(const FilmManager& films) {
    constexpr std::size_t kKeyBytes = 48;
    constexpr std::size_t kTrackBytes = 128;
    std::size_t size = 0;
    for (int slot = 0; slot < IFilmManager::kFilms; ++slot) {
        for (const TrackBase* track :
             films.FilmAt(slot) != nullptr ? films.FilmAt(slot)->Tracks() : std::vector<TrackBase*>{}) {
            size += kTrackBytes + kKeyBytes * track->Self().keys.size();
        }
    }
    return size;
}

void WriteFilmHead(const Film& film, int slot, std::string& bytes) {
    ByteWriter out(bytes);
    out.U16(static_cast<std::uint16_t>(slot));
    out.Text(film.name);
    out.F32(film.length);
    out.U8(film.validated);
}

bool ReadFilmHead(Film& film, std::string_view bytes) {
    ByteReader in(bytes);
    in.U16();
    const std::string name = in.Text();
    const float length = in.F32();
    const std::uint8_t validated = in.U8();
    if (in.Good()) {
        film.SetName(name.c_str());
        film.length = length;
        film.validated = validated;
    }
    return in.Good();
}

void WriteTrackHead(const TrackBase& track, std::string& bytes) {
    ByteWriter out(bytes);
    out.I32(track.TrackClass());
    if (track.TrackClass() == ClassId::ObjectTrack) {
        WriteObjectHead(out, static_cast<const ObjectTrack&>(track));
    } else if (track.TrackClass() == ClassId::CameraTrack) {
        WriteCameraHead(out, static_cast<const CameraTrack&>(track));
    } else if (track.TrackClass() == ClassId::GLLightTrack) {
        out.U8(static_cast<const GLLightTrack&>(track).isFixedLight);
        out.U8(static_cast<const GLLightTrack&>(track).isSun);
    }
}

bool ReadTrackHead(TrackBase& track, std::string_view bytes) {
    ByteReader in(bytes);
    if (in.I32() == track.TrackClass()) {
        ReadHeadFields(in, &track.Self());
    }
    return in.Good();
}

void WriteFilms(const FilmManager& films, std::string& bytes) {
    for (int slot = 0; slot < IFilmManager::kFilms; ++slot) {
        const Film* film = films.FilmAt(slot);
        if (film == nullptr) {
            continue;
        }
        const std::size_t whole = BeginChunkAt(bytes, LevelChunk::Film);
        const std::size_t head = BeginChunkAt(bytes, LevelChunk::FilmHead);
        WriteFilmHead(*film, slot, bytes);
        EndChunkAt(bytes, head);
        for (const TrackBase* track : film->Tracks()) {
            WriteTrack(*track, bytes);
        }
        MergeForeignAt(bytes, whole, film->foreignChunks);
        EndChunkAt(bytes, whole);
    }
}

void ReadFilm(FilmManager& films, const FoundChunk& chunk, std::vector<std::string>& messages) {
    try {
        ChunkCursor cursor(chunk.data, chunk.offset);
        FoundChunk part;
        Film* film = nullptr;
        std::vector<RawChunk> early; // what stands in front of the head
        int place = 0;
        while (cursor.Next(part)) {
            if (part.id == LevelChunk::FilmHead && film == nullptr) {
                film = &MakeFilm(films, part, messages);
                film->foreignChunks = std::exchange(early, {});
                ++place;
            } else if (part.id == LevelChunk::Track && film != nullptr) {
                ReadTrack(*film, part, messages);
                ++place;
            } else {
                std::vector<RawChunk>& foreign = film != nullptr ? film->foreignChunks : early;
                foreign.push_back({part.id, place, std::string(part.data)});
            }
        }
        if (film == nullptr) {
            throw ChunkError(chunk.offset, "a film without a head is left out");
        }
    } catch (const ChunkError& error) {
        messages.push_back(std::string(error.what()) + " at byte " + std::to_string(error.offset));
    }
}

} // namespace engine
