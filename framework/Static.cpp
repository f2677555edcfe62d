#include "framework/Static.h"

IMPLEMENT_DYNCREATE(CStatic, CWnd)

BOOL CStatic::Create(const char* text, DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return CWnd::Create("STATIC", text, style, rect, parent, id);
}
