// Time that is put in, taken out and stretched, and the frame by its number.
#include "files/MovieFrameDlg.h"
#include "keys/FrameTimes.h"
#include "keys/NumberText.h"
#include "keys/Pixels.h"
#include "plugin/LevelWatch.h"
#include "plugin/PluginImpl.h"
#include "timeline/AdjustTimeDlg.h"
#include "timeline/FilmsMainCtrl.h"

#include <cmath>

namespace {

/// The film ends there, and the axis with it, now and when the film is shown again.
void SetFilmEnd(IPluginImpl& plugin, CFilmsMainCtrl& control, IFilm& film, float seconds) {
    film.length = seconds;
    control.movieEnd = seconds;
    FilmViewSettings update;
    update.mask = FilmViewSettings::kMovie;
    update.movieStart = control.movieStart;
    update.movieEnd = control.movieEnd;
    plugin.SetFilmViewSettings(film.index, update);
}

/// Number of the frame at a time, half a frame going back.
int FrameNumber(double time, int framesPerSecond) {
    const double frames = time * framesPerSecond;
    const double whole = std::floor(frames);
    return CutToInt(frames - whole > 0.5 ? std::ceil(frames) : whole);
}

} // namespace

void CFilmsMainCtrl::OnMenuSetMovieFrame() {
    const IFilm* film = plugin.GetCurrentFilm();
    const int rate = plugin.framesPerSecond;
    const int oldFrame = FrameNumber(NearestFrame(currentTime, rate), rate);
    CMovieFrameDlg dialog(plugin, this);
    dialog.text = std::to_string(oldFrame);
    const Watch<CFilmsMainCtrl> window(this);
    const LevelWatch level(plugin);
    const bool isTaken = dialog.DoModal() == IDOK;
    if (!window.IsAlive() || film != plugin.GetCurrentFilm() || !level.IsSameLevel()) {
        return;
    }
    // Required: Cancel goes to the old frame too, which takes a cursor between two frames onto one.
    const int frame = isTaken ? IntFromText(dialog.text.c_str()) : oldFrame;
    if (rate != 0) {
        SetCurrentFrame(static_cast<float>(frame) / static_cast<float>(rate), /*redraw*/ false);
    }
    if (window.IsAlive()) { // a playing film goes on inside the call
        SetCurrentTime(currentTime, /*redraw*/ true);
    }
}

void CFilmsMainCtrl::OnMenuAdjustTime() {
    const bool isOpen = adjustTimeDlg->GetSafeHwnd() != nullptr;
    if (!isOpen && plugin.GetCurrentFilm() != nullptr) {
        adjustTimeDlg->DoModal(); // does all itself; the control may be gone afterwards
    }
}

void CFilmsMainCtrl::StretchTime(float time, float from, float to) {
    IFilm* film = plugin.GetCurrentFilm();
    const float longer = to - from;
    if (film == nullptr || !std::isfinite(time) || !std::isfinite(film->length + longer)) {
        return;
    }
    if (longer > 0.0f) { // Required: a film that is squeezed keeps its length
        SetFilmEnd(plugin, *this, *film, film->length + longer);
    }
    if (menuRow != nullptr) {
        adjustRow = menuRow;
        menuRow->AdjustKeys(time, from, to);
        return;
    }
    for (CTrackCtrl* row : tracks) {
        if (!row->IsRoot()) {
            row->AdjustKeys(time, from, to);
        }
    }
}

/// The attributes window lets go of its key meanwhile, so that nothing asks the user while keys move.
void CFilmsMainCtrl::InsertTime(float time, float length) {
    IFilm* film = plugin.GetCurrentFilm();
    if (film == nullptr) {
        return;
    }
    const Watch<CFilmsMainCtrl> window(this);
    const bool forOneRow = menuRow != nullptr;
    const LevelWatch level(plugin);
    const IFilmKey* shownRecord = LeaveAttributesDialog(film);
    if (!window.IsAlive() || film != plugin.GetCurrentFilm() || !level.IsSameLevel() ||
        forOneRow != (menuRow != nullptr)) {
        return; // the user was asked, and something else went on
    }
    if (std::isfinite(time) && std::isfinite(film->length + length)) {
        SetFilmEnd(plugin, *this, *film, film->length + length); // Required: it may end before it begins
        ShiftRows(time, length);
    }
    if (shownRecord != nullptr && shownRecord->track != nullptr) { // it hasn't fallen out of the film
        ReturnToAttributesDialog(shownRecord);
    }
    ShowFilm(film, /*flag*/ true);
}

void CFilmsMainCtrl::ShiftRows(float time, float length) {
    if (menuRow != nullptr) {
        adjustRow = menuRow;
        menuRow->ShiftKeys(time, length);
        return;
    }
    for (CTrackCtrl* row : tracks) {
        if (!row->IsRoot()) {
            row->ShiftKeys(time, length);
        }
    }
}
