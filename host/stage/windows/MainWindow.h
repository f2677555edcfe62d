#pragma once

#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"
#include "host/stage/host/ObjectCommands.h"

#include <memory>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>

class CMenu;
class CToolBar;
class CWnd;
class QActionGroup;
class QDockWidget;
class QLabel;
class QShortcut;
class QToolBar;

namespace stage {

class Assets;
class CreateMenu;
class EffectWatch;
class FilmCommands;
class FilmEffects;
class Notice;
class ObjectPanel;
class ObjectTree;
class PickModeSign;
class PluginPanel;
class QuietMoments;
class ScenarioKeys;
class SnapMenu;
class ToolWindows;
class UndoCommands;
class ViewArea;
class WorkKeeper;
struct FoundWork;
enum class IconId;
enum class ToolMode;

/// The editor's main window: views in the middle, lists and panels around them. It owns the host, the level
/// session and the object commands.
class MainWindow : public QMainWindow, public IStageWindows {
    Q_OBJECT
public:
    explicit MainWindow(HostFolders folders);
    ~MainWindow() override;

    /// False if the user chose to keep working on unsaved changes, or if saving them failed.
    bool MayLoseChanges();
    /// Size, bars and docks as the user left them, inside the screen.
    void RestorePlaces();
    /// Not larger than the screen, and on it.
    void StayOnScreen();
    bool OpenLevel(const QString& path);
    /// Lists unsaved work that was kept; with `onlyAfterCrash` not unless a Stage has left some that ended
    /// without leave. True if the user chose some and it is open now.
    bool OfferKeptWork(bool onlyAfterCrash);
    bool SaveLevelAs(const QString& path);
    /// Loads plug-in libraries and starts them with a new level. Failures are reported.
    void LoadPlugins(const QStringList& libraries);
    /// The form of the plug-in's panel, which is opened if need be; null if there is none.
    CWnd* OpenFilmsPanel();
    /// Takes leave of the plug-ins. Call it when no plug-in's call is under way.
    void ShutdownHost();

    /// The form that a plug-in shows in the side panel, null for none.
    CWnd* PanelForm() const { return panelForm; }

    // IStageWindows
    int ActiveView() override;
    void RedrawView(int view) override;
    void AttachmentChanged(int view) override;
    void SelectionChanged() override;
    void ObjectsChanged() override;
    void ObjectsMoved() override;
    void ObjectGone(const EditorObject* object) override { emit ObjectGoing(object); }
    void RefreshObjectTree() override;
    void RefreshObjectPanel() override;
    void LevelChanged() override;
    void ShowPanel(const CRuntimeClass* formClass) override;
    void HidePanel() override;
    bool IsPanelShown() override;
    bool AddToolbar(CToolBar* toolbar, unsigned resourceId) override;
    void RemoveToolbar(CToolBar* toolbar) override;
    void DestroyToolWindows() override;
    void ShortcutsChanged() override;
    std::optional<std::string> BrowseMeshElement(EditorObject* object, const std::string& present) override;
    std::optional<std::string> BrowseMeshAnimation(EditorObject* object, const std::string& present) override;
    std::optional<std::string> BrowseFx(int fxKind, const std::string& present) override;
    std::optional<float> InputNumber(float present, const std::string& title,
                                     const std::string& prompt) override;
    std::optional<std::string> PathForChangedFile(const std::string& path) override;
    void Report(const std::string& text) override;
    void ReportError(const std::string& text) override;
    void ShowDeleteRefusals(const std::list<DeleteMessage>& messages) override;

