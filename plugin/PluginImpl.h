#pragma once

#include "files/ToolBarReg.h"
#include "framework/Menu.h"
#include "helpers/CameraHelpersController.h"
#include "helpers/FilmsLightHelperMgr.h"
#include "helpers/TrackVisualizator.h"
#include "plugin/contract/Editor.h"
#include "plugin/contract/EditorView.h"
#include "plugin/contract/EventCodes.h"
#include "plugin/contract/Plugin.h"
#include "plugin/FilmViewSettings.h"
#include "plugin/ObjectMatrixRecords.h"
#include "plugin/PluginFilmsParams.h"
#include "timeline/ScenarioWindow.h"

#include <array>
#include <list>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

/// A level object that is kept for films only.
struct VirtualObjectRecord {
    std::string objectName;
    std::string meshName;
    std::string className; ///< the real class, to turn the object back
    EditorObject* object = nullptr;
};

/// An object that the host has moved, while the move is answered.
struct MovedObject {
    explicit MovedObject(EditorObject* moved) : object(moved) {}

    EditorObject* object; ///< null once it is destroyed
    std::array<float, 16> userMatrix{};
    bool isSnappedBack = false; ///< to its film pose, which the other plug-ins are told
};

using MovedObjects = std::vector<MovedObject>;

/// The one object that ties the library together: the current film and time, the host's commands and events,
/// actors, playing and the level's chunks. Split over the PluginImpl*.cpp files by topic.
///
/// Everything runs on the host's user-interface thread. `Play` pumps messages, so any operation can run
/// inside a playing film; state is read anew after each pump.
class IPluginImpl final : public IPlugin {
public:
    static constexpr int kPluginKind = 6;
    static constexpr int kFramesPerSecond = 30;
    /// A previous time that fires no keys.
    static constexpr float kNoPrevious = -1.0f;

    IPluginImpl();
    ~IPluginImpl() override;
    IPluginImpl(const IPluginImpl&) = delete;
    IPluginImpl& operator=(const IPluginImpl&) = delete;

    // What the host calls.
    void Reserved1(Word) override {}
    void Reserved2() override {}
    void Reserved3(Word) override {}
    void Reserved4(Word) override {}
    bool CanDeleteObjects(const ObjectList* objects, std::list<DeleteMessage>* messages) override;
    void OnObjectDestroyed(EditorObject* object) override;
    void Reserved5() override {}
    void Reserved6() override {}
    void RegisterShortcuts() override;
    void GetCommandText(Word pluginNumber, Word localCommand, char* text) override;
    void OnEditorReady() override;
    void OnActivate(bool active) override;
    void OnEditorClosing() override;
    void OnCommand(Word pluginNumber, Word localCommand) override;
    void OnNew() override;
    PluginCommandId GetPluginId() override { return pluginId; }
    int GetPluginKind() override { return kPluginKind; }
    void OnShortcut(Word, int number, Word) override;
    void OnRender() override;
    bool OnObjectMenu(CMenu* menu, Word, Word, EditorObject* object) override;
    bool OnViewMenu(CMenu* menu) override;
    void OnEvent(int code, void* data) override;
    void OnViewRequest(int code, Word, void* data, bool* result) override;
    bool SaveChunks(fs::file& file, IHostObject* object) override;
    bool LoadChunk(IHostObject* object, fs::file& file, std::uint16_t chunkId, std::uint32_t size) override;
    bool IsOwnChunk(Word, std::uint16_t chunkId) override;
    bool Reserved19(Word) override { return false; }
    void Reserved20(Word, Word) override {}
    Word Reserved21(Word, Word, Word, Word) override { return 0; }

    // Host access.
    void Initialize(IEditor* newEditor, std::uint32_t pluginNumber, IEditorView* newView);
    ILevelData* GetLevelData() const { return level != nullptr ? level->GetLevelData() : nullptr; }
    IFilmManager* GetFilmManager() const;
    /// The film of a slot number that may be anything; null outside 0 to 199.
    IFilm* GetFilmByIndex(int index) const;
    /// Whether one of the slots still holds this film.
    bool FilmExists(const IFilm* film) const;
    /// Whether one of the slots still holds the film, and the film the track. The pointers are only compared.
    bool FilmHas(const IFilm* film, const CFilmTrack* track) const;
    /// Whether the level has the object; the pointer is only compared.
    bool IsInLevel(const EditorObject* object) const;
    /// Whether the object's class derives from a class name, by the host's class database.
    bool ObjectDerivesFrom(EditorObject* object, const char* className) const;

