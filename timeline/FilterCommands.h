#pragma once

class CFilmsMainCtrl;

// The commands that choose which rows and keys are shown, and how. The control may be gone behind the two
// that ask.

void HideRow(CFilmsMainCtrl& control);
void FilterRows(CFilmsMainCtrl& control);
/// Of the root row under the menu, or of all root rows.
void FilterKeys(CFilmsMainCtrl& control);
