#include "framework/FormView.h"

#include "framework/Dialog.h"
#include "framework/private/DialogTemplate.h"

IMPLEMENT_DYNAMIC(CView, CWnd)
IMPLEMENT_DYNAMIC(CFormView, CView)

BEGIN_MESSAGE_MAP(CView, CWnd)
ON_MESSAGE(WM_INITIALUPDATE, &CView::OnInitialUpdateMessage)
END_MESSAGE_MAP()

void CView::OnInitialUpdate() {
    OnUpdate(nullptr, 0, nullptr);
}

void CView::OnUpdate(CView* /*sender*/, LPARAM /*hint*/, CObject* /*object*/) {
    Invalidate();
}

void CView::PostNcDestroy() {
    delete this;
}

LRESULT CView::OnInitialUpdateMessage(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    OnInitialUpdate();
    return 0;
}

void UpdateView(CView& view, LPARAM hint, CObject* object) {
    view.OnUpdate(nullptr, hint, object);
}

BOOL CFormView::Create(const char* /*className*/, const char* windowName, DWORD style, const CRect& rect,
                       CWnd* parent, UINT id, CCreateContext* context) {
    const std::optional<DialogTemplate> form = LoadDialog(resourceId);
    if (!form) {
        return FALSE;
    }
    const CRect place = rect.IsRectEmpty() ? CRect(rect.TopLeft(), form->rect.Size()) : rect;
    if (!CWnd::Create(nullptr, windowName, style | WS_CHILD, place, parent, id, context)) {
        return FALSE;
    }
    MakeTemplateControls(*this, *form);
    return TRUE;
}

void CFormView::OnInitialUpdate() {
    UpdateData(FALSE);
    CView::OnInitialUpdate();
}
