#pragma once

#include "files/ToolBarReg.h"
#include "framework/Menu.h"
#include "helpers/CameraHelpersController.h"
#include "helpers/FilmsLightHelperMgr.h"
#include "helpers/TrackVisualizator.h"
#include "plugin/contract/EventCodes.h"
#include "plugin/contract/Plugin.h"
#include "plugin/FilmSession.h"
#include "plugin/ObjectMatrixRecords.h"

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
class IPluginImpl final : public IPlugin, public FilmSession {
public:
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

    // Films and time.
    void SetCurrentFilm(IFilm* film);
    void SelectFilmByIndex(int index);
    /// Index of the new film, -1 without level data or a free slot.
    int CreateFilm();
    void DeleteFilm(IFilm* film);
    /// Seconds; negative and NaN give 0. Tells the scenario window unless the call comes from it.
    void SetTime(float time, bool fromWindow);
    void SetFrame(float time, float previous) override;
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
    CFilmTrack* GetVisualizedTrack() const override { return trackVisualizer.renderTrack; }
    void SetVisualizedTrack(CFilmTrack* track) override;
    /// Made on first call; null while no maker is installed.
    IKeyAttributesDlg* GetKeyAttributesDlg();
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
    EditorObject* FindObjectByTrack(CFilmTrack* track) const override;
    const CFilmsLightHelper* FindLightByTrack(CFilmTrack* track) const override {
        return lightHelpers.FindByTrack(track);
    }
    CFilmTrack* FindTrackOfObject(IFilm* film, EditorObject* object) const;

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

    CToolBarReg toolbar;
    CFilmsLightHelperMgr lightHelpers{*this};
    IFilm* suspendedFilm = nullptr; ///< the three are kept by event 19 for event 13
    float suspendedTime = 0.0f;
    std::uint8_t suspendedPlaying = 0;
    float playOrigin = 0.0f; ///< clock milliseconds at film time 0; float32 by design of the timing loop
    std::uint8_t animateObjects = 0;
    EditorObject* contextObject = nullptr;
    ObjectMatrixRecords objectMatrices;
    CMenu filmsMenu;
    std::list<int> attachedViews;
    std::list<VirtualObjectRecord> virtualObjects;
    CTrackVisualizator trackVisualizer{*this};
    CCameraHelpersController cameraHelpers{*this};

    /// Makers of windows that are made on first use; null where there is no such window.
    IScenarioWindow* (*makeScenarioWindow)(IPluginImpl& plugin) = nullptr;
    std::unique_ptr<IKeyAttributesDlg> (*makeKeyAttributesDlg)(IPluginImpl& plugin) = nullptr;

private:
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
