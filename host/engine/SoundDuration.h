#pragma once

#include <string>

namespace engine {

/// Seconds of a wav or ogg file, -1.0 if it can't be read. Windows separators in the path are accepted.
float SoundFileSeconds(const std::string& path);

} // namespace engine
