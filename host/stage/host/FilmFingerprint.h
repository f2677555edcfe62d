#pragma once

#include <cstdint>

class IFilmManager;

namespace stage {

/// A number that changes when anything of the films changes. Plug-ins edit films in place and tell nobody,
/// so the host compares fingerprints to learn whether a level has unsaved films.
std::uint64_t FilmFingerprint(const IFilmManager* manager);

} // namespace stage
