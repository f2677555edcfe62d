#include "timeline/FilmsMainCtrl.h"

#include "helpers/rules/FilmsLightHelper.h"
#include "plugin/PluginImpl.h"

#include <algorithm>
#include <memory>

namespace {

constexpr UINT kRowId = 55;
constexpr CRect kFirstRowRect(10, 10, 20, 20);

} // namespace

int CFilmsMainCtrl::GetVisibleRowCount() const {
    if (rowHeight == 0) {
        return 0;
    }
    CRect client;
    GetClientRect(&client);
    const int fitting = (client.Height() - bottomMargin - headerHeight) / rowHeight;
    // Required: with the margins this is one less than fits.
    return fitting * rowHeight < client.Height() ? fitting - 1 : fitting;
}

void CFilmsMainCtrl::ArrangeRows(bool invalidate, bool move) {
    if ((!invalidate && !move) || rebuilding) {
        return;
    }
    CRect client;
    GetClientRect(&client);
    // Required: y has the header in it and the limit hasn't, so a margin of its height stays at the bottom.
    const int limit = client.bottom - (client.top + headerHeight);
    const std::size_t top = TopIndex();
    for (std::size_t i = 0; move && i < top; ++i) {
        visibleTracks[i]->ShowWindow(SW_HIDE);
    }
    const CRect first(client.left, headerHeight + 1, client.right - rightMargin - client.left,
                      headerHeight + 1 + rowHeight);
    std::size_t place = PlaceRows(top, first, limit, move);
    for (; move && place < visibleTracks.size(); ++place) {
        visibleTracks[place]->ShowWindow(SW_HIDE);
    }
}

/// From the top row on, down to the limit. The answer is the place of the first row that was not reached.
std::size_t CFilmsMainCtrl::PlaceRows(std::size_t place, CRect rect, int limit, bool move) {
    for (; place < visibleTracks.size(); ++place) {
        CTrackCtrl* row = visibleTracks[place];
        if (!row->visible) {
            row->ShowWindow(SW_HIDE);
            continue;
        }
        if (move && rect.bottom >= limit) {
            break;
        }
        if (move) {
            row->MoveWindow(rect.left, rect.top, std::max(rect.Width(), 0), rowHeight, TRUE);
            row->ShowWindow(SW_SHOW);
        }
        row->Invalidate(FALSE);
        rect.OffsetRect(0, rowHeight);
        if (!move && rect.top >= limit) {
            break;
        }
    }
    return place;
}

void CFilmsMainCtrl::RepaintRows() {
    if (grid != nullptr) {
        grid->Invalidate(FALSE);
    }
    ArrangeRows(/*invalidate*/ true, /*move*/ false);
}

void CFilmsMainCtrl::RebuildVisibleRows(bool redraw, const RowHandle* handle) {
    if (handle != nullptr) {
        SetTopRowHandle(*handle);
    }
    visibleTracks.clear();
    for (CTrackCtrl* row : tracks) {
        if (row->visible) {
            visibleTracks.push_back(row);
        } else {
            row->ShowWindow(SW_HIDE);
        }
    }
    MendTopRow(GetVisibleRowCount());
    ShowTopRowInBar(/*newRange*/ true);
    if (redraw) {
        ArrangeRows(/*invalidate*/ false, /*move*/ true);
    }
}

/// The row bar follows topRow; without a row it stands at the start.
void CFilmsMainCtrl::ShowTopRowInBar(bool newRange) {
    if (vScroll == nullptr) {
        return;
    }
    if (newRange) {
        vScroll->SetBarRange(0.0f, static_cast<float>(visibleTracks.size()));
        vScroll->page = RowPage();
    }
    const std::size_t top = TopIndex();
    vScroll->SetBarPosition(top < visibleTracks.size() ? static_cast<float>(top) : 0.0f);
    vScroll->UpdateBar();
    vScroll->Invalidate(FALSE);
}

/// A row with its window, axis and grid, in no list yet. Null if the window can't be made.
std::unique_ptr<CTrackCtrl> CFilmsMainCtrl::MakeRow() {
    auto row = std::make_unique<CTrackCtrl>();
    row->Create(nullptr, nullptr, WS_CHILD, kFirstRowRect, this, kRowId);
    if (row->GetSafeHwnd() == nullptr) {
        return nullptr;
    }
    row->SetFlickerFree(1);
    if (grid != nullptr) {
        row->SetTimeRange(grid->rangeStart, grid->rangeEnd);
        row->SetView(grid->viewStart, grid->viewEnd);
        row->SetTicDistance(grid->ticDistance);
        row->SetBigTics(grid->bigTics);
    }
    return row;
}

/// A row was added to the visible list: the bar's range and page grow by it.
void CFilmsMainCtrl::GrowRowBar(bool redraw) {
    if (vScroll == nullptr) {
        return;
    }
    vScroll->SetBarRange(vScroll->rangeStart, vScroll->rangeEnd + 1.0f);
    if (static_cast<int>(visibleTracks.size()) <= GetVisibleRowCount()) {
        vScroll->page = std::max(vScroll->page + 1.0f, 0.0f);
    }
    vScroll->UpdateBar();
    if (redraw) {
        vScroll->Invalidate(FALSE);
        ArrangeRows(/*invalidate*/ false, /*move*/ true);
    }
}

