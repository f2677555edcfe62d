#pragma once

#include "tests/editing/Invariants.h"

#include <optional>
#include <string>

class CFilmsMainCtrl;
class CTrackCtrl;
class CTrackKey;

namespace editing {

class World;
struct Living;

/// For messages.
std::string Name(const CTrackCtrl& row);
std::string Name(const CTrackKey& key);

/// The rows form one tree over tracks that exist.
std::optional<Failure> CheckTree(const CFilmsMainCtrl& control, const Living& living);
/// Rows and tracks hold the same keys at the same times.
std::optional<Failure> CheckRows(const World& world, const CFilmsMainCtrl& control);

} // namespace editing
