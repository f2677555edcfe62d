#pragma once

#include "tests/editing/Luck.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace editing {

/// One thing that a user, the host or the level does. It can be carried out in any state: its numbers are
/// taken modulo what there is.
struct Step {
    int operation = 0; ///< place in Operations()
    std::array<int, 3> numbers{};
    std::uint32_t luck = 0; ///< decides what is answered while the step runs

    bool operator==(const Step&) const = default;
};

/// One line: "press-key 12 0 1 88123".
std::string ToText(const Step& step);
/// Nothing for a line that names no operation or has too few numbers.
std::optional<Step> StepFromText(const std::string& line);

Step RandomStep(Luck& luck);
/// Presses are followed by moves and mostly by a release, as a hand does it.
std::vector<Step> RandomSteps(std::uint64_t seed, int count);

/// A script is a step a line; empty lines and those that begin with # are left out. Throws std::runtime_error
/// for a file or line that can't be read.
std::vector<Step> ReadScript(const std::string& path);
void WriteScript(const std::string& path, const std::vector<Step>& steps);

} // namespace editing
