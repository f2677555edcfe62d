#include "bench/EngineBenches.h"
#include "bench/FrameSpread.h"
#include "bench/RowWindows.h"
#include "bench/TimelineCases.h"
#include "framework/TestHooks.h"
#include "keys/views/NullTimeTrackKey.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <malloc.h>
#include <QCoreApplication>
#include <QPainter>
#include <QWidget>

namespace films_bench {

namespace {

constexpr Case kShow3k{"3k", 200, 5};
constexpr Case kShow30k{"30k", 200, 50};
constexpr Case kShow300k{"300k", 200, 500};
constexpr int kRepeats = 5;

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

std::size_t HeapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// What the film's views take: two films that differ only in the number of keys are compared, so that rows
/// and windows fall out.
void ViewMemory(benchmark::State& state) {
    const auto bytesOf = [](const Case& size) {
        TimelineFilm timeline(size);
        timeline.Show();
        timeline.Empty();
        TimelineFilm::Paint();
        const std::size_t before = HeapBytes();
        timeline.Show();
        for (CTrackCtrl* row : timeline.control->tracks) {
            std::vector<CTrackKey*> found;
            row->keys.Overlapping(0.0f, 1.0f, found); // makes the index by time
        }
        return static_cast<double>(HeapBytes() - before);
    };
    double bytes = 0.0;
    for (auto _ : state) {
        bytes = (bytesOf(kShow300k) - bytesOf(kShow30k)) / (KeyCount(kShow300k) - KeyCount(kShow30k));
    }
    state.counters["bytes_per_key"] = bytes;
}

/// Opens the film in an empty control.
void ShowFilm(benchmark::State& state, Case size) {
    TimelineFilm timeline(size);
    timeline.Show();
    timeline.Empty();
    TimelineFilm::Paint();
    for (auto _ : state) {
        StartCold();
        const auto start = Clock::now();
        timeline.Show();
        state.SetIterationTime(SecondsSince(start));
        timeline.Empty();
        TimelineFilm::Paint();
    }
}

/// One step on the M film while it is shown, and what it paints outside of the time.
template <class Step> void OnShownFilm(benchmark::State& state, Step step) {
    TimelineFilm timeline(kMedium);
    timeline.Show();
    TimelineFilm::Paint();
    int turn = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        step(timeline, turn++);
        state.SetIterationTime(SecondsSince(start));
        TimelineFilm::Paint();
    }
}

void ShowAgain(TimelineFilm& timeline, int /*turn*/) {
    timeline.Show();
}

/// Puts a second in behind the first keys, or takes it out again: all other keys of all rows move.
void AdjustTime(TimelineFilm& timeline, int turn) {
    timeline.control->InsertTime(0.5f * kKeySeconds, turn % 2 == 0 ? 1.0f : -1.0f);
}

/// The same views and row windows, made in bare loops.
void BareShow(benchmark::State& state, Case size) {
    TimelineFilm timeline(size);
    timeline.Show();
    const std::size_t rows = timeline.control->tracks.size();
    timeline.Empty();
    TimelineFilm::Paint();
    for (auto _ : state) {
        StartCold();
        std::vector<std::unique_ptr<CTrackCtrl>> made;
        std::vector<std::unique_ptr<CTrackKey>> views;
        const auto start = Clock::now();
        for (std::size_t i = 0; i < rows; ++i) {
            auto row = std::make_unique<CTrackCtrl>();
            row->CGridCtrl::Create(nullptr, nullptr, WS_CHILD, CRect(10, 10, 20, 20), timeline.control.get(),
                                   55);
            made.push_back(std::move(row));
        }
        for (CFilmTrack* track : timeline.film.tracks) {
            for (IFilmKey* record : track->keys) {
                auto view = std::make_unique<CNullTimeTrackKey>();
                view->SetRecord(record, true);
                views.push_back(std::move(view));
            }
        }
        state.SetIterationTime(SecondsSince(start));
        benchmark::DoNotOptimize(views.data());
        views.clear();
        made.clear();
        TimelineFilm::Paint();
    }
}

/// 40 rows of 200 keys in view, and what they draw.
class FortyRows {
public:
    FortyRows() : timeline(kFortyRows) {
        timeline.Show();
        timeline.Unfold();
        for (CTrackCtrl* row : timeline.control->tracks) {
            row->visible = row->visible && !row->IsRoot();
        }
        timeline.control->RebuildVisibleRows(/*redraw*/ true, nullptr);
        TimelineFilm::Paint();
        for (CTrackCtrl* row : timeline.control->visibleTracks) {
            if (row->IsWindowVisible()) {
                shown.push_back(row);
            }
        }
    }
    void Paint() {
        for (CTrackCtrl* row : shown) {
            row->Invalidate(FALSE);
        }
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(NativeWidget(timeline.frame), &request);
    }

