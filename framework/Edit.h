#pragma once

#include "framework/Wnd.h"

/// A line of text to edit. EN_CHANGE follows what the user does with the text, not what the program sets.
class FILMS_API CEdit : public CWnd {
    DECLARE_DYNCREATE(CEdit)
public:
    using CWnd::Create;
    BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id);
    /// An end of -1 is the end of the text, a start of -1 selects nothing. The caret is scrolled into view.
    void SetSel(int start, int end, BOOL noScroll = FALSE);
    void GetSel(int& start, int& end) const;
    /// In UTF-16 units, for the user alone; 0 is no limit. Text that the program sets is of any length and
    /// stays.
    void SetLimitText(UINT characters);
    BOOL SetReadOnly(BOOL readOnly = TRUE);
};
