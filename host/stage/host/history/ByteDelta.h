#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace stage {

/// The difference between two strings of bytes, from which each gives the other. Of bytes of the same number
/// only those are kept that differ, of others what stands between the same start and the same end.
class ByteDelta {
public:
    ByteDelta() = default;
    static ByteDelta Between(std::string_view before, std::string_view after);

    std::string After(std::string_view before) const;
    std::string Before(std::string_view after) const;
    /// Bytes that it keeps.
    std::size_t Size() const { return runs.size(); }

private:
    /// With `forth` from before to after, else back.
    std::string Apply(std::string_view from, bool forth) const;
    void AddRun(std::size_t place, std::string_view before, std::string_view after);

    /// One behind the other: place (in either, as all runs in front of it keep the length), numbers of bytes
    /// before and after, 32 bits each, and those bytes.
    std::string runs;
};

} // namespace stage
