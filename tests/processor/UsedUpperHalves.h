#pragma once

#include "processor/UpperHalves.h"

/// Leaves something in the upper halves of the vector registers, as the toolkit's fills do. Only for a
/// processor that has them, which UpperHalvesInUse tells.
inline void LeaveUpperHalvesInUse() {
#if defined(__x86_64__) || defined(__i386__)
    const float something = 1.0f;
    __asm__ volatile("vbroadcastss %0, %%ymm3" : : "m"(something));
#endif
}
