#include "timeline/FilmsMainCtrl.h"

#include "files/AttachMovieObjectDlg.h"
#include "framework/PaintDC.h"
#include "framework/SelectionScope.h"
#include "keys/views/TrackKey.h"
#include "plugin/PluginImpl.h"
#include "timeline/AdjustTimeDlg.h"

#include <algorithm>

namespace {

constexpr UINT kScrollId = 10;
constexpr UINT kGridId = 20; // the row scroll bar has the same
constexpr UINT kInfoId = 30;
constexpr CRect kPopupRect(0, 0, 200, 150);
/// Sizes at creation; a layout puts the fields of the same meaning in their place.
constexpr int kFirstHeader = 30;
constexpr int kFirstMargin = 20;
constexpr float kFirstTics = 2.0f;
constexpr int kFirstBigTics = 5;
constexpr DWORD kChildStyle = WS_CHILD | WS_VISIBLE;

void Place(CWnd* window, int x, int y, int width, int height, bool repaint) {
    if (window != nullptr && window->GetSafeHwnd() != nullptr) {
        window->MoveWindow(x, y, std::max(width, 0), std::max(height, 0), repaint);
    }
}

} // namespace

BEGIN_MESSAGE_MAP(CFilmsMainCtrl, CadvWnd)
ON_WM_PAINT()
ON_WM_RBUTTONDOWN()
ON_WM_TIMER()
ON_WM_MOUSEMOVE()
ON_WM_KEYDOWN()
END_MESSAGE_MAP()

CFilmsMainCtrl::CFilmsMainCtrl(IPluginImpl& newPlugin)
    : TimelineEdits(newPlugin), plugin(newPlugin), adjustTimeDlg(std::make_unique<CAdjustTimeDlg>(this)) {
    LoadDefaultKeysParams(&keyParams);
}

IAttachDialog* CFilmsMainCtrl::GetAttachDialog() {
    return attachDlg.get();
}

CFilmsMainCtrl::~CFilmsMainCtrl() {
    undoMgr.Clear(); // now: what goes there tells this control
    delete hScroll;
    delete grid;
    delete vScroll;
    delete infoWnd;
    delete keyDescrWnd;
    hScroll = vScroll = nullptr;
    grid = nullptr;
    infoWnd = keyDescrWnd = nullptr;
    DeleteAllRows();
}

BOOL CFilmsMainCtrl::Create(const char* className, const char* windowName, DWORD style, const CRect& rect,
                            CWnd* parentWnd, UINT id, CCreateContext* context) {
    if (rect.Height() < kMinHeight || rect.Width() < kMinWidth) {
        return FALSE;
    }
    return CadvWnd::Create(className, windowName, style, rect, parentWnd, id, context) &&
           CreateGrid(rect.Width()) && CreateScrollBars(rect.Width(), rect.Height()) && CreateInfoWindows();
}

BOOL CFilmsMainCtrl::CreateGrid(int width) {
    grid = new CMarkedGridCtrl;
    const CRect place(leftWidth, 0, width - kFirstMargin, kFirstHeader);
    if (!grid->Create(nullptr, nullptr, kChildStyle, place, this, kGridId)) {
        return FALSE;
    }
    grid->SetFlickerFree(1);
    grid->SetTimeRange(movieStart, movieEnd);
    grid->SetView(viewStart, viewEnd);
    grid->SetAlignment(CGridCtrl::kBottom);
    grid->SetTicDistance(kFirstTics);
    grid->SetBigTics(kFirstBigTics);
    return TRUE;
}

BOOL CFilmsMainCtrl::CreateScrollBars(int width, int height) {
    hScroll = new CTimeScrollbar;
    const CRect timePlace(leftWidth, height - kFirstMargin, width - kFirstMargin, height);
    if (!hScroll->Create(nullptr, nullptr, kChildStyle, timePlace, this, kScrollId)) {
        return FALSE;
    }
    hScroll->SetFlickerFree(1);
    hScroll->SetBarRange(movieStart, movieEnd);
    hScroll->page = std::max(viewEnd - viewStart, 0.0f);
    hScroll->SetBarPosition(viewStart);
    hScroll->UpdateBar();
    vScroll = new CTimeScrollbar;
    const CRect rowPlace(width - kFirstMargin, kFirstHeader, width, height - kFirstMargin);
    if (!vScroll->Create(nullptr, nullptr, kChildStyle, rowPlace, this, kGridId)) {
        return FALSE;
    }
    vScroll->SetFlickerFree(1);
    vScroll->vertical = 1;
    ResetRowBar();
    return TRUE;
}