    EditorHost host;
    LevelSession session;
    ObjectCommands commands;
    ViewArea* views = nullptr;
    ObjectTree* tree = nullptr;
    ObjectPanel* panel = nullptr;
    PluginPanel* pluginPanel = nullptr;
    ToolWindows* toolWindows = nullptr;
    QuietMoments* quiet = nullptr;
    WorkKeeper* keeper = nullptr;
    ScenarioKeys* scenarioKeys = nullptr;
    UndoCommands* undo = nullptr;
    Assets* assets = nullptr;
    Notice* notice = nullptr;

signals:
    /// The user closed the window and nothing keeps it open.
    void Closed();
    /// The object stands for the last time.
    void ObjectGoing(const EditorObject* object);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QAction* AddAction(QMenu& menu, const QString& text, const QKeySequence& keys,
                       const std::function<void()>& run, const char* name);
    void MakeFileMenu();
    void MakeEditMenu();
    void MakeCreateMenu();
    void MakeViewMenu();
    void AddQuickPictures(QMenu& menu);
    void AddHelperObjects(QMenu& menu);
    void AddThemeMenu(QMenu& menu);
    void MakeFilmsMenu();
    void AddFilmListMenu();
    void MakePluginMenu();
    void MakeHelpMenu();
    void MakeToolBar();
    void MakeDocks();
    void MakeStatusBar();
    void MakeKeeper();
    void MakeHistory();
    void FillRecentMenu();
    void FillPluginMenu();
    /// Runs a plug-in's command by the name that the user chose, and tells him if nothing came of it.
    void RunChosen(const QString& name, const std::function<void()>& command);
    void RunBarCommand(unsigned id);
    void RunShortcut(const ShortcutRecord& shortcut);
    void NamePluginButtons();
    void NamePanel();
    void PlacePanel(int formHeight);
    void OpenPanel();
    void UpdateActions();
    /// Checks the action of the present number of views.
    void CheckLayout();
    void FlushRefresh();

    void NewLevel();
    void OpenDialog();
    bool Save();
    bool SaveAsDialog();
    /// The dialog that has the keyboard, which gets it back from a browser; else this window.
    QWidget* AskingWindow();
    /// A path for the level as the user chooses it, empty if he chooses none.
    QString AskSavePath();
    /// False if the user would rather not save without the lights that are in no film any more.
    bool MayLeaveOutLights();
    void RememberRecent(const QString& path);
    /// Puts aside what the user does not want to save. False if that failed and he would rather not lose it.
    bool MayDiscard();
    bool Recover(FoundWork& found);
    void AskAutosaveMinutes();

    void DuplicateSelected();
    void RenameSelected();
    void SelectAll();
    void SelectSameKind();
    void ShowMenu(int view, EditorObject* object, const QPoint& screen);
    void ShowKeys();
    void LookThroughSelected();
    /// A key that counts while a view has the keyboard: elsewhere it means something else.
    void AddViewKey(const QKeySequence& keys, const std::function<void()>& run);
    void MakeBookmarkMenu(QMenu& menu);

    QMenu* recentMenu = nullptr;
    CreateMenu* create = nullptr;
    SnapMenu* snapMenu = nullptr;
    QMenu* pluginMenu = nullptr;
    QToolBar* tools = nullptr;
    QDockWidget* treeDock = nullptr;
    QDockWidget* panelDock = nullptr;
    QDockWidget* historyDock = nullptr;
    QLabel* rateLabel = nullptr;
    QLabel* selectionLabel = nullptr;
    QList<QAction*> selectionActions; ///< enabled while something is selected
    QList<QShortcut*> pluginShortcuts;
    /// The plug-ins own the first, the window the second.
    std::vector<std::pair<CToolBar*, QPointer<QToolBar>>> pluginToolbars;
    CWnd* panelForm = nullptr; ///< deletes itself with its window
    QTimer refreshTimer;
    QTimer lookTimer; ///< ends a look at a film when the call that began it is over
    bool treeStale = false;
    bool panelStale = false;
    bool transformStale = false;
    std::unique_ptr<FilmCommands> filmCommands;
    std::unique_ptr<FilmEffects> effects;
    std::unique_ptr<EffectWatch> effectWatch;
    std::unique_ptr<PickModeSign> pickSign;
    bool closing = false;
    bool isPanelUnplaced = true; ///< until it was shown once, or the user's places were restored
};

} // namespace stage
