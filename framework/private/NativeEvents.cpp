#include "framework/private/Capture.h"
#include "framework/private/Input.h"
#include "framework/private/NativeWindow.h"
#include "framework/private/WheelNotches.h"
#include "processor/UpperHalves.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QWheelEvent>

#include <cmath>

bool NativeWindow::HandleEvent(QEvent* event) {
    // The host's application need not be ours.
    processor::ClearUpperHalves();
    if (!wnd) {
        return BaseEvent(event);
    }
    if (event->isInputEvent() && !widget->isEnabled()) {
        return LeaveToParent(event);
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return HandleMouse(event);
    case QEvent::Wheel:
        return HandleWheel(event);
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return HandleKey(event);
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        return HandleFocus(event);
    case QEvent::Paint:
        return HandlePaint(event);
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::WindowStateChange:
        return HandleGeometry(event);
    case QEvent::Timer:
        return HandleTimer(event);
    case QEvent::Close:
        // The window decides; by default it destroys itself.
        event->ignore();
        Send(WM_CLOSE, 0, 0);
        return true;
    case QEvent::Leave:
        BaseEvent(event);
        Send(WM_MOUSELEAVE, 0, 0);
        return true;
    case QEvent::WindowDeactivate:
        BaseEvent(event);
        capture::Cancel();
        return true;
    case QEvent::PaletteChange:
        BaseEvent(event);
        Send(WM_PALETTECHANGED, 0, 0);
        return true;
    case QEvent::StyleChange:
        BaseEvent(event);
        Send(WM_WININICHANGE, 0, 0);
        return true;
    case QEvent::ToolTip:
        return HandleToolTip(event) || BaseEvent(event);
    case QEvent::ContextMenu:
        if (!IsControl()) {
            // Menus belong to the right button's press.
            event->accept();
            return true;
        }
        return BaseEvent(event);
    default:
        return BaseEvent(event);
    }
}

// Input of a disabled window goes to its parent. The toolkit hands on mouse buttons alone, and its own
// buttons would keep even those.
bool NativeWindow::LeaveToParent(QEvent* event) {
    event->ignore();
    NativeWindow* parent = widget->isWindow() ? nullptr : Parent();
    return event->type() == QEvent::Wheel && parent && parent->HandleEvent(event);
}

bool NativeWindow::HandleMouse(QEvent* event) {
    auto* mouse = static_cast<QMouseEvent*>(event);
    const UINT message = event->type() == QEvent::MouseMove
                             ? WM_MOUSEMOVE
                             : input::ButtonMessage(event->type(), mouse->button());
    if (message == 0) {
        event->accept();
        return true;
    }
    const bool isHeld = mouse->buttons() != Qt::NoButton;
    const bool wasHeld = capture::NoteButton(isHeld);
    if (event->type() == QEvent::MouseMove && wasHeld && !isHeld && capture::Get()) {
        // The release went to another program, or to a box that came up in mid-drag.
        capture::Set(nullptr);
        if (!Exists(this)) {
            event->accept();
            return true;
        }
    }
    CPoint p(static_cast<int>(std::floor(mouse->position().x())),
             static_cast<int>(std::floor(mouse->position().y())));
    NativeWindow* target = this;
    CWnd* holder = capture::Get();
    if (holder && holder != wnd && holder->GetSafeHwnd()) {
        target = holder->GetSafeHwnd();
        const QPoint mapped = target->Client()->mapFromGlobal(Client()->mapToGlobal(QPoint(p.x, p.y)));
        p = {mapped.x(), mapped.y()};
    }
    target->Send(message, input::MouseFlags(mouse->buttons(), mouse->modifiers()), MAKELPARAM(p.x, p.y),
                 target == this ? event : nullptr);
    if (event->type() == QEvent::MouseButtonRelease && mouse->buttons() == Qt::NoButton && capture::Get()) {
        // A window that forgot to release must not keep the mouse for ever.
        capture::Set(nullptr);
    }
    event->accept();
    return true;
}

bool NativeWindow::HandleWheel(QEvent* event) {
    auto* wheel = static_cast<QWheelEvent*>(event);
    const int delta = wheel->angleDelta().y();
    if (delta == 0) {
        return BaseEvent(event);
    }
    event->accept();
    const int notches = wheel_notches::Gather(*this, delta, wheel->phase() == Qt::ScrollBegin);
    if (notches == 0) {
        return true;
    }
    // By default the toolkit turns as far as the program is told.
    QWheelEvent whole(wheel->position(), wheel->globalPosition(), QPoint(), QPoint(0, notches),
                      wheel->buttons(), wheel->modifiers(), wheel->phase(), wheel->inverted());
    const QPoint screen = wheel->globalPosition().toPoint();
    const WPARAM flags =
        MAKEWPARAM(input::MouseFlags(wheel->buttons(), wheel->modifiers()), static_cast<UINT>(notches));
    Send(WM_MOUSEWHEEL, flags, MAKELPARAM(screen.x(), screen.y()), &whole);
    return true;
}

