#pragma once

#include "tests/support/DialogHand.h"
#include "tests/support/TempFolder.h"
#include "tests/timeline/ScenarioDlgFixture.h"

#include <filesystem>
#include <functional>
#include <QObject>
#include <span>
#include <string>
#include <vector>

class CFilmKeyAttributesDlg;

/// What goes, or comes, beneath an open window.
enum class Away {
    Nothing,
    FilmDeleted,
    FilmSwitched,
    FilmShownAgain,
    FilmRenamed,
    FilmSaved, ///< closed and opened again, as by the host when it saves
    FilmPlays, ///< to its end
    FilmStopped,
    LevelLeft,
    OtherLevel, ///< one that has a film and objects of the same names
    TracksRemoved,
    CameraRemoved,
    KeysRemoved,
    ObjectDeleted,
    LightDeleted,
    ControlGone,
    WindowGone,
    WindowReopened,
    HostEnds
};

/// A window that runs what was posted to it.
class PostedWork : public CWnd {
    DECLARE_MESSAGE_MAP()

public:
    void Post(std::function<void()> posted);

private:
    LRESULT OnRun(WPARAM wParam, LPARAM lParam);

    std::function<void()> work;
};

/// Behind Away::HostEnds.
constexpr int kAways = static_cast<int>(Away::HostEnds) + 1;

/// A user at the windows that the timeline opens: the real ones, in their own loops. At the film "First",
/// which has the actor "Crate", the light "Lamp" and the cameras "Main" and "Side"; another film has an actor
/// of its own.
class OpenDialogFixture : public ScenarioDlgTest {
protected:
    using Step = std::function<void(DialogHand&)>;

    OpenDialogFixture();
    ~OpenDialogFixture() override;

    /// Runs `open`, inside the pump of a playing film if `playing`. The windows that come up are passed by
    /// the steps, one each; in the next one the user edits, sees things go, and ends it. What comes up behind
    /// that is a message, which the user closes.
    void Work(const std::function<void()>& open, std::vector<Step> steps, bool playing);
    /// The same in a window that doesn't wait for its end.
    void UseModeless(const CWnd& shown);
    /// Puts `path` into a file dialog; other windows are left alone.
    void NameFile(DialogHand& hand) const;
    /// In a window of the host, which the user ends at once; false is Cancel.
    bool AnswerHost();

    void TakeAway(Away what);
    /// Whether that takes away the film that the window was opened for.
    static bool TakesFilm(Away what);
    /// All that films hold and how they are shown, as a text.
    std::string Films() const;

    CTrackCtrl* RootRow(const std::string& name);
    CTrackCtrl* LightRow();
    /// The view of a key of the film; null if there is none.
    CTrackKey* ViewOf(const IFilmKey* record);
    /// Runs a command of the menus for a row, and for a key in it.
    void Choose(UINT command, CTrackCtrl* row = nullptr, CTrackKey* key = nullptr);
    /// Opens the attributes window with a key.
    void OpenAttributes(IFilmKey* record);
    CFilmKeyAttributesDlg& Attributes();
    /// Presses the row of an attribute, and the "..." in it if `browse`.
    void PressAttribute(const std::string& name, bool browse);

    Away away = Away::Nothing;
    DialogHand::Ending ending = DialogHand::Ending::Default;
    std::string path; ///< what is chosen in a file dialog
    TempFolder folder;
    engine::SceneObject* crate = nullptr;
    engine::SceneObject* lamp = nullptr;
    IFilm* film = nullptr;
    int used = 0;           ///< windows in which things went
    std::string filmsBelow; ///< Films() when they had gone

private:
    void MakeFilm();
    void Look();
    void AtWindow(QWidget& top);
    void UseWindow(DialogHand& hand);
    void Edit(DialogHand& hand);
    void EditControl(DialogHand& hand, CWnd& control);
    void LeaveLevel();
    void NewLevel();
    void RemoveTrack(const char* root);
    void RemoveKeys();
    void EndHost();

    PostedWork posted;
    std::filesystem::path workingFolder = std::filesystem::current_path(); ///< file dialogs change it
    std::vector<Step> way;
    std::vector<QWidget*> tops; ///< windows in use, the outermost first
    std::size_t windows = 0;    ///< that came up
    int messages = 0;           ///< of them, behind the one in which things went
    int looks = 0;              ///< the last look-out for a window; older ones do nothing
    QObject lookout;
};
