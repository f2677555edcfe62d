#include "bench/EngineBenches.h"
#include "bench/RowWindows.h"
#include "framework/Button.h"
#include "framework/PaintDC.h"
#include "framework/QtBridge.h"

#include <benchmark/benchmark.h>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace films_bench {

void ProcessEvents() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void ShowForPainting(QWidget& window) {
    window.show();
    while (!window.windowHandle()->isExposed()) {
        ProcessEvents();
    }
    ProcessEvents();
}

namespace {

constexpr int kRows = 2000;
constexpr int kShown = 40;
constexpr int kRowWidth = 1100;
constexpr int kRowHeight = 20;

/// A row with the button that opens its children.
class ButtonRow : public CWnd {
public:
    CButton button;
    int moves = 0;

protected:
    int OnCreate(CREATESTRUCT* cs) {
        button.Create("+", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, {2, 2, 18, 18}, this, 1);
        return CWnd::OnCreate(cs);
    }
    void OnPaint() {
        CPaintDC dc(this);
        dc.FillSolidRect(dc.ps.rcPaint, 0xC8C8C8);
    }
    void OnMouseMove(UINT /*flags*/, CPoint /*point*/) { ++moves; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ButtonRow, CWnd)
ON_WM_CREATE()
ON_WM_PAINT()
ON_WM_MOUSEMOVE()
END_MESSAGE_MAP()

using Rows = RowWindows<ButtonRow>;

void CreateHidden(benchmark::State& state) {
    for (auto _ : state) {
        Rows rows(kRows, kRowWidth, kRowHeight, 0);
        state.PauseTiming();
        rows.all.clear();
        ProcessEvents();
        state.ResumeTiming();
    }
}

void Destroy(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Rows rows(kRows, kRowWidth, kRowHeight, kShown);
        state.ResumeTiming();
        for (auto& row : rows.all) {
            row->DestroyWindow();
        }
        ProcessEvents();
        state.PauseTiming();
        rows.all.clear();
        state.ResumeTiming();
    }
}

void HideHidden(benchmark::State& state) {
    Rows rows(kRows, kRowWidth, kRowHeight, kShown);
    for (auto _ : state) {
        for (int i = kShown; i < kRows; ++i) {
            rows.all[static_cast<std::size_t>(i)]->ShowWindow(SW_HIDE);
        }
    }
}

/// A wheel step over the list: each shown row moves by its height, one goes, one comes, all of it repaints.
void Scroll(benchmark::State& state) {
    Rows rows(kRows, kRowWidth, kRowHeight, kShown);
    int first = 0;
    for (auto _ : state) {
        rows.all[static_cast<std::size_t>(first)]->ShowWindow(SW_HIDE);
        first = (first + 1) % (kRows - kShown);
        for (int i = 0; i < kShown; ++i) {
            CWnd& row = *rows.all[static_cast<std::size_t>(first + i)];
            row.MoveWindow(0, i * kRowHeight, kRowWidth, kRowHeight);
            row.ShowWindow(SW_SHOWNOACTIVATE);
        }
        // What the step itself costs; the repaint it asks for is another benchmark's.
        state.PauseTiming();
        ProcessEvents();
        state.ResumeTiming();
    }
}

void ScrollAndPaint(benchmark::State& state) {
    Rows rows(kRows, kRowWidth, kRowHeight, kShown);
    int first = 0;
    for (auto _ : state) {
        rows.all[static_cast<std::size_t>(first)]->ShowWindow(SW_HIDE);
        first = (first + 1) % (kRows - kShown);
        for (int i = 0; i < kShown; ++i) {
            CWnd& row = *rows.all[static_cast<std::size_t>(first + i)];
            row.MoveWindow(0, i * kRowHeight, kRowWidth, kRowHeight);
            row.ShowWindow(SW_SHOWNOACTIVATE);
        }
        ProcessEvents();
    }
}

/// A window that places its rows while it paints.
class ArrangingTop : public CWnd {
public:
    Rows* rows = nullptr;
    int first = 0;

protected:
    void OnPaint() {
        CPaintDC dc(this);
        for (int i = 0; rows && i < kShown; ++i) {
            CWnd& row = *rows->all[static_cast<std::size_t>(i)];
            row.MoveWindow(first % 2, i * kRowHeight, kRowWidth, kRowHeight);
            row.ShowWindow(SW_SHOWNOACTIVATE);
        }
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ArrangingTop, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

/// The moves reach the toolkit after the paint; both are measured.
void ArrangeInPaint(benchmark::State& state) {
    ArrangingTop top;
    Rows rows(kRows, kRowWidth, kRowHeight, kShown, top);
    // Beside its rows something of it shows, or it would have nothing to paint.
    top.MoveWindow(0, 0, kRowWidth + 20, kShown * kRowHeight);
    top.rows = &rows;
    for (auto _ : state) {
        ++top.first;
        top.Invalidate(FALSE);
        top.UpdateWindow();
        ProcessEvents();
    }
}

void Invalidate(benchmark::State& state) {
    Rows rows(kRows, kRowWidth, kRowHeight, kShown);
    for (auto _ : state) {
        for (int i = 0; i < kShown; ++i) {
            rows.all[static_cast<std::size_t>(i)]->Invalidate(FALSE);
        }
        state.PauseTiming();
        ProcessEvents();
        state.ResumeTiming();
    }
}

void RepaintOne(benchmark::State& state) {
    Rows rows(kRows, kRowWidth, kRowHeight, kShown);
    for (auto _ : state) {
        rows.all[20]->Invalidate(FALSE);
        rows.all[20]->UpdateWindow();
    }
}

void MouseMove(benchmark::State& state) {
    Rows rows(kRows, kRowWidth, kRowHeight, kShown);
    QWindow* window = NativeWidget(rows.top)->windowHandle();
    int x = 100;
    for (auto _ : state) {
        x = x % 1000 + 100;
        const QPointF place(x, 20 * kRowHeight + 5);
        QMouseEvent event(QEvent::MouseMove, place, window->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(window, &event);
    }
    if (rows.all[20]->moves == 0) {
        state.SkipWithError("the row got no mouse moves");
    }
}

} // namespace

void RegisterTimelineWindowBenches() {
    constexpr auto kMs = benchmark::kMillisecond;
    constexpr auto kUs = benchmark::kMicrosecond;
    benchmark::RegisterBenchmark("Rows2000/create_hidden", CreateHidden)->Unit(kMs)->Iterations(2);
    benchmark::RegisterBenchmark("Rows2000/destroy", Destroy)->Unit(kMs)->Iterations(2);
    benchmark::RegisterBenchmark("Rows2000/hide_hidden", HideHidden)->Unit(kUs);
    benchmark::RegisterBenchmark("Rows2000/scroll", Scroll)->Unit(kUs);
    benchmark::RegisterBenchmark("Rows2000/scroll_and_paint", ScrollAndPaint)->Unit(kUs);
    benchmark::RegisterBenchmark("Rows2000/arrange_in_paint", ArrangeInPaint)->Unit(kUs);
    benchmark::RegisterBenchmark("Rows2000/invalidate_40", Invalidate)->Unit(kUs);
    benchmark::RegisterBenchmark("Rows2000/repaint_one", RepaintOne)->Unit(kUs);
    benchmark::RegisterBenchmark("Rows2000/mouse_move", MouseMove)->Unit(kUs);
}

} // namespace films_bench
