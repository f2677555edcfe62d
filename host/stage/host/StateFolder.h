#pragma once

#include <string>

namespace stage {

/// The user's folder for what Stage keeps that is neither a setting nor part of a level: `stage` in
/// XDG_STATE_HOME, or in ~/.local/state where that is not set or not absolute. Absolute; made if it is
/// missing, for the user alone. Empty only for a user without a home.
std::string UserStateFolder();

} // namespace stage
