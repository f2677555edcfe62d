#include "framework/PaintDC.h"
#include "framework/private/Capture.h"
#include "framework/private/Input.h"
#include "framework/private/NativeWindow.h"
#include "framework/TestHooks.h"
#include "framework/Wnd.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QPainter>

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result)) {
        return result;
    }
    return DefWindowProc(message, wParam, lParam);
}

// Nothing of the object is touched after a handler has run: it may be gone.
BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_COMMAND) {
        *result = 1;
        return OnCommand(wParam, lParam);
    }
    if (message == WM_NOTIFY) {
        return lParam != 0 && OnNotify(wParam, lParam, result);
    }
    for (const MessageMap* map = GetMessageMap(); map; map = map->base) {
        for (std::size_t i = 0; i < map->count; ++i) {
            const MessageEntry& entry = map->entries[i];
            if (entry.message != message) {
                continue;
            }
            MessageCall call{message, wParam, lParam, 0, 0};
            const bool handled = entry.call(*this, call);
            *result = call.result;
            return handled;
        }
    }
    return FALSE;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const UINT id = LOWORD(wParam);
    const auto* control = reinterpret_cast<NativeWindow*>(lParam);
    if (lParam != 0 && NativeWindow::Exists(control) && control->wnd && control->wnd != this) {
        LRESULT ignored = 0;
        if (control->wnd->OnChildNotify(WM_COMMAND, wParam, lParam, &ignored)) {
            return TRUE;
        }
    }
    return OnCmdMsg(id, HIWORD(wParam), nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM /*wParam*/, LPARAM lParam, LRESULT* result) {
    auto* header = reinterpret_cast<NMHDR*>(lParam);
    AFX_NOTIFY notify{result, header};
    const UINT code = (header->code & 0xFFFF) | (WM_NOTIFY << 16);
    return OnCmdMsg(static_cast<UINT>(header->idFrom), static_cast<int>(code), &notify, nullptr);
}

BOOL CWnd::OnChildNotify(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/, LRESULT* /*result*/) {
    return FALSE;
}

LRESULT CWnd::Default() {
    const MessageFrame* frame = messages::Of(this);
    return frame ? DefWindowProc(frame->message.message, frame->message.wParam, frame->message.lParam) : 0;
}

WNDPROC* CWnd::GetSuperWndProcAddr() {
    static WNDPROC procedure = nullptr;
    return &procedure;
}

namespace {

// A message sent by a program instead of the user, for a control that the toolkit drives by events.
bool PlayInput(NativeWindow& native, UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr QEvent::Type kTypes[] = {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                       QEvent::MouseButtonDblClick};
    constexpr Qt::MouseButton kButtons[] = {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};
    if (message < WM_MOUSEMOVE || message > WM_MBUTTONDBLCLK) {
        return false;
    }
    const QPointF p(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    Qt::MouseButtons held;
    held.setFlag(Qt::LeftButton, wParam & MK_LBUTTON);
    held.setFlag(Qt::RightButton, wParam & MK_RBUTTON);
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, wParam & MK_SHIFT);
    modifiers.setFlag(Qt::ControlModifier, wParam & MK_CONTROL);
    const bool isMove = message == WM_MOUSEMOVE;
    const UINT index = isMove ? 0 : message - WM_LBUTTONDOWN;
    const Qt::MouseButton button = isMove ? Qt::NoButton : kButtons[index / 3];
    const QEvent::Type type = isMove ? QEvent::MouseMove : kTypes[index % 3];
    held.setFlag(button, !isMove && type != QEvent::MouseButtonRelease);
    QMouseEvent event(type, p, native.Client()->mapToGlobal(p), button, held, modifiers);
    native.BaseEvent(&event);
    return true;
}

void FillBackground(NativeWindow& native, QEvent* event) {
    QPainter painter(native.Client());
    painter.fillRect(static_cast<QPaintEvent*>(event)->rect(), native.widget->palette().window());
}

} // namespace

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!native) {
        return 0;
    }
    MessageFrame* frame = messages::Of(this);
    if (frame && frame->event && frame->message.message == message) {
        if (std::exchange(frame->baseDone, true)) {
            return 0;
        }
        QEvent* event = frame->event;
        if (message == WM_PAINT && !native->IsControl()) {
            FillBackground(*native, event);
            return 0;
        }
        NativeWindow* self = native;
        self->BaseEvent(event);
        if (message == WM_MOUSEWHEEL && (!self->IsControl() || !event->isAccepted())) {
            NativeWindow* parent = self->IsTopLevel() ? nullptr : self->Parent();
            return parent ? parent->Send(message, wParam, lParam) : 0;
        }
        return 0;
    }
    if (const std::optional<LRESULT> answer = native->ControlMessage(message, wParam, lParam)) {
        return *answer;
    }
    if (native->IsControl() && PlayInput(*native, message, wParam, lParam)) {
        return 0;
    }
    return DefaultAnswer(message, wParam, lParam);
}

