#pragma once

#include "keys/TimedTrackKey.h"
#include "tests/timeline/ControlFixture.h"

#include <functional>
#include <string>
#include <vector>

/// The attributes window, which keeps what it is shown and notes what is asked of it.
class NotedAttributes final : public IKeyAttributesDlg {
public:
    bool GetLinkObjectText(const EditorObject*, std::string&) const override { return false; }
    void SetLinkObject(EditorObject*) override {}
    bool IsVisible() const override { return visible; }
    void Hide() override {}
    void Show(int) override {}
    void SetKey(CTrackKey* newKey, bool refresh) override;
    IFilmKey* GetRecord() const override { return record; }
    CTrackKey* GetKey() const override { return key; }
    void ForgetKey() override;
    void DestroyWindow() override {}

    std::vector<std::string> log;   ///< "refresh", "blank", "show" and "forget"
    std::function<void()> onSetKey; ///< what a question to the user lets in
    CTrackKey* key = nullptr;
    IFilmKey* record = nullptr;
    bool visible = false;
};

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
    NotedAttributes& OpenAttributes();
    static std::vector<float> TimesOf(const CTrackCtrl& row);
    static bool WantsPaint(const CTrackCtrl& row);

    EditorObject* crate;
    IFilm* film;
    CFilmTrack* track;
    std::vector<std::string> questions; ///< titles and prompts of the numbers asked for
    float offered = 0.0f;               ///< the number that the user was shown last
};
