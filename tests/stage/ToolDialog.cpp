#include "tests/stage/ToolDialog.h"

#include "framework/Resource.h"
#include "ToolResources.h"

#include <algorithm>

BEGIN_MESSAGE_MAP(ToolDialog, CDialog)
ON_WM_SHOWWINDOW()
ON_WM_SIZE()
ON_WM_SIZING()
ON_WM_CLOSE()
ON_WM_DESTROY()
ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

ToolDialog::ToolDialog(CWnd* parent, unsigned resource) : CDialog(resource, parent) {
    const ResourceScope scope(ToolResources());
    CDialog::Create(resource, parent);
    SetWindowPos(nullptr, 0, 0, 500, 300, SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
}

BOOL ToolDialog::PreTranslateMessage(MSG* message) {
    if (message->message == WM_KEYDOWN) {
        keys.push_back(static_cast<int>(message->wParam));
    }
    return CDialog::PreTranslateMessage(message);
}

void ToolDialog::OnShowWindow(BOOL show, UINT status) {
    log.emplace_back(show ? "show" : "hide");
    CDialog::OnShowWindow(show, status);
}

void ToolDialog::OnSize(UINT type, int width, int height) {
    CDialog::OnSize(type, width, height);
    size = {width, height};
}

void ToolDialog::OnSizing(UINT side, CRect* rect) {
    constexpr UINT kLeftSides[] = {1, 4, 7};
    constexpr UINT kTopSides[] = {3, 4, 5};
    sides.push_back(side);
    if (rect->Width() < kMinWidth) {
        const bool isLeft = std::count(std::begin(kLeftSides), std::end(kLeftSides), side) != 0;
        (isLeft ? rect->left : rect->right) = isLeft ? rect->right - kMinWidth : rect->left + kMinWidth;
    }
    if (rect->Height() < kMinHeight) {
        const bool isTop = std::count(std::begin(kTopSides), std::end(kTopSides), side) != 0;
        (isTop ? rect->top : rect->bottom) = isTop ? rect->bottom - kMinHeight : rect->top + kMinHeight;
    }
}

void ToolDialog::OnClose() {
    log.emplace_back("close");
    if (diesOnClose) {
        DestroyWindow();
    } else if (mayClose) {
        CDialog::OnClose();
    }
}

void ToolDialog::OnDestroy() {
    log.emplace_back("destroy");
    CDialog::OnDestroy();
}

BOOL ToolDialog::OnMouseWheel(UINT flags, short delta, CPoint screenPoint) {
    wheel += delta;
    return CDialog::OnMouseWheel(flags, delta, screenPoint);
}
