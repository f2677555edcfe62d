#pragma once

#include "framework/DC.h"
#include "framework/Wnd.h"

/// One item that the program draws (LBS_OWNERDRAWFIXED), in the list's client coordinates.
struct DRAWITEMSTRUCT {
    UINT CtlType = 0;
    UINT CtlID = 0;
    UINT itemID = 0;
    UINT itemAction = 1;
    UINT itemState = 0; // ODS_SELECTED, ODS_DISABLED
    HDC hDC = nullptr;
    CRect rcItem;
    UINT_PTR itemData = 0;
};

/// A list of texts with a number each. LBN_SELCHANGE and LBN_DBLCLK only follow what the user does. A press
/// below the last item selects nothing, unless several may be selected.
class FILMS_API CListBox : public CWnd {
    DECLARE_DYNCREATE(CListBox)
public:
    using CWnd::Create;
    BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id);

    int GetCount() const;
    /// The index of the new item.
    int AddString(const std::string& text);
    int InsertString(int index, const std::string& text);
    /// The number of items left, LB_ERR for a wrong index.
    int DeleteString(UINT index);
    void ResetContent();

    /// LB_ERR when nothing is selected, and for a wrong index.
    int GetCurSel() const;
    int SetCurSel(int index);
    int GetSel(int index) const;
    /// -1 means all items.
    int SetSel(int index, BOOL select = TRUE);
    /// Returns how many were stored.
    int GetSelItems(int most, int* indices) const;

    UINT_PTR GetItemData(int index) const;
    int SetItemData(int index, UINT_PTR data);
    void* GetItemDataPtr(int index) const { return reinterpret_cast<void*>(GetItemData(index)); }
    int SetItemDataPtr(int index, void* data) { return SetItemData(index, reinterpret_cast<UINT_PTR>(data)); }
    std::string GetText(int index) const;
    int GetText(int index, std::string& text) const;

    /// The first item after `after` that begins with the text, ignoring case, round the end; LB_ERR for none.
    int FindString(int after, const std::string& text) const;
    /// The item that is the whole text; one that differs in case alone only where no item is the very same.
    int FindStringExact(int after, const std::string& text) const;
    int SelectString(int after, const std::string& text);

    int GetItemRect(int index, CRect* rect) const;
    int SetItemHeight(int index, UINT height);
    /// The first row that shows, also of a list that has never been shown. The last page is always full, so
    /// that the top one is never nearer to the end than that. SetRedraw(FALSE) remembers it and
    /// SetRedraw(TRUE) gives it back, unless the program has scrolled, or selected another row that must come
    /// into view.
    int GetTopIndex() const;
    int SetTopIndex(int index);
    /// The item under the point; `outside` is set, with the nearest item, when there is none.
    UINT ItemFromPoint(CPoint point, BOOL& outside) const;

protected:
    virtual void DrawItem(DRAWITEMSTRUCT* item);
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};