    // Films and time.
    IFilm* GetCurrentFilm() const { return currentFilm; }
    void SetCurrentFilm(IFilm* film);
    void SelectFilmByIndex(int index);
    /// Index of the new film, -1 without level data or a free slot.
    int CreateFilm();
    void DeleteFilm(IFilm* film);
    /// Seconds; negative and NaN give 0. Tells the scenario window unless the call comes from it.
    void SetTime(float time, bool fromWindow);
    /// Poses the film and the views; does not touch currentTime.
    void SetFrame(float time, float previous);
    /// Seconds, rounded to a frame. With a rate of 0, cut to whole seconds.
    double SnapToFrame(float time) const;
    /// Name of the camera that the film shows at a time, empty if none; `key` may be null.
    void GetCameraNameAtTime(std::string& name, float time, IFilmKey** key) const;
    /// Blocks until the film stops. The argument plays no part: playing starts at currentTime.
    void Play(float startTime);
    void StopPlaying();
    bool ValidateFilm(IFilm* film);
    void ResetFilmViewSettings(int index);
    void SetFilmViewSettings(int index, const FilmViewSettings& update);

    // Commands, menus, windows.
    static Word CommandIdFromResource(Word resourceId, PluginCommandId plugin);
    Word CommandIdFromResource(Word resourceId) const { return CommandIdFromResource(resourceId, pluginId); }
    void SetCommandCheck(Word localCommand, bool checked);
    void EnableCommandRange(Word first, Word last, bool enabled);
    void ShowPanel(bool show);
    void SetAnimateObjects(bool animate);
    void SetVisualizedTrack(CFilmTrack* track);
    /// Made on first call; null while no maker is installed.
    IKeyAttributesDlg* GetKeyAttributesDlg();
    /// A key's record was written elsewhere: a window that shows it, seen or hidden, reads it anew.
    void TellKeyWritten(const IFilmKey* record) const;
    /// Before a command that may make the rows anew: what was typed in the attributes window is kept. May ask
    /// the user.
    void ApplyPendingEdits() const;
    IMainCtrl* GetMainCtrl() const { return scenarioDlg != nullptr ? scenarioDlg->GetMainCtrl() : nullptr; }
    void AttachView(int viewNumber);
    void DetachView(int viewNumber);
    void AttachContextObject();
    bool CanAttachWithoutCycle(IFilm* film, EditorObject* object, EditorObject* actor) const;

    // Actors and tracks.
    void AddSelectedActors();
    void AddActors(const ObjectList& objects);
    bool AddLightTrack(EditorObject* object);
    bool AddSunTrack(IFilm* film);
    void RemoveActors(IFilm* film, const ObjectList* objects, bool lightsOnly);
    bool DeleteLightOfTrack(CFilmTrack* track);
    void OnObjectsMoved(const ObjectList& objects);
    void RecordTransformKeys(EditorObject* object, IFilm* film, float time, const float* newMatrix,
                             const float* oldMatrix);
    void CreateCameraFrame(CFilmTrack* track, float time, int viewNumber);
    EditorObject* FindObjectByTrack(CFilmTrack* track) const;
    CFilmTrack* FindTrackOfObject(IFilm* film, EditorObject* object) const;
    static CPluginFilmsParams* GetParams(EditorObject* object);

    // Matrices outside of films.
    void AddObjectMatrix(EditorObject* object);
    void RefreshMatrices(const ObjectList* objects);
    void RestoreMatrices();
    void RestoreOneMatrix(EditorObject* object);
    void RebuildMatrices();
    /// With no record the user is warned and the identity is given.
    const float* GetStoredMatrix(EditorObject* object) const;

    // Virtual objects and level chunks.
    void ConvertToVirtualObjects(const ObjectList* objects);
    void ConvertToNormalObjects(const ObjectList* objects);
    void RemoveVirtualRecord(const EditorObject* object);
    void RefreshVirtualNames();
    void CollectHiddenObjects(HiddenObjectsRequest* request);
    void WriteValidationFile(const EditorObject& root) const;
    /// Copies the store unless its first record is known already; the argument stays the caller's.
    void AddCameraParams(const CPluginFilmsParams& params);
    void DeleteMovieParams(IFilm* film);

