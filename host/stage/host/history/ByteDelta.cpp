#include "host/stage/host/history/ByteDelta.h"

#include "host/engine/ByteStream.h"

#include <algorithm>

namespace stage {

namespace {
/// Runs nearer than this are one: less than what a run costs.
constexpr std::size_t kNear = 12;
} // namespace

void ByteDelta::AddRun(std::size_t place, std::string_view before, std::string_view after) {
    engine::ByteWriter out(runs);
    out.U32(static_cast<std::uint32_t>(place));
    out.U32(static_cast<std::uint32_t>(before.size()));
    out.Text(after);
    out.Raw(before.data(), before.size());
}

ByteDelta ByteDelta::Between(std::string_view before, std::string_view after) {
    ByteDelta delta;
    if (before.size() != after.size()) {
        const std::size_t most = std::min(before.size(), after.size());
        const auto front = static_cast<std::size_t>(
            std::mismatch(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(most), after.begin())
                .first -
            before.begin());
        std::size_t back = 0;
        while (back < most - front && before[before.size() - 1 - back] == after[after.size() - 1 - back]) {
            ++back;
        }
        delta.AddRun(front, before.substr(front, before.size() - front - back),
                     after.substr(front, after.size() - front - back));
    } else {
        std::size_t at = 0;
        while (at < before.size()) {
            const auto first = std::mismatch(before.begin() + static_cast<std::ptrdiff_t>(at), before.end(),
                                             after.begin() + static_cast<std::ptrdiff_t>(at))
                                   .first;
            const auto begin = static_cast<std::size_t>(first - before.begin());
            std::size_t last = begin; // behind the last that differs
            for (at = begin; at < before.size() && at < last + kNear; ++at) {
                last = before[at] != after[at] ? at + 1 : last;
            }
            if (last > begin) {
                delta.AddRun(begin, before.substr(begin, last - begin), after.substr(begin, last - begin));
            }
        }
    }
    delta.runs.shrink_to_fit();
    return delta;
}

std::string ByteDelta::Apply(std::string_view from, bool forth) const {
    std::string to;
    std::size_t at = 0;
    engine::ByteReader in(runs);
    while (in.Left() > 0) {
        const std::size_t place = in.U32();
        const std::size_t size = in.U32();
        const std::string_view after = in.Bytes(in.U32());
        const std::string_view before = in.Bytes(size);
        to.append(from.substr(at, place - at));
        to.append(forth ? after : before);
        at = place + (forth ? before : after).size();
    }
    to.append(from.substr(at));
    return to;
}

std::string ByteDelta::After(std::string_view before) const {
    return Apply(before, true);
}

std::string ByteDelta::Before(std::string_view after) const {
    return Apply(after, false);
}

} // namespace stage
