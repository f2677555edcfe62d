#pragma once

#include <vector>

namespace stage {

/// What the user called for, where the level's parts alone don't say it: they are the same whether objects
/// were made, pasted or imported. Told to LevelHistory by whoever did it.
struct Deed {
    enum class Kind { Paste, Duplicate, Import, Place, Group, Ungroup, RenameGroup, JoinGroup, LeaveGroup };

    Kind kind = Kind::Paste;
    std::vector<int> objects; ///< ids of those that it made or was done to
};

} // namespace stage