bool NativeWindow::HandleKey(QEvent* event) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (event->type() == QEvent::KeyRelease && key->isAutoRepeat()) {
        // A held key goes down again and again and comes up once.
        event->accept();
        return true;
    }
    if (event->type() == QEvent::KeyPress && key->key() == Qt::Key_Escape && capture::Cancel()) {
        // It ended a drag. Keys that a caller's own loop hands out come here and pass no dialog.
        event->accept();
        return true;
    }
    Send(input::KeyMessage(*key), static_cast<WPARAM>(input::VirtualKey(*key)), input::KeyData(*key), event);
    // A key belongs to the window with the focus alone.
    event->accept();
    return true;
}

bool NativeWindow::LendsKeyboard(const QEvent& focusEvent) const {
    if (static_cast<const QFocusEvent&>(focusEvent).reason() == Qt::PopupFocusReason) {
        return true;
    }
    if (focusEvent.type() == QEvent::FocusIn || !QApplication::activePopupWidget()) {
        return false;
    }
    // The window system may move the focus too while a popup opens. To another control it goes for good.
    const QWidget* now = QApplication::focusWidget();
    return !now || InWindowOf(now) == this || now->window()->windowType() == Qt::Popup;
}

void NativeWindow::NotifyFocus(const QEvent& event, UINT gained, UINT lost) {
    const bool gains = event.type() == QEvent::FocusIn;
    if ((gains || event.type() == QEvent::FocusOut) && !LendsKeyboard(event)) {
        NotifyParent(gains ? gained : lost);
    }
}

bool NativeWindow::HandleFocus(QEvent* event) {
    if (LendsKeyboard(*event)) {
        return BaseEvent(event);
    }
    if (event->type() == QEvent::FocusIn) {
        Send(WM_SETFOCUS, 0, 0, event);
    } else {
        NativeWindow* next = InWindowOf(QApplication::focusWidget());
        Send(WM_KILLFOCUS, reinterpret_cast<WPARAM>(next), 0, event);
    }
    return true;
}

bool NativeWindow::HandlePaint(QEvent* event) {
    const QRegion& asked = static_cast<QPaintEvent*>(event)->region();
    // What nobody invalidated was uncovered, and needs its background too.
    eraseAsked = eraseAsked || !(asked - updateRegion).isEmpty();
    echoing = updateRegion.isEmpty() && !echoes.isEmpty() && (asked - echoes).isEmpty();
    echoes = QRegion();
    updateRegion = QRegion();
    Send(WM_PAINT, 0, 0, event);
    echoing = false;
    eraseAsked = false;
    return true;
}

namespace {

// The side of a window that a user drags, from the rect before and after.
UINT SizingSide(const QRect& before, const QRect& after) {
    constexpr UINT kSides[3][3] = {{8, 6, 7}, {2, 8, 1}, {5, 3, 4}};
    const int vertical = before.top() != after.top() ? 2 : before.bottom() != after.bottom() ? 0 : 1;
    const int horizontal = before.left() != after.left() ? 2 : before.right() != after.right() ? 0 : 1;
    return kSides[vertical][horizontal];
}

} // namespace

CRect NativeWindow::AskSizing(const QRect& before, const QRect& now) {
    CRect wanted(now.x(), now.y(), now.x() + now.width(), now.y() + now.height());
    Send(WM_SIZING, SizingSide(before, now), reinterpret_cast<LPARAM>(&wanted));
    return wanted;
}

bool NativeWindow::HandleGeometry(QEvent* event) {
    const QRect before = lastGeometry;
    lastGeometry = widget->geometry();
    BaseEvent(event);
    if (event->type() == QEvent::Move) {
        Send(WM_MOVE, 0, MAKELPARAM(widget->x(), widget->y()));
        return true;
    }
    if (event->type() == QEvent::Resize) {
        lastLaidOut = widget->size();
        if (widget->isWindow() && event->spontaneous() && before.isValid() && !widget->isMaximized()) {
            const QRect now = widget->geometry();
            const CRect wanted = AskSizing(before, now);
            const QRect corrected(wanted.left, wanted.top, wanted.Width(), wanted.Height());
            if (wnd && corrected != now) {
                widget->setGeometry(corrected);
            }
        }
    }
    SendSizeIfChanged();
    return true;
}

bool NativeWindow::HandleTimer(QEvent* event) {
    const int timerId = static_cast<QTimerEvent*>(event)->timerId();
    for (const auto& [timer, native] : timers) {
        if (native == timerId) {
            Send(WM_TIMER, UINT_PTR{timer}, 0);
            return true;
        }
    }
    return BaseEvent(event);
}

bool NativeWindow::HandleToolTip(QEvent* /*event*/) {
    return false;
}
