#pragma once

#include "host/stage/host/history/ByteDelta.h"
#include "host/stage/host/history/PartStore.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace stage {

/// How a part changed in a step.
struct PartDelta {
    engine::PartKey key;
    bool wasThere = false;
    bool isThere = false;
    ByteDelta bytes;
    std::uint64_t before = 0; ///< numbers of the bytes on both sides, 0 for none
    std::uint64_t after = 0;
};

/// What a user did at once.
struct HistoryStep {
    std::string name;
    std::vector<PartDelta> parts;
    std::uint64_t hashAfter = 0;     ///< PartStore::WorkHash
    int film = -1;                   ///< slot of the film that was open; -1 none
    std::vector<int> selectedBefore; ///< ids of objects
    std::vector<int> selectedAfter;
    /// Not the user's doing: what plug-ins wrote down because they showed something. Undo and redo pass over.
    bool isLook = false;
    std::uint64_t series = 0; ///< steps of the same number, one behind the other, become one; 0 never

    std::size_t Size() const;
};

/// The steps of a level, and which of them are done. It knows differences only, not the level.
class EditHistory {
public:
    void Clear();
    /// Where steps take more than so many bytes, the oldest fall away; the last one stays.
    void SetLimit(std::size_t bytes);
    /// The user did something: what was undone before is gone. The changes' `before` must be what the
    /// level was after the steps done so far.
    void Add(HistoryStep step, const PartChanges& changes);
    /// A step whose differences are worked out already.
    void AddLook(HistoryStep step);
    /// A number of the bytes of a part, 0 for none.
    static std::uint64_t NumberOf(const std::optional<std::string_view>& bytes);
    /// Found late: it belongs to the step that was done last.
    void Amend(const PartChanges& changes, std::uint64_t hash);

    const std::vector<HistoryStep>& Steps() const { return steps; }
    /// Number of steps that are done.
    std::size_t Done() const { return done; }
    void SetDone(std::size_t count) { done = count; }
    /// Number of steps that have fallen away at the front since the last Clear; of the user's alone.
    std::size_t Dropped() const { return dropped; }
    std::size_t Forgotten() const { return forgotten; }
    /// Number of steps that stay done when the last of the user's is undone; `Done()` if there is none.
    std::size_t BeforeUndo() const;
    /// Number of steps that are done when the next of the user's is redone; `Done()` if there is none.
    std::size_t AfterRedo() const;
    bool CanUndo() const { return BeforeUndo() != done; }
    bool CanRedo() const { return AfterRedo() != done; }
    /// The names of what the two would do, empty if nothing.
    std::string UndoName() const { return CanUndo() ? steps[BeforeUndo()].name : std::string(); }
    std::string RedoName() const { return CanRedo() ? steps[AfterRedo() - 1].name : std::string(); }
    /// Ids of the objects that were selected where the way to that number of steps ends: back, in front of
    /// the step that is undone last; forth, behind the one that is done last.
    std::vector<int> SelectedAt(std::size_t count) const;
    /// Bytes that it takes, about.
    std::size_t Size() const;

private:
    static std::vector<PartDelta> DeltasOf(const PartChanges& changes);
    /// The last step's changes and these as one.
    void Join(HistoryStep& step, const PartChanges& changes) const;

    void Trim();

    std::vector<HistoryStep> steps;
    std::size_t done = 0;
    std::size_t limit = std::numeric_limits<std::size_t>::max(); ///< bytes
    std::size_t dropped = 0;
    std::size_t forgotten = 0;
};

} // namespace stage
