#pragma once

#include "files/base/Log.h"

namespace engine {

/// Hears the engine's own debug prints, which have a log state apart from the program's. Null for none.
void SetEngineLogListener(LogListener listener);

} // namespace engine
