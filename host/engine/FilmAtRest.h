#pragma once

#include "host/engine/SceneObject.h"

#include <optional>
#include <utility>
#include <vector>

namespace engine {

class Film;
class Level;
class LevelData;

/// While it lives, everything that the open film poses stands as it does with the film closed: for writing
/// the level in the middle of the work. Nobody is told, and afterwards all is as it was to the last bit.
/// Nothing may be made, deleted, moved or posed meanwhile.
class FilmAtRest {
public:
    /// Lights of a film are dark while it is closed, but those of a film that was not opened since the level
    /// was are as the file has them. `AllDark` shows them dark too, so that opening the film makes no
    /// difference.
    enum class ClosedFilms { AsTheyAre, AllDark };

    explicit FilmAtRest(Level& level, ClosedFilms closedFilms = ClosedFilms::AsTheyAre);
    ~FilmAtRest();
    FilmAtRest(const FilmAtRest&) = delete;
    FilmAtRest& operator=(const FilmAtRest&) = delete;

private:
    void KeepStandings();

    LevelData* data;
    std::vector<std::pair<SceneObject*, SceneObject::Standing>> before;
    std::optional<SunObject> sunBefore;
};

} // namespace engine
