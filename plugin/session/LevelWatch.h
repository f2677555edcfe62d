#pragma once

#include "plugin/session/FilmSession.h"

/// Tells whether the level is still the one of its construction. What a dialog notes of a film, a track or an
/// object is compared when it ends, and another level may have put its own at the same address.
class LevelWatch {
public:
    /// On no level: whatever is open is another.
    LevelWatch() = default;
    explicit LevelWatch(const FilmSession& watched)
        : session(&watched), levelNumber(watched.GetLevelNumber()) {}

    bool IsSameLevel() const { return session != nullptr && levelNumber == session->GetLevelNumber(); }

private:
    const FilmSession* session = nullptr;
    unsigned levelNumber = 0;
};
