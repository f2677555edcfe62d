#include "timeline/ScenarioDlg.h"

#include "framework/DC.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "plugin/PluginImpl.h"
#include "resources/resource.h"
#include "timeline/CommandNotes.h"
#include "timeline/TimelineCommands.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr UINT kMainCtrlId = 1234;
constexpr DWORD kToolbarStyle = 0x50002800; // a visible child along the top
constexpr DWORD kBarStyle = 0x3000;
constexpr UINT kEverything = 0xFFFFFFFF;

} // namespace

BEGIN_MESSAGE_MAP(CScenarioDlgToolbar, CToolBarReg)
ON_WM_CREATE()
END_MESSAGE_MAP()

CScenarioDlgToolbar::CScenarioDlgToolbar() {
    CDC screen;
    screen.CreateCompatibleDC(nullptr);
    screen.SelectStockObject(SYSTEM_FONT);
    TEXTMETRIC metrics;
    if (screen.GetTextMetrics(&metrics)) {
        fontSize = {metrics.tmAveCharWidth, metrics.tmHeight};
    }
}

int CScenarioDlgToolbar::OnCreate(CREATESTRUCT* cs) {
    cs->style |= CBRS_TOOLTIPS;
    if (CToolBarReg::OnCreate(cs) == -1) {
        return -1;
    }
    const ResourceScope scope(PluginResources());
    LoadToolBar(IDR_SCENARIO_TOOLBAR);
    EnableToolTips();
    return 0;
}

BEGIN_MESSAGE_MAP(CScenarioDlg, CDialog)
ON_WM_SIZE()
ON_WM_SIZING()
ON_WM_CLOSE()
ON_WM_DESTROY()
ON_WM_MOUSEWHEEL()
ON_NOTIFY_EX_RANGE(TTN_NEEDTEXT, 0, kEverything, &CScenarioDlg::OnToolTipText)
END_MESSAGE_MAP()

