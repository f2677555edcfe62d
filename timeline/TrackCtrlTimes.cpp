#include "timeline/TrackCtrl.h"

float CTrackCtrl::SnapTime(CTrackKey* /*key*/, float /*ref*/, bool /*forward*/, bool /*free*/) const {
    return rangeStart - 1.0f;
}

void CTrackCtrl::GetKeyLimits(const CTrackKey* /*key*/, float& /*lo*/, float& /*hi*/) const {
}

CTrackKey* CTrackCtrl::KeyAtTime(float /*time*/) const {
    return nullptr;
}

bool CTrackCtrl::IsTimeFree(const CTrackKey* /*key*/, float /*time*/) const {
    return false;
}

bool CTrackCtrl::CanPlaceKey(CTrackKey* /*key*/, float /*time*/) const {
    return false;
}

bool CTrackCtrl::FitTimedKey(CTrackKey* /*key*/, float /*time*/, float& /*start*/, float& /*duration*/,
                             float /*oldDuration*/) const {
    return false;
}