LRESULT CWnd::DefaultAnswer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CLOSE:
        DestroyWindow();
        return 0;
    case WM_SETTEXT:
        native->SetText(QString::fromUtf8(reinterpret_cast<const char*>(lParam)));
        return TRUE;
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(GetWindowText().size());
    case WM_SETREDRAW:
        native->widget->setUpdatesEnabled(wParam != 0);
        return 0;
    case WM_CANCELMODE:
        capture::Lose(this);
        return 0;
    case WM_MOUSEWHEEL: {
        NativeWindow* parent = native->IsTopLevel() ? nullptr : native->Parent();
        return parent ? parent->Send(message, wParam, lParam) : 0;
    }
    default:
        return native->classProc ? native->classProc(native, message, wParam, lParam) : 0;
    }
}

int CWnd::OnCreate(CREATESTRUCT* /*cs*/) {
    return static_cast<int>(Default());
}
void CWnd::OnDestroy() {
    Default();
}
void CWnd::OnMove(int /*x*/, int /*y*/) {
    Default();
}
void CWnd::OnSize(UINT /*type*/, int /*width*/, int /*height*/) {
    Default();
}
void CWnd::OnSizing(UINT /*side*/, CRect* /*rect*/) {
    Default();
}
void CWnd::OnSetFocus(CWnd* /*old*/) {
    Default();
}
void CWnd::OnKillFocus(CWnd* /*next*/) {
    Default();
}
void CWnd::OnPaint() {
    Default();
}
void CWnd::OnClose() {
    Default();
}
BOOL CWnd::OnEraseBkgnd(CDC* /*dc*/) {
    return static_cast<BOOL>(Default());
}
void CWnd::OnShowWindow(BOOL /*show*/, UINT /*status*/) {
    Default();
}
void CWnd::OnWinIniChange(const char* /*section*/) {
    Default();
}
void CWnd::OnPaletteChanged(CWnd* /*focus*/) {
    Default();
}
void CWnd::OnCaptureChanged(CWnd* /*next*/) {
    Default();
}
void CWnd::OnCancelMode() {
    Default();
}
void CWnd::OnTimer(UINT_PTR /*id*/) {
    Default();
}
void CWnd::OnKeyDown(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) {
    Default();
}
void CWnd::OnKeyUp(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) {
    Default();
}
void CWnd::OnSysKeyDown(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) {
    Default();
}
void CWnd::OnSysKeyUp(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) {
    Default();
}
void CWnd::OnMouseMove(UINT /*flags*/, CPoint /*point*/) {
    Default();
}
BOOL CWnd::OnMouseWheel(UINT /*flags*/, short /*delta*/, CPoint /*screenPoint*/) {
    return static_cast<BOOL>(Default());
}
void CWnd::OnMouseLeave() {
    Default();
}
void CWnd::OnLButtonDown(UINT /*flags*/, CPoint /*point*/) {
    Default();
}
void CWnd::OnLButtonUp(UINT /*flags*/, CPoint /*point*/) {
    Default();
}
void CWnd::OnLButtonDblClk(UINT /*flags*/, CPoint /*point*/) {
    Default();
}
void CWnd::OnRButtonDown(UINT /*flags*/, CPoint /*point*/) {
    Default();
}
void CWnd::OnRButtonUp(UINT /*flags*/, CPoint /*point*/) {
    Default();
}
void CWnd::OnMButtonDown(UINT /*flags*/, CPoint /*point*/) {
    Default();
}
void CWnd::OnMButtonUp(UINT /*flags*/, CPoint /*point*/) {
    Default();
}

BOOL GetCursorPos(CPoint* point) {
    if (Hooks().cursorPos) {
        *point = Hooks().cursorPos();
        return TRUE;
    }
    if (!QtAlive()) {
        return FALSE;
    }
    const QPoint p = QCursor::pos();
    *point = {p.x(), p.y()};
    return TRUE;
}

namespace {

constexpr short kDown = static_cast<short>(0x8000);

std::optional<bool> HookedKey(int key) {
    return Hooks().keyState ? Hooks().keyState(key) : std::nullopt;
}

} // namespace

short GetKeyState(int key) {
    if (const std::optional<bool> hooked = HookedKey(key)) {
        return *hooked ? kDown : 0;
    }
    if (!QtAlive()) {
        return 0;
    }
    const QInputEvent* input = messages::CurrentInput();
    const Qt::KeyboardModifiers modifiers = input ? input->modifiers() : QGuiApplication::keyboardModifiers();
    return input::IsDown(key, modifiers, QGuiApplication::mouseButtons()) ? kDown : 0;
}

short GetAsyncKeyState(int key) {
    if (const std::optional<bool> hooked = HookedKey(key)) {
        return *hooked ? kDown : 0;
    }
    return QtAlive() && input::IsDown(key, QGuiApplication::queryKeyboardModifiers(),
                                      QGuiApplication::mouseButtons())
               ? kDown
               : 0;
}
