#pragma once

#include "host/engine/LevelFormat.h"

namespace engine {

class FilmManager;

/// About how many bytes WriteFilms will append.
std::size_t FilmsSizeGuess(const FilmManager& films);
/// Appends a chunk for each film.
void WriteFilms(const FilmManager& films, std::string& bytes);
/// Makes a film from the data of one chunk. What does not hold together is left out, told in `messages`.
void ReadFilm(FilmManager& films, const FoundChunk& chunk, std::vector<std::string>& messages);

} // namespace engine
