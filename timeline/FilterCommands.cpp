#include "timeline/FilterCommands.h"

#include "files/FilmWatch.h"
#include "files/FilterTracksDlg.h"
#include "files/KeysFilterDlg.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"
#include "timeline/rows/TrackCtrlStore.h"

#include <algorithm>

namespace {

/// Stores filter and fold state alike.
constexpr int kWholeRecord = -1;

KeyFilter FilterOf(const KeyKindParamsTable& records) {
    KeyFilter filter{};
    std::ranges::transform(records, filter.begin(),
                           [](const KeyKindParams& record) { return record.visible ? 1 : 0; });
    return filter;
}

/// The row shows the kinds of the filter, and its store remembers them. Required: the record of a row that is
/// one of all has no name.
void FilterRow(FilmSession& session, CTrackCtrl& row, const KeyFilter& filter, const char* filmName,
               bool oneOfAll) {
    row.ApplyKindFlags(filter.data(), row.expanded);
    if (filmName == nullptr || row.track == nullptr) {
        return;
    }
    const TrackStore store = FindTrackStore(session, row.track, filmName);
    if (store.params != nullptr) {
        store.params->Set(filmName, filter.data(), row.expanded ? 1 : 0, kWholeRecord,
                          oneOfAll ? std::string() : store.entry);
    }
}

/// For all root rows, or one alone.
void TakeKeyFilter(CFilmsMainCtrl& control, const KeyFilter& filter, CTrackCtrl* only) {
    const IFilm* film = control.plugin.GetCurrentFilm();
    const char* filmName = film != nullptr ? film->name : nullptr;
    if (only != nullptr) {
        FilterRow(control.session, *only, filter, filmName, /*oneOfAll*/ false);
    } else {
        for (CTrackCtrl* row : control.tracks) {
            if (row->IsRoot()) {
                FilterRow(control.session, *row, filter, filmName, /*oneOfAll*/ true);
            }
        }
    }
    control.RebuildVisibleRows(/*redraw*/ true, nullptr);
}

} // namespace

void HideRow(CFilmsMainCtrl& control) {
    if (control.menuRow != nullptr) {
        control.menuRow->SetVisibleFlag(false);
        control.RebuildVisibleRows(/*redraw*/ true, nullptr);
    }
}

void FilterRows(CFilmsMainCtrl& control) {
    CFilterTracksDlg dialog(control.plugin, &control);
    const Watch<CFilmsMainCtrl> window(&control);
    if (dialog.DoModal() == IDOK && window.IsAlive()) {
        control.RebuildVisibleRows(/*redraw*/ true, nullptr);
    }
}

/// The visible flags of keyParams stay as they are: those of the dialog are the row's.
void FilterKeys(CFilmsMainCtrl& control) {
    if (control.menuRow == nullptr || !control.menuRow->IsRoot() || control.menuRow->track == nullptr) {
        return;
    }
    CFilmTrack* track = control.menuRow->track;
    KeyKindParamsTable records = control.keyParams;
    for (std::size_t kind = 0; kind < records.size(); ++kind) {
        records[kind].visible = control.menuRow->kindFlags[kind] != 0;
    }
    CKeysFilterDlg dialog(control.plugin, &control);
    dialog.SetTrack(track);
    dialog.SetParams(records);
    const Watch<CFilmsMainCtrl> window(&control);
    const FilmWatch film(control.plugin);
    if (dialog.DoModal() != IDOK || !window.IsAlive()) {
        return;
    }
    dialog.GetParams(records);
    control.TakeKeyLooks(records);
    CTrackCtrl* row = film.IsCurrent() ? control.RootRowOf(track) : nullptr;
    if (row != nullptr) {
        TakeKeyFilter(control, FilterOf(records), dialog.applyToAll != 0 ? nullptr : row);
    }
}
