#pragma once

#include "files/base/ToolBarReg.h"
#include "framework/Menu.h"
#include "helpers/CameraHelpersController.h"
#include "helpers/FilmsLightHelperMgr.h"
#include "helpers/TrackVisualizator.h"
#include "plugin/contract/EventCodes.h"
#include "plugin/contract/Plugin.h"
#include "plugin/parts/ActorList.h"
#include "plugin/parts/AttachedViews.h"
#include "plugin/parts/CameraFrame.h"
#include "plugin/parts/CommandBar.h"
#include "plugin/parts/CommandTable.h"
#include "plugin/parts/ContextMenus.h"
#include "plugin/parts/FilmValidation.h"
#include "plugin/parts/LevelChunks.h"
#include "plugin/parts/LightActors.h"
#include "plugin/parts/MovieParams.h"
#include "plugin/parts/ObjectMatrices.h"
#include "plugin/parts/ObjectMoves.h"
#include "plugin/parts/ObjectUses.h"
#include "plugin/parts/Player.h"
#include "plugin/parts/VirtualObjects.h"
#include "plugin/rules/ActorParents.h"
#include "plugin/rules/ObjectMatrixRecords.h"
#include "plugin/session/FilmSession.h"

#include <list>
#include <memory>
#include <string>

struct CRuntimeClass;

/// The one object that ties the library together: it says what happens at the host's commands and events, and
/// how films are opened and posed. Each other subject is a part of it, with a header of its own, to which the
/// operations go on; the parts see the session and those parts that they are made with, never this object.
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
    bool CanDeleteObjects(const ObjectList* objects, std::list<DeleteMessage>* messages) override {
        return ::CanDeleteObjects(*this, objects, messages);
    }
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
    bool OnObjectMenu(CMenu* menu, Word, Word, EditorObject* object) override {
        return menus.OfferForObject(menu, object);
    }
    bool OnViewMenu(CMenu* menu) override { return menus.OfferForView(menu); }
    void OnEvent(int code, void* data) override;
    void OnViewRequest(int code, Word, void* data, bool* result) override;
    bool SaveChunks(fs::file& file, IHostObject* object) override { return chunks.Save(file, object); }
    bool LoadChunk(IHostObject* object, fs::file& file, std::uint16_t chunkId, std::uint32_t size) override {
        return chunks.Load(object, file, chunkId, size);
    }
    bool IsOwnChunk(Word, std::uint16_t chunkId) override { return LevelChunks::IsOwn(chunkId); }
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
    void SetTime(float time, bool fromWindow) override;
    void SetFrame(float time, float previous) override;
    /// Name of the camera that the film shows at a time, empty if none; `key` may be null.
    void GetCameraNameAtTime(std::string& name, float time, IFilmKey** key) const;
    /// Blocks until the film stops. The argument plays no part: playing starts at currentTime.
    void Play(float /*startTime*/) { player.Play(); }
    void StopPlaying() { player.Stop(); }
    bool ValidateFilm(IFilm* film) { return ::ValidateFilm(film); }
    void ResetFilmViewSettings(int index);
    void SetFilmViewSettings(int index, const FilmViewSettings& update);

    // Commands, menus, windows.
    Word CommandIdFromResource(Word resourceId) const {
        return ::CommandIdFromResource(resourceId, pluginId);
    }
    void SetCommandCheck(Word localCommand, bool checked) { commandBar.SetCheck(localCommand, checked); }
    void EnableCommandRange(Word first, Word last, bool enabled) {
        commandBar.EnableRange(first, last, enabled);
    }
    void ShowPanel(bool show);
    void SetAnimateObjects(bool animate);
    CFilmTrack* GetVisualizedTrack() const override { return trackVisualizer.renderTrack; }
    void SetVisualizedTrack(CFilmTrack* track) override;
    /// Made on first call; null while no maker is installed.
    IKeyAttributesDlg* GetKeyAttributesDlg();
    void AttachView(int viewNumber) { views.Attach(viewNumber); }
    void DetachView(int viewNumber) { views.Detach(viewNumber); }
    void AttachContextObject() { menus.AttachContextObject(); }
    static bool CanAttachWithoutCycle(IFilm* film, EditorObject* object, EditorObject* actor) {
        return ::CanAttachWithoutCycle(film, object, actor);
    }

    // Actors and tracks.
    void AddSelectedActors() { actors.AddSelected(); }
    void AddActors(const ObjectList& objects) { actors.Add(objects); }
    bool AddLightTrack(EditorObject* object) { return lightActors.AddTrack(object); }
    bool AddSunTrack(IFilm* film) { return lightActors.AddSunTrack(film); }
    void RemoveActors(IFilm* film, const ObjectList* objects, bool lightsOnly) {
        actors.Remove(film, objects, lightsOnly);
    }
    bool DeleteLightOfTrack(CFilmTrack* track) { return lightActors.DeleteLightOf(track); }
    void OnObjectsMoved(const ObjectList& objects) { moves.OnMoved(objects); }
    void RecordTransformKeys(EditorObject* object, IFilm* film, float time, const float* newMatrix,
                             const float* oldMatrix);
    void CreateCameraFrame(CFilmTrack* track, float time, int viewNumber) {
        ::CreateCameraFrame(*this, track, time, viewNumber);
    }
    EditorObject* FindObjectByTrack(CFilmTrack* track) const override { return actors.FindObjectOf(track); }
    const CFilmsLightHelper* FindLightByTrack(CFilmTrack* track) const override {
        return lightHelpers.FindByTrack(track);
    }
    CFilmTrack* FindTrackOfObject(IFilm* film, EditorObject* object) const {
        return actors.FindTrackOf(film, object);
    }

    // Matrices outside of films.
    void AddObjectMatrix(EditorObject* object) { matrices.Add(object); }
    void RefreshMatrices(const ObjectList* objects) { matrices.Refresh(objects); }
    void RestoreMatrices() { matrices.Restore(); }
    void RestoreOneMatrix(EditorObject* object) { matrices.RestoreOne(object); }
    void RebuildMatrices() { matrices.Rebuild(); }
    /// With no record the user is warned and the identity is given.
    const float* GetStoredMatrix(EditorObject* object) const { return matrices.Get(object); }

    // Virtual objects and level chunks.
    void ConvertToVirtualObjects(const ObjectList* objects) { virtuals.ConvertToVirtual(objects); }
    void ConvertToNormalObjects(const ObjectList* objects) { virtuals.ConvertToNormal(objects); }
    void RemoveVirtualRecord(const EditorObject* object) { virtuals.RemoveRecord(object); }
    void RefreshVirtualNames() { virtuals.RefreshNames(); }
    void CollectHiddenObjects(HiddenObjectsRequest* request);
    void WriteValidationFile(const EditorObject& root) const { ::WriteValidationFile(*this, root); }
    /// Copies the store unless its first record is known already; the argument stays the caller's.
    void AddCameraParams(const CPluginFilmsParams& params) { ::AddCameraParams(*this, params); }
    void DeleteMovieParams(IFilm* film) { ::DeleteMovieParams(*this, film); }

    CToolBarReg toolbar;
    CFilmsLightHelperMgr lightHelpers{*this};
    IFilm* suspendedFilm = nullptr; ///< the three are kept by event 19 for event 13
    float suspendedTime = 0.0f;
    std::uint8_t suspendedPlaying = 0;
    float playOrigin = 0.0f; ///< clock milliseconds at film time 0; float32 by design of the timing loop
    EditorObject* contextObject = nullptr;
    ObjectMatrixRecords objectMatrices;
    CMenu filmsMenu;
    std::list<int> attachedViews;
    VirtualObjectRecords virtualObjects;
    CTrackVisualizator trackVisualizer{*this};
    CCameraHelpersController cameraHelpers{*this};

    /// Makers of windows that are made on first use; null where there is no such window.
    IScenarioWindow* (*makeScenarioWindow)(IPluginImpl& plugin) = nullptr;
    std::unique_ptr<IKeyAttributesDlg> (*makeKeyAttributesDlg)(IPluginImpl& plugin) = nullptr;
    /// The panel's class, by which the host makes it, and the panel that lives; null where there is none.
    const CRuntimeClass* panelClass = nullptr;
    IFilmsPanel* (*findPanel)() = nullptr;

