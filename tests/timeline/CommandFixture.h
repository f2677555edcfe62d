#pragma once

#include "keys/views/TimedTrackKey.h"
#include "tests/support/FakeAttributes.h"
#include "tests/timeline/ControlFixture.h"

#include <functional>
#include <string>
#include <vector>

/// The commands of the control's menus, at an opened film of 10 seconds with the actor "Crate", which stands
/// at (1, 2, 3). Its rows are unfolded.
class CommandTest : public ControlTest {
protected:
    CommandTest();

    void Run(UINT id) { control->OnCmdMsg(id, 0, nullptr, nullptr); }
    /// Runs a command as the menu of a row does, with the mouse at a time.
    void RunAt(UINT id, CTrackCtrl* row, float mouse);
    /// Runs a command as the menu of a key does.
    void RunOn(UINT id, CTrackCtrl* row, CTrackKey* key);
    CTrackCtrl* Row(int kind) { return RowOf("Crate", kind); }
    CTrackCtrl* LevelRow(int kind) { return RowOf("Level", kind); }
    /// A key with its view in a row.
    CTrackKey* Put(CTrackCtrl* row, float time, float duration = 0.0f);
    CTimedTrackKey* PutTimed(CTrackCtrl* row, float time, float duration) {
        return static_cast<CTimedTrackKey*>(Put(row, time, duration));
    }
    /// The user is asked for a number and gives this one.
    void UserTypes(float number);
    static std::vector<float> TimesOf(const CTrackCtrl& row);
    static bool WantsPaint(const CTrackCtrl& row);

    EditorObject* crate;
    IFilm* film;
    CFilmTrack* track;
    std::vector<std::string> questions; ///< titles and prompts of the numbers asked for
    float offered = 0.0f;               ///< the number that the user was shown last
};