    static constexpr Case kFortyRows{"rows", 14, 200};
    TimelineFilm timeline;
    std::vector<CTrackCtrl*> shown;
};

void PaintFrame(benchmark::State& state) {
    FortyRows rows;
    if (rows.shown.size() != TimelineFilm::kShownRows) {
        state.SkipWithError("40 rows were to be shown");
    }
    rows.Paint();
    for (auto _ : state) {
        rows.Paint();
    }
}

/// A window that draws rectangles with the toolkit's painter alone.
class NaiveRow : public QWidget {
public:
    explicit NaiveRow(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_OpaquePaintEvent); }
    void Take(const DrawCall& call) {
        const auto color = [](COLORREF c) { return QColor(c & 0xFF, c >> 8 & 0xFF, c >> 16 & 0xFF); };
        const bool outlined = call.penStyle != PS_NULL;
        const CRect& r = call.rect;
        // The toolkit's outline reaches a pixel further.
        rects.push_back(
            {QRect(r.left, r.top, r.Width() - (outlined ? 1 : 0), r.Height() - (outlined ? 1 : 0)),
             outlined ? QPen(color(call.penColor), std::max(call.penWidth, 1)) : QPen(Qt::NoPen),
             QBrush(color(call.brushColor))});
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        for (const Rect& r : rects) {
            painter.setPen(r.pen);
            painter.setBrush(r.brush);
            painter.drawRect(r.place);
        }
    }

private:
    struct Rect {
        QRect place;
        QPen pen;
        QBrush brush;
    };
    std::vector<Rect> rects;
};

/// The rectangles of the same rows.
void PaintFrameNaive(benchmark::State& state) {
    FortyRows rows;
    QWidget window;
    window.setFixedSize(TimelineFilm::kWidth, TimelineFilm::kHeight);
    int y = 31;
    std::size_t rectangles = 0;
    for (CTrackCtrl* row : rows.shown) {
        auto* naive = new NaiveRow(&window);
        CRect client;
        row->GetClientRect(&client);
        naive->setGeometry(0, y, client.Width(), client.Height());
        y += client.Height();
        Hooks().drawing = [&](const DrawCall& call) {
            if (call.kind == DrawKind::Rectangle) {
                naive->Take(call);
                ++rectangles;
            }
        };
        row->Invalidate(FALSE);
        row->UpdateWindow();
        Hooks().drawing = nullptr;
    }
    ShowForPainting(window);
    const auto paint = [&window] {
        for (QObject* child : window.children()) {
            static_cast<QWidget*>(child)->update();
        }
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&window, &request);
    };
    paint();
    for (auto _ : state) {
        paint();
    }
    state.counters["rectangles"] = static_cast<double>(rectangles);
}

/// The M film unfolded: 600 rows with keys and 200 root rows, 40 in the window, about 20,000 keys in view.
class UnfoldedFilm : public TimelineFilm {
public:
    UnfoldedFilm() : TimelineFilm(kMedium) {
        Show();
        Unfold();
    }
};

void ScrollRow(benchmark::State& state) {
    UnfoldedFilm timeline;
    bool forward = true;
    for (auto _ : state) {
        if (forward) {
            timeline.control->OnLineForward(timeline.control->vScroll);
        } else {
            timeline.control->OnLineBack(timeline.control->vScroll);
        }
        forward = !forward;
        state.PauseTiming();
        TimelineFilm::Paint();
        state.ResumeTiming();
    }
}

