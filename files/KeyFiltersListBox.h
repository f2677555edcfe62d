#pragma once

#include "files/FilterDlgCheckbox.h"
#include "framework/Edit.h"
#include "framework/ListBox.h"
#include "keys/rules/KeyKindParams.h"

#include <array>

/// The list of key kinds: the number of the kind is a line's item data. From left to right a line shows the
/// name, the height, the two colours and a check box for the visible flag. A double click on height or colour
/// changes it. Rects are client pixels.
class CKeyFiltersListBox : public CListBox {
    DECLARE_MESSAGE_MAP()

public:
    /// Makes the check boxes and the height edit, hidden until the lines are placed.
    void CreateControls();
    /// What is typed in the height edit is dropped.
    void DestroyControls();
    /// The check boxes show the flags anew.
    void ShowFlags();
    /// The flag's new state.
    bool ToggleVisible(int kind);

    KeyKindParamsTable* params = nullptr; ///< what the lines show and change; outlives the window
    std::array<CFilterDlgCheckbox, kKeyKindCount> boxes;
    CEdit edit;
    int editItem = -1; ///< the line whose height is under edit, -1 for none

protected:
    void DrawItem(DRAWITEMSTRUCT* item) override;
    void OnPaint();
    void OnSize(UINT type, int width, int height);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);

private:
    KeyKindParams* RecordOf(int line) const;
    void PlaceControls();
    void BeginEdit(int line);
    void EndEdit();
    void ChooseColor(int line, COLORREF KeyKindParams::*color);
};
