#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace stage {

class EditorHost;
class LevelHistory;

/// Whether the level differs from what was last saved or opened. Plug-ins edit films and what they keep
/// themselves in place and tell nobody, so the judge is what a save would write, by the parts that undo goes
/// by too (LevelHistory). That is asked for where
/// the answer is needed and in quiet moments; in between the last answer stands.
///
/// A film that is shown for the first time makes plug-ins write down defaults for it. What differs by that
/// alone is no change: it counts as saved from the end of that call on.
class LevelChanges {
public:
    LevelChanges(EditorHost& editorHost, const LevelHistory& levelHistory);

    /// No level, or one on the way: there is nothing that could have changed.
    void Forget();
    /// The level as it stands is saved.
    void CountAsSaved();
    /// The same for a level that was just looked at; none if that failed.
    void CountAsSaved(std::optional<std::uint64_t> content);
    /// Whatever the level becomes, it is not saved.
    void CountAsUnsaved();

    /// Something was changed for certain. The next comparison may still find nothing.
    void Mark();
    /// Looks at the parts of the level and compares.
    bool Compare();
    /// As last found, at no cost.
    bool IsMarked() const { return changed; }

    /// Rows of a film are made now; `EndLook` is due when the call that makes them has ended.
    void BeginLook();
    void EndLook();
    /// The user has changed something in the call that looked like showing: it counts.
    void BreakLook();
    /// Called when an EndLook becomes due. A comparison brings it too.
    std::function<void()> lookBegan;

private:
    /// None where the level can't be written.
    std::optional<std::uint64_t> Content();
    void Set(bool isChanged);

    EditorHost& host;
    const LevelHistory& history;
    std::optional<std::uint64_t>
        saved;             ///< LevelHistory::ContentNow; none: nothing that the level could be equal to
    bool tracking = false; ///< there is a level
    bool changed = false;
    bool looking = false;
    bool writing = false;
};

} // namespace stage
