#pragma once

#include "framework/ListBox.h"
#include "framework/TestHooks.h"
#include "host/engine/ChunkClient.h"
#include "keys/attributes/KeyAttributesDlg.h"
#include "plugin/PluginImpl.h"
#include "tests/editing/EditingHost.h"
#include "tests/editing/Invariants.h"
#include "tests/editing/Operations.h"
#include "tests/engine/EngineFixture.h"
#include "tests/support/DialogHand.h"
#include "tests/support/TempFolder.h"
#include "timeline/ScenarioDlg.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <QObject>
#include <string>
#include <unordered_map>
#include <vector>

namespace editing {

/// Keeps the timers of windows from running: they would make a run depend on how fast it is.
class NoTimers : public QObject {
protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;
};

/// Everything that steps work on: a real level with four films at a host without views, the plug-in object
/// and its scenario window. A step behaves the same whenever the steps before it were the same.
class World {
public:
    World();
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    void Execute(const Step& step);

    /// Null while the window is gone.
    CFilmsMainCtrl* Control() const;
    const engine::FilmManager* Films() const;
    /// Null until a film is shown for the first time.
    CFilmKeyAttributesDlg* Attributes() const;
    /// All tracks of all films.
    std::vector<CFilmTrack*> Tracks() const;

    /// How many records the steps since the last call of BeginTally may have brought into tracks and out of
    /// them.
    struct Tally {
        std::int64_t mostAdded = 0;
        std::int64_t mostRemoved = 0;
    };
    void BeginTally() { tally = {}; }
    /// What was wrong first while a dialog was open.
    const std::optional<Failure>& WrongInside() const { return wrongInside; }
    /// Whether a box asks in the middle of an operation, which has told some keys of a selection and not
    /// others.
    bool IsBehindBox() const { return boxes > 0; }

    HookScope hooks;
    TempFolder folder; ///< of the level
    engine_test::TestMeshLibrary meshes;
    engine::PluginChunkClient chunks;
    EditingHost editor;
    IPluginImpl plugin;
    Tally tally;
    /// Records of the film shown whose view went when the axis became shorter, or that no row took, with the
    /// row that takes them. They get their views back, if at all, with rows made anew.
    std::unordered_map<const IFilmKey*, HWND> hidden;
    /// A key without length that was dragged by the last step, and that was in the axis before.
    bool draggedInAxis = false;
    /// The command chosen last in a menu that offered it.
    UINT chosenCommand = 0;
    int framesPlayed = 0;               ///< since the start
    int stepsInPlay = 0;                ///< carried out while a film played
    int typed = 0;                      ///< texts that went into an editor of the attributes window
    int browsed = 0;                    ///< browsers that it opened
    std::map<UINT, int> tried;          ///< how often a command was run that its menu or toolbar offered
    std::map<std::string, int> dialogs; ///< how often one with this title was worked in

private:
    friend std::span<const Operation> Operations();

    static constexpr int kDeepest = 3; ///< steps inside each other

    struct PlacedKey {
        CTrackCtrl* row = nullptr;
        CTrackKey* key = nullptr;
    };

    // The level (WorldLevel.cpp, WorldFilms.cpp).
    void MakeFilms();
    IFilm* MakeFilm(float ticDistance);
    void MakeKeys(CFilmTrack* track, int perKind);
    void UnfoldAll();
    void Load(std::string bytes);
    std::string Save();
    void LeaveLevel();
    void NewLevel(const Step& step);
    void CreateObject(const Step& step);
    void DeleteObjects(const Step& step);
    void SelectObjects(const Step& step);
    void MoveObject(const Step& step);
    void Animate(const Step& step);
    void ShowFilm(const Step& step);
    void ShowAgain(const Step& step);
    void NewFilm(const Step& step);
    void DeleteFilm(const Step& step);
    void SaveLevel(const Step& step);
    void LoadLevel(const Step& step);
    void HostEvent(const Step& step);
    void Render(const Step& step);
    void SetTime(const Step& step);
    void Play(const Step& step);
    void Stop(const Step& step);

    // Mouse and keyboard (WorldGestures.cpp).
    void PressKey(const Step& step);
    void PressEmpty(const Step& step);
    void PressName(const Step& step);
    void PressRuler(const Step& step);
    void PressBar(const Step& step);
    void Drag(const Step& step);
    void Release(const Step& step);
    void LoseCapture(const Step& step);
    void DoubleClick(const Step& step);
    void Hover(const Step& step);
    void Timer(const Step& step);
    void KeyPress(const Step& step);
    void Wheel(const Step& step);
    void Send(CWnd* target, UINT message, UINT flags, CPoint point);
    CWnd* PressedWindow() const;
    void HoldKeys(int modifiers);

