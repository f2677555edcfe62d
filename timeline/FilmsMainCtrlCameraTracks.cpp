// Further camera rows of a film, and the parameters of its cameras.
#include "timeline/FilmsMainCtrl.h"

void CFilmsMainCtrl::OnMenuAddCameraTrack() {
}

void CFilmsMainCtrl::OnMenuCameraParameters() {
}

void CFilmsMainCtrl::OnMenuTrackParameters() {
}
