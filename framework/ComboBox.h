#pragma once

#include "framework/Wnd.h"

/// A drop-down list, with an edit before it unless the style is CBS_DROPDOWNLIST. Its rect holds the open
/// list; only a line's height of it shows while closed. Typing into the edit ends the selection.
class FILMS_API CComboBox : public CWnd {
    DECLARE_DYNCREATE(CComboBox)
public:
    using CWnd::Create;
    BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id);

    int GetCount() const;
    int AddString(const std::string& text);
    int InsertString(int index, const std::string& text);
    int DeleteString(UINT index);
    void ResetContent();
    /// What was chosen from the list; CB_ERR for nothing.
    int GetCurSel() const;
    int SetCurSel(int index);
    UINT_PTR GetItemData(int index) const;
    int SetItemData(int index, UINT_PTR data);
    std::string GetLBText(int index) const;
    /// As that of a list box.
    int FindStringExact(int after, const std::string& text) const;
    int SelectString(int after, const std::string& text);
};
