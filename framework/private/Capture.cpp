#include "framework/private/Capture.h"

#include "framework/private/NativeWindow.h"

#include <utility>

namespace capture {
namespace {

CWnd* holder = nullptr;

} // namespace

CWnd* Get() {
    return holder;
}

void Set(CWnd* wnd) {
    CWnd* old = std::exchange(holder, wnd);
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

void Forget(const CWnd* wnd) {
    if (holder == wnd) {
        holder = nullptr;
    }
}

} // namespace capture
