#pragma once

class CScenarioDlg;

// The commands of the toolbar of the scenario window. The window may be gone behind each: playing pumps
// messages, and edits may ask the user.

void PlayFromCursor(CScenarioDlg& window);
void StopPlaying(CScenarioDlg& window);
void ValidateShownFilm(CScenarioDlg& window);
void ToggleAnimating(CScenarioDlg& window);
/// The active 3D view shows the film's camera, or no more.
void ToggleAttachedView(CScenarioDlg& window);
void MoveToBegin(CScenarioDlg& window);
/// A film that played stays stopped.
void MoveToEnd(CScenarioDlg& window);
/// "Undo" and "Redo" are one command to the manager, which has nothing recorded.
void UndoEdit(CScenarioDlg& window);
void StepFrameBack(CScenarioDlg& window);
void StepFrameForward(CScenarioDlg& window);
void JumpKeyBack(CScenarioDlg& window);
void JumpKeyForward(CScenarioDlg& window);
void CreateCameraFrame(CScenarioDlg& window);
void ToVirtualObject(CScenarioDlg& window);
/// No key is marked any more in the row of the first selected key.
void ClearMarksOfRow(CScenarioDlg& window);
/// Of the first selected key.
void ToggleMark(CScenarioDlg& window);
