#pragma once

#include "plugin/contract/EditorObject.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace engine {

class LevelData;

/// The names of a level's objects while new ones are given: many at the price of one walk over the level.
/// Knows nothing of names that others give meanwhile.
class UniqueNames {
public:
    /// `except` may keep its name.
    explicit UniqueNames(const LevelData& data, const EditorObject* except = nullptr);
    /// A name like `wanted` that nobody has, and takes it: the first free number at the end. Empty names
    /// become "Object".
    std::string Take(const std::string& wanted);
    /// How many names were looked up so far.
    std::size_t Lookups() const { return lookups; }

private:
    bool IsTaken(const std::string& name);

    std::unordered_set<std::string> taken;
    std::unordered_map<std::string, int> nextNumbers; ///< by name without number; those below are taken
    std::size_t lookups = 0;
};

} // namespace engine
