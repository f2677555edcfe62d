#pragma once

#include "framework/Types.h"

#include <string>

class CFilmsMainCtrl;

/// Why a command of the timeline's menus or toolbar will change nothing as things stand, where the command
/// itself ends without a word; empty where it does something, or asks or tells by itself.
std::string WhyIdle(UINT command, const CFilmsMainCtrl& control);

/// Tells the user so with a note (framework/UserNote.h); nothing without a reason.
void NoteIfIdle(UINT command, const CFilmsMainCtrl& control);
