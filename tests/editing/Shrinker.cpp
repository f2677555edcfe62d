#include "tests/editing/Shrinker.h"

#include <algorithm>
#include <utility>

namespace editing {

namespace {

std::vector<Step> Without(const std::vector<Step>& steps, std::size_t from, std::size_t to) {
    std::vector<Step> rest(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(from));
    rest.insert(rest.end(), steps.begin() + static_cast<std::ptrdiff_t>(to), steps.end());
    return rest;
}

/// Leaves out runs of `size` steps, the last first: what lies near the failure is needed most, so that the
/// early runs, which go, are tried with few steps left.
bool LeaveOutRuns(std::vector<Step>& steps, std::size_t size, const StillFails& stillFails) {
    bool any = false;
    for (std::size_t to = steps.size(); to > 0;) {
        const std::size_t from = to > size ? to - size : 0;
        std::vector<Step> rest = Without(steps, from, to);
        if (!rest.empty() && stillFails(rest)) {
            steps = std::move(rest);
            any = true;
        }
        to = from;
    }
    return any;
}

} // namespace

std::vector<Step> Shrink(std::vector<Step> steps, const StillFails& stillFails) {
    std::size_t size = std::max<std::size_t>(steps.size() / 2, 1);
    for (;;) {
        const bool any = LeaveOutRuns(steps, std::min(size, steps.size()), stillFails);
        if (size > 1) {
            size = (size + 1) / 2;
        } else if (!any) {
            return steps;
        }
    }
}

std::vector<Step> Simplify(std::vector<Step> steps, const StillFails& stillFails) {
    for (Step& step : steps) {
        const auto tryZero = [&](auto& number) {
            if (const auto old = std::exchange(number, 0); old != 0 && !stillFails(steps)) {
                number = old;
            }
        };
        tryZero(step.luck);
        std::ranges::for_each(step.numbers, tryZero);
    }
    return steps;
}

} // namespace editing
