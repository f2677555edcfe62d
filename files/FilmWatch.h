#pragma once

#include "plugin/session/LevelWatch.h"

/// Tells whether the film that was current at the construction, or that none was, still holds. Film and level
/// may go while a dialog is open, so the film is only compared; another level may have put its own at the
/// same address.
class FilmWatch {
public:
    explicit FilmWatch(const FilmSession& watched)
        : session(&watched), film(watched.GetCurrentFilm()), level(watched) {}

    bool IsCurrent() const { return film == session->GetCurrentFilm() && level.IsSameLevel(); }

private:
    const FilmSession* session; ///< outlives the watch
    const IFilm* film;
    LevelWatch level;
};
