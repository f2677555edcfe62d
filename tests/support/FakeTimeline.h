#pragma once

#include "timeline/edits/TimelineEdits.h"

#include <string>
#include <vector>

/// A main control without rows of its own: it writes down what its children ask for. Make a window of it with
/// Create and give it to them as their parent.
class FakeTimeline : public CWnd, public TimelineEdits {
public:
    using TimelineEdits::TimelineEdits;
    ~FakeTimeline() override { undoMgr.Clear(); }
    void ClearSelection() override;
    void SelectOnly(CTrackKey* key) override;
    void Deselect(CTrackKey* key) override;
    void SetCurrentFrame(float time, bool redraw) override;
    void ShiftKeysAtMark(float from, float to) override;
    void SaveKeyTimes() override { log.push_back("SaveKeyTimes"); }
    void RestoreKeyTimes(bool keep) override;
    void ArrangeRows(bool invalidate, bool move) override;
    void RebuildVisibleRows(bool redraw, const RowHandle* handle) override;
    CTrackCtrl* AddTrackCtrl(bool redraw) override;
    CTrackCtrl* AddAnimationRow(CTrackCtrl* parentRow, const std::string& name) override;
    CTrackCtrl* FindRowOfObject(const EditorObject*) const override { return nullptr; }
    void ShowFilm(IFilm* film, bool flag) override;
    CTrackCtrl* FindRowOfKey(const IFilmKey*) const override { return nextRow; }
    void ShowContextMenu(int x, int y, CTrackCtrl* row, CTrackKey* key) override;
    void ShowKeyDescription(CTrackKey* key) override;
    void TakeKeyLooks(const KeyKindParamsTable& records) override { keyParams = records; }
    CTrackKey* CreateKeyView(int kind) override;
    void ForgetView(CTrackKey* view) override;
    void ForgetRow(CTrackCtrl* row) override;
    bool IsRebuilding() const override { return rebuilding; }
    void InvalidateControl(bool erase) override;
    void FocusControl() override { log.push_back("FocusControl"); }
    void OnLineForward(CTimeScrollbar*) override { log.push_back("OnLineForward"); }
    void OnLineBack(CTimeScrollbar*) override { log.push_back("OnLineBack"); }
    void OnPageForward(CTimeScrollbar*) override { log.push_back("OnPageForward"); }
    void OnPageBack(CTimeScrollbar*) override { log.push_back("OnPageBack"); }
    void OnThumbTrack(CTimeScrollbar* bar, float position) override;

    std::vector<std::string> log;
    bool rebuilding = false;
    bool refuseViews = false;               ///< CreateKeyView answers null
    CTrackCtrl* nextRow = nullptr;          ///< what AddTrackCtrl and AddAnimationRow answer
    std::vector<CTrackKey*> forgottenViews; ///< of ForgetView; they may be gone
    CTrackKey* described = nullptr;         ///< of the last ShowKeyDescription
    float thumbPosition = 0.0f;             ///< of the last OnThumbTrack
};
