#include "timeline/rows/RowTree.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"
#include "timeline/rows/TrackCtrlStore.h"

namespace {

/// Nothing without a track or an open film. `what` names the bits of CPluginFilmsParams::Set.
void StoreState(FilmSession* session, CFilmTrack* track, const std::uint8_t* filter, bool expanded,
                int what) {
    const IFilm* film = session != nullptr ? session->GetCurrentFilm() : nullptr;
    if (track == nullptr || film == nullptr || film->name == nullptr) {
        return;
    }
    const TrackStore store = FindTrackStore(*session, track, film->name);
    if (store.params != nullptr) {
        store.params->Set(film->name, filter, expanded ? 1 : 0, what, store.entry);
    }
}

} // namespace

void CTrackCtrl::UpdateVisibility(bool show) {
    ShowRowsWithKeys(*this, show);
}

void CTrackCtrl::ApplyKindFlags(const std::uint8_t* flags, bool show) {
    ShowRowsOfKinds(*this, flags, show);
}

void CTrackCtrl::SetExpanded(bool flag, bool redraw) {
    expanded = flag;
    ApplyKindFlags(kindFlags.data(), flag);
    TimelineContext* timeline = TimelineOf(this);
    if (redraw && timeline != nullptr) {
        timeline->RebuildVisibleRows(/*redraw*/ true, nullptr);
    }
}

void CTrackCtrl::ToggleExpanded() {
    const bool opened = !expanded;
    SetButtonSign(opened ? '-' : '+');
    SetExpanded(opened, /*redraw*/ true);
    StoreState(GetSession(), track, nullptr, expanded, CPluginFilmsParams::kExpanded);
    if (TimelineContext* timeline = TimelineOf(this)) {
        timeline->FocusControl();
    }
}

void CTrackCtrl::SetVisibleFlag(bool flag) {
    visible = flag;
    ApplyKindFlags(kindFlags.data(), flag);
    if (parent != nullptr) {
        parent->SetKindFlag(kind, visible);
    }
}

void CTrackCtrl::SetKindFlag(int flagKind, bool flag) {
    if (!HasFilterByte(flagKind)) {
        return;
    }
    kindFlags[static_cast<std::size_t>(flagKind)] = flag ? 1 : 0;
    if (IsRoot()) {
        // Required: a record that is made here says "unfolded".
        StoreState(GetSession(), track, kindFlags.data(), /*expanded*/ true, CPluginFilmsParams::kFilter);
    } else if (parent != nullptr) {
        parent->SetKindFlag(flagKind, flag);
    }
}

void CTrackCtrl::ReadStoredState(std::uint8_t& storedExpanded) {
    storedExpanded = 0;
    FilmSession* session = GetSession();
    const IFilm* film = session != nullptr ? session->GetCurrentFilm() : nullptr;
    if (track == nullptr || film == nullptr || film->name == nullptr) {
        return;
    }
    const TrackStore store = FindTrackStore(*session, track, film->name);
    if (store.params != nullptr && store.params->Find(film->name, store.entry, &storedExpanded) == nullptr) {
        store.params->Set(film->name, nullptr, 0, CPluginFilmsParams::kExpanded, store.entry);
    }
}

BOOL CTrackCtrl::OnCommand(WPARAM wParam, LPARAM lParam) {
    HWND button = expandButton.GetSafeHwnd();
    if (button != nullptr && reinterpret_cast<HWND>(lParam) == button && HIWORD(wParam) == BN_CLICKED) {
        ToggleExpanded();
    }
    return CGridCtrl::OnCommand(wParam, lParam);
}
