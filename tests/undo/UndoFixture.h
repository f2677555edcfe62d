#pragma once

#include "tests/support/FakeKeyFactory.h"
#include "tests/timeline/TrackCtrlFixture.h"
#include "undo/KeyActions.h"

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

/// Rows below a stand-in for the main control, over the records of a real level.
class UndoTest : public TrackCtrlTest {
protected:
    UndoTest();
    ~UndoTest() override;

    /// A view in the row, its record in the row's track.
    CTrackKey* PutKey(CTrackCtrl& row, float time, float duration = 1.0f);
    CTimedTrackKey* PutBox(CTrackCtrl& row, float time, float duration = 1.0f) {
        return static_cast<CTimedTrackKey*>(PutKey(row, time, duration));
    }
    /// A view in no row, its record in no track; whoever is given it owns both.
    CTrackKey* NewView(int kind, float time, float duration = 1.0f);
    /// An action of its code, filled but not handed to the manager.
    template <class Action> std::unique_ptr<Action> Make(CTrackKey* key, CTrackCtrl* row) {
        auto action = std::make_unique<Action>(&timeline);
        action->SetKey(key);
        action->SetTrackCtrl(row);
        return action;
    }
    static std::vector<CTrackKey*> Views(const CTrackCtrl& row) { return {row.keys.begin(), row.keys.end()}; }
    static bool IsListed(const CFilmTrack& track, const IFilmKey* record);
    /// Records that exist in the level.
    std::size_t RecordCount();
    /// What waits for a repaint or is in a log from now on is the test's own doing.
    void StartWatching();
    RetiredKeys& Retired() { return timeline.undoMgr.retired; }

    FakeKeyFactory factory{Films()};
};

/// The record as that of its kind.
template <class Record> Record& RecordAs(const CTrackKey& view) {
    return *static_cast<Record*>(view.record);
}
