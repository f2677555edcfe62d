#include "host/stage/windows/films/TimelineAxis.h"

#include "framework/Dialog.h"
#include "host/stage/windows/films/FilmsIds.h"
#include "host/stage/windows/films/TimelineHand.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace stage {

namespace {

constexpr double kShortest = 0.1; ///< seconds; three frames
constexpr int kMostLines = 2000;  ///< of one step; a longer way is a matter for the thumb
constexpr int kArrow = 11;        ///< pixels from the end of the bar to the middle of its arrow
constexpr int kBesideArrow = 22;  ///< pixels from the end of the bar to the end of its track

double NumberIn(const CDialog& dialog, unsigned id) {
    return std::strtod(dialog.GetDlgItemText(static_cast<int>(id)).c_str(), nullptr);
}

std::string TextOf(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.9g", number); // enough for any float
    return text;
}

AxisState StateIn(const CDialog& dialog) {
    return {NumberIn(dialog, films_id::kAxisBegin), NumberIn(dialog, films_id::kAxisEnd),
            NumberIn(dialog, films_id::kAxisShown), static_cast<int>(NumberIn(dialog, films_id::kTicFrames))};
}

} // namespace

TimelineAxis::TimelineAxis(const TimelineHand& timelineHand, float filmLength, int framesPerSecond)
    : hand(timelineHand), length(filmLength), rate(framesPerSecond) {
}

std::optional<AxisState> TimelineAxis::Read() const {
    std::optional<AxisState> state;
    hand.AnswerDialog(films_id::kSettings, [&](CDialog& dialog) {
        state = StateIn(dialog);
        return false;
    });
    // A film that begins elsewhere would get another length by the rounding of the texts.
    const bool isPlain = state && state->begin == 0.0 && state->ticFrames > 0 && state->shown > 0.0;
    return isPlain && rate > 0 && length > 0.0f ? state : std::nullopt;
}

/// The axis is given its film's exact length: it may be longer, where a window was widened, and the settings
/// take it for the film's.
void TimelineAxis::Show(double seconds) const {
    hand.AnswerDialog(films_id::kSettings, [&](CDialog& dialog) {
        if (NumberIn(dialog, films_id::kAxisBegin) != 0.0) {
            return false;
        }
        dialog.SetDlgItemText(films_id::kAxisEnd, TextOf(length));
        dialog.SetDlgItemText(films_id::kAxisShown, TextOf(seconds));
        return true;
    });
}

void TimelineAxis::Scroll(double seconds, const AxisState& state) const {
    const double tic = static_cast<double>(state.ticFrames) / rate;
    const double lines = std::min<double>(std::round(std::fabs(seconds) / tic), kMostLines);
    for (int i = 0; i < static_cast<int>(lines); ++i) {
        CWnd* bar = hand.TimeBar();
        if (bar == nullptr) {
            return;
        }
        CRect rect;
        bar->GetClientRect(&rect);
        TimelineHand::Click(*bar, {seconds < 0.0 ? kArrow : rect.right - kArrow, rect.Height() / 2});
    }
}

void TimelineAxis::Zoom(double factor, double fraction) const {
    const std::optional<AxisState> now = Read();
    if (!now || !(factor > 0.0)) {
        return;
    }
    const double wanted =
        std::clamp(now->shown * factor, std::min<double>(kShortest, length), double{length});
    const double shift = std::clamp(fraction, 0.0, 1.0) * (now->shown - wanted);
    if (shift < 0.0) {
        Scroll(shift, *now); // before there is more to show, which ends with the film
    }
    Show(wanted);
    if (shift > 0.0) {
        Scroll(shift, *now);
    }
    const std::optional<AxisState> then = Read();
    if (then && then->shown < wanted * 0.999) { // it met the film's end
        Scroll(then->shown - wanted, *then);
        Show(wanted);
    }
}

void TimelineAxis::Pan(double part) const {
    if (const std::optional<AxisState> now = Read()) {
        const double tic = static_cast<double>(now->ticFrames) / rate;
        const double step = std::max(std::fabs(part) * now->shown, tic);
        Scroll(part < 0.0 ? -step : step, *now);
    }
}

void TimelineAxis::ShowAll() const {
    if (!Read()) {
        return;
    }
    Show(length); // to the film's end, so that the thumb ends with its track
    DragToBegin();
    Show(length);
}

void TimelineAxis::DragToBegin() const {
    CWnd* bar = hand.TimeBar();
    if (bar == nullptr) {
        return;
    }
    CRect rect;
    bar->GetClientRect(&rect);
    const int y = rect.Height() / 2;
    const HWND handle = bar->GetSafeHwnd();
    bar->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(rect.right - kBesideArrow - 1, y));
    for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONUP}) {
        if (CWnd* alive = CWnd::FromHandle(handle)) {
            alive->SendMessage(message, message == WM_MOUSEMOVE ? MK_LBUTTON : 0, MAKELPARAM(-rect.right, y));
        }
    }
}

} // namespace stage
