#pragma once

#include "host/stage/effects/EffectFile.h"

#include <vector>

namespace stage {

/// The effects of a level, by kind and name. They lie as `KIND/NAME.fx.json` in folders of which the first
/// that has a name gives its effect: the level's own before those that come with the program.
class EffectLibrary {
public:
    /// Folders that don't exist are fine; empty names are left out.
    explicit EffectLibrary(std::vector<std::string> effectFolders);

    /// In the order of the alphabet, each once.
    std::vector<std::string> Names(EffectKind kind) const;
    /// The file that gives the name's effect; empty if no folder has one.
    std::string PathOf(EffectKind kind, const std::string& name) const;
    /// Throws EffectFileError, also for a name that no folder has.
    Effect Load(EffectKind kind, const std::string& name) const;

private:
    std::vector<std::string> folders;
};

} // namespace stage
