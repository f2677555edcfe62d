#include "timeline/FilmsKeyDescrWnd.h"

#include "framework/PaintDC.h"
#include "timeline/GdiScope.h"

BEGIN_MESSAGE_MAP(CFilmsKeyDescrWnd, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

void CFilmsKeyDescrWnd::OnPaint() {
    constexpr COLORREF kPaleYellow = 0xC8FFFF;
    constexpr int kMargin = 2;    // pixels
    constexpr int kFontSize = 80; // tenths of a point
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    CBrush brush(kPaleYellow);
    CFont font;
    font.CreatePointFont(kFontSize, "Arial");
    const GdiScope<CBrush> brushScope(&dc, &brush);
    const GdiScope<CPen> penScope(&dc, static_cast<CPen*>(StockObject(BLACK_PEN)));
    dc.Rectangle(client);
    dc.SetBkMode(TRANSPARENT);
    const GdiScope<CFont> fontScope(&dc, &font);
    client.DeflateRect(kMargin, kMargin);
    dc.DrawText(text, client, DT_WORDBREAK);
}
