#include "tests/stage/MockPlugin.h"

// What is made here is made for all mocked operations at once, and takes seconds to compile.

MockPlugin::MockPlugin() {
    id = PluginCommandId::FromPluginNumber(1);
    kind = 6;
}

MockPlugin::~MockPlugin() = default;
