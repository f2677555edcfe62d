#include "keys/attributes/InPlaceEdit.h"

#include "keys/attributes/AttrPropCtrl.h"
#include "keys/properties/NumberText.h"

namespace {

constexpr int kWheelDecimals = 3;

} // namespace

BEGIN_MESSAGE_MAP(CInPlaceEdit, CEdit)
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

void CInPlaceEdit::OnSetFocus(CWnd* old) {
    CEdit::OnSetFocus(old);
    current = FloatFromText(GetWindowText().c_str());
}

void CInPlaceEdit::OnKillFocus(CWnd* next) {
    CEdit::OnKillFocus(next);
    if (CAttrPropCtrl* list = PropertyListOf(this)) {
        list->Commit();
    }
}

/// Required: an end of the range without its partner stops the number, also with `wrap`.
void CInPlaceEdit::Step(bool up) {
    current += up ? step : -step;
    if (!up && hasMinimum && current < minimum) {
        current = wrap && hasMaximum ? maximum : minimum;
    } else if (up && hasMaximum && current > maximum) {
        current = wrap && hasMinimum ? minimum : maximum;
    }
}

/// Required: the number replaces the text of a row of any type.
BOOL CInPlaceEdit::OnMouseWheel(UINT flags, short delta, CPoint screenPoint) {
    CAttrPropCtrl* list = PropertyListOf(this);
    if (list == nullptr || list->RowHasBrowse()) {
        return FALSE;
    }
    Step(/*up*/ delta >= 1);
    SetWindowText("");
    SetWindowText(FixedText(current, /*width*/ 0, kWheelDecimals));
    return list->TakeWheel() ? CEdit::OnMouseWheel(flags, delta, screenPoint) : TRUE;
}