private:
    void OnObjectsCreated();
    void OnObjectsDeleted();
    void OnSelectionChanged();
    void OnLevelLoaded();
    void OnSuspend();
    void OnResume();
    void ClearLevelState();
    void LeaveFilm();
    void RewindTime();
    IFilmsPanel* FindPanel() const;
    void RefreshMoviesPanel();
    void PoseAllTracks();
    void PoseForOpening();
    void ForgetDeletedObject(EditorObject* object, const ObjectMatrices::ObjectSet& deleted);
    void FindLightClasses();

    ObjectMatrices matrices{*this, objectMatrices};
    VirtualObjects virtuals{*this, virtualObjects};
    ActorList actors{*this, lightHelpers, matrices};
    LightActors lightActors{*this, lightHelpers, matrices};
    ObjectMoves moves{*this, objectMatrices, actors, cameraHelpers,
                      [this](EditorObject* object, const float* userMatrix, const float* matrixBefore) {
                          RecordTransformKeys(object, currentFilm, currentTime, userMatrix, matrixBefore);
                      }};
    AttachedViews views{*this, attachedViews};
    Player player{*this, playOrigin};
    LevelChunks chunks{*this, lightHelpers, virtualObjects};
    CommandBar commandBar{*this, toolbar};
    ContextMenus menus{*this, filmsMenu, contextObject, views};
};

/// The plug-in object of this library: the one that was made last and still lives.
IPluginImpl& GetPlugin();
