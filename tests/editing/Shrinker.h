#pragma once

#include "tests/editing/Step.h"

#include <functional>

namespace editing {

using StillFails = std::function<bool(const std::vector<Step>&)>;

/// A part of the steps, in their order, that still fails and from which no single step can be left out
/// without the failure going. `steps` must fail.
std::vector<Step> Shrink(std::vector<Step> steps, const StillFails& stillFails);
/// Sets numbers to 0 where the failure stays.
std::vector<Step> Simplify(std::vector<Step> steps, const StillFails& stillFails);

} // namespace editing
