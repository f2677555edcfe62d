#pragma once

#include "framework/Wnd.h"

#include <string>

class IPluginImpl;

/// The corner window of the main control: time of the cursor, camera in force, time under the mouse.
class CFilmsInfoWnd : public CWnd {
    DECLARE_MESSAGE_MAP()

public:
    explicit CFilmsInfoWnd(const IPluginImpl& newPlugin) : plugin(newPlugin) {}

protected:
    void OnPaint();

private:
    std::string TimeText(float time) const;
    std::string FilmLine(float time) const;

    const IPluginImpl& plugin; ///< outlives the window
};

/// Hours, minutes, seconds and frames of a time in seconds, each cut, as "%d:%d:%d:%dF". Leaves the text
/// alone for a null pointer or a rate of frames a second below 1.
void FormatTime(float time, int rate, std::string* text);
