#include "keys/attributes/AttrPropCtrl.h"

#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "plugin/session/FilmSession.h"

namespace {

constexpr UINT kEditId = 0;
constexpr UINT kComboId = 1;
constexpr UINT kButtonId = 2;
constexpr CRect kFirstRect(0, 0, 10, 10);
constexpr UINT kTypingLimit = 256; // characters

constexpr int kButtonWidth = 30;
constexpr int kEnumListHeight = 200; // pixels of the open list
constexpr int kBoolListHeight = 100;

/// What the host calls the effects of a key kind in its browser; 0 for kinds without effects.
int EffectKind(const IFilmKey* record) {
    switch (record != nullptr ? record->kind : KeyKind::None) {
    case KeyKind::FxSequence:
        return 1;
    case KeyKind::FxParticle:
        return 2;
    case KeyKind::FxTrace:
        return 3;
    case KeyKind::FxFlare:
        return 4;
    case KeyKind::FxRain:
        return 5;
    case KeyKind::FxBlind:
        return 6;
    default:
        return 0;
    }
}

bool IsTypedText(std::uint32_t type) {
    return type <= MemberType::String;
}

/// Sets a flag for as long as it lives, which may be longer than the flag does.
class FlagScope {
public:
    FlagScope(bool& scoped, CAttrPropCtrl& owner) : flag(scoped), old(scoped), list(&owner) { flag = true; }
    ~FlagScope() {
        if (list.IsAlive()) {
            flag = old;
        }
    }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    bool& flag;
    bool old;
    Watch<CAttrPropCtrl> list;
};

} // namespace

BEGIN_MESSAGE_MAP(CAttrPropCtrl, CListBox)
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_WM_PAINT()
END_MESSAGE_MAP()

CAttrPropCtrl* PropertyListOf(const CWnd* editor) {
    return dynamic_cast<CAttrPropCtrl*>(editor->GetParent());
}

void CAttrPropCtrl::InitControls(AttrListParent* around) {
    parent = around;
    inPlaceEdit.Create(WS_CHILD | WS_BORDER | ES_AUTOHSCROLL, kFirstRect, this, kEditId);
    inPlaceEdit.SetFont(GetFont());
    inPlaceEdit.SetLimitText(kTypingLimit);
    inPlaceCombo.Create(WS_CHILD | WS_VSCROLL | CBS_DROPDOWN, kFirstRect, this, kComboId);
    inPlaceCombo.SetFont(GetFont());
    inPlaceButton.Create("...", WS_CHILD | BS_PUSHBUTTON, kFirstRect, this, kButtonId);
    inPlaceButton.SetFont(GetFont());
    SetItemHeight(0, kRowHeight);
}

AttrRow* CAttrPropCtrl::RowAt(int index) const {
    return index >= 0 && index < GetCount() ? static_cast<AttrRow*>(GetItemDataPtr(index)) : nullptr;
}

bool CAttrPropCtrl::RowHasBrowse() const {
    const AttrRow* row = RowAt(activeRow);
    return row != nullptr && row->browse != nullptr;
}

void CAttrPropCtrl::HideEditor() {
    const FlagScope hiding(busy, *this);
    if (activeEditor != nullptr) {
        CWnd* editor = activeEditor;
        activeEditor = nullptr;
        editor->ShowWindow(SW_HIDE);
    }
}

void CAttrPropCtrl::ResetRows() {
    const FlagScope resetting(busy, *this);
    HideEditor();
    inPlaceButton.ShowWindow(SW_HIDE);
    ResetContent();
    activeRow = -1;
}

void CAttrPropCtrl::Commit() {
    if (busy || parent == nullptr) {
        return;
    }
    const Watch<CAttrPropCtrl> self(this);
    const FlagScope committing(busy, *this);
    // The button took the focus from the edit; it is shown again with its answer.
    inPlaceButton.ShowWindow(SW_HIDE);
    if (const AttrRow* row = RowAt(activeRow)) {
        TakeEditorText(*row->member); // the row may be gone now
    }
    if (self.IsAlive()) {
        parent->UpdateRows();
    }
}

