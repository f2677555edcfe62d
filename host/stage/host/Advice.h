#pragma once

#include <string>

namespace stage {

/// What a person can do about a level that can't be opened: whole sentences. `path` names its file.
std::string AdviceForOpening(const std::string& path);
/// About one that can't be saved.
std::string AdviceForSaving();

} // namespace stage
