#include "timeline/TrackCtrl.h"

void CTrackCtrl::AdjustKeys(float /*time*/, float /*from*/, float /*to*/) {
}
