#include "timeline/SettingsCommand.h"

#include "files/FilmWatch.h"
#include "files/MainCtrlSettingsDlg.h"
#include "keys/rules/Pixels.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

#include <cmath>

namespace {

void TakeSettings(CFilmsMainCtrl& control, const CMainCtrlSettingsDlg& dialog) {
    control.SetMovieRange(dialog.begin, dialog.end);
    control.SetBigTics(dialog.bigTics, /*redraw*/ false);
    const auto rate = static_cast<float>(control.plugin.framesPerSecond);
    control.SetTicsDistance(rate != 0.0f ? static_cast<float>(dialog.ticsDistance) / rate : 1.0f,
                            /*redraw*/ false);
    control.grid->SetLabelDistance(dialog.labelDistance, /*redraw*/ false);
    control.SetViewRange(control.viewStart, control.viewStart + dialog.interval, /*redraw*/ true);
    control.CalcSecondsPerPixel();
    IFilm* film = control.plugin.GetCurrentFilm();
    if (film == nullptr) {
        return;
    }
    FilmViewSettings update;
    update.mask = FilmViewSettings::kMovie | FilmViewSettings::kView | FilmViewSettings::kTicsDistance |
                  FilmViewSettings::kBigTics | FilmViewSettings::kLabelDistance;
    update.movieStart = control.movieStart;
    update.movieEnd = control.movieEnd;
    update.viewStart = control.viewStart;
    update.viewEnd = control.viewEnd;
    update.ticsDistance = control.grid->ticDistance;
    update.bigTics = control.grid->bigTics;
    update.labelDistance = control.grid->labelDistance;
    control.plugin.SetFilmViewSettings(film->index, update);
    film->length = control.movieEnd - control.movieStart;
}

} // namespace

void EditSettings(CFilmsMainCtrl& control) {
    if (control.grid == nullptr) {
        return;
    }
    CMainCtrlSettingsDlg dialog(&control);
    dialog.begin = control.movieStart;
    dialog.end = control.movieEnd;
    dialog.interval = control.viewEnd - control.viewStart;
    // Float32, since a tic of so many frames comes back as that many.
    dialog.ticsDistance =
        CutToInt(static_cast<float>(control.plugin.framesPerSecond) * control.grid->ticDistance);
    dialog.bigTics = control.grid->bigTics;
    dialog.labelDistance = control.grid->labelDistance;
    const Watch<CFilmsMainCtrl> window(&control);
    const FilmWatch film(control.plugin);
    // What was shown and edited is that film's.
    if (dialog.DoModal() != IDOK || !window.IsAlive() || !film.IsCurrent()) {
        return;
    }
    if (std::isfinite(dialog.begin) && std::isfinite(dialog.end) && std::isfinite(dialog.interval)) {
        TakeSettings(control, dialog);
    }
}
