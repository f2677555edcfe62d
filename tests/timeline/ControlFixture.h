#pragma once

#include "tests/plugin/PluginFixture.h"
#include "timeline/FilmsMainCtrl.h"

#include <memory>
#include <string>
#include <vector>

/// The scenario window around a main control: it passes on what the plug-in object asks for.
class ControlHolder final : public IScenarioWindow {
public:
    bool IsEnabled() const override { return true; }
    bool IsVisible() const override { return true; }
    void Show() override {}
    void ShowCurrentFilm() override;
    void SetTime(float time) override;
    void PressButton(unsigned id, bool pressed) override;
    void UpdateAttachButton() override {}
    IMainCtrl* GetMainCtrl() override { return control; }

    CFilmsMainCtrl* control = nullptr;
    std::vector<std::string> pressed; ///< "36864 true"
};

/// A main control of 800 x 400 pixels in a window of its own, at a plug-in object with an empty level.
class ControlTest : public PluginTest {
protected:
    static constexpr int kWidth = 800;
    static constexpr int kHeight = 400;

    ControlTest();
    ~ControlTest() override;

    void Resize(int width, int height);
    /// The row of a kind below the root row with a name; null if there is none. Kind 21 is the root row
    /// itself.
    CTrackCtrl* RowOf(const std::string& rootName, int kind = KeyKind::None, int subIndex = -2);
    /// Names of all rows, kind rows behind two blanks.
    std::vector<std::string> RowNames() const;
    std::vector<std::string> VisibleNames() const;
    /// An opened film of 10 seconds with so many actors, their root rows folded.
    IFilm* OpenFilmWithActors(int count);
    CRect PlaceOf(const CWnd* child) const;
    /// Whatever the control and its rows point at is one of the rows and views that it has.
    void ExpectNothingDangles() const;
    /// Lets the windows paint and their timers run.
    static void Settle(int milliseconds = 0);

    CWnd frame;
    std::unique_ptr<CFilmsMainCtrl> control;
    ControlHolder holder;
};
