#pragma once

#include "framework/Menu.h"
#include "framework/PickMode.h"
#include "keys/rules/KeyKindParams.h"
#include "plugin/base/Watch.h"
#include "plugin/rules/FilmViewSettings.h"
#include "plugin/session/ScenarioWindow.h"
#include "timeline/ActorCommands.h"
#include "timeline/CameraCommands.h"
#include "timeline/edits/TimelineEdits.h"
#include "timeline/FilmsInfoWnd.h"
#include "timeline/FilmsKeyDescrWnd.h"
#include "timeline/FilterCommands.h"
#include "timeline/KeyCommands.h"
#include "timeline/KeyHover.h"
#include "timeline/LightCommands.h"
#include "timeline/NewKeyCommands.h"
#include "timeline/rows/AdvWnd.h"
#include "timeline/rows/MarkedGridCtrl.h"
#include "timeline/rows/TrackCtrl.h"
#include "timeline/SettingsCommand.h"
#include "timeline/TimeCommands.h"
#include "timeline/TimeScrollbar.h"
#include "timeline/TrackFileCommands.h"

#include <list>
#include <memory>
#include <string>
#include <vector>

class CAdjustTimeDlg;
class CAttachMovieObjectDlg;
class IPluginImpl;

/// One show of a film: lasts from a call of ShowFilm to the next, or to the end of the control.
class FilmShow : public Watched {};

/// The control in which a film is edited: ruler, rows, scroll bars, info window and key popup. Made and
/// destroyed by the scenario window; owns everything that it shows. Times are seconds, rects pixels.
class CFilmsMainCtrl : public CadvWnd, public TimelineEdits, public IMainCtrl, public Watched {
    DECLARE_MESSAGE_MAP()

public:
    static constexpr int kMinWidth = 60;
    static constexpr int kMinHeight = 70;
    static constexpr int kMinRowHeight = 20;
    /// Pixels. Stored settings may say anything; a film that opens must show a row in a window of the first
    /// size, and beside the names some of its time in a wide screen.
    static constexpr int kMaxStoredRowHeight = 200;
    static constexpr int kMaxStoredLeftWidth = 2000;

    explicit CFilmsMainCtrl(IPluginImpl& newPlugin);
    ~CFilmsMainCtrl() override;

