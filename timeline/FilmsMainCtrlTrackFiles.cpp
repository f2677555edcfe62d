// "Export" and "Import": the position or rotation keys of a track in a file of their own.
#include "timeline/FilmsMainCtrl.h"

void CFilmsMainCtrl::OnMenuExportTrack() {
}

void CFilmsMainCtrl::OnMenuImportTrack() {
}
