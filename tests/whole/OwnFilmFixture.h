#pragma once

#include "tests/whole/StageFixture.h"

/// A film of its own in the scenario window, ten seconds long, with the actor "Fishing boat" that stays where
/// it stands. Menus are opened with the right mouse button.
class OwnFilmTest : public StageTest {
protected:
    void SetUp() override;

    /// Chooses an entry of the menu of the actor's row.
    void ChooseOfRow(const char* entry);
    /// Chooses an entry of the menu of the scenario window, which comes where no row is.
    void ChooseOfFilm(const char* entry);
    /// Chooses the entry that begins like this in the menu of the object in the first view.
    void ChooseOfObject(engine::SceneObject& object, const std::string& begin);
    /// A left click on the object in the first view.
    void ClickInView(engine::SceneObject& object);
    /// A command of the scenario window's bar, by its number.
    void Send(UINT id);
    /// Steps to a time with the window's buttons.
    void GoTo(int frames);
    IFilmKey* AddKey(CFilmTrack& to, int kind, float seconds, const void* value);
    /// A mesh object in the air, where nothing stands in front, with the first view turned to it.
    engine::SceneObject& MakeInTheAir(const std::string& name, float x);
    CFilmObjectTrack* Track() const { return AsObjectTrack(film->FindObjectTrack(boat)); }

    IFilm* film = nullptr;
    engine::SceneObject* boat = nullptr;

private:
    void ChooseWith(QWidget& widget, const QPoint& place, const std::string& begin);
};
