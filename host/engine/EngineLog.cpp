#include "host/engine/EngineLog.h"

namespace engine {

void SetEngineLogListener(LogListener listener) {
    SetLogListener(listener);
}

} // namespace engine
