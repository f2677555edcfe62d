// Time that is put in, taken out and stretched, and the frame by its number.
#include "timeline/FilmsMainCtrl.h"

void CFilmsMainCtrl::OnMenuSetMovieFrame() {
}

void CFilmsMainCtrl::OnMenuAdjustTime() {
}

void CFilmsMainCtrl::StretchTime(float /*time*/, float /*from*/, float /*to*/) {
}

void CFilmsMainCtrl::InsertTime(float /*time*/, float /*length*/) {
}
