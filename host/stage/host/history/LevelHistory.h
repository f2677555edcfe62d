#pragma once

#include "host/stage/host/history/Deed.h"
#include "host/stage/host/history/EditHistory.h"
#include "host/stage/host/history/LevelRestore.h"

#include <functional>

namespace stage {

class EditorHost;

/// What was done with the open level, step by step, and back again. Nobody tells of edits, so it looks at the
/// level's parts where a gesture, a command or a dialog has ended: never call it in the middle of one.
///
/// Plug-ins are told by the contract's own means (LevelRestore) and have no part in it.
class LevelHistory {
public:
    explicit LevelHistory(EditorHost& editorHost);

    /// No level, or one on the way.
    void Forget();
    /// Another level, as it is now: no steps. ContentNow, or none if the level can't be read.
    std::optional<std::uint64_t> Start();

    enum class Pace {
        Single,
        Series ///< one of many that follow each other: turns of a wheel, a key that repeats itself
    };
    /// What the user has done since is a step. True if there was anything.
    bool Note(Pace pace = Pace::Single);
    /// The same also for what was written without a word into fields; it costs a look at everything. What
    /// `Note` did not find belongs to the step that it made.
    bool NoteAll();
    /// What was done since the last note; the next one names its step by it, and forgets it also if it finds
    /// nothing. Deeds of one kind count as one; where several kinds come together none names the step.
    void Tell(Deed deed);
    /// From here on another gesture: what follows makes a step of its own, also in a series.
    void EndSeries() { ++seriesNumber; }

    /// False if there is nothing to undo, or if a film plays or something else is under way.
    bool Undo();
    bool Redo();
    /// Until so many steps are done.
    bool GoTo(std::size_t done);
    const EditHistory& Edits() const { return edits; }
    /// What steps may take, in bytes; the oldest fall away.
    void SetLimit(std::size_t bytes);
    /// A number of what the level says now; good within one run of the program. Left out is what mere looking
    /// changes: where the views look from. May be asked in the middle of something. Throws what a
    /// plug-in throws; there must be a level.
    std::uint64_t ContentNow() const;
    /// The same without what only says how it is shown, as of the last note.
    std::uint64_t WorkHash() const { return store.WorkHash(); }
    /// Whether plug-ins have added something again by showing what an undo or redo has put back.
    bool HasLooks() const { return !looks.empty(); }
    /// Something of this is under way.
    bool IsBusy() const { return busy; }
    /// Bytes that steps and parts take, about.
    std::size_t Size() const { return edits.Size() + store.Size(); }

    /// There are other steps, or another number of them is done.
    std::function<void()> changed;

private:
    class Busy;

    /// None if the level can't be read, which ends all steps.
    std::optional<PartChanges> Look(PartStore::Look look);
    bool Take(PartChanges changes, Pace pace, bool isLate, const std::optional<Deed>& deed);
    void TakeLook(const PartChanges& changes);
    bool MayRestore() const;
    bool RestoreTo(std::size_t done);
    /// False if the steps don't fit to the level.
    bool AddTargets(PartTargets& targets, const HistoryStep& step, bool isBack) const;
    std::optional<std::string_view> Present(const PartTargets& targets, const engine::PartKey& key) const;
    bool Carry(PartTargets targets);
    void ApplyToStore(const PartTargets& targets);
    void TellChanged() const;
    /// The deed that was told since the last note, if it was one; forgotten from now on.
    std::optional<Deed> TakeDeed();

    EditorHost& host;
    PartStore store;
    EditHistory edits;
    std::vector<int> selected;      ///< ids of objects, as of the last note
    std::vector<Deed> deeds;        ///< since the last note
    std::vector<HistoryStep> looks; ///< since something was undone; newest last
    bool started = false;
    bool busy = false;
    bool hasFreshStep = false; ///< the last Note made one
    std::uint64_t seriesNumber = 1;
};

} // namespace stage