    /// FALSE, and nothing is made, for a rect less than 60 wide or 70 high.
    BOOL Create(const char* className, const char* windowName, DWORD style, const CRect& rect,
                CWnd* parentWnd, UINT id, CCreateContext* context = nullptr) override;
    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* handlerInfo) override;

    // Films and rows.
    void ShowFilm(IFilm* film, bool flag) override;
    void RecalcLayout();
    void ArrangeRows(bool invalidate, bool move) override;
    void RebuildVisibleRows(bool redraw, const RowHandle* handle) override;
    /// One less than would fit; may be negative.
    int GetVisibleRowCount() const;
    CTrackCtrl* AddTrackCtrl(bool redraw) override;
    CTrackCtrl* AddAnimationRow(CTrackCtrl* parentRow, const std::string& name) override;
    void InsertTrackCtrl(CTrackCtrl* row, CTrackCtrl* other, bool before);
    void RemoveTrackCtrl(CTrackCtrl* row, bool redraw);
    void DeleteAllRows();
    CTrackCtrl* FindRowOfObject(const EditorObject* object) const override;
    CTrackCtrl* FindRowOfKey(const IFilmKey* record) const override { return RowOfRecord(record); }

    // Time.
    void SetCurrentTime(float time, bool redraw);
    void SetCurrentFrame(float time, bool redraw) override;
    void SetMovieRange(float a, float b);
    void SetViewRange(float a, float b, bool redraw);
    void ApplyViewRange(bool redraw);
    void CalcSecondsPerPixel();
    void SetTicsDistance(float seconds, bool redraw);
    void SetBigTics(int count, bool redraw);
    void SetRowHeight(int height, bool redraw);
    /// From a time on, `from` seconds become `to` seconds; keys behind follow. Works on menuRow if it is set,
    /// else on all rows; a longer film takes the movie range along. The film is not shown anew.
    void StretchTime(float time, float from, float to) { StretchRows(*this, time, from, to); }
    /// Puts seconds into the film behind a time, or takes them out for a negative length, and shows the film
    /// anew. Works on menuRow if it is set, else on all rows; the film's length changes in any case.
    void InsertTime(float time, float length) { InsertIntoRows(*this, time, length); }
    void ApplySettings(const FilmViewSettings& settings);

    // Selection and keys.
    void ClearSelection() override;
    void SelectOnly(CTrackKey* key) override;
    void Deselect(CTrackKey* key) override;
    void ShiftKeysAtMark(float from, float to) override;
    void SaveKeyTimes() override;
    void RestoreKeyTimes(bool keep) override;
    void RecordObjectKeys(EditorObject* object, float time, const float* newMatrix,
                          const float* oldMatrix) override;

    // Key parameters and their file.
    CTrackKey* CreateKeyView(int kind) override { return MakeNewKey(*this, kind); }
    bool LoadKeysParams(const char* path, KeyKindParamsTable* records);
    bool SaveKeysParams(const std::string& path);
    void LoadDefaultKeysParams(KeyKindParamsTable* records);
    bool ImportKeysParams(const char* path);
    void TakeKeyLooks(const KeyKindParamsTable& records) override;
    void Reset() override;

    // Scrolling.
    void OnLineForward(CTimeScrollbar* bar) override;
    void OnLineBack(CTimeScrollbar* bar) override;
    void OnPageForward(CTimeScrollbar* bar) override;
    void OnPageBack(CTimeScrollbar* bar) override;
    void OnThumbTrack(CTimeScrollbar* bar, float position) override;
    void OnWheelBack();
    void OnWheelForward();

    // Popups.
    void ShowContextMenu(int x, int y, CTrackCtrl* row, CTrackKey* key) override;
    void ShowKeyDescription(CTrackKey* key) override { hover.Show(key); }

    // Actors.
    /// From the command on until the next selection, or until the user gives it up.
    bool IsChangingActor() const override { return actorPick.IsOn(); }
    bool ChangeActor() override { return TakeNewActor(*this); }
    void ClearUndo() override { undoMgr.Clear(); }
    IAttachDialog* GetAttachDialog() override;

    // Commands of the menus by name; TimelineCommands.h says which is whose.
    void OnMenuSettings() { EditSettings(*this); }
    void OnMenuFilterActors() { FilterRows(*this); }
    void OnMenuFilterKeys() { FilterKeys(*this); }
    void OnMenuSetMovieFrame() { GoToFrame(*this); }
    void OnMenuRemoveActors() { RemoveSelectedActors(*this); }
    void OnMenuRemoveActor() { RemoveActorOfRow(*this); }
    void OnMenuChangeActor() { AskForNewActor(*this); }
    void OnMenuAttachToObject() { AttachActor(*this); }
    void OnMenuAddLight(bool gl) { AddLight(plugin, gl); }
    void OnMenuAddCamera() { AddCamera(*this); }
    void OnMenuAddCameraTrack() { AddCameraRow(*this); }
    void OnMenuCameraParameters() { EditCamera(*this); }
    void OnMenuTrackParameters() { EditCameraSubtrack(*this); }
    void OnMenuAddKey() { AddKey(*this); }
    void OnMenuPasteKey() { PasteKey(*this); }
    void OnMenuSetPosition() { MoveKey(*this); }
    void OnMenuSetDuration() { SetKeyDuration(*this); }
    void OnMenuCalcKeyDuration() { TakeNaturalDuration(*this); }
    void OnMenuCopyAttributes() { CopyAttributes(*this); }
    void OnMenuPasteAttributes() { PasteAttributes(*this); }
    void OnMenuChangeBezierMethod(bool in, int method) { ChangeBezierMethod(*this, in, method); }
    void OnMenuExportTrack() { ExportTrack(*this); }
    void OnMenuImportTrack() { ImportTrack(*this); }

    /// The ruler and the rows on the screen, where they stand.
    void RepaintRows();
    /// Of the film that is shown now; never null.
    FilmShow* GetShow() const { return show.get(); }
    void ForgetView(CTrackKey* view) override;
    void ForgetRow(CTrackCtrl* row) override;
    void ForgetTrack(const CFilmTrack* track) override;
    bool IsRebuilding() const override { return rebuilding; }
    void InvalidateControl(bool erase) override { CadvWnd::Invalidate(erase); }
    void FocusControl() override { SetFocus(); }
    void Invalidate() override { CadvWnd::Invalidate(FALSE); }
    TimelineContext* GetTimeline() override { return this; }

    IPluginImpl& plugin;               ///< outlives the control
    CTimeScrollbar* hScroll = nullptr; ///< owned, like the other windows
    CTimeScrollbar* vScroll = nullptr;
    int headerHeight = 30;         ///< pixels: ruler and info window
    int bottomMargin = 20;         ///< pixels: time scroll bar
    int rowHeight = kMinRowHeight; ///< pixels
    int rightMargin = 20;          ///< pixels: row scroll bar
    float secondsPerPixel = 0.0f;  ///< zoom kept across resizes
    CMenu popupMenu;
    CMenu trackMenu;
    CMenu keyMenu;
    CMenu mainMenu;
    std::unique_ptr<CAdjustTimeDlg> adjustTimeDlg;    ///< keeps what was typed last
    std::unique_ptr<CAttachMovieObjectDlg> attachDlg; ///< null until it was first shown
    PickMode actorPick;                               ///< on while a new actor is waited for

