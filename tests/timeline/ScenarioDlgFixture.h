#pragma once

#include "tests/plugin/PluginFixture.h"
#include "timeline/ScenarioDlg.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class QWindow;

/// A scenario window that notes which commands reach its base class, and opens what is protected.
class ObservedScenarioDlg : public CScenarioDlg {
    DECLARE_MESSAGE_MAP()

public:
    using CScenarioDlg::CScenarioDlg;

    std::vector<UINT> baseCommands;

protected:
    void OnBaseCommand(UINT id) { baseCommands.push_back(id); }
};

/// A real scenario window at a plug-in object with an empty level.
class ScenarioDlgTest : public PluginTest {
protected:
    ScenarioDlgTest();
    ~ScenarioDlgTest() override;

    bool IsAlive() const { return plugin.scenarioDlg != nullptr; }
    CFilmsMainCtrl& Control() { return *window->mainCtrl; }
    void Command(UINT id) { window->SendMessage(WM_COMMAND, id); }
    bool IsPressed(UINT id) const { return window->toolbar.IsButtonPressed(id) != 0; }
    /// Sets the time as a host does.
    void GoTo(float time) { plugin.SetTime(time, /*fromWindow*/ false); }
    /// The row of a kind below the root row with a name; null if there is none.
    CTrackCtrl* RowOf(const std::string& rootName, int kind);
    /// Rebuilds the rows for the film as it stands now and unfolds all of them.
    void ShowRows();
    /// Each reading of the clock is `step` milliseconds behind the one before.
    void RunClock(std::uint32_t step);
    /// Runs once inside the message pump of the film that plays next.
    void InsidePump(std::function<void()> action);
    QWindow* Native();
    static void Settle();

    ObservedScenarioDlg* window; ///< deletes itself with its window
    std::vector<float> frames;   ///< times of the frames that were told to the host
    std::uint32_t clock = 1000;
};
