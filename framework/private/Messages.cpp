#include "framework/private/NativeWindow.h"

#include "framework/private/DyingWindows.h"
#include "framework/Pump.h"

#include <QCoreApplication>

#include <algorithm>
#include <vector>

namespace messages {
namespace {

std::vector<MessageFrame*>& Stack() {
    static std::vector<MessageFrame*> stack;
    return stack;
}

struct FrameScope {
    explicit FrameScope(MessageFrame& frame) { Stack().push_back(&frame); }
    ~FrameScope() {
        Stack().pop_back();
        dying_windows::Release();
    }
    FrameScope(const FrameScope&) = delete;
    FrameScope& operator=(const FrameScope&) = delete;
};

} // namespace

MessageFrame* Top() {
    return Stack().empty() ? nullptr : Stack().back();
}

MessageFrame* Of(const CWnd* wnd) {
    for (auto i = Stack().rbegin(); i != Stack().rend(); ++i) {
        if ((*i)->wnd == wnd) {
            return *i;
        }
    }
    return nullptr;
}

void Forget(const CWnd* wnd) {
    for (MessageFrame* frame : Stack()) {
        if (frame->wnd == wnd) {
            frame->wnd = nullptr;
        }
    }
}

bool InPaint() {
    for (const MessageFrame* frame : Stack()) {
        if (frame->event && frame->event->type() == QEvent::Paint) {
            return true;
        }
    }
    return false;
}

bool IsPainting(const NativeWindow* native) {
    return std::any_of(Stack().begin(), Stack().end(), [native](const MessageFrame* frame) {
        return frame->native == native && frame->event && frame->event->type() == QEvent::Paint;
    });
}

bool IsHandling(const NativeWindow* native) {
    return std::any_of(Stack().begin(), Stack().end(),
                       [native](const MessageFrame* frame) { return frame->native == native; });
}

QInputEvent* CurrentInput() {
    for (auto i = Stack().rbegin(); i != Stack().rend(); ++i) {
        if ((*i)->event && (*i)->event->isInputEvent()) {
            return static_cast<QInputEvent*>((*i)->event);
        }
    }
    return nullptr;
}

LRESULT Send(CWnd& wnd, UINT message, WPARAM wParam, LPARAM lParam, QEvent* event) {
    MessageFrame frame;
    frame.native = wnd.GetSafeHwnd();
    frame.wnd = &wnd;
    frame.message.hwnd = frame.native;
    frame.message.message = message;
    frame.message.wParam = wParam;
    frame.message.lParam = lParam;
    frame.event = event;
    const FrameScope scope(frame);
    return wnd.WindowProc(message, wParam, lParam);
}

} // namespace messages

bool QtAlive() {
    return QCoreApplication::instance() && !QCoreApplication::closingDown();
}
