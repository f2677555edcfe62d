#include "timeline/FilmsMainCtrl.h"

#include <algorithm>
#include <cmath>

CTrackCtrl* CFilmsMainCtrl::RowAt(std::size_t index) const {
    return index < visibleTracks.size() ? visibleTracks[index] : nullptr;
}

void CFilmsMainCtrl::ScrollRowsTo(CTrackCtrl* row) {
    topRow = row;
    ShowTopRowInBar(/*newRange*/ false);
    ArrangeRows(/*invalidate*/ false, /*move*/ true);
}

void CFilmsMainCtrl::ScrollTime(float step) {
    SetViewRange(viewStart + step, viewEnd + step, /*redraw*/ true);
}

void CFilmsMainCtrl::OnLineForward(CTimeScrollbar* bar) {
    if (bar == nullptr) {
        return;
    }
    if (bar == hScroll) {
        if (grid != nullptr && viewEnd < movieEnd) {
            ScrollTime(std::min(movieEnd - viewEnd, grid->ticDistance));
        }
        return;
    }
    const std::size_t top = TopIndex();
    if (bar == vScroll && RowAt(top + 1) != nullptr &&
        static_cast<int>(top) + GetVisibleRowCount() < static_cast<int>(visibleTracks.size())) {
        ScrollRowsTo(RowAt(top + 1));
    }
}

void CFilmsMainCtrl::OnLineBack(CTimeScrollbar* bar) {
    if (bar == nullptr) {
        return;
    }
    if (bar == hScroll) {
        if (grid != nullptr && viewStart > movieStart) {
            ScrollTime(-std::min(viewStart - movieStart, grid->ticDistance));
        }
        return;
    }
    const std::size_t top = TopIndex();
    if (bar == vScroll && top > 0 && top < visibleTracks.size()) {
        ScrollRowsTo(RowAt(top - 1));
    }
}

void CFilmsMainCtrl::OnPageForward(CTimeScrollbar* bar) {
    if (bar == nullptr) {
        return;
    }
    if (bar == hScroll) {
        const float step = std::min(viewEnd - viewStart, movieEnd - viewEnd);
        if (step != 0.0f) {
            ScrollTime(step);
        }
        return;
    }
    const std::size_t top = TopIndex();
    if (bar != vScroll || top >= visibleTracks.size()) {
        return;
    }
    const int remaining = static_cast<int>(visibleTracks.size() - top);
    const int fitting = std::max(GetVisibleRowCount(), 0);
    // Required: with fewer rows left than fit there is no row to go to, and the list shows none until it is
    // rebuilt.
    ScrollRowsTo(remaining >= fitting
                     ? RowAt(top + static_cast<std::size_t>(std::min(remaining - fitting, fitting)))
                     : nullptr);
}

void CFilmsMainCtrl::OnPageBack(CTimeScrollbar* bar) {
    if (bar == nullptr) {
        return;
    }
    if (bar == hScroll) {
        const float step = std::min(viewEnd - viewStart, viewStart - movieStart);
        if (step != 0.0f) {
            ScrollTime(-step);
        }
        return;
    }
    if (bar != vScroll) {
        return;
    }
    const std::size_t index = TopIndex();
    const std::size_t top = index < visibleTracks.size() ? index : 0;
    const auto fitting = static_cast<std::size_t>(std::max(GetVisibleRowCount(), 0));
    ScrollRowsTo(top >= fitting ? RowAt(top - fitting) : RowAt(0));
}

void CFilmsMainCtrl::OnThumbTrack(CTimeScrollbar* bar, float position) {
    if (bar == nullptr || !std::isfinite(position)) {
        return;
    }
    if (bar == hScroll) {
        ScrollTimeToPosition(position);
    } else if (bar == vScroll) {
        ScrollRowsToPosition(position);
    }
}

void CFilmsMainCtrl::ScrollTimeToPosition(float position) {
    const float page = hScroll->page;
    const float start = std::min(std::max(position, movieStart), movieEnd - page);
    if (start == viewStart) {
        return;
    }
    viewStart = start;
    viewEnd = start + page;
    ApplyViewRange(/*redraw*/ true);
}

void CFilmsMainCtrl::ScrollRowsToPosition(float position) {
    const int size = static_cast<int>(visibleTracks.size());
    const int fitting = GetVisibleRowCount();
    position = std::max(position, 0.0f);
    if (position + static_cast<float>(fitting) > static_cast<float>(size - 1)) {
        position = static_cast<float>(size - fitting); // required, also when it is a row further
    }
    // Required: with fewer rows than fit the place lies before the list, and no row is the top row.
    topRow = position < 0.0f ? nullptr : RowAt(static_cast<std::size_t>(position));
    if (vScroll->position == position) {
        return;
    }
    vScroll->SetBarPosition(position);
    vScroll->UpdateBar();
    vScroll->Invalidate(FALSE);
    ArrangeRows(/*invalidate*/ false, /*move*/ true);
}

void CFilmsMainCtrl::OnWheelBack() {
    if (vScroll != nullptr) {
        OnLineBack(vScroll);
    }
}

void CFilmsMainCtrl::OnWheelForward() {
    if (vScroll != nullptr) {
        OnLineForward(vScroll);
    }
}
