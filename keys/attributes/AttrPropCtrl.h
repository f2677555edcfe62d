#pragma once

#include "framework/ListBox.h"
#include "keys/attributes/AttrListParent.h"
#include "keys/attributes/InPlaceButton.h"
#include "keys/attributes/InPlaceCombobox.h"
#include "keys/attributes/InPlaceEdit.h"
#include "plugin/base/Watch.h"

#include <string>

/// The property list: names on the left, values on the right. A press on a row lays an editor over its value;
/// when the editor loses the focus, the value goes back into the row's member. Rects are client pixels.
class CAttrPropCtrl : public CListBox, public Watched {
    DECLARE_MESSAGE_MAP()

public:
    static constexpr UINT kRowHeight = 20;

    /// Once, when the window stands. The parent outlives it.
    void InitControls(AttrListParent* around);
    /// Writes the active editor's content into the row's member. May write the record, make the rows anew
    /// and, through them, ask the user.
    void Commit();
    /// Hides the editors and clears the list. The editor's content is dropped.
    void ResetRows();
    /// The button has a new value.
    void OnButtonValue();
    /// Of the row under edit.
    bool RowHasBrowse() const;
    /// True, with the text of the menu item, while an object id is under edit.
    bool GetLinkObjectText(const EditorObject* object, std::string& text) const;
    void SetLinkObject(const EditorObject* object);
    AttrRow* FindObjectIdRow() const { return parent->FindObjectIdRow(); }

    /// The wheel has set the edit's text. False if the list went meanwhile.
    bool TakeWheel();
    /// Runs the browser of the row under edit and takes what it answers.
    void Browse(CInPlaceButton& button);

    CInPlaceEdit inPlaceEdit;
    CInPlaceCombobox inPlaceCombo;
    CInPlaceButton inPlaceButton;
    CWnd* activeEditor = nullptr; ///< the edit or the combobox, while it is shown
    int activeRow = -1;           ///< under edit; Required: stays as it is when rows come and go above it

protected:
    void DrawItem(DRAWITEMSTRUCT* item) override;
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);
    void OnPaint();
    void OnRowClick();

private:
    AttrRow* RowAt(int index) const;
    CWnd* FillEditor(const AttrRow& row);
    void TakeEditorText(CMember& member);
    void TakeObjectId(CMember& member);
    void ShowButton(const AttrRow& row);
    EditorObject* FindBrowsedObject() const;
    void HideEditor();
    void PlaceEditor();

    AttrListParent* parent = nullptr;
    bool busy = false; ///< an editor that is hidden loses the focus, which must not commit again
};

/// The property list around one of its editors, or null.
CAttrPropCtrl* PropertyListOf(const CWnd* editor);
