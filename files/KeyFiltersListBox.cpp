#include "files/KeyFiltersListBox.h"

#include "framework/ColorDialog.h"
#include "keys/properties/NumberText.h"

#include <string>

namespace {

constexpr UINT kEditId = kKeyKindCount; // behind those of the check boxes
constexpr CRect kFirstRect(0, 0, 15, 15);
constexpr int kBoxSize = 15;
constexpr int kEditWidth = 20;

// Where the columns begin, in pixels from the right edge.
constexpr int kHeightColumn = 120;
constexpr int kNormalColumn = 100;
constexpr int kHighlightColumn = 60;
constexpr int kBoxColumn = 15;

constexpr COLORREF kBlack = 0x000000;

void DrawCell(CDC& dc, int x, int y, COLORREF color, const std::string& text) {
    dc.SetTextColor(color);
    dc.TextOut(x, y, text);
}

} // namespace

BEGIN_MESSAGE_MAP(CKeyFiltersListBox, CListBox)
ON_WM_PAINT()
ON_WM_SIZE()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
END_MESSAGE_MAP()

void CKeyFiltersListBox::CreateControls() {
    for (std::size_t kind = 0; kind < boxes.size(); ++kind) {
        CFilterDlgCheckbox& box = boxes[kind];
        box.Create("", WS_CHILD | WS_VISIBLE | BS_CHECKBOX, kFirstRect, this, static_cast<UINT>(kind));
        box.ShowWindow(SW_HIDE);
        box.kind = static_cast<int>(kind);
        box.pressed = false;
    }
    edit.Create(WS_CHILD, kFirstRect, this, kEditId);
    edit.SetFont(GetFont());
    editItem = -1;
    ShowFlags();
    PlaceControls();
}

void CKeyFiltersListBox::DestroyControls() {
    for (CFilterDlgCheckbox& box : boxes) {
        box.DestroyWindow();
    }
    edit.DestroyWindow();
}

void CKeyFiltersListBox::ShowFlags() {
    for (std::size_t kind = 0; kind < boxes.size(); ++kind) {
        boxes[kind].SetCheck((*params)[kind].visible ? BST_CHECKED : BST_UNCHECKED);
    }
}

bool CKeyFiltersListBox::ToggleVisible(int kind) {
    bool& visible = (*params)[static_cast<std::size_t>(kind)].visible;
    visible = !visible;
    return visible;
}

KeyKindParams* CKeyFiltersListBox::RecordOf(int line) const {
    const UINT_PTR kind = GetItemData(line);
    return line >= 0 && line < GetCount() && kind < params->size() ? &(*params)[kind] : nullptr;
}

/// Each beside its line, wherever the list has scrolled to; those of lines out of sight are hidden.
void CKeyFiltersListBox::PlaceControls() {
    CRect client;
    GetClientRect(&client);
    for (int line = 0; line < GetCount(); ++line) {
        CRect r;
        if (RecordOf(line) == nullptr || GetItemRect(line, &r) == LB_ERR) {
            continue;
        }
        CFilterDlgCheckbox& box = boxes[GetItemData(line)];
        const int left = r.right - kBoxColumn;
        box.MoveWindow(CRect(left, r.top, left + kBoxSize, r.top + kBoxSize));
        box.ShowWindow(r.bottom > client.top && r.top < client.bottom ? SW_SHOWNA : SW_HIDE);
        if (line == editItem) {
            edit.MoveWindow(
                CRect(r.right - kHeightColumn, r.top, r.right - kHeightColumn + kEditWidth, r.bottom));
        }
    }
}

void CKeyFiltersListBox::OnPaint() {
    PlaceControls(); // the list may have been scrolled
    CListBox::OnPaint();
}

void CKeyFiltersListBox::OnSize(UINT type, int width, int height) {
    CListBox::OnSize(type, width, height);
    PlaceControls();
}

void CKeyFiltersListBox::DrawItem(DRAWITEMSTRUCT* item) {
    const int line = item != nullptr ? static_cast<int>(item->itemID) : -1;
    const KeyKindParams* record = RecordOf(line);
    CDC* dc = item != nullptr ? CDC::FromHandle(item->hDC) : nullptr;
    if (record == nullptr || dc == nullptr) {
        return;
    }
    const CRect& r = item->rcItem;
    const int top = r.top + 1;
    dc->SelectStockObject((item->itemState & ODS_SELECTED) != 0 ? BLACK_PEN : WHITE_PEN);
    dc->SelectStockObject(NULL_BRUSH);
    dc->Rectangle(r);
    dc->SetBkMode(TRANSPARENT);
    DrawCell(*dc, r.left + 1, top, kBlack, record->name);
    DrawCell(*dc, r.right - kHeightColumn, top, kBlack, std::to_string(record->rectHeight));
    DrawCell(*dc, r.right - kNormalColumn, top, record->normalColor, "Normal");
    DrawCell(*dc, r.right - kHighlightColumn, top, record->highlightColor, "Highlight");
}

void CKeyFiltersListBox::OnLButtonDown(UINT flags, CPoint point) {
    if (editItem != -1) {
        EndEdit();
    }
    CListBox::OnLButtonDown(flags, point);
}

void CKeyFiltersListBox::OnLButtonDblClk(UINT flags, CPoint point) {
    CListBox::OnLButtonDblClk(flags, point);
    BOOL outside = FALSE;
    const int line = static_cast<int>(ItemFromPoint(point, outside));
    if (outside || RecordOf(line) == nullptr) {
        return;
    }
    CRect client;
    GetClientRect(&client);
    const int fromRight = client.right - point.x;
    if (fromRight > kHeightColumn || fromRight <= kBoxColumn) {
        return;
    }
    if (fromRight > kNormalColumn) {
        BeginEdit(line);
    } else {
        ChooseColor(line, fromRight > kHighlightColumn ? &KeyKindParams::normalColor
                                                       : &KeyKindParams::highlightColor);
    }
}

void CKeyFiltersListBox::BeginEdit(int line) {
    editItem = line;
    edit.SetWindowText(std::to_string(RecordOf(line)->rectHeight));
    PlaceControls();
    edit.BringWindowToTop();
    edit.ShowWindow(SW_SHOW);
    edit.SetSel(0, -1);
    edit.SetFocus();
}

/// Required: only a press in the list takes what was typed.
void CKeyFiltersListBox::EndEdit() {
    const int height = IntFromText(edit.GetWindowText().c_str());
    KeyKindParams* record = RecordOf(editItem);
    if (height > 0 && record != nullptr) {
        record->rectHeight = height;
    }
    editItem = -1;
    edit.ShowWindow(SW_HIDE);
    Invalidate();
}

void CKeyFiltersListBox::ChooseColor(int line, COLORREF KeyKindParams::*color) {
    KeyKindParams& record = *RecordOf(line); // of the dialog around, which outlives the box
    CColorDialog dialog(record.*color, CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR, this);
    if (dialog.DoModal() == IDOK) {
        record.*color = dialog.GetColor();
        Invalidate();
    }
}
