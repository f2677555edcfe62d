#pragma once

#include "framework/Wnd.h"

#include <string>

/// The corner window of the main control: time of the cursor, camera in force, time under the mouse.
class CFilmsInfoWnd : public CWnd {
    DECLARE_MESSAGE_MAP()

protected:
    void OnPaint();
};

/// Hours, minutes, seconds and frames of a time in seconds, each cut, as "%d:%d:%d:%dF". Leaves the text
/// alone for a null pointer or a frame rate below 1.
void FormatTime(float time, std::string* text);
