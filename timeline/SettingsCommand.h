#pragma once

class CFilmsMainCtrl;

/// "Settings": the time axis, what is shown of it and the tics of the ruler, now and when the film is shown
/// again. Asks; the control may be gone behind it.
void EditSettings(CFilmsMainCtrl& control);
