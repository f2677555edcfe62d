#include "timeline/TrackCtrl.h"

void CTrackCtrl::WriteTransformKeys(float /*time*/, const float* /*newMatrix*/, const float* /*oldMatrix*/) {
}