void CAttrPropCtrl::TakeEditorText(CMember& member) {
    CMemberValue& value = member.value[0];
    const std::uint32_t type = value.GetType();
    const std::string before = GetRowText(member);
    if (member.mode == CMember::kEnumerated) {
        if (inPlaceCombo.GetCurSel() >= 0) {
            member.SetEnumIndex(inPlaceCombo.GetCurSel());
        }
    } else if (IsTypedText(type)) {
        value.Parse(inPlaceEdit.GetWindowText().c_str());
    } else if (type == MemberType::Bool) {
        if (inPlaceCombo.GetCurSel() >= 0) {
            const bool isTrue = inPlaceCombo.GetCurSel() == 1;
            value.SetFromPointer(&isTrue);
        }
    } else if (type == MemberType::ObjectId) {
        TakeObjectId(member); // the member may be gone now
        return;
    }
    if (GetRowText(member) != before) {
        parent->RowEdited();
    }
}

/// Required: another object is written at once and makes the rows anew.
void CAttrPropCtrl::TakeObjectId(CMember& member) {
    const Watch<CAttrPropCtrl> self(this);
    const std::int64_t before = member.value[0].AsInteger();
    member.value[0].Parse(inPlaceEdit.GetWindowText().c_str());
    if (member.value[0].AsInteger() == before) {
        return;
    }
    parent->ApplyChanges();
    if (self.IsAlive()) {
        parent->Refresh();
    }
}

bool CAttrPropCtrl::TakeWheel() {
    const Watch<CAttrPropCtrl> self(this);
    Commit();
    if (self.IsAlive() && parent != nullptr) {
        parent->ApplyChanges();
    }
    if (self.IsAlive() && parent != nullptr) {
        parent->PoseFilm();
    }
    return self.IsAlive();
}

void CAttrPropCtrl::OnLButtonDown(UINT flags, CPoint point) {
    const Watch<CAttrPropCtrl> self(this);
    CListBox::OnLButtonDown(flags, point);
    if (self.IsAlive()) {
        OnRowClick();
    }
}

void CAttrPropCtrl::OnLButtonDblClk(UINT flags, CPoint point) {
    const Watch<CAttrPropCtrl> self(this);
    CListBox::OnLButtonDblClk(flags, point);
    if (self.IsAlive()) {
        OnRowClick();
    }
}

void CAttrPropCtrl::OnRowClick() {
    const int selection = GetCurSel();
    if (activeRow >= 0) {
        const Watch<CAttrPropCtrl> self(this);
        Commit();
        if (!self.IsAlive()) {
            return;
        }
        HideEditor();
    }
    activeRow = selection;
    const AttrRow* row = RowAt(activeRow);
    if (row == nullptr) {
        HideEditor();
        return;
    }
    CWnd* editor = FillEditor(*row);
    if (editor != activeEditor) {
        HideEditor();
    }
    activeEditor = editor;
    PlaceEditor();
    ShowButton(*row);
    if (editor != nullptr) {
        editor->BringWindowToTop();
        editor->ShowWindow(SW_SHOW);
        editor->SetFocus();
    }
    if (editor == &inPlaceEdit) {
        inPlaceEdit.SetSel(0, -1);
    }
}

/// The editor for a row with the row's text in it, or null for a row that has none.
CWnd* CAttrPropCtrl::FillEditor(const AttrRow& row) {
    const CMember& member = *row.member;
    const std::uint32_t type = member.value[0].GetType();
    const std::string text = GetRowText(member);
    if (member.mode != CMember::kEnumerated && (IsTypedText(type) || type == MemberType::ObjectId)) {
        inPlaceEdit.SetWindowText(text);
        return &inPlaceEdit;
    }
    if (member.mode != CMember::kEnumerated && type != MemberType::Bool) {
        return nullptr;
    }
    inPlaceCombo.ResetContent();
    if (member.mode == CMember::kEnumerated) {
        std::string item;
        for (int i = 0; member.GetItem(i, item); ++i) {
            inPlaceCombo.AddString(item);
        }
    } else {
        inPlaceCombo.AddString("false");
        inPlaceCombo.AddString("true");
    }
    inPlaceCombo.SetWindowText(text);
    inPlaceCombo.SetCurSel(inPlaceCombo.FindStringExact(-1, text));
    return &inPlaceCombo;
}

void CAttrPropCtrl::ShowButton(const AttrRow& row) {
    inPlaceButton.browse = row.browse;
    if (row.browse == nullptr) {
        inPlaceButton.ShowWindow(SW_HIDE);
        return;
    }
    row.member->value[0].ToText(inPlaceButton.value);
    inPlaceButton.object = FindBrowsedObject();
    inPlaceButton.fxKind = EffectKind(parent->GetRecord());
    inPlaceButton.BringWindowToTop();
    inPlaceButton.ShowWindow(SW_SHOW);
}

