#pragma once

#include <cstdint>

namespace editing {

/// Random numbers that are the same on every machine and with every library.
class Luck {
public:
    explicit Luck(std::uint64_t seed) : state(seed) {}

    std::uint32_t Next() {
        state += 0x9E3779B97F4A7C15u;
        std::uint64_t mixed = state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return static_cast<std::uint32_t>((mixed ^ (mixed >> 31)) >> 32);
    }
    /// 0 to count - 1; 0 for a count not above 0.
    int Below(int count) {
        return count > 0 ? static_cast<int>(Next() % static_cast<std::uint32_t>(count)) : 0;
    }
    bool OneIn(int count) { return Below(count) == 0; }

private:
    std::uint64_t state;
};

} // namespace editing
