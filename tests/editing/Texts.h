#pragma once

#include <string>

namespace editing {

/// What a user may type into a field: times, numbers of every size and kind, words, nothing.
std::string TypedText(int number);

} // namespace editing
