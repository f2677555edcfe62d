#include "framework/private/Capture.h"
#include "framework/private/NativeWindow.h"
#include "framework/QtBridge.h"
#include "framework/Wnd.h"

#include <QApplication>

#include <algorithm>

namespace {

QWidget* FocusWidget() {
    return QtAlive() ? QApplication::focusWidget() : nullptr;
}

} // namespace

DWORD CWnd::GetStyle() const {
    if (!native) {
        return 0;
    }
    DWORD style = native->windowStyle & ~(WS_VISIBLE | WS_DISABLED);
    style |= native->IsShown() ? WS_VISIBLE : 0;
    return style | (IsWindowEnabled() ? 0 : WS_DISABLED);
}

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT /*flags*/) {
    if (!native) {
        return FALSE;
    }
    const DWORD before = native->windowStyle;
    native->windowStyle = (before & ~remove) | add;
    return native->windowStyle != before;
}

BOOL CWnd::ShowWindow(int command) {
    if (!native) {
        return FALSE;
    }
    const BOOL before = native->IsShown();
    const bool activate = command == SW_SHOW || command == SW_SHOWNORMAL || command == SW_RESTORE;
    native->SetShown(command != SW_HIDE, activate);
    if (native && command == SW_SHOWMAXIMIZED) {
        native->widget->showMaximized();
    }
    return before;
}

BOOL CWnd::IsWindowVisible() const {
    for (const NativeWindow* n = native; n; n = n->Parent()) {
        if (!n->IsShown()) {
            return FALSE;
        }
        if (n->frame && n->frame->IsCovered()) {
            return FALSE;
        }
        if (n->IsTopLevel()) {
            break;
        }
    }
    return native && (native->widget->isVisible() || native->IsShown());
}

BOOL CWnd::EnableWindow(BOOL enable) {
    if (!native) {
        return FALSE;
    }
    const BOOL wasDisabled = !IsWindowEnabled();
    if (!enable) {
        // Disabling a window ends its drag.
        capture::Lose(this);
    }
    if (native && wasDisabled == (enable != FALSE)) {
        native->widget->setEnabled(enable != FALSE);
        SendMessage(WM_ENABLE, enable ? 1 : 0);
    }
    return wasDisabled;
}

BOOL CWnd::IsWindowEnabled() const {
    return native && !native->widget->testAttribute(Qt::WA_ForceDisabled);
}

void CWnd::MoveWindow(int x, int y, int width, int height, BOOL repaint) {
    if (native) {
        const CRect before = native->Geometry();
        native->SetGeometry({x, y, x + width, y + height}, /*sendSize*/ true);
        // A window that stays where it is has nothing new to show.
        if (native && repaint && native->Geometry() != before) {
            Invalidate();
        }
    }
}

BOOL CWnd::SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags) {
    if (!native) {
        return FALSE;
    }
    const CRect now = native->Geometry();
    const CPoint place = flags & SWP_NOMOVE ? now.TopLeft() : CPoint(x, y);
    const CSize size = flags & SWP_NOSIZE ? now.Size() : CSize{width, height};
    const CRect wanted(place, size);
    if (!(flags & SWP_NOZORDER) && (!after || after == this)) {
        native->Raise(/*activate*/ false);
    }
    if (wanted != now) {
        native->SetGeometry(wanted, /*sendSize*/ !(flags & SWP_NOSIZE));
    }
    if (native && (flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW))) {
        native->SetShown((flags & SWP_SHOWWINDOW) != 0, !(flags & SWP_NOACTIVATE));
    }
    return TRUE;
}

void CWnd::BringWindowToTop() {
    if (native) {
        native->Raise(/*activate*/ false);
    }
}

void CWnd::GetClientRect(CRect* rect) const {
    *rect = native ? CRect(CPoint(), native->ClientSize()) : CRect();
}

void CWnd::GetWindowRect(CRect* rect) const {
    *rect = CRect();
    if (native) {
        const CRect g = native->Geometry();
        QPoint corner(g.left, g.top);
        if (!native->IsTopLevel()) {
            corner = native->widget->parentWidget()->mapToGlobal(corner);
        }
        *rect = CRect(CPoint(corner.x(), corner.y()), g.Size());
    }
}

void CWnd::ClientToScreen(CPoint* point) const {
    if (native) {
        const QPoint p = native->Client()->mapToGlobal(QPoint(point->x, point->y));
        *point = {p.x(), p.y()};
    }
}

