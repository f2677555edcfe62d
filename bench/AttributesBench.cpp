#include "bench/EngineBenches.h"
#include "bench/RowWindows.h"
#include "bench/TimelineCases.h"
#include "framework/TestHooks.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "keys/attributes/KeyAttributesDlg.h"
#include "keys/views/TrackKey.h"
#include "resources/resource.h"

#include <benchmark/benchmark.h>
#include <string>

namespace films_bench {

namespace {

constexpr int kFewKeys = 4; ///< a channel

/// The attributes window at a key of the first actor's positions.
class OpenWindow {
public:
    /// So many actors with so many keys a channel, the first one with `ownKeys`.
    OpenWindow(int actors, int keys, int ownKeys) : timeline({"attributes", actors, keys}) {
        timeline.plugin.makeKeyAttributesDlg = [](IPluginImpl& owner) -> std::unique_ptr<IKeyAttributesDlg> {
            return std::make_unique<CFilmKeyAttributesDlg>(owner);
        };
        if (ownKeys != keys) {
            GiveOwnKeys(ownKeys);
        }
        timeline.Show();
        for (CTrackCtrl* each : timeline.control->tracks) {
            if (row == nullptr && each->kind == KeyKind::Position) {
                row = each;
            }
        }
        dialog = static_cast<CFilmKeyAttributesDlg*>(timeline.plugin.keyAttributesDlg.get());
        dialog->Show(CFilmKeyAttributesDlg::kShow);
        TimelineFilm::Paint();
        timeline.control->SelectOnly(row->keys[1]); // a hidden window takes no key
    }
    ~OpenWindow() {
        CurrentKey() = nullptr;
        timeline.plugin.keyAttributesDlg.reset();
        TimelineFilm::Paint();
    }
    OpenWindow(const OpenWindow&) = delete;
    OpenWindow& operator=(const OpenWindow&) = delete;

    CTrackKey* Key(std::size_t number) const { return row->keys[number]; }
    /// "Pos X" stands first.
    void EditFirstRow() const {
        constexpr int kMiddle = 10;
        dialog->list.SetCurSel(0);
        dialog->list.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(kMiddle, kMiddle));
        dialog->list.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(kMiddle, kMiddle));
        TimelineFilm::Paint();
    }
    float ActorX() const { return timeline.film.level.Data()->Objects()[0]->GetMatrix(0)[12]; }

    TimelineFilm timeline;
    CTrackCtrl* row = nullptr;
    CFilmKeyAttributesDlg* dialog = nullptr;

private:
    void GiveOwnKeys(int count) {
        CFilmTrack* track = timeline.film.tracks[0];
        IKeyFactory& factory = *timeline.film.level.Data()->Films().keyFactory;
        for (int channel = 0; channel < kChannels; ++channel) {
            const int kind = KeyKind::Position + channel;
            track->ClearKind(kind);
            for (int k = 0; k < count; ++k) {
                IFilmKey* key = factory.CreateKey(kind);
                const float value[3] = {KeyValue(0, channel, k, 0), KeyValue(0, channel, k, 1),
                                        KeyValue(0, channel, k, 2)};
                key->SetTime(static_cast<float>(k) * kKeySeconds);
                key->SetValue(value);
                track->AddKey(key);
            }
        }
    }
};

/// Measures the processor time of each call, and nothing of what is painted after it.
template <class Work> void MeasureEach(benchmark::State& state, Work work) {
    for (auto _ : state) {
        const double start = ProcessorSeconds();
        work();
        state.SetIterationTime(ProcessorSeconds() - start);
        TimelineFilm::Paint();
    }
}

/// From the message of a notch over "Pos X" until the level has its new pose.
void MeasureWheel(benchmark::State& state, OpenWindow& window) {
    window.timeline.plugin.SetTime(window.Key(1)->time, /*fromWindow*/ false);
    window.EditFirstRow();
    if (window.dialog->list.activeEditor != &window.dialog->list.inPlaceEdit) {
        state.SkipWithError("no row is under edit");
        return;
    }
    bool moved = true;
    bool up = true;
    MeasureEach(state, [&] {
        const float before = window.ActorX();
        const auto delta = static_cast<UINT>(up ? WHEEL_DELTA : -WHEEL_DELTA);
        window.dialog->list.inPlaceEdit.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
        up = !up;
        moved = moved && window.ActorX() != before;
    });
    if (!moved) {
        state.SkipWithError("the actor didn't move");
    }
}

/// So many keys in the film, nearly all of them other actors'.
void WheelInFilm(benchmark::State& state, int keys) {
    constexpr int kActors = 20;
    OpenWindow window(kActors, keys / kChannels / (kActors - 1), kFewKeys);
    MeasureWheel(state, window);
}

/// So many keys in the row of the key itself.
void WheelInRow(benchmark::State& state, int keys) {
    OpenWindow window(/*actors*/ 1, kFewKeys, keys);
    MeasureWheel(state, window);
}

/// The window takes another key while it is open, in a film of 102,000 keys.
void ShowKey(benchmark::State& state) {
    constexpr int kActors = 20;
    constexpr int kKeys = 1'700;
    OpenWindow window(kActors, kKeys, kKeys);
    std::size_t number = 1;
    MeasureEach(state, [&] {
        number = 3 - number;
        window.dialog->SetKey(window.Key(number), /*refresh*/ false);
    });
    if (window.dialog->key != window.Key(number) || window.dialog->list.GetCount() == 0) {
        state.SkipWithError("the key isn't shown");
    }
}

/// 1,000 presses of Next, from the first key again where there is none behind.
void PressNext(benchmark::State& state, int keys) {
    constexpr int kPresses = 1'000;
    OpenWindow window(/*actors*/ 1, keys, keys);
    CFilmKeyAttributesDlg& dialog = *window.dialog;
    bool moved = true;
    MeasureEach(state, [&] {
        for (int i = 0; i < kPresses; ++i) {
            if (dialog.key == nullptr || dialog.key == *std::prev(window.row->keys.end())) {
                window.timeline.control->SelectOnly(window.Key(0));
            }
            const CTrackKey* before = dialog.key;
            dialog.SendMessage(WM_COMMAND, MAKEWPARAM(IDC_ATTR_NEXT, BN_CLICKED));
            moved = moved && dialog.key != before;
        }
    });
    if (!moved) {
        state.SkipWithError("the window stayed at its key");
    }
}

} // namespace

void RegisterAttributesBenches() {
    for (const int keys : {1'000, 100'000}) {
        const std::string count = std::to_string(keys);
        benchmark::RegisterBenchmark(("AttributesWheel/" + count).c_str(), WheelInFilm, keys)
            ->UseManualTime();
        benchmark::RegisterBenchmark(("AttributesWheelRow/" + count).c_str(), WheelInRow, keys)
            ->UseManualTime();
    }
    benchmark::RegisterBenchmark("AttributesShow", ShowKey)->UseManualTime();
    for (const int keys : {1'000, 10'000}) {
        benchmark::RegisterBenchmark(("AttributesNext/" + std::to_string(keys)).c_str(), PressNext, keys)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace films_bench
