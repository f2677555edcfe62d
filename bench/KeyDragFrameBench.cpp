#include "bench/EngineBenches.h"
#include "bench/FrameSpread.h"
#include "bench/TimelineCases.h"
#include "framework/TestHooks.h"
#include "keys/views/TrackKey.h"

namespace films_bench {

namespace {

constexpr int kMiddle = 10; ///< pixels from the top of a row

/// The rows of one object with so many keys each, all in view, and the mouse holding one of the middle with
/// Alt down, so that it follows at once.
class HeldKey {
public:
    explicit HeldKey(int keys) : timeline({"drag", 1, keys}) {
        Hooks().keyState = [](int key) { return key == VK_LMENU; };
        timeline.Show();
        timeline.Unfold();
        for (CTrackCtrl* visible : timeline.control->visibleTracks) {
            row = visible->kind == KeyKind::Position ? visible : row;
        }
        CRect client;
        row->GetClientRect(&client);
        x = (row->GetLeftWidth() + client.Width()) / 2;
    }
    ~HeldKey() {
        Send(WM_LBUTTONUP, 0, x);
        CurrentKey() = nullptr;
        Hooks().keyState = nullptr;
    }
    /// Marks the keys of a third of the axis in all rows of the object.
    void MarkMiddle() {
        const float third = (row->rangeEnd - row->rangeStart) / 3.0f;
        for (CTrackCtrl* each : row->parent->children) {
            for (CTrackKey* key : each->keys) {
                key->marked = key->time >= third && key->time < 2.0f * third;
            }
        }
    }
    bool Press() {
        Send(WM_LBUTTONDOWN, MK_LBUTTON, x);
        return row->dragKey != nullptr;
    }
    void Drag(benchmark::State& state) {
        if (!Press()) {
            state.SkipWithError("no key is held");
            return;
        }
        bool moved = true;
        MeasureFrames(state, [&](int frame) {
            const float before = row->dragKey->time;
            Send(WM_MOUSEMOVE, MK_LBUTTON, frame % 2 == 0 ? x + kStep : x);
            TimelineFilm::Paint();
            moved = moved && row->dragKey->time != before;
        });
        if (!moved) {
            state.SkipWithError("the key didn't move");
        }
    }

private:
    static constexpr int kStep = 20; ///< pixels

    void Send(UINT message, UINT flags, int column) {
        row->SendMessage(message, flags, MAKELPARAM(column, kMiddle));
    }

    TimelineFilm timeline;
    CTrackCtrl* row = nullptr;
    int x = 0;
};

void DragOne(benchmark::State& state) {
    HeldKey held(10'000);
    held.Drag(state);
}

/// 999 marked keys or so in three rows.
void DragGroup(benchmark::State& state) {
    HeldKey held(1'000);
    held.MarkMiddle();
    held.Drag(state);
}

} // namespace

void RegisterKeyDragFrameBenches() {
    RegisterFrames("frame_drag/10k", DragOne);
    RegisterFrames("frame_group/1k", DragGroup);
}

} // namespace films_bench