CScenarioDlg::CScenarioDlg(IPluginImpl& newPlugin, CWnd* parentWnd)
    : CDialog(IDD_SCENARIO, parentWnd), plugin(newPlugin) {
    plugin.scenarioDlg = this;
    const ResourceScope resources(PluginResources());
    Create(IDD_SCENARIO, parentWnd);
    SetWindowPos(nullptr, 0, 0, kFirstWidth, kFirstHeight, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

CScenarioDlg::~CScenarioDlg() {
    dying = true;
    DestroyWindow();
    if (plugin.scenarioDlg == this) {
        plugin.scenarioDlg = nullptr;
    }
}

void CScenarioDlg::PostNcDestroy() {
    if (!dying) {
        delete this;
    }
}

BOOL CScenarioDlg::OnInitDialog() {
    initialised = true;
    CDialog::OnInitDialog();
    MakeToolbar();
    MakeMainCtrl(FreeRect());
    ShowCurrentFilm();
    RecalcLayout();
    UpdateAttachButton();
    return TRUE;
}

void CScenarioDlg::MakeToolbar() {
    toolbar.Create(this, kToolbarStyle, AFX_IDW_TOOLBAR);
    toolbar.ShowWindow(SW_SHOW);
    toolbar.SetBarStyle(kBarStyle);
    toolbar.ModifyStyle(0, TBSTYLE_FLAT);
    EnableToolTips();
}

void CScenarioDlg::MakeMainCtrl(const CRect& rect) {
    mainCtrl = new CFilmsMainCtrl(plugin);
    if (!mainCtrl->Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(0, rect.top, rect.Width(), rect.bottom),
                          this, kMainCtrlId)) {
        delete mainCtrl;
        mainCtrl = nullptr;
        return;
    }
    mainCtrl->SetFlickerFree(1);
}

CRect CScenarioDlg::FreeRect() {
    CRect client;
    GetClientRect(&client);
    // The bar is placed each time too, so that it spans the window.
    RepositionBars(AFX_IDW_CONTROLBAR_FIRST, AFX_IDW_CONTROLBAR_LAST, 0);
    CRect free;
    RepositionBars(AFX_IDW_CONTROLBAR_FIRST, AFX_IDW_CONTROLBAR_LAST, 0, reposQuery, &free, &client);
    return free;
}

bool CScenarioDlg::IsEnabled() const {
    return IsWindowEnabled();
}

bool CScenarioDlg::IsVisible() const {
    return IsWindowVisible();
}

void CScenarioDlg::Show() {
    ShowWindow(SW_SHOW);
    if (mainCtrl != nullptr) {
        mainCtrl->SetFocus(); // Home, End and F2 work at once
    }
}

void CScenarioDlg::ShowCurrentFilm() {
    if (mainCtrl != nullptr) {
        mainCtrl->ShowFilm(plugin.GetCurrentFilm(), true);
    }
}

void CScenarioDlg::SetTime(float time) {
    if (mainCtrl != nullptr) {
        mainCtrl->SetCurrentTime(time, /*redraw*/ true);
    }
}

void CScenarioDlg::PressButton(unsigned id, bool pressed) {
    toolbar.SendMessage(TB_PRESSBUTTON, id, pressed ? 1 : 0);
}

void CScenarioDlg::UpdateAttachButton() {
    const int number = plugin.editor != nullptr ? plugin.editor->GetActiveView() : -1;
    const auto& attached = plugin.attachedViews;
    PressButton(IDC_ATTACH_MOVIE,
                number >= 0 && std::find(attached.begin(), attached.end(), number) != attached.end());
}

void CScenarioDlg::RecalcLayout() {
    if (!initialised || mainCtrl == nullptr) {
        return;
    }
    const CRect free = FreeRect();
    CRect before;
    mainCtrl->GetClientRect(&before);
    mainCtrl->SetWindowPos(nullptr, 0, free.top, free.Width(), free.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
    CRect after;
    mainCtrl->GetClientRect(&after);
    KeepScale(after.Width() - before.Width());
    mainCtrl->RecalcLayout();
}

/// The axis is only moved when the window narrows: widening at the end of the axis stretches the picture.
void CScenarioDlg::KeepScale(int grown) {
    const IFilm* film = plugin.GetCurrentFilm();
    const float start = mainCtrl->viewStart;
    const float end = mainCtrl->viewEnd;
    const float newEnd = end + static_cast<float>(grown) * mainCtrl->secondsPerPixel;
    if (!std::isfinite(newEnd)) {
        return;
    }
    if (newEnd < end) {
        if (newEnd > (film != nullptr ? film->length : mainCtrl->movieEnd)) {
            mainCtrl->SetMovieRange(mainCtrl->movieStart, newEnd);
        }
        mainCtrl->SetViewRange(start, newEnd, /*redraw*/ false);
    } else {
        mainCtrl->SetViewRange(start, end, /*redraw*/ false);
    }
    mainCtrl->SetViewRange(start, newEnd, /*redraw*/ false);
    if (!(mainCtrl->viewEnd > mainCtrl->viewStart) && end > start) {
        // The scale was taken in a narrower window and left no time to show: what was shown stays.
        mainCtrl->SetViewRange(start, end, /*redraw*/ false);
        mainCtrl->CalcSecondsPerPixel();
    }
}

void CScenarioDlg::OnSize(UINT type, int width, int height) {
    CDialog::OnSize(type, width, height);
    if (type == SIZE_RESTORED || type == SIZE_MAXIMIZED) {
        RecalcLayout();
    }
}

namespace {

enum Edge : UINT { kLeft = 1, kRight = 2, kTop = 4, kBottom = 8 };

/// The edges that each side number of a sizing drag moves; the numbers begin with 1.
constexpr UINT kSideEdges[] = {0,       kLeft,           kRight,          kTop, kTop | kLeft, kTop | kRight,
                               kBottom, kBottom | kLeft, kBottom | kRight};

} // namespace

void CScenarioDlg::OnSizing(UINT side, CRect* rect) {
    CDialog::OnSizing(side, rect);
    const UINT edges = side < std::size(kSideEdges) ? kSideEdges[side] : 0;
    if (rect->Width() < kMinWidth) {
        if (edges & kLeft) {
            rect->left = rect->right - kMinWidth;
        } else if (edges & kRight) {
            rect->right = rect->left + kMinWidth;
        }
    }
    if (rect->Height() < kMinHeight) {
        if (edges & kTop) {
            rect->top = rect->bottom - kMinHeight;
        } else if (edges & kBottom) {
            rect->bottom = rect->top + kMinHeight;
        }
    }
}

void CScenarioDlg::OnClose() {
    IKeyAttributesDlg* attributes = plugin.keyAttributesDlg.get();
    if (attributes != nullptr && attributes->IsVisible()) {
        attributes->Hide();
    }
    CDialog::OnClose();
}

void CScenarioDlg::OnDestroy() {
    CDialog::OnDestroy();
    if (mainCtrl != nullptr) {
        mainCtrl->SendMessage(WM_DESTROY);
        delete mainCtrl;
        mainCtrl = nullptr;
    }
}

/// Playing, and whatever asks the user, pumps messages: the window may be gone when a command returns.
BOOL CScenarioDlg::OnCommand(WPARAM wParam, LPARAM lParam) {
    const TimelineCommand* command = HIWORD(wParam) == 0 ? FindTimelineCommand(LOWORD(wParam)) : nullptr;
    if (command == nullptr || command->onButton == nullptr) {
        return CDialog::OnCommand(wParam, lParam);
    }
    const Watch<CScenarioDlg> self(this);
    plugin.ApplyPendingEdits();
    if (!self.IsAlive()) {
        return TRUE;
    }
    if (mainCtrl != nullptr) {
        NoteIfIdle(command->id, *mainCtrl);
    }
    command->onButton(*this);
    return !command->passOn || !self.IsAlive() || CDialog::OnCommand(wParam, lParam);
}

/// The film stops in the playing loop, which keeps the space bar to itself.
BOOL CScenarioDlg::PreTranslateMessage(MSG* message) {
    if (plugin.GetCurrentFilm() != nullptr && message->message == WM_KEYDOWN &&
        message->wParam == static_cast<WPARAM>(VK_SPACE)) {
        const Watch<CScenarioDlg> self(this);
        plugin.Play(plugin.currentTime);
        if (!self.IsAlive()) {
            return TRUE; // closed while the film played
        }
    }
    return CDialog::PreTranslateMessage(message);
}

BOOL CScenarioDlg::OnMouseWheel(UINT flags, short delta, CPoint screenPoint) {
    if (mainCtrl != nullptr) {
        if (delta > 0) {
            mainCtrl->OnWheelBack();
        } else {
            mainCtrl->OnWheelForward();
        }
    }
    return CDialog::OnMouseWheel(flags, delta, screenPoint);
}

/// Only for tips of whole windows; the toolbar words those of its buttons.
BOOL CScenarioDlg::OnToolTipText(UINT, NMHDR* header, LRESULT* result) {
    auto* request = reinterpret_cast<TOOLTIPTEXT*>(header);
    if (!(request->uFlags & TTF_IDISHWND)) {
        return FALSE;
    }
    const CWnd* window = FromHandle(reinterpret_cast<HWND>(header->idFrom));
    const ResourceScope resources(PluginResources());
    const std::string text =
        window != nullptr ? LoadString(static_cast<UINT>(window->GetDlgCtrlID())) : std::string();
    std::snprintf(tipText.data(), tipText.size(), "%s", text.c_str());
    request->lpszText = tipText.data();
    request->hinst = nullptr;
    *result = 0;
    return TRUE;
}
