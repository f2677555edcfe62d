// How the property list draws a row.
#include "framework/SelectionScope.h"
#include "keys/attributes/AttrPropCtrl.h"

#include <cmath>

namespace {

constexpr COLORREF kBlack = 0x000000;
constexpr COLORREF kBlue = 0xFF0000;
constexpr COLORREF kSelectedBack = 0xC0C0C0;
constexpr COLORREF kBack = 0xF0F0F0;

constexpr int kTextInset = 2; // pixels, from the top and from the left of a name
constexpr int kValueInset = 3;

/// A component in 0 to 1 as a byte. Required: what is outside wraps round.
int ToChannel(float component) {
    const float scaled = component * 255.0f;
    constexpr float kMost = 1e9f; // an int holds it; what is beyond has no digits to show
    return std::fabs(scaled) < kMost ? static_cast<int>(scaled) & 0xFF : 0;
}

COLORREF ColorOf(const Vector3& color) {
    return RGB(ToChannel(color.x), ToChannel(color.y), ToChannel(color.z));
}

void DrawBox(CDC& dc, COLORREF penColor, CBrush& brush, const CRect& box) {
    CPen pen(PS_SOLID, 0, penColor);
    const SelectionScope<CPen> pens(dc, pen);
    const SelectionScope<CBrush> brushes(dc, brush);
    dc.Rectangle(box);
}

} // namespace

void CAttrPropCtrl::DrawItem(DRAWITEMSTRUCT* item) {
    const AttrRow* row = item != nullptr ? RowAt(static_cast<int>(item->itemID)) : nullptr;
    CDC* dc = item != nullptr ? CDC::FromHandle(item->hDC) : nullptr;
    if (row == nullptr || dc == nullptr) {
        return;
    }
    const CRect& r = item->rcItem;
    const int middle = (r.left + r.right) / 2;
    const CRect valueBox(middle + 1, r.top, r.right, r.bottom);
    const bool isSelected = (item->itemState & ODS_SELECTED) != 0;
    CBrush nameBrush(isSelected ? kSelectedBack : kBack);
    DrawBox(*dc, kBlack, nameBrush, CRect(r.left, r.top, middle, r.bottom));
    CBrush valueBrush(kBack);
    valueBrush.hollow = isSelected;
    DrawBox(*dc, kBlue, valueBrush, valueBox);

    const int oldMode = dc->SetBkMode(TRANSPARENT);
    const COLORREF oldColor = dc->SetTextColor(kBlack);
    const CMember& member = *row->member;
    dc->TextOut(r.left + kTextInset, r.top + kTextInset, member.name);
    if (isSelected && activeEditor != nullptr) {
        // the editor stands over the value
    } else if (member.value[0].GetType() == MemberType::Vector) {
        CBrush color(ColorOf(member.value[0].AsVector()));
        DrawBox(*dc, kBlack, color, valueBox);
    } else {
        dc->TextOut(middle + kValueInset, r.top + kTextInset, GetRowText(member));
    }
    dc->SetTextColor(oldColor);
    dc->SetBkMode(oldMode);
}
