#pragma once

#include "host/engine/LevelFormat.h"

namespace engine {

class Film;
class FilmManager;
class TrackBase;

/// About how many bytes WriteFilms will append.
std::size_t FilmsSizeGuess(const FilmManager& films);
/// Appends what a film says of itself, its tracks apart.
void WriteFilmHead(const Film& film, int slot, std::string& bytes);
/// The reading side for a film that is there; false, and nothing changed, if the bytes say no such thing.
bool ReadFilmHead(Film& film, std::string_view bytes);
/// Appends what a track says of itself, its keys apart.
void WriteTrackHead(const TrackBase& track, std::string& bytes);
/// The reading side for a track of the class that is there. Objects are known by their ids only, until the
/// film is linked anew.
bool ReadTrackHead(TrackBase& track, std::string_view bytes);
/// Appends a chunk for each film.
void WriteFilms(const FilmManager& films, std::string& bytes);
/// Makes a film from the data of one chunk. What does not hold together is left out, told in `messages`.
void ReadFilm(FilmManager& films, const FoundChunk& chunk, std::vector<std::string>& messages);

} // namespace engine
