#include "framework/private/Capture.h"

#include "framework/private/NativeWindow.h"

#include <QGuiApplication>
#include <QMouseEvent>

#include <utility>

namespace capture {
namespace {

CWnd* holder = nullptr;
// At the last mouse event of any window.
bool buttonHeld = false;

// In the event that is handled, which may have waited in a queue, or by now.
bool IsButtonDown() {
    const auto* mouse = dynamic_cast<const QMouseEvent*>(messages::CurrentInput());
    return (mouse && mouse->buttons() != Qt::NoButton) ||
           (QtAlive() && QGuiApplication::mouseButtons() != Qt::NoButton);
}

} // namespace

CWnd* Get() {
    return holder;
}

void Set(CWnd* wnd) {
    CWnd* old = std::exchange(holder, wnd);
    if (wnd && old != wnd) {
        buttonHeld = IsButtonDown(); // not what was left of a press whose release went elsewhere
    }
    if (old && old != wnd) {
        messages::Send(*old, WM_CAPTURECHANGED, 0,
                       reinterpret_cast<LPARAM>(wnd ? wnd->GetSafeHwnd() : nullptr));
    }
}

void Lose(CWnd* wnd) {
    if (holder == wnd) {
        Set(nullptr);
    }
}

bool Cancel() {
    if (holder) {
        messages::Send(*holder, WM_CANCELMODE, 0, 0);
        return true;
    }
    return false;
}

void Forget(const CWnd* wnd) {
    if (holder == wnd) {
        holder = nullptr;
    }
}

bool NoteButton(bool isDown) {
    return std::exchange(buttonHeld, isDown);
}

} // namespace capture
