#pragma once

#include "framework/Types.h"

/// The resources of this library: menus, dialogs, toolbars and strings. Defined by the build.
HINSTANCE PluginResources();
