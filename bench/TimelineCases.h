#pragma once

#include "bench/EngineCases.h"
#include "plugin/PluginImpl.h"
#include "tests/support/TestEditor.h"
#include "timeline/FilmsMainCtrl.h"

#include <memory>

namespace films_bench {

/// A host over the film's level that writes nothing down.
class FrameHost final : public TestEditor {
public:
    explicit FrameHost(engine::Level& filmLevel) : shown(filmLevel) {
        quiet = true;
        shown.Views().SetCount(1);
    }
    ILevel* GetLevel() override { return &shown; }

private:
    engine::Level& shown;
};

/// The scenario window around a control, for the plug-in object.
class BenchHolder final : public IScenarioWindow {
public:
    bool IsEnabled() const override { return true; }
    bool IsVisible() const override { return true; }
    void Show() override {}
    void ShowCurrentFilm() override {}
    void SetTime(float time) override {
        if (control != nullptr) {
            control->SetCurrentTime(time, true);
        }
    }
    void PressButton(unsigned, bool) override {}
    void UpdateAttachButton() override {}
    IMainCtrl* GetMainCtrl() override { return control; }

    CFilmsMainCtrl* control = nullptr;
};

/// A visible main control, 1280 pixels wide and tall enough for 40 rows, over a film of 200 actors.
class TimelineFilm {
public:
    static constexpr int kWidth = 1280;
    static constexpr int kHeight = 871;
    static constexpr int kShownRows = 40;

    explicit TimelineFilm(const Case& size);
    ~TimelineFilm();

    void Show() { control->ShowFilm(film.film, true); }
    void Empty() { control->ShowFilm(nullptr, true); }
    /// Every root row unfolded.
    void Unfold();
    /// Lets everything that is due be painted, and windows that were destroyed go.
    static void Paint();
    std::size_t CountViews() const;

    EngineFilm film;
    FrameHost host;
    IPluginImpl plugin;
    CWnd frame;
    std::unique_ptr<CFilmsMainCtrl> control;
    BenchHolder holder;
};

} // namespace films_bench
