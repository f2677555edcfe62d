#pragma once

#include "host/stage/host/history/PartStore.h"

#include <map>

namespace stage {

class EditorHost;

/// What parts are to become; without bytes they go.
using PartTargets = std::map<engine::PartKey, std::optional<std::string>>;

/// Puts parts of the level back and tells the plug-ins so by what the contract has for it. The more has
/// changed, the more they are told:
///
///   Keys      rows of the open film are made anew (event 8) and it is posed anew (event 10); it stays open
///   Places    the film is left (19) and gone back to (13), objects are renamed (7), moved (10)
///   All       the film is left, everything goes as with a level (4, 15), comes from its parts as from a file
///             (chunks, event 6), and the film is gone back to
class LevelRestore {
public:
    enum class Extent { Keys, Places, All };

    LevelRestore(EditorHost& editorHost, const PartStore& partStore) : host(editorHost), store(partStore) {}

    Extent ExtentOf(const PartTargets& targets) const;
    /// The store must be what the level is now. False if the parts could not be put back so; then only `All`
    /// is left to do. The plug-ins are told in any case.
    bool Restore(const PartTargets& targets, Extent extent);

private:
    bool RestoreInPlace(const PartTargets& targets);
    void GiveLooks(const PartTargets& targets);
    void TellObjects(const PartTargets& targets);
    void RestoreAll(const PartTargets& targets);

    EditorHost& host;
    const PartStore& store;
};

} // namespace stage
