#pragma once

class CFilmsMainCtrl;

// The commands of the menu of a key. Those that ask, and those that write a key which the attributes window
// shows, may let the control go.

/// Out of its row; with undo.
void RemoveKey(CFilmsMainCtrl& control);
/// Asks for the second at which it starts.
void MoveKey(CFilmsMainCtrl& control);
/// Asks for its length in seconds.
void SetKeyDuration(CFilmsMainCtrl& control);
/// As long as what it plays, where there is room.
void TakeNaturalDuration(CFilmsMainCtrl& control);
void CopyAttributes(CFilmsMainCtrl& control);
/// Into the key, which the attributes window then shows.
void PasteAttributes(CFilmsMainCtrl& control);
/// A Bezier method, before the key or behind it.
void ChangeBezierMethod(CFilmsMainCtrl& control, bool in, int method);
