#pragma once

#include "host/stage/windows/films/PanelHand.h"
#include "host/stage/windows/films/TimelineHand.h"

#include "host/engine/Math.h"
#include "plugin/contract/Types.h"

#include <optional>
#include <QList>
#include <string>

class CFilmTrack;
class EditorObject;
class IFilm;
class QAction;

namespace engine {
class Film;
class FilmManager;
} // namespace engine

namespace stage {

class MainWindow;

/// What Stage's menu "Films" does with films. It works the plug-in's panel and timeline as a user does, and
/// writes names, tracks and keys by the contract. Tracks of a film are written while it is closed; then it is
/// opened anew at the cursor.
class FilmCommands {
public:
    /// The window must outlive this object.
    explicit FilmCommands(MainWindow& mainWindow);

    void New();
    void Rename();
    /// A copy of the open film under another name, which is opened.
    void Duplicate();
    /// Takes the open film away; undo brings it back.
    void Delete();
    /// A camera in the open film whose first keys stand where the active view looks from.
    void AddCamera();
    /// The same where the selected camera of the level looks from, or along any other object.
    void AddCameraFromObject();
    /// The menu of a film, from now on in the list of the panel that is open.
    void AttachMenu(const QList<QAction*>& actions);
    /// A key of this kind for the selected actor at the cursor, with what the user chooses for it.
    void AddKey(int kind);

private:
    /// What the user has chosen for a new key.
    struct Content {
        std::string name;
        Vector3 color;
    };

    /// A place and a lens to make a camera with.
    struct Shot {
        engine::Matrix4 camera; ///< in the world, row 2 backwards
        float fieldOfView;      ///< radians, vertical
    };

    engine::FilmManager* Manager() const;
    /// Runs the plug-in's command, which takes what the active view sees, or the shot in its place.
    void MakeCamera(const std::optional<Shot>& shot);
    std::optional<Shot> ShotOfSelected() const;
    /// Opens the film of a line of the list, if it isn't.
    void OpenLine(int line);
    engine::Film* Shown() const;
    std::optional<Content> Choose(int kind, EditorObject* object) const;
    void ShowFromStart(engine::Film& film, const std::string& camera);
    bool Reopen(const IFilm& film, float seconds);
    void Report(const std::string& text) const;

    MainWindow& window;
    TimelineHand timeline;
    PanelHand panel;
};

/// Whether a new key of the kind may begin at a time, and until when it may last then, in seconds.
std::optional<float> RoomForKey(const CFilmTrack& track, int kind, float time);
/// Of the film's tracks the one that plays the object or lights by it; null for none.
CFilmTrack* TrackOfObject(const IFilm& film, const EditorObject* object);

} // namespace stage
