#include "timeline/FilmsKeyDescrWnd.h"

#include "framework/PaintDC.h"
#include "keys/views/KeyDrawing.h"

BEGIN_MESSAGE_MAP(CFilmsKeyDescrWnd, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

void CFilmsKeyDescrWnd::OnPaint() {
    constexpr COLORREF kPaleYellow = 0xC8FFFF;
    constexpr int kMargin = 2; // pixels
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    CBrush brush(kPaleYellow);
    const SelectionScope<CBrush> brushScope(dc, brush);
    const SelectionScope<CPen> penScope(dc, *static_cast<CPen*>(StockObject(BLACK_PEN)));
    dc.Rectangle(client);
    dc.SetBkMode(TRANSPARENT);
    const SelectionScope<CFont> fontScope(dc, TimelineFont());
    client.DeflateRect(kMargin, kMargin);
    dc.DrawText(text, client, DT_WORDBREAK);
}