CTrackCtrl* CFilmsMainCtrl::AddTrackCtrl(bool redraw) {
    std::unique_ptr<CTrackCtrl> made = MakeRow();
    if (!made) {
        return nullptr;
    }
    CTrackCtrl* row = made.release();
    if (visibleTracks.empty()) {
        topRow = row;
    }
    tracks.push_back(row);
    visibleTracks.push_back(row);
    GrowRowBar(redraw);
    return row;
}

CTrackCtrl* CFilmsMainCtrl::AddAnimationRow(CTrackCtrl* parentRow, const std::string& name) {
    std::unique_ptr<CTrackCtrl> made = parentRow != nullptr ? MakeRow() : nullptr;
    if (!made) {
        return nullptr;
    }
    made->name = name;
    made->kind = KeyKind::Animation;
    CTrackCtrl* found = parentRow->FindAnimationRowFor(made.get());
    if (found == nullptr) {
        made->parent = nullptr; // it was never the parent's
        return nullptr;
    }
    CTrackCtrl* row = made.release();
    if (!visibleTracks.empty()) {
        topRow = row; // Required, though it scrolls the first show of a film.
    }
    visibleTracks.insert(std::ranges::find(visibleTracks, found), row);
    tracks.insert(std::ranges::find(tracks, found), row);
    GrowRowBar(/*redraw*/ true);
    return row;
}

void CFilmsMainCtrl::InsertTrackCtrl(CTrackCtrl* row, CTrackCtrl* other, bool before) {
    if (row == nullptr || row == other) {
        return;
    }
    const auto old = std::ranges::find(tracks, row);
    if (old == tracks.end()) {
        return;
    }
    auto place = std::ranges::find(tracks, other);
    if (place == tracks.end()) {
        ForgetRow(row);
        tracks.erase(old);
        detachedRows.push_back(row);
        return;
    }
    tracks.erase(old);
    tracks.insert(before ? place : std::next(place), row);
}

void CFilmsMainCtrl::RemoveTrackCtrl(CTrackCtrl* row, bool redraw) {
    if (row == nullptr || std::ranges::find(tracks, row) == tracks.end()) {
        return;
    }
    RowHandle handle;
    GetTopRowHandle(handle);
    RemoveCameraHelpers(row->track);
    const Watch<CFilmsMainCtrl> window(this);
    const Watch watched(row);
    const std::list<CTrackCtrl*> children = row->children;
    for (CTrackCtrl* child : children) {
        RemoveTrackCtrl(child, /*redraw*/ false);
        if (!watched.IsAlive()) {
            return; // the attributes window's key was written, which rebuilt the rows
        }
    }
    LeaveTrackOf(row);
    if (!window.IsAlive() || !watched.IsAlive()) {
        return;
    }
    ForgetRow(row);
    tracks.remove(row);
    row->DestroyWindow();
    delete row;
    RebuildVisibleRows(redraw, &handle);
}

/// The path and the objects of a camera that is about to go.
void CFilmsMainCtrl::RemoveCameraHelpers(CFilmTrack* track) {
    if (AsCameraTrack(track) == nullptr) {
        return;
    }
    if (plugin.trackVisualizer.renderTrack == track) {
        plugin.SetVisualizedTrack(nullptr);
    }
    plugin.trackVisualizer.RemoveTrack(track);
}

/// What hangs on a row goes with it: camera keys of a camera row, the film's track of a root row.
void CFilmsMainCtrl::LeaveTrackOf(CTrackCtrl* row) {
    if (row->kind == KeyKind::Camera) {
        const Watch watched(row);
        row->DeleteAllKeys(/*redraw*/ false);
        if (watched.IsAlive() && row->parent != nullptr) {
            row->parent->RemoveChildRow(row);
        }
        return;
    }
    IFilm* film = plugin.GetCurrentFilm();
    CFilmTrack* track = row->track;
    if (row->IsRoot() && film != nullptr && track != nullptr) {
        ForgetTrack(track);
        if (CFilmsLightHelper* light = plugin.lightHelpers.FindHolder(track)) {
            light->track = nullptr;
        }
        film->RemoveTrack(track, 1);
        row->track = nullptr;
    }
}

void CFilmsMainCtrl::DeleteAllRows() {
    ForgetAllRows();
    forgettingAll = true;
    const std::list<CTrackCtrl*> gone = std::move(tracks);
    tracks.clear();
    visibleTracks.clear();
    for (CTrackCtrl* row : gone) {
        delete row;
    }
    for (CTrackCtrl* row : detachedRows) {
        delete row;
    }
    detachedRows.clear();
    forgettingAll = false;
    if (vScroll != nullptr) {
        ResetRowBar();
    }
}

CTrackCtrl* CFilmsMainCtrl::FindRowOfObject(const EditorObject* object) const {
    if (object == nullptr) {
        return nullptr;
    }
    const auto row = std::ranges::find_if(tracks, [this, object](const CTrackCtrl* r) {
        return r->track != nullptr && plugin.FindObjectByTrack(r->track) == object;
    });
    return row != tracks.end() ? *row : nullptr;
}

void CFilmsMainCtrl::RecordObjectKeys(EditorObject* object, float time, const float* newMatrix,
                                      const float* oldMatrix) {
    if (!(time >= 0.0f) || newMatrix == nullptr || oldMatrix == nullptr) {
        return;
    }
    CTrackCtrl* row = FindRowOfObject(object);
    if (row == nullptr) {
        return;
    }
    const Watch<CFilmsMainCtrl> window(this);
    row->WriteTransformKeys(time, newMatrix, oldMatrix);
    if (window.IsAlive()) {
        RepaintRows(); // a new key took the selection from a row that may be another object's
    }
}
