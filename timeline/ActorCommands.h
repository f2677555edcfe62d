#pragma once

class CFilmsMainCtrl;

// The commands for actors in the menus of the timeline. The control may be gone behind each.

void RemoveSelectedActors(CFilmsMainCtrl& control);
/// The track of the row under the menu, but for the level's.
void RemoveActorOfRow(CFilmsMainCtrl& control);
/// From here on the next selection in the level becomes the actor of the track under the menu.
void AskForNewActor(CFilmsMainCtrl& control);
/// The one object that is selected becomes the actor. False after the user was told why it can't.
bool TakeNewActor(CFilmsMainCtrl& control);
/// Opens the window that gives the actor's track under the menu its parent.
void AttachActor(CFilmsMainCtrl& control);
