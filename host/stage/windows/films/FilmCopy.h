#pragma once

namespace engine {
class Film;
}

namespace stage {

/// Gives a new film what another has: length, actors, cameras and all keys, those of level and sun to its own
/// tracks. Both are closed. The number of lights that stay with the first film, since a light is in one film
/// only.
int CopyFilm(const engine::Film& from, engine::Film& to);

} // namespace stage
