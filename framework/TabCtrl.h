#pragma once

#include "framework/Wnd.h"

/// A row of tabs; the program shows and hides the pages, which are its children. A change by the user, and
/// only that, sends TCN_SELCHANGE.
class FILMS_API CTabCtrl : public CWnd {
    DECLARE_DYNCREATE(CTabCtrl)
public:
    using CWnd::Create;
    BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id);
    /// The index of the new tab, -1 without a window.
    int InsertItem(int index, const std::string& label);
    int GetItemCount() const;
    /// -1 when no tab is shown.
    int GetCurSel() const;
    int SetCurSel(int index);
    /// From the control's rect to the part for pages.
    void AdjustRect(BOOL larger, CRect* rect) const;
};