void MoveCursor(benchmark::State& state) {
    UnfoldedFilm timeline;
    float time = 0.0f;
    for (auto _ : state) {
        timeline.control->SetCurrentTime(time, true);
        time = time < 90.0f ? time + kFrameSeconds : 0.0f;
        state.PauseTiming();
        TimelineFilm::Paint();
        state.ResumeTiming();
    }
}

void GetKeyAt(benchmark::State& state) {
    UnfoldedFilm timeline;
    CTrackCtrl* row = nullptr;
    for (CTrackCtrl* candidate : timeline.control->visibleTracks) {
        if (row == nullptr && candidate->kind == KeyKind::Position) {
            row = candidate;
        }
    }
    int x = 150;
    for (auto _ : state) {
        benchmark::DoNotOptimize(row->GetKeyAt({x, 10}));
        x = x < 1200 ? x + 1 : 150;
    }
}

/// One frame at the window: the step and everything that it has to paint.
template <class Step> void Frames(benchmark::State& state, Step step) {
    UnfoldedFilm timeline;
    MeasureFrames(state, [&](int frame) {
        step(timeline, frame);
        TimelineFilm::Paint();
    });
}

void ScrollStep(TimelineFilm& timeline, int frame) {
    if ((frame / 200) % 2 == 0) {
        timeline.control->OnLineForward(timeline.control->vScroll);
    } else {
        timeline.control->OnLineBack(timeline.control->vScroll);
    }
}

void ScrubStep(TimelineFilm& timeline, int frame) {
    timeline.control->SetCurrentFrame(static_cast<float>(frame % 2900) * kFrameSeconds, true);
}

void PlayStep(TimelineFilm& timeline, int frame) {
    timeline.plugin.SetTime(static_cast<float>(frame % 2900) * kFrameSeconds, false);
}

/// The view moves along the axis at a tenth of it.
void PanStep(TimelineFilm& timeline, int frame) {
    const float start = static_cast<float>(frame % 900) * 0.1f;
    timeline.control->SetViewRange(start, start + 10.0f, true);
}

} // namespace

void RegisterTimelineBenches() {
    for (const Case& size : {kShow3k, kShow30k, kShow300k}) {
        benchmark::RegisterBenchmark((std::string("ShowFilm/600rows_") + size.name).c_str(), ShowFilm, size)
            ->UseManualTime()
            ->Iterations(kRepeats)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("bare_ShowFilm/600rows_300k", BareShow, kShow300k)
        ->UseManualTime()
        ->Iterations(kRepeats)
        ->Unit(benchmark::kMillisecond);
    const std::pair<const char*, void (*)(TimelineFilm&, int)> shown[] = {{"ShowFilm_again/M", ShowAgain},
                                                                          {"AdjustTime/M", AdjustTime}};
    for (const auto& [name, step] : shown) {
        benchmark::RegisterBenchmark(name,
                                     [step = step](benchmark::State& state) { OnShownFilm(state, step); })
            ->UseManualTime()
            ->Iterations(kRepeats + 1) // as many seconds come as go
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("view_memory/300k", ViewMemory)->Iterations(1);
    benchmark::RegisterBenchmark("PaintFrame/8000keys", PaintFrame)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("PaintFrame/8000keys_naive", PaintFrameNaive)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("ScrollRow/M", ScrollRow)->Iterations(400);
    benchmark::RegisterBenchmark("MoveCursor/M", MoveCursor)->Iterations(400);
    benchmark::RegisterBenchmark("MouseMove_GetKeyAt/M", GetKeyAt);
    const std::pair<const char*, void (*)(TimelineFilm&, int)> frames[] = {{"frame_scroll/M", ScrollStep},
                                                                           {"frame_scrub/M", ScrubStep},
                                                                           {"frame_play/M", PlayStep},
                                                                           {"frame_pan/M", PanStep}};
    for (const auto& [name, step] : frames) {
        RegisterFrames(name, [step = step](benchmark::State& state) { Frames(state, step); });
    }
}

} // namespace films_bench
