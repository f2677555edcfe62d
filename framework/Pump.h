#pragma once

#include "framework/Wnd.h"

// A caller's own message loop. While PeekMessage runs, painting, timers and the host's work go on as usual,
// but keys, buttons, moves and wheel turns wait in the queue until the caller dispatches them, or never reach
// anyone: neither a focused editor nor a shortcut of the host. Loops nested in such work (menus, modal
// dialogs) take their input normally.

/// The next message, if there is one. The filters of window and message numbers are not used. Without
/// PM_REMOVE the message stays in the queue.
FILMS_API BOOL PeekMessage(MSG* message, CWnd* window, UINT first, UINT last, UINT flags);
/// Waits for the next message. Always TRUE.
FILMS_API BOOL GetMessage(MSG* message, CWnd* window, UINT first, UINT last);
/// Keys carry their characters already.
FILMS_API BOOL TranslateMessage(const MSG* message);
/// Hands the input or posted message to its window. Each message can be dispatched once.
FILMS_API LRESULT DispatchMessage(const MSG* message);
/// Milliseconds that wrap at 32 bits.
FILMS_API std::uint32_t timeGetTime();
