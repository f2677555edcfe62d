#pragma once

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

#include <cstdint>
#include <optional>

/// The upper halves of the vector registers, which only instructions of 256 bits and more write.
///
/// Code that leaves something there (the toolkit's fills do) makes every later instruction of 128 bits keep
/// it: each waits for the register's former value, and a loop of ours over floats, which is compiled for all
/// processors, runs at down to a tenth of its speed until someone clears them. The state belongs to the
/// thread.
namespace processor {

#if defined(__x86_64__) || defined(__i386__)

namespace detail {

// Not inline: the caller must have no value in a register that the instruction cuts.
[[gnu::target("avx"), gnu::noinline]] inline void ZeroUpperHalves() {
    __builtin_ia32_vzeroupper();
}

/// Whether XGETBV tells which parts of the registers are in use, apart from which ones the system saves.
inline bool TellsPartsInUse() {
    constexpr unsigned kStateLeaf = 0xD; // CPUID: saving and restoring registers
    constexpr unsigned kPartsInUse = 1U << 2;
    unsigned eax = 0;
    unsigned ebx = 0;
    unsigned ecx = 0;
    unsigned edx = 0;
    return __builtin_cpu_supports("avx") && __get_cpuid_count(kStateLeaf, 1, &eax, &ebx, &ecx, &edx) != 0 &&
           (eax & kPartsInUse) != 0;
}

} // namespace detail

/// Clears the upper halves, about a nanosecond. Nothing on processors that have none. For the places where
/// code of ours goes on after the toolkit, and for the entries to work that counts.
inline void ClearUpperHalves() {
    // The answer was looked up when the program was loaded.
    if (__builtin_cpu_supports("avx")) {
        detail::ZeroUpperHalves();
    }
}

/// Whether something stands in them. Nothing where the processor does not tell.
inline std::optional<bool> UpperHalvesInUse() {
    static const bool tells = detail::TellsPartsInUse();
    if (!tells) {
        return std::nullopt;
    }
    // The upper halves of the first 16 registers, to 256 and to 512 bits.
    constexpr std::uint32_t kUpperHalves = 1U << 2 | 1U << 6;
    constexpr std::uint32_t kInUse = 1; // what XGETBV is asked for
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(kInUse));
    return (low & kUpperHalves) != 0;
}

#else

inline void ClearUpperHalves() {
}
inline std::optional<bool> UpperHalvesInUse() {
    return std::nullopt;
}

#endif

} // namespace processor
