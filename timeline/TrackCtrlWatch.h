#pragma once

#include "timeline/TrackCtrl.h"

/// Tells after a call that may have rebuilt the rows (a modal window, the host's selection) whether the row
/// is still there. Stands on the stack.
class RowWatch {
public:
    explicit RowWatch(CTrackCtrl& watched) : row(&watched), outer(watched.watch) { watched.watch = this; }
    ~RowWatch() {
        if (row != nullptr) {
            row->watch = outer;
        }
    }
    RowWatch(const RowWatch&) = delete;
    RowWatch& operator=(const RowWatch&) = delete;

    bool IsAlive() const { return row != nullptr; }

private:
    friend class CTrackCtrl;

    CTrackCtrl* row;
    RowWatch* outer;
};
