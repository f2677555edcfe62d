#include "keys/views/TimedTrackKey.h"

#include "framework/Constants.h"
#include "keys/rules/Pixels.h"
#include "keys/views/KeyDrawing.h"
#include "keys/views/KeyViewContext.h"
#include "plugin/contract/FilmManager.h"
#include "plugin/contract/FilmTrack.h"

#include <cmath>

namespace {

/// Shorter keys can't be gripped; a duration up to this is never taken.
constexpr float kMinDuration = 0.001f;
constexpr COLORREF kBlack = 0x000000;
constexpr COLORREF kWhite = 0xFFFFFF;

/// The text inside the key, null for kinds without.
const std::string* LabelOf(const IFilmKey& record) {
    switch (record.kind) {
    case KeyKind::Camera:
        return &static_cast<const CFilmCameraKey&>(record).cameraName;
    case KeyKind::Animation:
        return &static_cast<const CFilmAnimationKey&>(record).animationName;
    case KeyKind::Speech:
        return &static_cast<const CFilmSpeechKey&>(record).speechPath;
    case KeyKind::Sound:
        return &static_cast<const CFilmSoundKey&>(record).wavPath;
    default:
        return nullptr;
    }
}

void DrawLabel(CDC& dc, const std::string& text, const CRect& box) {
    SelectionScope<CFont> font(dc, TimelineFont());
    const int oldMode = dc.SetBkMode(TRANSPARENT);
    dc.DrawText(text, box, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_PATH_ELLIPSIS);
    dc.SetBkMode(oldMode);
}

/// White squares beside the box; one wholly outside the clip is not drawn.
void DrawGrips(CDC& dc, const CRect& box, const CRect* clip) {
    constexpr int kGripDistance = CTimedTrackKey::kGripDistance;
    const int side = box.Height();
    const CRect grips[] = {
        {box.left - kGripDistance - side, box.top, box.left - kGripDistance, box.bottom},
        {box.right + kGripDistance, box.top, box.right + kGripDistance + side, box.bottom}};
    CBrush white(kWhite);
    SelectionScope<CBrush> brush(dc, white);
    for (CRect grip : grips) {
        if (clip == nullptr || grip.IntersectRect(grip, *clip)) {
            dc.Rectangle(grip);
        }
    }
}

} // namespace

void CTimedTrackKey::SetRecord(IFilmKey* newRecord, bool takeTimes) {
    IFilmKey* old = record;
    record = newRecord;
    if (old != nullptr && old != newRecord) {
        DestroyRecord(old);
    }
    if (record != nullptr && takeTimes) {
        time = record->time;
        duration = record->endTime - record->time;
        TimesChanged();
    }
}

/// A record that leaves its view is deleted, and the attributes window lets go of it. One in no track belongs
/// to the factory of the timeline's level.
void CTimedTrackKey::DestroyRecord(IFilmKey* old) {
    IKeyAttributesDlg* dialog = GetAttributesDlg();
    if (dialog != nullptr && dialog->GetRecord() == old) {
        dialog->Reset();
    }
    if (old->track != nullptr) {
        old->track->RemoveKey(old, /*destroy*/ true);
    } else if (IFilmManager* manager = context != nullptr ? context->session.GetFilmManager() : nullptr) {
        manager->keyFactory->DestroyKey(old);
    }
}

void CTimedTrackKey::SetDuration(float newDuration, bool viewOnly) {
    if (!(newDuration > kMinDuration)) {
        return;
    }
    duration = newDuration;
    TimesChanged();
    if (!viewOnly && record != nullptr) {
        record->SetEndTime(duration + time);
    }
}

CRect CTimedTrackKey::GetBox(int x, int y, float pixelsPerSecond) const {
    const float width = pixelsPerSecond * duration;
    const int whole = CutToPixel(width);
    const int rest = width - static_cast<float>(whole) > 0.5f ? 1 : 0;
    return {x - 1, y + 1, x + whole - 1 + rest, y + GetDrawnHeight() - 1};
}

void CTimedTrackKey::Draw(CDC* dc, int x, int y, float pixelsPerSecond, const CRect* clip, bool outline) {
    if (dc == nullptr || state == kHidden) {
        return;
    }
    CPen black(PS_SOLID, 2, kBlack);
    SelectionScope<CPen> pen(*dc, black);
    CRect box = GetBox(CutToPixel(x), CutToPixel(y), pixelsPerSecond);
    CBrush fill(state == kNormal ? normalColor : state == kHighlighted ? highlightColor : kBlack);
    {
        SelectionScope<CBrush> brush(*dc, fill);
        dc->Rectangle(box);
    }
    if (selected) {
        DrawGrips(*dc, box, clip);
        // Required: only a selected key's box is cut, and the label moves with it.
        if (clip != nullptr && !box.IntersectRect(box, *clip)) {
            return;
        }
    }
    const std::string* label = record != nullptr ? LabelOf(*record) : nullptr;
    if (label != nullptr && !label->empty()) {
        DrawLabel(*dc, *label, box);
    }
    if (outline) {
        DrawKeyOutline(*dc, box, clip);
    }
}

bool CTimedTrackKey::HitTime(float mouseTime, float /*secondsPerPixel*/) const {
    return mouseTime >= time && mouseTime <= time + duration;
}

bool CTimedTrackKey::HitGrip(int x, int keyX, float pixelsPerSecond) const {
    // Required: the squares are drawn 2 pixels smaller, and neither y nor the selection counts.
    const int start = CutToPixel(keyX);
    const int end = start + CutToPixel(pixelsPerSecond * duration);
    const int side = GetDrawnHeight();
    return (x >= start - side - kGripDistance && x <= start - kGripDistance) ||
           (x >= end + kGripDistance && x <= end + side + kGripDistance);
}

bool CTimedTrackKey::CopyFrom(const CTrackKey* other, bool copyTime) {
    if (!CTrackKey::CopyFrom(other, copyTime)) {
        return false;
    }
    if (other->record != nullptr && (other->record->flags & KeyFlag::NoDuration) != 0) {
        return true;
    }
    SetDuration(other->GetDuration(), /*viewOnly*/ false);
    return true;
}

bool CTimedTrackKey::Equals(const CTrackKey* other, bool compareTime) const {
    return CTrackKey::Equals(other, compareTime) && dynamic_cast<const CTimedTrackKey*>(other) != nullptr &&
           std::fabs(duration - other->GetDuration()) < kSameTimeSeconds;
}