    IScenarioWindow* scenarioDlg = nullptr; ///< may be null; destroys itself
    IEditor* editor = nullptr;              ///< the three host pointers are null after event 11
    IEditorView* view = nullptr;
    ILevel* level = nullptr;
    PluginCommandId pluginId; ///< local number 0
    CToolBarReg toolbar;
    CFilmsLightHelperMgr lightHelpers;
    const EditorClassDescriptor* glLightClass = nullptr;
    const EditorClassDescriptor* dynLightClass = nullptr;
    IFilm* suspendedFilm = nullptr; ///< the three are kept by event 19 for event 13
    float suspendedTime = 0.0f;
    std::uint8_t suspendedPlaying = 0;
    IFilm* currentFilm = nullptr;
    std::uint8_t isPlaying = 0; ///< 1 while the timing loop runs
    float currentTime = 0.0f;   ///< seconds, never negative
    float playOrigin = 0.0f;    ///< clock milliseconds at film time 0; float32 by design of the timing loop
    std::array<FilmViewSettings, IFilmManager::kFilms> filmViewSettings;
    std::uint8_t animateObjects = 0;
    int framesPerSecond = 0; ///< 0 until the first new level, then 30
    EditorObject* contextObject = nullptr;
    std::unique_ptr<IKeyAttributesDlg> keyAttributesDlg;
    ObjectMatrixRecords objectMatrices;
    CMenu filmsMenu;
    std::list<int> attachedViews;
    CPluginFilmsParams levelParams;
    std::list<CPluginFilmsParams> cameraParams;
    std::list<VirtualObjectRecord> virtualObjects;
    CTrackVisualizator trackVisualizer;
    CCameraHelpersController cameraHelpers;

    /// Makers of windows that are made on first use; null where there is no such window.
    IScenarioWindow* (*makeScenarioWindow)() = nullptr;
    std::unique_ptr<IKeyAttributesDlg> (*makeKeyAttributesDlg)() = nullptr;

private:
    friend class PluginImplTest;

    using ObjectSet = std::unordered_set<const EditorObject*>;

    std::vector<MovedObjects*> movesUnderWay; ///< one inside the other
    int playDepth = 0;                        ///< timing loops that run inside each other

    void OnObjectsCreated();
    void OnObjectsDeleted();
    void OnSelectionChanged();
    void OnLevelLoaded();
    void OnSuspend();
    void OnResume();
    void ClearLevelState();
    void LeaveFilm();
    void RewindTime();
    void RefreshMoviesPanel();
    void PoseAllTracks();
    void PoseForOpening();
    void CopyCameraToViews();
    void StartTiming();
    bool PumpMessages();
    bool AdvancePlaying();
    void RebuildWindow();
    void RestoreRecord(const ObjectMatrixRecord& record);
    void ForgetDeletedObject(EditorObject* object, const ObjectSet& deleted);
    void RecordChildren(EditorObject* object, const ObjectSet& deleted);
    bool CanBecomeActor(EditorObject* object, bool isVirtual) const;
    void AddActor(EditorObject* object);
    void RemoveActor(IFilm* film, EditorObject* object, bool lightsOnly);
    void MoveObject(MovedObject& move);
    bool InsertObjectMenuItem(CMenu* menu, int popupItem, const std::string& text);
    bool OfferLinkObject(CMenu* menu, EditorObject* object);
    bool OfferAttachObject(CMenu* menu, EditorObject* object);
    void LoadToolbarAndMenu();
    void FindLightClasses();
    void MakeLightParams(EditorObject* object);
    void ConvertToVirtual(EditorObject* object, const ObjectList& others);
    void TellClassesChanged();
    void UpdateAttachButton();
    bool AddLightKeys(const IFilm& film, CFilmTrack* track, EditorObject* object, bool positionOnly);
    IFilmKey* AddKey(CFilmTrack* track, int kind, float time, const void* value);
    void SaveRootChunks(fs::file& file, EditorObject* root);
    void SaveVirtualActors(fs::file& file, IFilmManager* manager);
    void LoadViewSettings(fs::file& file, std::uint32_t size);
    void LoadTrackParams(fs::file& file, std::uint32_t size);
    void LoadObjectParams(IHostObject* object, fs::file& file, bool newForm, std::uint32_t size);
    void LoadVirtualObjects(IHostObject* object, fs::file& file, bool withClassNames, std::uint32_t size);
};

/// The plug-in object of this library: the one that was made last and still lives.
IPluginImpl& GetPlugin();
