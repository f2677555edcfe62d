#pragma once

class CFilmsMainCtrl;

// The position or rotation keys of the track under the menu in a file of their own. Ask for the file; the
// control may be gone behind them. A file that can't be opened is told to the user; what fails behind that
// throws fs::file_exception.

void ExportTrack(CFilmsMainCtrl& control);
/// The film is shown anew, also when it throws.
void ImportTrack(CFilmsMainCtrl& control);
