#pragma once

/// Tells whether the level is still the one of its construction. What a dialog notes of a film, a track or an
/// object is compared when it ends, and another level may have put its own at the same address.
class LevelWatch {
public:
    LevelWatch() : number(levelNumber) {}

    bool IsSameLevel() const { return number == levelNumber; }

    /// For the plug-in object: a level has been left or opened.
    static void LevelChanges() { ++levelNumber; }

private:
    static unsigned levelNumber;

    unsigned number;
};