protected:
    void OnPaint();
    void OnRButtonDown(UINT flags, CPoint point);
    void OnTimer(UINT_PTR id) { hover.OnTimer(id); }
    void OnMouseMove(UINT flags, CPoint point);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);

private:
    BOOL CreateGrid(int width);
    BOOL CreateScrollBars(int width, int height);
    BOOL CreateInfoWindows();
    void ResetRowBar();
    float RowPage() const;
    void ForgetAllRows();

    std::size_t PlaceRows(std::size_t place, CRect rect, int limit, bool move);
    void ShowTopRowInBar(bool newRange);
    std::unique_ptr<CTrackCtrl> MakeRow();
    void GrowRowBar(bool redraw);
    void RemoveCameraHelpers(CFilmTrack* track);
    void LeaveTrackOf(CTrackCtrl* row);

    void TakeStoredSettings(const IFilm& film);
    bool MakeRows(IFilm* film, const Watch<FilmShow>& underWay);
    bool ShowTrack(CFilmTrack* track, const Watch<FilmShow>& underWay);
    void ShowKey(CTrackCtrl* root, IFilmKey* record);

    void ScrollRowsTo(CTrackCtrl* row);
    void ScrollTime(float step);
    void ScrollRowsToPosition(float position);
    void ScrollTimeToPosition(float position);

    void MoveCursor(float time);
    void JumpToKeyUnderMouse(bool end);
    void ToggleMarkOfFirstKey();
    void FillMainMenu();
    void RunCommand(UINT id);
    void RunMethodCommand(UINT id);

    KeyHover hover{*this, *this};
    std::vector<CTrackCtrl*> detachedRows; ///< made, but in no list any more; owned
    std::unique_ptr<FilmShow> show = std::make_unique<FilmShow>();
    const IFilm* shownFilm = nullptr; ///< by ShowFilm; compared only
    FilmViewSettings shownSettings;   ///< the stored ones when it was shown
    bool rebuilding = false;
    bool forgettingAll = false; ///< every holder has let go already
};
