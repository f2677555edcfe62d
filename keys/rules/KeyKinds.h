#pragma once

#include "plugin/contract/KeyKindTable.h"

/// The name that the user sees; empty for 20 and everything outside 0 to 21.
const char* GetKeyKindName(int kind);

/// Whether keys of the kind carry an interpolation method on both sides.
constexpr bool IsBezierKind(int kind) {
    const KeyKindInfo* info = FindKeyKind(kind);
    return info != nullptr && info->isBezier;
}

/// The menu command that chooses a method; -1 and a debug line for an unknown method.
int GetIDByMethod(int method, bool in);
