#include "timeline/FilmsMainCtrl.h"

#include <algorithm>
#include <cmath>

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
    const auto row = bar == vScroll ? LineAhead(GetVisibleRowCount()) : std::nullopt;
    if (row) {
        ScrollRowsTo(*row);
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
    const auto row = bar == vScroll ? LineBack() : std::nullopt;
    if (row) {
        ScrollRowsTo(*row);
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
    const auto row = bar == vScroll ? PageAhead(GetVisibleRowCount()) : std::nullopt;
    if (row) {
        ScrollRowsTo(*row);
    }
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
    if (bar == vScroll) {
        ScrollRowsTo(PageBack(GetVisibleRowCount()));
    }
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
    position = FitThumb(position, GetVisibleRowCount());
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
