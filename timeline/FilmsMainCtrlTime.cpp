#include "timeline/FilmsMainCtrl.h"

#include "keys/rules/FrameTimes.h"
#include "keys/views/TrackKey.h"
#include "plugin/PluginImpl.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float kLeastTicDistance = 0.1f;

} // namespace

void CFilmsMainCtrl::SetMovieRange(float a, float b) {
    movieStart = std::min(a, b);
    movieEnd = std::max(a, b);
    if (grid != nullptr) {
        grid->SetTimeRange(movieStart, movieEnd);
    }
    for (CTrackCtrl* row : tracks) {
        row->SetTimeRange(movieStart, movieEnd);
    }
    if (hScroll != nullptr) {
        hScroll->SetBarRange(movieStart, movieEnd);
    }
    // Required: each end is kept inside one side of the axis only.
    viewStart = std::max(viewStart, movieStart);
    viewEnd = std::min(viewEnd, movieEnd);
    ApplyViewRange(/*redraw*/ true);
}

void CFilmsMainCtrl::SetViewRange(float a, float b, bool redraw) {
    viewStart = std::max(std::min(a, b), movieStart);
    viewEnd = std::min(std::max(a, b), movieEnd);
    if (hScroll != nullptr) {
        hScroll->page = std::max(viewEnd - viewStart, 0.0f);
    }
    ApplyViewRange(redraw);
}

void CFilmsMainCtrl::ApplyViewRange(bool redraw) {
    if (hScroll != nullptr) {
        hScroll->SetBarPosition(viewStart);
        hScroll->UpdateBar();
    }
    if (grid != nullptr) {
        grid->SetView(viewStart, viewEnd);
    }
    for (CTrackCtrl* row : tracks) {
        row->SetView(viewStart, viewEnd);
    }
    if (redraw) {
        RepaintRows();
        if (hScroll != nullptr) {
            hScroll->Invalidate(FALSE);
        }
    }
}

void CFilmsMainCtrl::CalcSecondsPerPixel() {
    CRect client;
    GetClientRect(&client);
    const int width = client.right - rightMargin - leftWidth - client.left;
    secondsPerPixel = std::abs(viewEnd - viewStart) / static_cast<float>(width != 0 ? width : 1);
}

void CFilmsMainCtrl::SetTicsDistance(float seconds, bool redraw) {
    if (grid == nullptr) {
        return;
    }
    const float old = grid->ticDistance;
    grid->SetTicDistance(seconds > 0.0f ? seconds : kLeastTicDistance);
    if (grid->ticDistance == old) {
        return;
    }
    for (CTrackCtrl* row : tracks) {
        row->SetTicDistance(grid->ticDistance);
    }
    if (redraw) {
        RepaintRows();
    }
}

void CFilmsMainCtrl::SetBigTics(int count, bool redraw) {
    if (grid == nullptr) {
        return;
    }
    const int old = grid->bigTics;
    grid->SetBigTics(count);
    if (grid->bigTics == old) {
        return;
    }
    for (CTrackCtrl* row : tracks) {
        row->SetBigTics(grid->bigTics);
    }
    if (redraw) {
        RepaintRows();
    }
}

void CFilmsMainCtrl::SetRowHeight(int height, bool redraw) {
    const int old = rowHeight;
    rowHeight = std::max(height, kMinRowHeight);
    if (rowHeight == old || vScroll == nullptr) {
        return;
    }
    vScroll->page = RowPage();
    vScroll->UpdateBar();
    if (redraw) {
        vScroll->Invalidate(FALSE);
        ArrangeRows(/*invalidate*/ false, /*move*/ true);
    }
}

