#include "keys/views/NullTimeTrackKey.h"
#include "timeline/rows/TrackCtrl.h"

#include <algorithm>
#include <cmath>
#include <typeinfo>

namespace {

/// So many keys are tested before the index is asked.
constexpr std::size_t kTriedFirst = 200;

} // namespace

int CTrackCtrl::widestHit = CNullTimeTrackKey().width;

CTrackKey* CTrackCtrl::GetKeyAt(CPoint point) const {
    const CRect client = ClientRect();
    const int nameWidth = GetLeftWidth();
    const int width = client.right - nameWidth - client.left;
    if (viewEnd == viewStart || client.IsRectEmpty() || width == 0) {
        return nullptr;
    }
    // Required: no limit to the left, so a key that starts before the view is hit through the name cell.
    const auto secondsPerPixel = static_cast<float>((static_cast<double>(viewEnd) - viewStart) / width);
    const auto time =
        static_cast<float>(static_cast<double>(point.x - nameWidth) * secondsPerPixel + viewStart);
    const int y = point.y - client.top;

    const auto isHit = [&](const CTrackKey* key) {
        const int top = GetKeyTop(key, client);
        return key->state != CTrackKey::kHidden && top != -1 && y >= top && y <= top + key->rectHeight &&
               key->HitTime(time, secondsPerPixel);
    };
    // From the end: the last one hit is drawn on top. Where keys lie closely it is soon found, so that the
    // index is only asked where they don't.
    const std::size_t tried = std::min(keys.size(), kTriedFirst);
    for (std::size_t i = keys.size(); i > keys.size() - tried; --i) {
        if (isHit(keys[i - 1])) {
            return keys[i - 1];
        }
    }
    if (tried == keys.size()) {
        return nullptr;
    }
    static std::vector<CTrackKey*> candidates; // kept between calls, so that a mouse move makes no memory
    if (!FindCandidates(time, secondsPerPixel, candidates)) {
        candidates.assign(keys.begin(), keys.end());
    }
    const auto hit = std::find_if(candidates.rbegin(), candidates.rend(), isHit);
    return hit != candidates.rend() ? *hit : nullptr;
}

/// All keys that a test at this time can hit, in draw order. False if there is no telling.
bool CTrackCtrl::FindCandidates(float time, float secondsPerPixel, std::vector<CTrackKey*>& found) const {
    // Times are float: what rounding can move is far less than this part of a number.
    constexpr double kSlack = 1e-6;
    const int halfWidth = widestHit / 2; // whole pixels
    const double reach = static_cast<double>(halfWidth) * secondsPerPixel;
    if (!(secondsPerPixel > 0.0f) || !std::isfinite(reach) || !std::isfinite(time)) {
        return false;
    }
    const double margin = reach + (std::fabs(time) + reach) * kSlack;
    keys.Overlapping(static_cast<float>(time - margin), static_cast<float>(time + margin), found);
    return true;
}

CTrackKey* CTrackCtrl::FindKeyView(const CTrackKey* view, bool byValue) const {
    if (view == nullptr) {
        return nullptr;
    }
    const auto found = std::ranges::find_if(keys, [view, byValue](const CTrackKey* key) {
        // Views of different classes can't be compared.
        return byValue ? typeid(*view) == typeid(*key) && view->Equals(key, /*compareTime*/ true)
                       : key == view;
    });
    return found != keys.end() ? *found : nullptr;
}
