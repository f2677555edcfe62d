#pragma once

#include "tests/editing/Step.h"

#include <span>

namespace editing {

class World;

/// A kind of step.
struct Operation {
    /// Any number of records.
    static constexpr int kAny = 1 << 20;

    const char* name;
    int weight; ///< how often it is drawn, relative to the others
    void (World::*run)(const Step&);
    int mostAdded;   ///< key records that it may bring into tracks
    int mostRemoved; ///< key records that it may take out of tracks
};

std::span<const Operation> Operations();
/// -1 if there is none of that name.
int FindOperation(const std::string& name);

} // namespace editing
