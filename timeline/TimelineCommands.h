#pragma once

#include "framework/Types.h"

#include <string>

class CFilmsMainCtrl;
class CScenarioDlg;

/// A command of the timeline's menus, of the toolbar of the scenario window, or of both: all that is known of
/// it besides its texts, which stand in the resources under the same number.
struct TimelineCommand {
    UINT id = 0;
    void (*inMenu)(CFilmsMainCtrl& control) =
        nullptr; ///< null for a button alone; the control may be gone behind it
    void (*onButton)(CScenarioDlg& window) =
        nullptr;            ///< null for a menu alone; the window may be gone behind it
    bool passOn = false;    ///< the button's message goes on to the dialog's base class
    bool needsFilm = false; ///< ends without a word when no film is open
    /// Why it will change nothing as things stand; empty if it does something. Null where it always does, or
    /// tells by itself.
    std::string (*whyIdle)(const CFilmsMainCtrl& control) = nullptr;
};

/// Null for other numbers. The commands of the Bezier methods are in the table of the methods
/// (GetIDByMethod).
const TimelineCommand* FindTimelineCommand(UINT id);
