#include "keys/views/NullTimeTrackKey.h"

#include "framework/Constants.h"
#include "keys/rules/Pixels.h"
#include "keys/views/KeyDrawing.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr int kBarHalf = 3;
constexpr COLORREF kBlack = 0x000000;
constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kRed = 0x0000FF;

constexpr std::int64_t kFullChannel = 255;

/// Required: a channel wraps at 8 bits, so that 1.01 is nearly black.
int Channel(float value) {
    return static_cast<int>(CutToInt(value * 255.0f) & kFullChannel);
}

/// 30 steps brighter, up to full.
int BrightChannel(float value) {
    constexpr std::int64_t kSteps = 30;
    return static_cast<int>(std::min(kSteps - CutToInt(value * -255.0f), kFullChannel) & kFullChannel);
}

/// The colour record of a key that is drawn in its own colour, else null.
const Vector3* OwnColorOf(const IFilmKey* record) {
    const bool isColor = record != nullptr && record->kind == KeyKind::Color;
    return isColor ? &static_cast<const CFilmVectorKey*>(record)->value : nullptr;
}

/// False if nothing of it is left.
bool PullIn(CRect& bar, const CRect& clip) {
    bar = CRect(std::max(bar.left, clip.left), std::max(bar.top, clip.top), std::min(bar.right, clip.right),
                std::min(bar.bottom, clip.bottom));
    return bar.left < bar.right && bar.top <= bar.bottom;
}

/// On every key of no length, whatever its colour. Required: the clipped bar gives its place and size.
void DrawSquare(CDC& dc, const CRect& bar) {
    const int middle = bar.Height() / 2;
    const int half = bar.Width() / 2;
    CBrush white(kWhite);
    SelectionScope<CBrush> brush(dc, white);
    dc.Rectangle(bar.left, middle - half + bar.top, bar.right - 1, middle + half + bar.top);
}

void DrawMark(CDC& dc, const CRect& bar) {
    const int x = bar.Width() / 2 + bar.left - 1;
    CPen red(PS_SOLID, 0, kRed);
    SelectionScope<CPen> pen(dc, red);
    dc.MoveTo(x, bar.top);
    dc.LineTo(x, bar.bottom);
}

} // namespace

void CNullTimeTrackKey::SetRecord(IFilmKey* newRecord, bool takeTimes) {
    record = newRecord;
    if (record != nullptr && takeTimes) {
        time = record->time;
        TimesChanged();
    }
}

COLORREF CNullTimeTrackKey::GetFill() const {
    const Vector3* own = OwnColorOf(record);
    switch (state) {
    case kNormal:
        return own != nullptr ? RGB(Channel(own->x), Channel(own->y), Channel(own->z)) : normalColor;
    case kHighlighted:
        return own != nullptr ? RGB(BrightChannel(own->x), BrightChannel(own->y), BrightChannel(own->z))
                              : highlightColor;
    default:
        return kBlack;
    }
}

void CNullTimeTrackKey::Draw(CDC* dc, int x, int y, float /*pixelsPerSecond*/, const CRect* clip,
                             bool outline) {
    if (dc == nullptr || state == kHidden) {
        return;
    }
    const int center = CutToPixel(x);
    const int top = CutToPixel(y);
    CRect bar(center - kBarHalf, top, center + kBarHalf, top + GetDrawnHeight());
    if (clip != nullptr && !PullIn(bar, *clip)) {
        return;
    }
    {
        CPen none(PS_NULL, 0, kBlack);
        CBrush fill(GetFill());
        SelectionScope<CPen> pen(*dc, none);
        SelectionScope<CBrush> brush(*dc, fill);
        dc->Rectangle(bar);
    }
    CPen black(PS_SOLID, 0, kBlack);
    SelectionScope<CPen> pen(*dc, black);
    DrawSquare(*dc, bar);
    if (marked) {
        DrawMark(*dc, bar);
    }
    if (outline) {
        DrawKeyOutline(*dc, bar, clip);
    }
}

bool CNullTimeTrackKey::HitTime(float mouseTime, float secondsPerPixel) const {
    const int pixels = width / 2;
    const float half = static_cast<float>(pixels) * secondsPerPixel;
    return time - half <= mouseTime && mouseTime <= time + half;
}

void CNullTimeTrackKey::OnDoubleClick() {
    // Required: the active key of the main control stays.
    ShowAttributes();
}

bool CNullTimeTrackKey::CopyFrom(const CTrackKey* other, bool copyTime) {
    // Required: what the base class copied stays copied when the answer is false.
    const auto* source = dynamic_cast<const CNullTimeTrackKey*>(other);
    if (!CTrackKey::CopyFrom(other, copyTime) || source == nullptr || source->record == nullptr ||
        (source->record->flags & KeyFlag::NoDuration) == 0) {
        return false;
    }
    width = std::max(source->width, 0);
    return true;
}

bool CNullTimeTrackKey::Equals(const CTrackKey* other, bool compareTime) const {
    const auto* same = dynamic_cast<const CNullTimeTrackKey*>(other);
    return same != nullptr && CTrackKey::Equals(other, compareTime) && width == same->width;
}
