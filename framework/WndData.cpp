#include "framework/Wnd.h"

BOOL CWnd::UpdateData(BOOL /*s*/) {
    return FALSE;
}
void CWnd::DoDataExchange(CDataExchange*) {
}
BOOL CWnd::EnableToolTips(BOOL) {
    return TRUE;
}
void CWnd::RepositionBars(UINT, UINT, UINT, UINT, CRect*, const CRect*, BOOL) {
}
CFont* CWnd::GetFont() const {
    return windowFont;
}
void CWnd::SetFont(CFont* font, BOOL) {
    windowFont = font;
}
