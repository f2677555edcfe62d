#pragma once

#include "framework/Resource.h"

/// The resources of this library: menus, dialogs, toolbars and strings.
const ResourceModule& PluginResources();
