#include "timeline/TimeCommands.h"

#include "files/FilmWatch.h"
#include "files/MovieFrameDlg.h"
#include "keys/properties/NumberText.h"
#include "keys/rules/FrameTimes.h"
#include "keys/rules/Pixels.h"
#include "plugin/PluginImpl.h"
#include "timeline/AdjustTimeDlg.h"
#include "timeline/FilmsMainCtrl.h"
#include "timeline/ShownKey.h"

#include <cmath>

namespace {

/// The film ends there, and the axis with it, now and when the film is shown again.
void SetFilmEnd(CFilmsMainCtrl& control, IFilm& film, float seconds) {
    film.length = seconds;
    control.movieEnd = seconds;
    FilmViewSettings update;
    update.mask = FilmViewSettings::kMovie;
    update.movieStart = control.movieStart;
    update.movieEnd = control.movieEnd;
    control.plugin.SetFilmViewSettings(film.index, update);
}

/// Number of the frame at a time, half a frame going back.
int FrameNumber(double time, int framesPerSecond) {
    const double frames = time * framesPerSecond;
    const double whole = std::floor(frames);
    return CutToInt(frames - whole > 0.5 ? std::ceil(frames) : whole);
}

void ShiftRows(CFilmsMainCtrl& control, float time, float length) {
    if (control.menuRow != nullptr) {
        control.adjustRow = control.menuRow;
        control.menuRow->ShiftKeys(time, length);
        return;
    }
    for (CTrackCtrl* row : control.tracks) {
        if (!row->IsRoot()) {
            row->ShiftKeys(time, length);
        }
    }
}

} // namespace

void GoToFrame(CFilmsMainCtrl& control) {
    const FilmWatch film(control.plugin);
    const int rate = control.plugin.framesPerSecond;
    const int oldFrame = FrameNumber(NearestFrame(control.currentTime, rate), rate);
    CMovieFrameDlg dialog(control.plugin, &control);
    dialog.text = std::to_string(oldFrame);
    const Watch<CFilmsMainCtrl> window(&control);
    const bool isTaken = dialog.DoModal() == IDOK;
    if (!window.IsAlive() || !film.IsCurrent()) {
        return;
    }
    // Required: Cancel goes to the old frame too, which takes a cursor between two frames onto one.
    const int frame = isTaken ? IntFromText(dialog.text.c_str()) : oldFrame;
    if (rate != 0) {
        control.SetCurrentFrame(static_cast<float>(frame) / static_cast<float>(rate), /*redraw*/ false);
    }
    if (window.IsAlive()) { // a playing film goes on inside the call
        control.SetCurrentTime(control.currentTime, /*redraw*/ true);
    }
}

void AskToAdjustTime(CFilmsMainCtrl& control) {
    const bool isOpen = control.adjustTimeDlg->GetSafeHwnd() != nullptr;
    if (!isOpen && control.plugin.GetCurrentFilm() != nullptr) {
        control.adjustTimeDlg->DoModal(); // does all itself; the control may be gone afterwards
    }
}

void StretchRows(CFilmsMainCtrl& control, float time, float from, float to) {
    IFilm* film = control.plugin.GetCurrentFilm();
    const float longer = to - from;
    if (film == nullptr || !std::isfinite(time) || !std::isfinite(film->length + longer)) {
        return;
    }
    if (longer > 0.0f) { // Required: a film that is squeezed keeps its length
        SetFilmEnd(control, *film, film->length + longer);
    }
    if (control.menuRow != nullptr) {
        control.adjustRow = control.menuRow;
        control.menuRow->AdjustKeys(time, from, to);
        return;
    }
    for (CTrackCtrl* row : control.tracks) {
        if (!row->IsRoot()) {
            row->AdjustKeys(time, from, to);
        }
    }
}

/// The attributes window lets go of its key meanwhile, so that nothing asks the user while keys move.
void InsertIntoRows(CFilmsMainCtrl& control, float time, float length) {
    IFilm* film = control.plugin.GetCurrentFilm();
    if (film == nullptr) {
        return;
    }
    const Watch<CFilmsMainCtrl> window(&control);
    const bool forOneRow = control.menuRow != nullptr;
    const FilmWatch shown(control.plugin);
    const IFilmKey* shownRecord = LeaveShownKey(control.plugin, film);
    if (!window.IsAlive() || !shown.IsCurrent() || forOneRow != (control.menuRow != nullptr)) {
        return; // the user was asked, and something else went on
    }
    if (std::isfinite(time) && std::isfinite(film->length + length)) {
        SetFilmEnd(control, *film, film->length + length); // Required: it may end before it begins
        ShiftRows(control, time, length);
    }
    if (shownRecord != nullptr && shownRecord->track != nullptr) { // it hasn't fallen out of the film
        ReturnToKey(control, shownRecord);
    }
    control.ShowFilm(film, /*flag*/ true);
}
