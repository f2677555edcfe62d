#pragma once

#include "tests/editing/Step.h"

#include <cstdint>
#include <optional>
#include <string>

namespace editing {

/// How a run ended. `kind` is empty for one that held, else the same for the same fault.
struct Outcome {
    std::string kind;
    std::string text;
    int step = -1; ///< the last that was begun

    bool Failed() const { return !kind.empty(); }
};

/// Carries steps out in a new process of this program: what crashes there, or is ended by a sanitizer, ends
/// as an outcome.
class Children {
public:
    /// With `planted` the children check instead of all invariants only that no "undo" comes at any time
    /// after a "stop", so that the search for short scripts can itself be tested.
    explicit Children(bool planted = false) : isPlanted(planted) {}

    Outcome Run(const std::vector<Step>& steps) const;
    /// Fewer steps with the same kind of outcome.
    std::vector<Step> ShrinkFailing(const std::vector<Step>& steps, const Outcome& outcome) const;

private:
    bool isPlanted;
};

/// One run after the other, each on a fresh level, until so many steps were made or one fails. Then the steps
/// are reduced; the script and how to replay it are printed. True if all held.
bool RunManySteps(std::uint64_t seed, int steps);

/// The command line of a run: --seed N, --steps N, --script FILE. -1 if the arguments ask for none.
int RunFromCommandLine(int argc, char** argv);

} // namespace editing
