#include "files/FilterTracksDlg.h"

#include "framework/DataExchange.h"
#include "plugin/session/FilmSession.h"
#include "resources/resource.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"
#include "timeline/rows/TrackOrder.h"

#include <unordered_set>

namespace {

using TrackSet = std::unordered_set<const void*>;

std::string LineOf(const FilmSession& session, const CTrackCtrl& row) {
    return AsCameraTrack(row.track) != nullptr ? row.name : RootRowName(session, row.track);
}

void SetVisible(const RowList& rows, const TrackSet& tracks, bool visible) {
    for (CTrackCtrl* row : rows.tracks) {
        if (row->IsRoot() && tracks.count(row->track) != 0) {
            row->SetVisibleFlag(visible);
        }
    }
}

} // namespace

BEGIN_MESSAGE_MAP(CFilterTracksDlg, CDialog)
ON_BN_CLICKED(IDC_TRACKS_ALL, &CFilterTracksDlg::OnAll)
ON_BN_CLICKED(IDC_TRACKS_INVERSE, &CFilterTracksDlg::OnInverse)
ON_BN_CLICKED(IDC_TRACKS_NONE, &CFilterTracksDlg::OnNone)
END_MESSAGE_MAP()

CFilterTracksDlg::CFilterTracksDlg(const FilmSession& shown, CWnd* parentWnd)
    : CDialog(IDD_FILTER_TRACKS, parentWnd), session(shown) {
}

void CFilterTracksDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_TRACKS_LIST, list);
}

BOOL CFilterTracksDlg::OnInitDialog() {
    const BOOL result = CDialog::OnInitDialog();
    FillList();
    return result;
}

void CFilterTracksDlg::FillList() {
    film = FilmWatch(session);
    list.SetRedraw(FALSE);
    list.ResetContent();
    if (const TimelineContext* rows = TimelineOf(session)) {
        for (const CTrackCtrl* row : rows->tracks) {
            if (row->IsRoot() && row->track != nullptr) {
                const int line = list.AddString(LineOf(session, *row));
                list.SetItemDataPtr(line, row->track);
                list.SetSel(line, row->visible);
            }
        }
    }
    list.SetRedraw(TRUE);
}

void CFilterTracksDlg::SelectAll(bool select) {
    list.SetRedraw(FALSE);
    list.SetSel(-1, select);
    list.SetRedraw(TRUE);
}

void CFilterTracksDlg::OnInverse() {
    list.SetRedraw(FALSE);
    for (int line = 0; line < list.GetCount(); ++line) {
        list.SetSel(line, list.GetSel(line) == 0);
    }
    list.SetRedraw(TRUE);
}

void CFilterTracksDlg::OnOK() {
    ShowRows();
    CDialog::OnOK();
}

void CFilterTracksDlg::ShowRows() {
    const TimelineContext* rows = TimelineOf(session);
    if (rows == nullptr || !film.IsCurrent()) {
        return;
    }
    TrackSet listed;
    TrackSet selected;
    for (int line = 0; line < list.GetCount(); ++line) {
        listed.insert(list.GetItemDataPtr(line));
        if (list.GetSel(line) > 0) {
            selected.insert(list.GetItemDataPtr(line));
        }
    }
    SetVisible(*rows, listed, /*visible*/ false);
    SetVisible(*rows, selected, /*visible*/ true);
}