/// The object that the key belongs to: the actor of its track, else what its object id names.
EditorObject* CAttrPropCtrl::FindBrowsedObject() const {
    const IFilmKey* record = parent->GetRecord();
    if (CFilmObjectTrack* track = record != nullptr ? AsObjectTrack(record->track) : nullptr) {
        return track->actor;
    }
    const AttrRow* row = parent->FindObjectIdRow();
    const ILevelData* level = parent->GetSession().GetLevelData();
    if (row == nullptr || level == nullptr) {
        return nullptr;
    }
    EditorObject* object = level->FindObject(static_cast<int>(row->member->value[0].AsInteger()));
    return object != nullptr && object->IsA(ClassId::EditorObject) ? object : nullptr;
}

/// Editor and button over the value of the row under edit, wherever the list has scrolled to.
void CAttrPropCtrl::PlaceEditor() {
    const AttrRow* row = RowAt(activeRow);
    CRect rect;
    if (row == nullptr || GetItemRect(activeRow, &rect) == LB_ERR) {
        return;
    }
    rect.DeflateRect(1, 1);
    CRect place((rect.left + rect.right) / 2 + 3, rect.top, rect.right, rect.bottom);
    if (row->browse != nullptr) {
        place.right = rect.right - kButtonWidth - 1;
        inPlaceButton.MoveWindow(CRect(rect.right - kButtonWidth, rect.top, rect.right, rect.bottom));
    }
    if (activeEditor == &inPlaceCombo) {
        place.bottom += row->member->mode == CMember::kEnumerated ? kEnumListHeight : kBoolListHeight;
    }
    if (activeEditor != nullptr) {
        activeEditor->MoveWindow(place);
    }
}

void CAttrPropCtrl::OnPaint() {
    PlaceEditor(); // the list may have been scrolled
    CListBox::OnPaint();
}

void CAttrPropCtrl::Browse(CInPlaceButton& button) {
    const Watch<CAttrPropCtrl> self(this);
    if (button.browse != nullptr) {
        const AttrBrowse browse = button.browse;
        parent->ApplyPending();
        if (!self.IsAlive()) {
            return;
        }
        parent->MakeKeyCurrent();
        AttrBrowseRequest request{button.value, button.object, button.fxKind, &parent->GetSession()};
        {
            const ResourceScope resources(PluginResources());
            browse(&request);
        }
        if (!self.IsAlive()) {
            return;
        }
        parent->MakeKeyCurrent();
        button.value = request.value;
    }
    OnButtonValue();
}

void CAttrPropCtrl::OnButtonValue() {
    const AttrRow* row = RowAt(activeRow);
    if (row == nullptr) {
        return;
    }
    if (activeEditor != nullptr) {
        activeEditor->SetWindowText(inPlaceButton.value);
        activeEditor->SetFocus();
        activeEditor->Invalidate();
        inPlaceButton.BringWindowToTop();
        inPlaceButton.ShowWindow(SW_SHOW);
    } else if (row->member->value[0].GetType() == MemberType::Vector) {
        row->member->value[0].Parse(inPlaceButton.value.c_str());
        parent->RowEdited();
        Invalidate();
    }
}

bool CAttrPropCtrl::GetLinkObjectText(const EditorObject* object, std::string& text) const {
    text.clear();
    const AttrRow* row = RowAt(activeRow);
    if (object == nullptr || GetCurSel() < 0 || row == nullptr ||
        row->member->value[0].GetType() != MemberType::ObjectId) {
        return false;
    }
    text = "Link camera to object " + object->name + "(" + std::to_string(object->id) + ")";
    return true;
}

void CAttrPropCtrl::SetLinkObject(const EditorObject* object) {
    const AttrRow* row = RowAt(GetCurSel());
    if (object == nullptr || row == nullptr || row->member->value[0].GetType() != MemberType::ObjectId) {
        return;
    }
    CMemberValue& value = row->member->value[0];
    value.SetByValue(object->id);
    std::string text;
    value.ToText(text);
    inPlaceEdit.SetWindowText(text);
    const Watch<CAttrPropCtrl> self(this);
    parent->ApplyChanges();
    if (self.IsAlive()) {
        parent->Refresh();
    }
}
