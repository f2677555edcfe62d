#include "timeline/rows/AdvWnd.h"

#include "framework/SelectionScope.h"
#include "plugin/base/PluginResources.h"

IMPLEMENT_DYNCREATE(CadvWnd, CWnd)

BEGIN_MESSAGE_MAP(CadvWnd, CWnd)
ON_WM_PAINT()
ON_WM_WININICHANGE()
ON_WM_SIZE()
ON_WM_PALETTECHANGED()
END_MESSAGE_MAP()

CadvWnd::CadvWnd() = default;

CadvWnd::~CadvWnd() {
    delete bitmap;
}

BOOL CadvWnd::Create(const char* className, const char* windowName, DWORD style, const CRect& rect,
                     CWnd* parent, UINT id, CCreateContext* context) {
    return CWnd::Create(className, windowName, style, rect, parent, id, context);
}

BOOL CadvWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    if (!CWnd::SubclassDlgItem(id, parent)) {
        return FALSE;
    }
    return CreateChildren() > 0 ? TRUE : FALSE;
}

int CadvWnd::CreateChildren() {
    return 1;
}

void CadvWnd::InternalRedrawFG(CDC* /*dc*/, CRect /*rect*/) {
}

void CadvWnd::InternalRedrawBG(CDC* dc, CRect /*rect*/) {
    COLORREF color = 0;
    if ((backgroundMode & kSystemColor) != 0) {
        color = GetSysColor(COLOR_WINDOW);
    }
    if ((backgroundMode & kOwnColor) != 0) {
        color = backgroundColor;
    }
    CRect box;
    dc->GetClipBox(&box);
    CBrush brush(color);
    dc->FillRect(box, &brush);
}

void CadvWnd::SetBackgroundMode(COLORREF color, int mode) {
    backgroundColor = color;
    backgroundMode = mode;
}

int CadvWnd::GetBackgroundMode() const {
    return backgroundMode;
}

COLORREF CadvWnd::GetBackgroundColor() const {
    return backgroundColor;
}

void CadvWnd::SetFlickerFree(int flag) {
    const bool was = flickerFree != 0;
    flickerFree = flag;
    if (!was && flag != 0) {
        bitmap = new CBitmap;
        ReCreateBitmap();
    } else if (was && flag == 0) {
        delete bitmap;
        bitmap = nullptr;
    }
}

int CadvWnd::IsFlickerFree() const {
    return flickerFree;
}

void CadvWnd::SetContentsChanged(int flag) {
    contentsChanged = flag;
}

int CadvWnd::IsContentsChanged() const {
    return contentsChanged;
}

void CadvWnd::ReCreateBitmap() {
    if (GetSafeHwnd() == nullptr) {
        return;
    }
    CClientDC dc(this);
    CRect client;
    GetClientRect(&client);
    delete bitmap;
    bitmap = new CBitmap;
    bitmap->CreateCompatibleBitmap(&dc, client.Width(), client.Height());
    contentsChanged = 1;
}

void CadvWnd::RegisterClass() {
    constexpr UINT kVerticalRedraw = 0x1;
    constexpr UINT kHorizontalRedraw = 0x2;
    constexpr UINT kDoubleClicks = 0x8;
    constexpr UINT kGlobalClass = 0x4000;
    WNDCLASS windowClass;
    windowClass.style = kVerticalRedraw | kHorizontalRedraw | kDoubleClicks | kGlobalClass;
    windowClass.lpfnWndProc = &CadvWnd::DummyWndProc;
    windowClass.hInstance = PluginResources();
    windowClass.lpszClassName = "ADVANCED_WND";
    ::RegisterClass(&windowClass);
}

LRESULT CadvWnd::DummyWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::DefWindowProc(window, message, wParam, lParam);
}

WNDPROC* CadvWnd::GetSuperWndProcAddr() {
    static WNDPROC procedure = nullptr;
    return &procedure;
}

void CadvWnd::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    if (flickerFree == 0) {
        if (dc.ps.fErase) {
            InternalRedrawBG(&dc, client);
        }
        InternalRedrawFG(&dc, client);
        return;
    }
    CDC memory;
    memory.CreateCompatibleDC(&dc);
    const SelectionScope<CBitmap> target(memory, *bitmap);
    if (contentsChanged != 0) {
        memory.SelectStockObject(BLACK_PEN);
        InternalRedrawBG(&memory, client);
        InternalRedrawFG(&memory, client);
        contentsChanged = 0;
    }
    dc.BitBlt(0, 0, client.Width(), client.Height(), &memory, 0, 0, SRCCOPY);
}

void CadvWnd::OnWinIniChange(const char* section) {
    CWnd::OnWinIniChange(section);
    if (flickerFree != 0) {
        ReCreateBitmap();
        Invalidate(TRUE);
    }
}

// Required: a new size makes a new bitmap and asks for no paint.
void CadvWnd::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    if (flickerFree != 0) {
        ReCreateBitmap();
    }
}

void CadvWnd::OnPaletteChanged(CWnd* focus) {
    CWnd::OnPaletteChanged(focus);
    if (flickerFree != 0) {
        ReCreateBitmap();
    }
    Invalidate(TRUE);
}
