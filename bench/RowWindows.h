#pragma once

#include "framework/Constants.h"
#include "framework/QtBridge.h"
#include "framework/Wnd.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace films_bench {

/// Runs what waits in the toolkit's event queue, of which the windows' own requests are a part. Destroyed
/// windows go first: without a loop that runs they would stay for ever, and each would slow down whatever
/// makes the next.
void ProcessEvents();
/// Shows a window and comes back when it can be painted.
void ShowForPainting(QWidget& window);

/// A shown top-level window with rows below each other; rows beyond the visible ones stay hidden.
template <class Row> struct RowWindows {
    RowWindows(int count, int width, int height, int visible, CWnd& around) : top(around) {
        constexpr DWORD kTop = WS_POPUP | WS_CAPTION;
        top.Create(nullptr, "", kTop, {0, 0, width, std::max(visible, 1) * height}, nullptr, 0);
        for (int i = 0; i < count; ++i) {
            all.push_back(std::make_unique<Row>());
            const CRect place(0, i * height, width, (i + 1) * height);
            all.back()->Create(nullptr, nullptr, WS_CHILD | (i < visible ? WS_VISIBLE : 0), place, &top,
                               1000 + static_cast<UINT>(i));
        }
        ShowForPainting(*NativeWidget(top));
    }
    RowWindows(int count, int width, int height, int visible = 40)
        : RowWindows(count, width, height, visible, plain) {}

    CWnd plain;
    CWnd& top;
    std::vector<std::unique_ptr<Row>> all;
};

} // namespace films_bench
