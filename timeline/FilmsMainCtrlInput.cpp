#include "timeline/FilmsMainCtrl.h"

#include "framework/Resource.h"
#include "keys/TrackKey.h"
#include "plugin/PluginImpl.h"
#include "plugin/PluginResources.h"
#include "resources/resource.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace {

constexpr UINT_PTR kShowTimer = 0;
constexpr UINT_PTR kHideTimer = 1;
constexpr UINT kShowDelayMs = 500;
constexpr UINT kHideDelayMs = 3000;
constexpr int kPopupOffset = 20; // pixels right of and below the cursor
/// Room for a record's own text and what is added to it.
constexpr std::size_t kDescriptionBytes = 2048;

bool IsShown(const CWnd* window) {
    return window != nullptr && window->IsWindowVisible();
}

/// What a position key of an actor adds: how far the actor is from it now, and how fast it must go.
std::string DistanceText(float now, CFilmTrack* track, const CFilmVectorKey& key) {
    const Vector3 place = track->GetPositionAt(now);
    const double x = static_cast<double>(key.value.x) - place.x;
    const double y = static_cast<double>(key.value.y) - place.y;
    const double z = static_cast<double>(key.value.z) - place.z;
    const double distance = std::sqrt(x * x + y * y + z * z);
    const double time = std::abs(static_cast<double>(key.time) - now);
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(), "Distance: %4.3f\nSpeed: %4.3f\n", distance,
                  time > 0.0 ? distance / time : 0.0);
    return text.data();
}

} // namespace

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

void CFilmsMainCtrl::ShowKeyDescription(CTrackKey* key) {
    if (keyDescrWnd == nullptr) {
        return;
    }
    if (key == hoverKey) {
        if (IsShown(keyDescrWnd)) {
            keyDescrWnd->ShowWindow(SW_SHOWNOACTIVATE);
        }
        SetTimer(kHideTimer, kHideDelayMs);
    } else if (key == nullptr) {
        keyDescrWnd->ShowWindow(SW_HIDE);
        KillTimer(kHideTimer);
        hoverKey = nullptr; // required: a delay that runs goes on, and finds no key
    } else {
        if (key->record != nullptr) {
            DescribeKey(key);
        }
        hoverKey = key;
    }
    if (hoverKey != nullptr) {
        MovePopupToCursor(/*onTop*/ false);
    }
}

void CFilmsMainCtrl::DescribeKey(CTrackKey* key) {
    const IFilmKey& record = *key->record;
    std::array<char, kDescriptionBytes> text{};
    record.Describe(text.data(), plugin.framesPerSecond);
    auto* popup = static_cast<CFilmsKeyDescrWnd*>(keyDescrWnd);
    popup->text = text.data();
    if (record.kind == KeyKind::Position && AsObjectTrack(record.track) != nullptr) {
        popup->text +=
            DistanceText(plugin.currentTime, record.track, static_cast<const CFilmVectorKey&>(record));
    }
    if (IsShown(popup)) {
        popup->Invalidate(FALSE);
        SetTimer(kHideTimer, kHideDelayMs);
    } else {
        SetTimer(kShowTimer, kShowDelayMs);
    }
}

void CFilmsMainCtrl::MovePopupToCursor(bool onTop) {
    CPoint cursor;
    if (GetCursorPos(&cursor)) {
        keyDescrWnd->SetWindowPos(nullptr, cursor.x + kPopupOffset, cursor.y + kPopupOffset, 0, 0,
                                  SWP_NOSIZE | SWP_NOACTIVATE | (onTop ? 0U : SWP_NOZORDER));
    }
}

void CFilmsMainCtrl::OnTimer(UINT_PTR id) {
    if (id == kShowTimer && keyDescrWnd != nullptr && hoverKey != nullptr) {
        MovePopupToCursor(/*onTop*/ true);
        if (!IsShown(keyDescrWnd)) {
            keyDescrWnd->ShowWindow(SW_SHOWNOACTIVATE);
        }
        SetTimer(kHideTimer, kHideDelayMs);
        TakeFocusForPopup();
    } else if (id == kHideTimer && IsShown(keyDescrWnd)) {
        keyDescrWnd->ShowWindow(SW_HIDE);
    }
    KillTimer(id);
}

/// Home and End then reach the key that is described. Only while the keyboard is with the scenario window: an
/// editor elsewhere keeps its caret.
void CFilmsMainCtrl::TakeFocusForPopup() {
    const CWnd* window = GetParent();
    const CWnd* focus = CWnd::GetFocus();
    const bool inside =
        focus != nullptr && (focus == window || (window != nullptr && window->IsChild(focus)));
    if (inside || (window != nullptr && CWnd::GetActiveWindow() == window)) {
        SetFocus();
    }
}

void CFilmsMainCtrl::StopHover() {
    hoverKey = nullptr;
    if (keyDescrWnd != nullptr) {
        keyDescrWnd->ShowWindow(SW_HIDE);
    }
    KillTimer(kShowTimer);
    KillTimer(kHideTimer);
}

void CFilmsMainCtrl::OnRButtonDown(UINT /*flags*/, CPoint point) {
    ClientToScreen(&point);
    ShowContextMenu(point.x, point.y, nullptr, nullptr);
}

void CFilmsMainCtrl::ShowContextMenu(int x, int y, CTrackCtrl* row, CTrackKey* key) {
    const ResourceScope resources(PluginResources());
    StopHover(); // nothing lies under the menu
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
