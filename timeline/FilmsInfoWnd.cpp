#include "timeline/FilmsInfoWnd.h"

#include "framework/PaintDC.h"
#include "keys/rules/Pixels.h"
#include "keys/views/KeyDrawing.h"
#include "plugin/PluginImpl.h"
#include "timeline/rows/GridCtrl.h"
#include "timeline/rows/TimelineContext.h"

BEGIN_MESSAGE_MAP(CFilmsInfoWnd, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

namespace {

constexpr int kMargin = 2; // pixels

} // namespace

std::string CFilmsInfoWnd::TimeText(float time) const {
    std::string text;
    FormatTime(time, plugin.framesPerSecond, &text);
    return text;
}

std::string CFilmsInfoWnd::FilmLine(float time) const {
    std::string camera;
    plugin.GetCameraNameAtTime(camera, time, nullptr);
    return "Film: " + TimeText(time) + "(" + camera + ")";
}

void CFilmsInfoWnd::OnPaint() {
    CPaintDC dc(this);
    const TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    CRect client;
    GetClientRect(&client);
    CPen pen(PS_SOLID, 0, 0);
    CBrush brush(CGridCtrl::kBackground);
    const SelectionScope<CPen> penScope(dc, pen);
    const SelectionScope<CBrush> brushScope(dc, brush);
    dc.Rectangle(client);
    const SelectionScope<CFont> fontScope(dc, TimelineFont());
    const std::string film = FilmLine(timeline->currentTime);
    dc.TextOut(kMargin, kMargin, film);
    const int height = dc.GetTextExtent(film).cy;
    dc.TextOut(kMargin, height + kMargin, "Mouse: " + TimeText(timeline->mouseTime));
}

void FormatTime(float time, int rate, std::string* text) {
    if (text == nullptr || rate < 1) {
        return;
    }
    // Single precision values of 1/3600 and 1/60, used in double precision.
    constexpr float kHoursPerSecond = 0.00027777778f;
    constexpr float kMinutesPerSecond = 0.016666668f;
    const double seconds = time;
    const int hours = CutToInt(seconds * kHoursPerSecond);
    const double inHour = seconds - hours * 3600.0;
    const int minutes = CutToInt(kMinutesPerSecond * inHour);
    const double inMinute = inHour - minutes * 60.0;
    const int wholeSeconds = CutToInt(inMinute);
    const int frames = CutToInt((inMinute - wholeSeconds) * rate);
    *text = std::to_string(hours) + ":" + std::to_string(minutes) + ":" + std::to_string(wholeSeconds) + ":" +
            std::to_string(frames) + "F";
}
