#pragma once

class CWnd;

// The one window that gets all mouse messages of this thread's windows.
namespace capture {

CWnd* Get();
// Tells the old one; null releases.
void Set(CWnd* wnd);
// Releases it if this window has it.
void Lose(CWnd* wnd);
// The same without a message, for a window that is going.
void Forget(const CWnd* wnd);

} // namespace capture
