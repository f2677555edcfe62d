#pragma once

#include "framework/DrawCall.h"
#include "framework/Export.h"

#include <functional>
#include <optional>
#include <string>

class CColorDialog;
class CDialog;
class CFileDialog;
class CMenu;

/// Stand-ins for what waits for a user or reads the world. Empty in production, but for the moment in which a
/// host works a window by messages and answers what it opens; a test sets those
/// that it answers itself.
struct TestHooks {
    /// Returns the button, IDOK, IDYES...
    std::function<int(const std::string& text, UINT type)> messageBox;
    /// Called when a modal dialog is ready and shown; drives it. A dialog that it does not end ends with the
    /// result.
    std::function<int(CDialog&)> modalDialog;
    /// Returns the chosen command, 0 for none. The point is in screen coordinates.
    std::function<UINT(const CMenu&, CPoint)> popupMenu;
    /// Sets the dialog's path and returns IDOK, or returns IDCANCEL.
    std::function<int(CFileDialog&)> fileDialog;
    std::function<int(CColorDialog&)> colorDialog;
    std::function<CPoint()> cursorPos;
    /// True while the key is down; nothing means "ask the real keyboard".
    std::function<std::optional<bool>(int key)> keyState;
    /// Milliseconds, wrapping at 32 bits.
    std::function<std::uint32_t()> clock;
    std::function<void(const DrawCall&)> drawing;
    /// Surfaces made meanwhile draw everything through the toolkit, nothing straight into memory.
    bool paintersOnly = false;
};

FILMS_API TestHooks& Hooks();

/// Gives back the hooks of before when a test ends.
class FILMS_API HookScope {
public:
    HookScope();
    ~HookScope();
    HookScope(const HookScope&) = delete;
    HookScope& operator=(const HookScope&) = delete;

private:
    TestHooks saved;
};