void CWnd::ClientToScreen(CRect* rect) const {
    CPoint corner = rect->TopLeft();
    ClientToScreen(&corner);
    *rect = CRect(corner, rect->Size());
}

void CWnd::ScreenToClient(CPoint* point) const {
    if (native) {
        const QPoint p = native->Client()->mapFromGlobal(QPoint(point->x, point->y));
        *point = {p.x(), p.y()};
    }
}

void CWnd::ScreenToClient(CRect* rect) const {
    CPoint corner = rect->TopLeft();
    ScreenToClient(&corner);
    *rect = CRect(corner, rect->Size());
}

void CWnd::Invalidate(BOOL erase) {
    InvalidateRect(nullptr, erase);
}

void CWnd::InvalidateRect(const CRect* rect, BOOL erase) {
    if (!native) {
        return;
    }
    const QRect all(QPoint(), native->Client()->size());
    const QRect part = rect ? QRect(rect->left, rect->top, rect->Width(), rect->Height()) & all : all;
    native->Invalidate(QRegion(part), erase != FALSE);
}

void CWnd::ValidateRect() {
    if (native) {
        native->updateRegion = QRegion();
        native->eraseAsked = false;
    }
}

BOOL CWnd::GetUpdateRect(CRect* rect) const {
    const QRect r = native ? native->updateRegion.boundingRect() : QRect();
    if (rect) {
        *rect = r.isEmpty() ? CRect() : CRect(r.x(), r.y(), r.x() + r.width(), r.y() + r.height());
    }
    return !r.isEmpty();
}

void CWnd::UpdateWindow() {
    if (native && !native->updateRegion.isEmpty() && native->widget->isVisible() && !messages::InPaint()) {
        native->Client()->repaint(native->updateRegion);
    }
}

void CWnd::RedrawWindow() {
    Invalidate();
    UpdateWindow();
}

void CWnd::SetRedraw(BOOL redraw) {
    SendMessage(WM_SETREDRAW, redraw ? 1 : 0);
}

void CWnd::SetWindowText(const std::string& text) {
    SendMessage(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

std::string CWnd::GetWindowText() const {
    return native ? native->Text().toStdString() : std::string();
}

CWnd* CWnd::SetCapture() {
    CWnd* old = capture::Get();
    if (native) {
        capture::Set(this);
    }
    return old;
}

CWnd* CWnd::GetCapture() {
    return capture::Get();
}

BOOL ReleaseCapture() {
    capture::Set(nullptr);
    return TRUE;
}

CWnd* CWnd::GetFocus() {
    NativeWindow* n = NativeWindow::InWindowOf(FocusWidget());
    return n ? n->wnd : nullptr;
}

CWnd* CWnd::SetFocus() {
    CWnd* old = GetFocus();
    if (native) {
        native->widget->setFocus(Qt::OtherFocusReason);
    }
    return old;
}

CWnd* CWnd::GetActiveWindow() {
    NativeWindow* n = QtAlive() ? NativeWindow::Of(QApplication::activeWindow()) : nullptr;
    // A window inside a frame of the host is active while the keyboard is in it.
    for (NativeWindow* f = NativeWindow::InWindowOf(FocusWidget()); f; f = f->Parent()) {
        n = f->frame ? f : n;
    }
    return n ? n->wnd : nullptr;
}

CWnd* CWnd::SetActiveWindow() {
    CWnd* old = GetActiveWindow();
    if (native && native->frame) {
        native->frame->RaiseContent(/*activate*/ true);
    } else if (native) {
        native->widget->activateWindow();
    }
    return old;
}

UINT_PTR CWnd::SetTimer(UINT_PTR id, UINT milliseconds, void* /*callback*/) {
    if (!native) {
        return 0;
    }
    constexpr UINT kLongest = 0x7FFFFFFF;
    KillTimer(id);
    native->timers[id] =
        native->widget->startTimer(static_cast<int>(std::min(milliseconds, kLongest)), Qt::PreciseTimer);
    // A timer may have the number 0, but 0 would mean failure.
    return id != 0 ? id : 1;
}

BOOL CWnd::KillTimer(UINT_PTR id) {
    if (!native) {
        return FALSE;
    }
    const auto found = native->timers.find(id);
    if (found == native->timers.end()) {
        return FALSE;
    }
    native->widget->killTimer(found->second);
    native->timers.erase(found);
    return TRUE;
}
