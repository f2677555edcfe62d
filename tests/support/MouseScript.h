#pragma once

#include "framework/Types.h"

class CWnd;

/// A user's mouse over a window: real events to the top-level window around it, points in the client
/// coordinates of the window, also outside it. The window must be shown.
class MouseScript {
public:
    explicit MouseScript(CWnd& window) : target(window) {}

    /// Keys held down from here on.
    MouseScript& Shift(bool held);
    MouseScript& Press(int x, int y);
    MouseScript& RightPress(int x, int y);
    MouseScript& Move(int x, int y);
    MouseScript& Release(int x, int y);

private:
    void Send(int type, int button, int x, int y);

    CWnd& target;
    bool shift = false;
    bool left = false;
};

/// Shows a top-level window without waiting for its focus, and lets everything pending happen.
void ShowForMouse(CWnd& top);