    // The attributes window (WorldAttributes.cpp).
    CFilmKeyAttributesDlg* OpenAttributes() const;
    static void Activate(const CWnd* top);
    void ActivateTimeline();
    void AttributesOpen(const Step& step);
    void AttributesRow(const Step& step);
    void AttributesType(const Step& step);
    void AttributesWheel(const Step& step);
    void AttributesChoice(const Step& step);
    void AttributesNext(const Step& step);
    void AttributesKey(const Step& step);
    void AttributesClose(const Step& step);
    void AttributesBrowse(const Step& step);
    void AttributesLink(const Step& step);
    void AttributesLeave(const Step& step);
    std::string AnswerName(const std::string& present);

    // Menus and windows (WorldCommands.cpp).
    void KeyMenu(const Step& step);
    void RowMenu(const Step& step);
    void MainMenu(const Step& step);
    void StaleCommand(const Step& step);
    void Toolbar(const Step& step);
    void Undo(const Step& step);
    void Fold(const Step& step);
    void Filter(const Step& step);
    void RemoveRow(const Step& step);
    void Resize(const Step& step);
    void MovieRange(const Step& step);
    void ViewRange(const Step& step);
    void Tics(const Step& step);
    void AdjustTime(const Step& step);
    void ChangeElement(const Step& step);
    void OpenClose(const Step& step);
    void CloseWindow(const Step& step);
    void OpenWindow();
    void Restore();
    void Paint(const Step& step);
    void ChooseInMenu(CTrackCtrl* row, CTrackKey* key, UINT command);
    bool IsFull(UINT command, const CTrackCtrl* row) const;
    void ObjectMenu(const Step& step);
    void ViewMenu(const Step& step);
    void PluginToolbar(const Step& step);
    void ChooseInHostMenu(const CMenu& menu, int number);

    // Dialogs, whatever is in them (WorldDialogs.cpp).
    int AnswerDialog(CDialog& dialog);
    void Panel(const Step& step);
    void Modeless(const Step& step);
    void Touch(DialogHand& hand);
    void TouchList(DialogHand& hand, const CListBox& list);
    void PressKey(DialogHand& hand);
    void Leave(DialogHand& hand);
    void CheckInside();
    /// What the host and other windows may do while a dialog or browser is open.
    void Disturb();

    // Files that the user chooses (WorldFiles.cpp).
    void MakeFiles();
    int AnswerFile(CFileDialog& dialog);
    std::string FileToSave(const std::string& extension);
    std::string FileToOpen(const std::string& extension);
    void Damage(const std::string& from, const std::string& to);

    // Answers (WorldAnswers.cpp).
    void InstallHooks();
    int AnswerBox();
    bool AnswerNumber(float& value);
    int AnswerColor(CColorDialog& dialog);
    UINT AnswerMenu(const CMenu& menu);
    std::uint32_t Clock();
    void DuringPlay();
    /// Now and then a few steps before the answer, as when the host or a timer works behind an open window.
    void Interrupt();

    void NoteHiddenKeys();
    PlacedKey KeyOf(int number) const;
    CTrackCtrl* RowOf(int number) const;
    IFilm* FilmOf(int number) const;
    engine::SceneObject* ObjectOf(int number) const;

    NoTimers noTimers;
    QObject pump;                   ///< what was posted for the pump of a playing film goes with it
    CScenarioDlg* window = nullptr; ///< deletes itself with its window
    Luck luck{0};
    int depth = 0;                 ///< steps that run inside each other
    CPoint mouse;                  ///< on the screen
    CWnd* pressedWindow = nullptr; ///< compared only, may be gone
    int heldKeys = 0;
    UINT menuChoice = 0;
    std::uint32_t clock = 1000;
    std::uint32_t clockStep = 100; ///< milliseconds from one reading to the next
    int clockReadings = 0;
    std::deque<Step> insidePlay;
    std::string firstLevel; ///< the level file of the start
    std::string savedLevel;
    int made = 0; ///< objects and films since the start, for their names
    int fileErrors = 0;
    bool opening = false; ///< the scenario window is being made
    int boxes = 0;        ///< that wait for an answer
    std::optional<Failure> wrongInside;
    std::vector<HWND> openDialogs;                                       ///< modal ones, the innermost last
    std::filesystem::path startFolder = std::filesystem::current_path(); ///< file dialogs leave it
};

/// Bits of a step's modifiers.
namespace Held {
constexpr int kShift = 1;
constexpr int kCtrl = 2;
constexpr int kAlt = 4;
} // namespace Held

} // namespace editing
