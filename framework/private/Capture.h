#pragma once

class CWnd;

// The one window that gets all mouse messages of this thread's windows.
namespace capture {

CWnd* Get();
// Tells the old one; null releases.
void Set(CWnd* wnd);
// Releases it if this window has it.
void Lose(CWnd* wnd);
// Asks the window that has it to let go, as something else needs the mouse. False if none has it.
bool Cancel();
// The same as Lose without a message, for a window that is going.
void Forget(const CWnd* wnd);
// Takes down whether a button is down at a mouse event. The answer is whether one was at the event before; a
// window that took the mouse meanwhile began with what was down then.
bool NoteButton(bool isDown);

} // namespace capture
