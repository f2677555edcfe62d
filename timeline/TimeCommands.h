#pragma once

class CFilmsMainCtrl;

// Time that is put in, taken out and stretched, and the frame by its number. Seconds; the control may be gone
// behind each.

/// Asks for the frame that the cursor goes to.
void GoToFrame(CFilmsMainCtrl& control);
/// Opens "Adjust time", which does the rest.
void AskToAdjustTime(CFilmsMainCtrl& control);
/// See StretchTime of the control.
void StretchRows(CFilmsMainCtrl& control, float time, float from, float to);
/// See InsertTime of the control.
void InsertIntoRows(CFilmsMainCtrl& control, float time, float length);
