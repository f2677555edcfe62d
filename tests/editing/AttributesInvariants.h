#pragma once

#include "tests/editing/Invariants.h"

class CFilmsMainCtrl;

namespace editing {

/// Whatever the attributes window points at is there, it shows nothing without a key, and its key is of the
/// film shown.
std::optional<Failure> CheckAttributes(const World& world, const CFilmsMainCtrl& control, const Ledger& now);

} // namespace editing