BOOL CFilmsMainCtrl::CreateInfoWindows() {
    infoWnd = new CFilmsInfoWnd(plugin);
    if (!infoWnd->Create(nullptr, nullptr, kChildStyle, CRect(0, 0, leftWidth, kFirstHeader), this,
                         kInfoId)) {
        return FALSE;
    }
    keyDescrWnd = new CFilmsKeyDescrWnd;
    return keyDescrWnd->Create("STATIC", nullptr, WS_POPUP, kPopupRect, this, 0);
}

void CFilmsMainCtrl::ResetRowBar() {
    vScroll->SetBarRange(0.0f, 0.0f);
    vScroll->page = 0.0f;
    vScroll->SetBarPosition(0.0f);
    vScroll->UpdateBar();
}

void CFilmsMainCtrl::RecalcLayout() {
    CRect client;
    GetClientRect(&client);
    const int timeWidth = client.Width() - rightMargin - leftWidth;
    const int rowsHeight = client.Height() - bottomMargin - headerHeight;
    Place(grid, leftWidth, 0, timeWidth, headerHeight, false);
    Place(hScroll, leftWidth, client.Height() - bottomMargin, timeWidth, bottomMargin, false);
    Place(vScroll, client.Width() - rightMargin, headerHeight, rightMargin, rowsHeight, true);
    Place(infoWnd, 0, 0, leftWidth, headerHeight, false);
    if (hScroll != nullptr) {
        hScroll->UpdateBar();
    }
    if (vScroll != nullptr) {
        vScroll->page = RowPage();
        vScroll->UpdateBar();
    }
    CadvWnd::Invalidate(FALSE);
}

float CFilmsMainCtrl::RowPage() const {
    const int fitting = std::min(static_cast<int>(visibleTracks.size()), GetVisibleRowCount());
    return static_cast<float>(std::max(fitting, 0));
}

void CFilmsMainCtrl::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    CPen pen(PS_SOLID, 0, 0);
    CBrush brush(0xFFFFFF);
    const SelectionScope<CPen> penScope(dc, pen);
    const SelectionScope<CBrush> brushScope(dc, brush);
    dc.Rectangle(client);
    const std::pair<CWnd*, BOOL> windows[] = {
        {hScroll, TRUE}, {vScroll, TRUE}, {grid, TRUE}, {infoWnd, FALSE}};
    for (const auto& [window, erase] : windows) {
        if (window != nullptr) {
            window->Invalidate(erase);
        }
    }
    ArrangeRows(/*invalidate*/ false, /*move*/ true);
}

void CFilmsMainCtrl::ForgetView(CTrackKey* view) {
    if (forgettingAll || view == nullptr) {
        return;
    }
    const bool wasHovered = hoverKey == view;
    Selection::Forget(view);
    undoMgr.retired.Forget(view);
    if (wasHovered) {
        hover.Stop();
    }
    for (CTrackCtrl* row : tracks) {
        if (row->dragKey == view) {
            row->DropGesture();
        }
    }
    if (keyDuplicator.sourceKey == view) {
        keyDuplicator.ClearSource();
    }
    IKeyAttributesDlg* dialog = plugin.keyAttributesDlg.get();
    if (dialog != nullptr && dialog->GetKey() == view) {
        dialog->Reset();
    }
}

void CFilmsMainCtrl::ForgetRow(CTrackCtrl* row) {
    if (forgettingAll || row == nullptr) {
        return;
    }
    row->DropGesture();
    if (keyDuplicator.sourceRow == row) {
        keyDuplicator.ClearSource();
        keyDuplicator.sourceRow = nullptr;
    }
    Selection::Forget(row);
    Unlink(row);
}

void CFilmsMainCtrl::ForgetTrack(const CFilmTrack* track) {
    for (CTrackCtrl* row : tracks) {
        if (row->track == track) {
            row->DropTrack();
        }
    }
    if (attachDlg != nullptr) {
        attachDlg->ForgetTrack(track);
    }
    IKeyAttributesDlg* dialog = plugin.keyAttributesDlg.get();
    const IFilmKey* shown = dialog != nullptr ? dialog->GetRecord() : nullptr;
    if (shown != nullptr && shown->track == track) {
        dialog->Reset();
    }
}

/// Every row and view goes at once: nothing holds one of them any more.
void CFilmsMainCtrl::ForgetAllRows() {
    hover.Stop();
    Selection::ForgetAll();
    topRow = nullptr;
    keyDuplicator.ClearSource();
    keyDuplicator.sourceRow = nullptr;
    for (CTrackCtrl* row : tracks) {
        row->DropGesture();
    }
    IKeyAttributesDlg* dialog = plugin.keyAttributesDlg.get();
    if (dialog != nullptr && dialog->GetKey() != nullptr) {
        dialog->Reset();
    }
}
