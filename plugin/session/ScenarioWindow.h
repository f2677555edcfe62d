#pragma once

#include "plugin/contract/Film.h"

#include <string>

class CTrackKey;
class TimelineContext;

/// The modeless dialog that attaches an actor to a parent object.
class IAttachDialog {
public:
    virtual ~IAttachDialog() = default;
    virtual bool IsVisible() const = 0;
    /// Null when its track is not in the current film any more.
    virtual CFilmTrack* GetTrack() const = 0;
    virtual void SetObject(EditorObject* object) = 0;
    /// An object that is about to be deleted.
    virtual void ForgetObject(const EditorObject* object) = 0;
};

/// The main control of the scenario window, as the plug-in object sees it.
class IMainCtrl {
public:
    virtual ~IMainCtrl() = default;
    virtual void Invalidate() = 0;
    /// True while the next selection becomes the actor of a track.
    virtual bool IsChangingActor() const = 0;
    /// Takes the level's selection as the new actor.
    virtual bool ChangeActor() = 0;
    virtual void ClearUndo() = 0;
    /// For a new level: back to the key parameters of the data folder, and "Change actor" ends.
    virtual void Reset() = 0;
    virtual void ShowFilm(IFilm* film, bool flag) = 0;
    /// A track that is about to be deleted: no row and no view looks at it any more.
    virtual void ForgetTrack(const CFilmTrack* track) = 0;
    /// Writes position, rotation and scale keys on the object's rows from its new and old matrix.
    virtual void RecordObjectKeys(EditorObject* object, float time, const float* newMatrix,
                                  const float* oldMatrix) = 0;
    /// Null until it was first shown.
    virtual IAttachDialog* GetAttachDialog() = 0;
    /// The face for key views; null where there are no rows.
    virtual TimelineContext* GetTimeline() = 0;
};

/// The scenario window, as the plug-in object sees it. It destroys itself; the plug-in object only
/// points at it.
class IScenarioWindow {
public:
    virtual ~IScenarioWindow() = default;
    virtual bool IsEnabled() const = 0;
    virtual bool IsVisible() const = 0;
    virtual void Show() = 0;
    /// Rebuilds for the plug-in object's current film.
    virtual void ShowCurrentFilm() = 0;
    /// Moves the cursor; seconds.
    virtual void SetTime(float time) = 0;
    virtual void PressButton(unsigned id, bool pressed) = 0;
    virtual void UpdateAttachButton() = 0;
    /// Null before the window's controls are made and after they are gone.
    virtual IMainCtrl* GetMainCtrl() = 0;
};

/// The panel in the host, as the plug-in object sees it. The host makes and destroys it.
class IFilmsPanel {
public:
    virtual ~IFilmsPanel() = default;
    /// The list of films changed.
    virtual void RefreshMovies() = 0;
};

/// The key attributes window, as the plug-in object sees it. Owned by the plug-in object.
class IKeyAttributesDlg {
public:
    virtual ~IKeyAttributesDlg() = default;
    /// False if the row that is edited can't take this object; otherwise the text of the menu item.
    virtual bool GetLinkObjectText(const EditorObject* object, std::string& text) const = 0;
    virtual void SetLinkObject(EditorObject* object) = 0;
    virtual bool IsVisible() const = 0;
    virtual void Hide() = 0;
    virtual void Show(int command) = 0;
    /// Takes a key in, or with `refresh` only reads the present one anew.
    virtual void SetKey(CTrackKey* key, bool refresh) = 0;
    /// The record that the window shows, or null.
    virtual IFilmKey* GetRecord() const = 0;
    /// The view that the window shows, or null.
    virtual CTrackKey* GetKey() const = 0;
    /// Lets go of its key without writing to it; the window is empty.
    virtual void Reset() = 0;
    /// Writes what the user edited and what waits for another key to be shown. May ask the user.
    virtual void ApplyPending() = 0;
    virtual void Destroy() = 0;

    bool locked = false; ///< a double click on a key doesn't open the window
};
