#pragma once

#include "keys/views/NullTimeTrackKey.h"
#include "keys/views/TimedTrackKey.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/FakeTimeline.h"
#include "timeline/rows/MarkedGridCtrl.h"
#include "timeline/rows/TrackCtrl.h"

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

/// A main control that makes real rows.
class RowTimeline : public FakeTimeline {
public:
    using FakeTimeline::FakeTimeline;
    CTrackCtrl* AddTrackCtrl(bool redraw) override;
    CTrackCtrl* AddAnimationRow(CTrackCtrl* parentRow, const std::string& name) override;
    /// A row of 650 x 20 pixels over 0 to 100 seconds that shows 0 to 10: with the name column of 150 there
    /// are 50 pixels a second.
    CTrackCtrl& MakeRow(int kind);
    void SelectOnly(CTrackKey* key) override {
        FakeTimeline::SelectOnly(key);
        if (onSelect) {
            onSelect();
        }
    }

    std::function<void()> onSelect; ///< after a selection; may take all rows away
    std::list<std::unique_ptr<CTrackCtrl>> rows;
    bool refuseRows = false;
};

/// Rows below a stand-in for the main control, with an opened film whose actor is the object "Box".
class TrackCtrlTest : public PluginTest {
protected:
    static constexpr int kWidth = 650;
    static constexpr int kHeight = 20;

    TrackCtrlTest();
    ~TrackCtrlTest() override;

    CTrackCtrl& MakeRow(int kind, CFilmTrack* track = nullptr);
    /// A root row with all child rows of its track.
    CTrackCtrl& MakeTree(CFilmTrack* track, int cameraCount = 0);
    /// A view with a record of its own, added to the row: the record to its track, if it has one.
    CNullTimeTrackKey* AddBar(CTrackCtrl& row, float time);
    CTimedTrackKey* AddBox(CTrackCtrl& row, float time, float duration);
    /// A record of the kind with a view in neither row nor track; the caller owns the view.
    std::unique_ptr<CTrackKey> MakeView(int kind, float time, float duration = 0.0f);
    static CFilmAnimationKey& Animation(CTrackKey& view) {
        return *static_cast<CFilmAnimationKey*>(view.record);
    }
    void Unselect() { timeline.ClearSelection(); }

    /// Paints the row and gives the calls, one line each:
    ///   rect 0,0,650,20 pen 000000 brush FAFAFA     line 0,0 0,20 pen 000000     text 25,6 'Box:' 000000
    /// A dotted pen is "dots", no pen "none".
    static std::vector<std::string> Paint(CTrackCtrl& row);
    static void RenderRow(CTrackCtrl& row);
    /// The keys' calls alone.
    static std::vector<std::string> PaintKeys(CTrackCtrl& row);
    /// Only lines that begin with the word.
    static std::vector<std::string> Only(const std::string& word, const std::vector<std::string>& lines);

    static void Press(CTrackCtrl& row, int x, int y, UINT flags = MK_LBUTTON) {
        row.SendMessage(WM_LBUTTONDOWN, flags, MAKELPARAM(x, y));
    }
    static void Release(CTrackCtrl& row, int x, int y) { row.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(x, y)); }
    static void Move(CTrackCtrl& row, int x, int y, UINT flags = 0) {
        row.SendMessage(WM_MOUSEMOVE, flags, MAKELPARAM(x, y));
    }
    static bool WantsPaint(const CTrackCtrl& row);
    void SettleAll();
    static std::vector<std::string> ChildNames(const CTrackCtrl& root);

    RowTimeline timeline{plugin};
    CMarkedGridCtrl ruler;
    std::vector<std::string> windowLog;
    LoggingWindow window{windowLog};
    engine::SceneObject* box = nullptr;
    IFilm* film = nullptr;
    CFilmTrack* boxTrack = nullptr;
    std::vector<IFilmKey*> loose; ///< records in no track, for the factory to destroy
};
