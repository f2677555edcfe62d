// The dialogs that choose which rows and keys are shown, and how.
#include "timeline/FilmsMainCtrl.h"

void CFilmsMainCtrl::OnMenuFilterActors() {
}

void CFilmsMainCtrl::OnMenuFilterKeys() {
}
