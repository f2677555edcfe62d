#pragma once

#include "plugin/contract/Editor.h"
#include "plugin/contract/EditorObject.h"
#include "plugin/contract/EditorView.h"
#include "plugin/contract/Film.h"
#include "plugin/contract/FilmManager.h"
#include "plugin/contract/Level.h"
#include "plugin/rules/FilmViewSettings.h"
#include "plugin/rules/PluginFilmsParams.h"
#include "plugin/session/ScenarioWindow.h"

#include <array>
#include <cstdint>
#include <list>
#include <memory>

class CFilmsLightHelper;

/// What is open: the host, its level, the film, the time and the windows that show them, and what rows, key
/// views, helpers and dialogs ask about it. In the library the plug-in object is the only one; it is handed
/// to whoever needs it and outlives them all.
class FilmSession {
public:
    static constexpr int kPluginKind = 6;
    static constexpr int kFramesPerSecond = 30;
    /// A previous time that fires no keys.
    static constexpr float kNoPrevious = -1.0f;

    FilmSession(const FilmSession&) = delete;
    FilmSession& operator=(const FilmSession&) = delete;

    // The level.
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
    /// Another number for each level: counts the levels that were left or opened.
    unsigned GetLevelNumber() const { return levelNumber; }
    /// Whether the object's class derives from a class name, by the host's class database.
    bool ObjectDerivesFrom(EditorObject* object, const char* className) const;
    /// Whether the object is a light, which films set by a track of its own kind.
    bool IsLight(EditorObject* object) const;
    /// The store of track parameters on an object, or null.
    static CPluginFilmsParams* GetParams(EditorObject* object);

    // The film and its time.
    IFilm* GetCurrentFilm() const { return currentFilm; }
    /// Seconds, rounded to a frame. With a rate of 0, cut to whole seconds.
    double SnapToFrame(float time) const;
    /// Seconds; negative and NaN give 0. Tells the scenario window unless the call comes from it.
    virtual void SetTime(float time, bool fromWindow) = 0;
    /// Poses the film and the views; does not touch currentTime.
    virtual void SetFrame(float time, float previous) = 0;
    /// The object that the track moves, null for none.
    virtual EditorObject* FindObjectByTrack(CFilmTrack* track) const = 0;
    /// The light that the track drives, null for none.
    virtual const CFilmsLightHelper* FindLightByTrack(CFilmTrack* track) const = 0;
    /// The camera track whose path the views draw, or null.
    virtual CFilmTrack* GetVisualizedTrack() const = 0;
    virtual void SetVisualizedTrack(CFilmTrack* track) = 0;

    // The windows.
    /// A key's record was written elsewhere: a window that shows it, seen or hidden, reads it anew.
    void TellKeyWritten(const IFilmKey* record) const;
    /// Before a command that may make the rows anew: what was typed in the attributes window is kept. May ask
    /// the user.
    void ApplyPendingEdits() const;
    /// The scenario window shows the open film anew.
    void RebuildWindow() const {
        if (scenarioDlg != nullptr) {
            scenarioDlg->ShowCurrentFilm();
        }
    }
    IMainCtrl* GetMainCtrl() const { return scenarioDlg != nullptr ? scenarioDlg->GetMainCtrl() : nullptr; }

    IScenarioWindow* scenarioDlg = nullptr; ///< may be null; destroys itself
    IEditor* editor = nullptr;              ///< the three host pointers are null after event 11
    IEditorView* view = nullptr;
    ILevel* level = nullptr;
    PluginCommandId pluginId; ///< local number 0
    IFilm* currentFilm = nullptr;
    std::uint8_t isPlaying = 0;      ///< 1 while the timing loop runs
    float currentTime = 0.0f;        ///< seconds, never negative
    std::uint8_t animateObjects = 0; ///< 1: moves of objects become keys
    int framesPerSecond = 0;         ///< 0 until the first new level, then 30
    std::array<FilmViewSettings, IFilmManager::kFilms> filmViewSettings;
    std::unique_ptr<IKeyAttributesDlg> keyAttributesDlg;
    CPluginFilmsParams levelParams;
    std::list<CPluginFilmsParams> cameraParams;
    const EditorClassDescriptor* glLightClass = nullptr;
    const EditorClassDescriptor* dynLightClass = nullptr;

protected:
    FilmSession() = default;
    ~FilmSession() = default;

    /// A level has been left or opened.
    void LevelChanges() { ++levelNumber; }

private:
    unsigned levelNumber = 0;
};
