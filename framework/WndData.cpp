#include "framework/Gdi.h"
#include "framework/private/NativeWindow.h"
#include "framework/Wnd.h"

CFont* CWnd::GetFont() const {
    if (windowFont) {
        return windowFont;
    }
    return native && native->font ? native->font : static_cast<CFont*>(StockObject(DEFAULT_GUI_FONT));
}

void CWnd::SetFont(CFont* font, BOOL redraw) {
    windowFont = font;
    if (native) {
        native->SetFont(font);
        if (redraw) {
            Invalidate();
        }
    }
}

BOOL CWnd::EnableToolTips(BOOL /*enable*/) {
    return TRUE;
}

void CWnd::RepositionBars(UINT first, UINT last, UINT leftOver, UINT mode, CRect* left, const CRect* client,
                          BOOL stretch) {
    if (!native) {
        return;
    }
    CRect free;
    GetClientRect(&free);
    if (client) {
        free = *client;
    }
    for (NativeWindow* child : native->Children()) {
        if (child->id < first || child->id > last || child->id == leftOver || !child->IsShown()) {
            continue;
        }
        const QSize wanted = child->widget->sizeHint();
        const int height = std::min(wanted.height(), std::max(0, free.Height()));
        const int width = stretch ? free.Width() : std::min(wanted.width(), free.Width());
        if (mode != reposQuery) {
            child->SetGeometry({free.left, free.top, free.left + width, free.top + height},
                               /*sendSize*/ true);
        }
        free.top += height;
    }
    if (left) {
        *left = free;
    }
    CWnd* rest = mode != reposQuery && leftOver != 0 ? GetDlgItem(static_cast<int>(leftOver)) : nullptr;
    if (rest) {
        rest->MoveWindow(free);
    }
}
