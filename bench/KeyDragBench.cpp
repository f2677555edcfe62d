#include "bench/EngineBenches.h"
#include "bench/TimelineCases.h"
#include "framework/TestHooks.h"
#include "keys/views/NullTimeTrackKey.h"
#include "keys/views/TimedTrackKey.h"

#include <algorithm>
#include <benchmark/benchmark.h>

namespace films_bench {

namespace {

constexpr int kGroupRows = 20;

/// Rows under one root, without windows, filled with keys that have records.
class DragRows {
public:
    DragRows() : timeline(kSmall) {
        Hooks().keyState = [](int) { return false; };
    }
    ~DragRows() {
        rows.clear(); // deletes the views
        for (IFilmKey* record : records) {
            Factory().DestroyKey(record);
        }
        Hooks().keyState = nullptr;
    }
    CTrackCtrl& AddRow(int kind, float length) {
        CTrackCtrl& row = *rows.emplace_back(std::make_unique<CTrackCtrl>());
        row.kind = kind;
        row.parent = &root;
        root.children.push_back(&row);
        row.SetTimeRange(0.0f, length);
        row.SetTicDistance(1.0f);
        row.keys.BeginFill();
        return row;
    }
    template <class View> View& AddKey(CTrackCtrl& row, float time, float duration = 0.0f) {
        IFilmKey* record = records.emplace_back(Factory().CreateKey(row.kind));
        record->SetTime(time);
        record->SetEndTime(time + duration);
        auto view = std::make_unique<View>();
        view->SetRecord(record, /*takeTimes*/ true);
        View& added = *view;
        row.keys.Insert(view.release());
        return added;
    }

private:
    IKeyFactory& Factory() { return *timeline.plugin.GetFilmManager()->keyFactory; }

    TimelineFilm timeline;
    CTrackCtrl root;
    std::vector<std::unique_ptr<CTrackCtrl>> rows;
    std::vector<IFilmKey*> records;
};

/// The mouse goes to and fro between two times, and the key must go along at every step.
void DragToAndFro(benchmark::State& state, CTrackKey& key, CTrackCtrl& row, float from, float to) {
    bool forward = true;
    key.lastMouseTime = from;
    for (auto _ : state) {
        const float before = key.time;
        key.OnMouseMove(0, forward ? to : from, &row);
        forward = !forward;
        if (key.time == before) {
            state.SkipWithError("the key didn't move");
            break;
        }
    }
}

/// A step in a row of so many boxes.
void KeyDrag(benchmark::State& state, int count) {
    DragRows rows;
    CTrackCtrl& row = rows.AddRow(KeyKind::FxRain, 10.0f * static_cast<float>(count));
    CTimedTrackKey* dragged = nullptr;
    for (int i = 0; i < count; ++i) {
        auto& key = rows.AddKey<CTimedTrackKey>(row, 10.0f * static_cast<float>(i), 4.0f);
        dragged = i == count / 2 ? &key : dragged;
    }
    row.keys.EndFill();
    dragged->dragMode = CTimedTrackKey::kDragMove;
    // A step goes a tic on once the mouse is past the middle of the way to the tic of the box's far edge.
    DragToAndFro(state, *dragged, row, dragged->time, dragged->time + 3.0f);
}

/// A step over bars on so many successive tics.
void KeyDragRun(benchmark::State& state, int count) {
    DragRows rows;
    CTrackCtrl& row = rows.AddRow(KeyKind::Position, 2.0f * static_cast<float>(count));
    auto& dragged = rows.AddKey<CNullTimeTrackKey>(row, 0.0f);
    for (int i = 1; i <= count; ++i) {
        rows.AddKey<CNullTimeTrackKey>(row, static_cast<float>(i));
    }
    row.keys.EndFill();
    dragged.dragging = true;
    DragToAndFro(state, dragged, row, 0.0f, static_cast<float>(count + 1));
}

/// A step with so many marked keys in the rows of a track.
void GroupMove(benchmark::State& state, int count) {
    DragRows rows;
    CNullTimeTrackKey* dragged = nullptr;
    CTrackCtrl* first = nullptr;
    for (int i = 0; i < kGroupRows; ++i) {
        CTrackCtrl& row = rows.AddRow(KeyKind::Position, 10.0f * static_cast<float>(count));
        for (int j = 0; j < count / kGroupRows; ++j) {
            auto& key = rows.AddKey<CNullTimeTrackKey>(row, static_cast<float>(10 * j + 5));
            key.marked = true;
            dragged = dragged == nullptr ? &key : dragged;
        }
        row.keys.EndFill();
        first = first == nullptr ? &row : first;
    }
    dragged->dragging = true;
    DragToAndFro(state, *dragged, *first, 5.0f, 6.0f);
}

} // namespace

void RegisterKeyDragBenches() {
    const auto add = [](const std::string& name, void (*run)(benchmark::State&, int), int count) {
        benchmark::RegisterBenchmark((name + "/" + std::to_string(count)).c_str(), run, count)
            ->Unit(benchmark::kMicrosecond);
    };
    for (const int count : {10'000, 100'000}) {
        add("KeyDrag", KeyDrag, count);
        add("KeyDragRun", KeyDragRun, count);
    }
    for (const int count : {1'000, 10'000}) {
        add("GroupMove", GroupMove, count);
    }
}

} // namespace films_bench