/// The order is part of how a film opens: a new name column comes after the zoom was taken.
void CFilmsMainCtrl::ApplySettings(const FilmViewSettings& settings) {
    const auto has = [&settings](std::uint32_t bits) { return (settings.mask & bits) != 0; };
    if (has(FilmViewSettings::kMovie)) {
        SetMovieRange(settings.movieStart, settings.movieEnd);
    }
    if (has(FilmViewSettings::kView)) {
        SetViewRange(settings.viewStart, settings.viewEnd, /*redraw*/ false);
        CalcSecondsPerPixel();
    }
    if (has(FilmViewSettings::kTicsDistance)) {
        SetTicsDistance(settings.ticsDistance, /*redraw*/ false);
    }
    if (has(FilmViewSettings::kBigTics)) {
        SetBigTics(settings.bigTics, /*redraw*/ false);
    }
    if (has(FilmViewSettings::kRowHeight)) {
        SetRowHeight(std::min(settings.rowHeight, kMaxStoredRowHeight), /*redraw*/ false);
    }
    const int nameWidth = std::clamp(settings.leftWidth, 0, kMaxStoredLeftWidth);
    if (has(FilmViewSettings::kLeftWidth) && leftWidth != nameWidth) {
        leftWidth = nameWidth;
        RecalcLayout();
    }
    if (has(FilmViewSettings::kLabelDistance) && grid != nullptr) {
        grid->SetLabelDistance(settings.labelDistance, /*redraw*/ false);
    }
    if (settings.mask >= FilmViewSettings::kCursorTime) {
        MoveCursor(settings.cursorTime);
    }
    CadvWnd::Invalidate(FALSE);
}

/// The cursor and its arrow on the ruler.
void CFilmsMainCtrl::MoveCursor(float time) {
    currentTime = time;
    if (grid != nullptr && grid->cursorMark != nullptr) {
        grid->cursorMark->time = time;
    }
}

void CFilmsMainCtrl::SetCurrentTime(float time, bool redraw) {
    MoveCursor(time);
    if (redraw) {
        RepaintRows();
        InvalidateInfo();
    }
}

void CFilmsMainCtrl::SetCurrentFrame(float time, bool redraw) {
    const auto frame = static_cast<float>(NearestFrame(time, plugin.framesPerSecond));
    IFilm* film = plugin.GetCurrentFilm();
    // Written so that a time that is no number is refused too.
    if (film != nullptr && frame <= film->length) {
        currentTime = frame;
        IPluginImpl& owner = plugin; // the pump may let the control go
        const bool wasPlaying = owner.isPlaying != 0;
        if (wasPlaying) {
            owner.StopPlaying();
        }
        owner.SetTime(frame, /*fromWindow*/ true);
        if (wasPlaying) {
            const Watch<CFilmsMainCtrl> window(this);
            owner.Play(frame);
            redraw = redraw && window.IsAlive(); // the pump may have let the window go
        }
    } else if (grid != nullptr && grid->cursorMark != nullptr) {
        grid->cursorMark->time = currentTime;
    }
    if (redraw) {
        RepaintRows();
    }
}

void CFilmsMainCtrl::ShiftKeysAtMark(float from, float to) {
    for (CTrackCtrl* row : visibleTracks) {
        row->ShiftKeysNear(from, to);
    }
    RepaintRows();
}

void CFilmsMainCtrl::SaveKeyTimes() {
    for (CTrackCtrl* row : visibleTracks) {
        row->SaveKeyTimes();
    }
    // The attributes window reads its key anew when the drag is over, which must not cost what was typed
    // there. Last, since it may ask the user.
    plugin.ApplyPendingEdits();
}

void CFilmsMainCtrl::RestoreKeyTimes(bool keep) {
    for (CTrackCtrl* row : visibleTracks) {
        row->RestoreKeyTimes(keep);
    }
}

void CFilmsMainCtrl::ClearSelection() {
    const Watch<CFilmsMainCtrl> window(
        this); // the attributes window, which is told of each key, may ask the user
    // A key that is told may change the selection; what was selected meanwhile is told too.
    while (!selectedKeys.empty()) {
        for (std::size_t i = 0; i < selectedKeys.size(); ++i) {
            selectedKeys[i]->SetSelected(false);
            if (!window.IsAlive()) {
                return;
            }
        }
        std::erase_if(selectedKeys, [](const CTrackKey* key) { return !key->selected; });
    }
}

void CFilmsMainCtrl::SelectOnly(CTrackKey* key) {
    const Watch watched(key); // every key that is told may let the attributes window rebuild the rows
    const Watch<CFilmsMainCtrl> window(this);
    ClearSelection();
    if (!watched.IsAlive() || !window.IsAlive()) {
        return;
    }
    selectedKeys.push_back(key); // first: what is selected while it is told finds it, and lets it go
    key->SetSelected(true);
}

void CFilmsMainCtrl::Deselect(CTrackKey* key) {
    if (std::erase(selectedKeys, key) != 0) {
        key->SetSelected(false);
    }
}
