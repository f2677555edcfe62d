#pragma once

class CFilmsMainCtrl;

// The commands for cameras in the menus of the timeline.

/// A camera track that begins as the active 3D view stands; asks for its name. The control may be gone behind
/// it, as behind each of these.
void AddCamera(CFilmsMainCtrl& control);
/// A further camera row of the level's root row under the menu; the rows that there are move on by one.
void AddCameraRow(CFilmsMainCtrl& control);
/// "Camera parameters" of the camera under the menu.
void EditCamera(CFilmsMainCtrl& control);
/// "Track parameters" of the camera's row under the menu.
void EditCameraSubtrack(CFilmsMainCtrl& control);
