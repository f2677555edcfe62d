#pragma once

#include "plugin/contract/KeyKind.h"

/// The name that the user sees; empty for 20 and everything outside 0 to 21.
const char* GetKeyKindName(int kind);

/// Whether keys of the kind carry an interpolation method on both sides.
bool IsBezierKind(int kind);

/// Whether a new key of the kind has a duration.
constexpr bool IsTimedKind(int kind) {
    return kind >= KeyKind::Camera && kind <= KeyKind::Sound;
}

/// The menu command that chooses a method; -1 and a debug line for an unknown method.
int GetIDByMethod(int method, bool in);
