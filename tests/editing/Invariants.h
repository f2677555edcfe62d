#pragma once

#include "plugin/contract/FilmKey.h"

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_set>

namespace editing {

class World;

/// Something that must never be.
struct Failure {
    std::string kind; ///< the same for the same fault
    std::string text;
};

/// What the film data are at one moment.
struct Ledger {
    explicit Ledger(const World& world);

    std::unordered_set<const IFilmKey*> inTracks;
    const void* level = nullptr; ///< compared only
};

/// Checked after every step; `before` and `now` are of the moments before it and after it.
///
/// Rows and tracks hold the same keys, but for these:
/// - keys outside the time axis: a shorter axis takes views away and leaves the records;
/// - keys that no row takes, such as those of a mesh element that the mesh hasn't or of a row that was
/// removed. Views and records have the same times; a timed view that was read from its record has its
/// duration from the end, so that its own end may differ by rounding. The view of the control may be inverted
/// after a change of the axis, since each of its ends is only kept inside one side; ruler and rows put it in
/// order. A stale page length lets the thumb take it out at the start. Selected keys and the current key may
/// be out of their rows, as long as a removed key lives in its undo action.
std::optional<Failure> CheckInvariants(const World& world, const Ledger& before, const Ledger& now);
/// What holds while a dialog is open in the middle of a step: everything but the number of records, since the
/// command that opened the dialog may hold some.
std::optional<Failure> CheckWhileOpen(const World& world);

} // namespace editing
