#include "timeline/FilmsMainCtrl.h"

#include "framework/Resource.h"
#include "keys/rules/KeyKinds.h"
#include "keys/views/TrackKey.h"
#include "plugin/base/PluginResources.h"
#include "plugin/PluginImpl.h"
#include "resources/resource.h"
#include "timeline/CommandNotes.h"
#include "timeline/TimelineCommands.h"

void CFilmsMainCtrl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    switch (key) {
    case VK_F1 + 1:
        ToggleMarkOfFirstKey();
        break;
    case VK_LMENU:
    case VK_RMENU:
        break; // Required: the keys go no further here.
    case VK_END:
    case VK_HOME:
        JumpToKeyUnderMouse(key == VK_END);
        break;
    default:
        CadvWnd::OnKeyDown(key, repeat, flags);
        break;
    }
}

/// Required: it is the button "Deselect keys" that shows the mark here, while a press on a key uses the
/// other.
void CFilmsMainCtrl::ToggleMarkOfFirstKey() {
    if (selectedKeys.empty()) {
        return;
    }
    CTrackKey* key = selectedKeys.front();
    key->marked = !key->marked;
    if (IScenarioWindow* window = plugin.scenarioDlg) {
        window->PressButton(IDC_DESELECT_KEYS, key->marked);
    }
    RepaintRows();
}

void CFilmsMainCtrl::JumpToKeyUnderMouse(bool end) {
    CPoint mouse;
    if (topRow == nullptr || !GetCursorPos(&mouse)) {
        return;
    }
    const std::size_t top = TopIndex();
    const int rows = GetVisibleRowCount();
    for (int i = 0; i < rows; ++i) {
        CTrackCtrl* row = RowAt(top + static_cast<std::size_t>(i));
        if (row == nullptr) {
            return;
        }
        CRect place;
        row->GetWindowRect(&place);
        if (!place.PtInRect(mouse)) {
            continue;
        }
        row->ScreenToClient(&mouse);
        if (const CTrackKey* key = row->GetKeyAt(mouse)) {
            SetCurrentFrame(end ? key->time + key->GetDuration() : key->time, /*redraw*/ true);
        }
        return;
    }
}

void CFilmsMainCtrl::OnMouseMove(UINT /*flags*/, CPoint /*point*/) {
    Default();
    ShowKeyDescription(nullptr);
}

void CFilmsMainCtrl::OnRButtonDown(UINT /*flags*/, CPoint point) {
    ClientToScreen(&point);
    ShowContextMenu(point.x, point.y, nullptr, nullptr);
}

void CFilmsMainCtrl::ShowContextMenu(int x, int y, CTrackCtrl* row, CTrackKey* key) {
    const ResourceScope resources(PluginResources());
    hover.Stop(); // nothing lies under the menu
    menuKey = key;
    menuRow = row;
    if (CWnd* holding = GetCapture()) {
        holding->SendMessage(WM_CANCELMODE); // a clone that hangs on the mouse is no copied key to paste
    }
    const std::pair<CMenu*, UINT> sources[] = {
        {&trackMenu, IDR_ROW_MENU}, {&keyMenu, IDR_KEY_MENU}, {&mainMenu, IDR_MAIN_MENU}};
    for (const auto& [menu, id] : sources) {
        menu->DestroyMenu();
        menu->LoadMenu(id);
    }
    popupMenu.DestroyMenu();
    popupMenu.CreatePopupMenu();
    if (menuKey != nullptr) {
        menuKey->FillKeyMenu(&popupMenu, &keyMenu);
    } else if (menuRow != nullptr) {
        menuRow->FillRowMenu(&popupMenu, &trackMenu);
    } else {
        FillMainMenu();
    }
    if (popupMenu.GetMenuItemCount() > 0) { // the row of a track that is gone offers nothing
        popupMenu.TrackPopupMenu(TPM_RIGHTBUTTON, x, y, this);
    }
}

void CFilmsMainCtrl::FillMainMenu() {
    CTrackKey::CopyMenuItems(&popupMenu, &mainMenu);
    const UINT impossible = plugin.isPlaying != 0 ? IDC_PLAY_MOVIE : IDC_STOP_MOVIE;
    popupMenu.EnableMenuItem(impossible, MF_BYCOMMAND | MF_DISABLED | MF_GRAYED);
}

BOOL CFilmsMainCtrl::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* handlerInfo) {
    if (code != 0 || handlerInfo != nullptr) {
        return CadvWnd::OnCmdMsg(id, code, extra, handlerInfo);
    }
    RunCommand(id);
    return TRUE; // an unknown command is answered too
}

void CFilmsMainCtrl::RunCommand(UINT id) {
    const TimelineCommand* command = FindTimelineCommand(id);
    const ResourceScope resources(PluginResources());
    if (id != IDC_ADD_KEY) { // Required: a new key takes the pose as the film has it
        const Watch<CFilmsMainCtrl> window(this);
        plugin.ApplyPendingEdits();
        if (!window.IsAlive()) {
            return;
        }
    }
    NoteIfIdle(id, *this);
    if (command != nullptr && command->inMenu != nullptr) {
        command->inMenu(*this);
    } else {
        RunMethodCommand(id);
    }
}

/// The commands stand in the table of the methods, which the check marks of the menu use too.
void CFilmsMainCtrl::RunMethodCommand(UINT id) {
    for (int method = BezierMethod::Smooth; method <= BezierMethod::Inverse; ++method) {
        for (const bool in : {true, false}) {
            if (static_cast<UINT>(GetIDByMethod(method, in)) == id) {
                OnMenuChangeBezierMethod(in, method);
                return; // the control may be gone
            }
        }
    }
}
