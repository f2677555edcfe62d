#pragma once

#include "plugin/contract/PluginCommandId.h"

#include <cstdint>
#include <string>

// The plug-in's commands in toolbars and menus: which of its resources stands for which local number.

/// The command word of a resource: 0 for 0, and with local number 0 for one that is no command.
std::uint32_t CommandIdFromResource(std::uint32_t resourceId, PluginCommandId plugin);

/// The resource's text of a local command, empty for those that have none.
std::string TextOfCommand(std::uint32_t localCommand);
