#include "framework/PaintDC.h"

#include "framework/private/NativeWindow.h"
#include "framework/private/Surface.h"

#include <QPaintEvent>

IMPLEMENT_DYNAMIC(CPaintDC, CDC)
IMPLEMENT_DYNAMIC(CClientDC, CDC)

CPaintDC::CPaintDC(CWnd* window) {
    MessageFrame* frame = messages::Of(window);
    NativeWindow* native = window->GetSafeHwnd();
    if (!native || !frame || !frame->event || frame->event->type() != QEvent::Paint) {
        return;
    }
    frame->baseDone = true;
    const QRegion& visible = static_cast<QPaintEvent*>(frame->event)->region();
    const QRect asked = visible.boundingRect();
    ps.rcPaint = CRect(asked.x(), asked.y(), asked.x() + asked.width(), asked.y() + asked.height());
    State().ownPainter = std::make_unique<QPainter>(native->Client());
    State().Borrow(*State().ownPainter, ps.rcPaint);
    State().WriteDirectly(visible);
    if (std::exchange(native->eraseAsked, false)) {
        ps.fErase =
            window->SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(static_cast<CDC*>(this))) == 0;
    }
}

CPaintDC::~CPaintDC() = default;

CClientDC::CClientDC(CWnd* /*window*/) {
}
