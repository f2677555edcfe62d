#include "keys/attributes/KeyAttributesDlg.h"

#include "framework/Resource.h"
#include "keys/attributes/KeyAttributes.h"
#include "keys/views/TrackKey.h"
#include "plugin/base/PluginResources.h"
#include "plugin/session/FilmSession.h"
#include "resources/resource.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

#include <algorithm>

namespace {

/// Whether a film of the level has the record still; pointers are only compared.
bool IsInAFilm(const FilmSession& session, const IFilmKey* record) {
    const IFilmManager* manager = session.GetFilmManager();
    const auto hasRecord = [record](const CFilmTrack* track) {
        return std::ranges::find(track->keys, record) != track->keys.end();
    };
    return manager != nullptr && std::ranges::any_of(manager->films, [&](const IFilm* film) {
               return film != nullptr && std::ranges::any_of(film->tracks, hasRecord);
           });
}

} // namespace

BEGIN_MESSAGE_MAP(CFilmKeyAttributesDlg, CDialog)
ON_WM_CLOSE()
ON_WM_DESTROY()
ON_BN_CLICKED(IDC_ATTR_NEXT, &CFilmKeyAttributesDlg::OnNext)
ON_BN_CLICKED(IDC_ATTR_PREV, &CFilmKeyAttributesDlg::OnPrev)
END_MESSAGE_MAP()

CFilmKeyAttributesDlg::CFilmKeyAttributesDlg(FilmSession& shown)
    : CDialog(IDD_KEY_ATTRIBUTES), session(shown) {
    const ResourceScope resources(PluginResources());
    Create(IDD_KEY_ATTRIBUTES, nullptr);
}

CFilmKeyAttributesDlg::~CFilmKeyAttributesDlg() {
    DestroyWindow();
}

BOOL CFilmKeyAttributesDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    list.SubclassDlgItem(IDC_ATTR_LIST, this);
    list.InitControls(this);
    return TRUE;
}

void CFilmKeyAttributesDlg::OnDestroy() {
    Reset();
    CDialog::OnDestroy();
}

void CFilmKeyAttributesDlg::Reset() {
    key = nullptr;
    record = nullptr;
    hasPending = false;
    list.ResetRows();
    DeleteRows();
}

void CFilmKeyAttributesDlg::Show(int command) {
    if (command == kHide) {
        if (IsVisible()) {
            ShowWindow(SW_HIDE);
        }
    } else if (!locked && !IsVisible()) {
        ShowWindow(SW_SHOW);
    }
}

/// The open edit goes into its row and the rows into the record. False if the window went, or showed another
/// key, while the user was asked.
bool CFilmKeyAttributesDlg::SaveRows() {
    const Watch<CFilmKeyAttributesDlg> self(this);
    const unsigned shown = shownKeys;
    list.Commit();
    if (!self.IsAlive() || shown != shownKeys) {
        return false;
    }
    list.activeRow = -1;
    ApplyChanges();
    return self.IsAlive() && shown == shownKeys;
}

void CFilmKeyAttributesDlg::SetKey(CTrackKey* newKey, bool refresh) {
    if (locked) {
        return;
    }
    if (refresh) {
        ShowRows();
        return;
    }
    ++shownKeys;
    const Watch watched(newKey);
    if (record != nullptr && !SaveRows()) {
        return;
    }
    key = watched.IsAlive() ? newKey : nullptr;
    record = key != nullptr ? key->record : nullptr;
    ShowRows();
}

/// The rows anew from the record.
void CFilmKeyAttributesDlg::ShowRows() {
    list.ResetRows();
    DeleteRows();
    hasPending = false;
    if (key == nullptr || record == nullptr) {
        return;
    }
    if (const KeyAttributes* attributes = GetKeyAttributes(record->kind)) {
        attributes->fill(rows, *record);
    }
    UpdateRows();
    UpdateNeighbourButtons();
}

void CFilmKeyAttributesDlg::ApplyChanges() {
    const KeyAttributes* attributes = record != nullptr ? GetKeyAttributes(record->kind) : nullptr;
    if (attributes == nullptr) {
        return;
    }
    hasPending = false;
    IFilmKey* written = record;
    // Also asked when the window has gone.
    const auto isThere = [self = Watch<CFilmKeyAttributesDlg>(this), written, &films = session] {
        return (self.IsAlive() && self->record == written) || IsInAFilm(films, written);
    };
    attributes->apply(rows, *written, {session, isThere});
}

void CFilmKeyAttributesDlg::ApplyPending() {
    if (list.activeRow >= 0) {
        const Watch<CFilmKeyAttributesDlg> self(this);
        list.Commit();
        if (!self.IsAlive()) {
            return;
        }
    }
    if (hasPending) {
        ApplyChanges();
    }
}

void CFilmKeyAttributesDlg::UpdateRows() {
    for (const AttrRow* row : rows) {
        row->member->UpdateVisibility();
    }
    RebuildList();
}

void CFilmKeyAttributesDlg::RebuildList() {
    const void* selected = list.GetCurSel() >= 0 ? list.GetItemDataPtr(list.GetCurSel()) : nullptr;
    const int top = list.GetTopIndex();
    list.SetRedraw(FALSE);
    list.ResetContent();
    for (AttrRow* row : rows) {
        if (!row->member->IsHidden()) {
            list.SetItemDataPtr(list.AddString(row->member->name), row);
        }
    }
    for (int i = 0; selected != nullptr && i < list.GetCount(); ++i) {
        if (list.GetItemDataPtr(i) == selected) {
            list.SetCurSel(i);
            break;
        }
    }
    list.SetTopIndex(top);
    list.SetRedraw(TRUE);
    list.Invalidate();
}

void CFilmKeyAttributesDlg::OnOK() {
    const Watch<CFilmKeyAttributesDlg> self(this);
    list.Commit();
    if (self.IsAlive()) {
        ApplyChanges();
    }
    if (!self.IsAlive()) {
        return;
    }
    Refresh(); // what was written may not be what the rows say, and they are written again with the next key
    CDialog::OnOK();
}

void CFilmKeyAttributesDlg::OnClose() {
    if (record != nullptr && !SaveRows()) {
        return;
    }
    Reset();
    CDialog::OnClose();
}

void CFilmKeyAttributesDlg::MakeKeyCurrent() {
    if (key != nullptr && key->IsInRow()) {
        CurrentKey() = key;
    }
}

void CFilmKeyAttributesDlg::PoseFilm() {
    if (const TimelineContext* timeline = TimelineOf(session)) {
        session.SetFrame(timeline->currentTime, FilmSession::kNoPrevious);
    }
}

void CFilmKeyAttributesDlg::GoToNeighbour(bool forward) {
    TimelineContext* timeline = TimelineOf(session);
    CTrackCtrl* row = timeline != nullptr ? timeline->FindRowOfKey(record) : nullptr;
    CTrackKey* neighbour = row != nullptr ? row->FindNearestKey(record->time, forward) : nullptr;
    if (neighbour == nullptr) {
        return;
    }
    const Watch watched(row);
    timeline->SelectOnly(neighbour); // writes the key on show, which may ask the user
    if (watched.IsAlive()) {
        row->Invalidate(FALSE);
    }
}

void CFilmKeyAttributesDlg::UpdateNeighbourButtons() {
    const TimelineContext* timeline = TimelineOf(session);
    const CTrackCtrl* row = timeline != nullptr ? timeline->FindRowOfKey(record) : nullptr;
    if (row == nullptr) {
        return;
    }
    const bool hasNext = row->FindNearestKey(record->time, /*after*/ true) != nullptr;
    const bool hasPrev = row->FindNearestKey(record->time, /*after*/ false) != nullptr;
    if (CWnd* next = GetDlgItem(IDC_ATTR_NEXT)) {
        next->EnableWindow(hasNext);
    }
    if (CWnd* prev = GetDlgItem(IDC_ATTR_PREV)) {
        prev->EnableWindow(hasPrev);
    }
}
