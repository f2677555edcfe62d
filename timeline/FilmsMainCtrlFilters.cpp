// The dialogs that choose which rows and keys are shown, and how.
#include "files/FilterTracksDlg.h"
#include "files/KeysFilterDlg.h"
#include "keys/TrackKey.h"
#include "plugin/LevelWatch.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"
#include "timeline/TrackCtrlStore.h"

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
void FilterRow(CTrackCtrl& row, const KeyFilter& filter, const char* filmName, bool oneOfAll) {
    row.ApplyKindFlags(filter.data(), row.expanded);
    if (filmName == nullptr || row.track == nullptr) {
        return;
    }
    const TrackStore store = FindTrackStore(row.track, filmName);
    if (store.params != nullptr) {
        store.params->Set(filmName, filter.data(), row.expanded ? 1 : 0, kWholeRecord,
                          oneOfAll ? std::string() : store.entry);
    }
}

} // namespace

void CFilmsMainCtrl::OnMenuFilterActors() {
    CFilterTracksDlg dialog(plugin, this);
    const Watch<CFilmsMainCtrl> window(this);
    if (dialog.DoModal() == IDOK && window.IsAlive()) {
        RebuildVisibleRows(/*redraw*/ true, nullptr);
    }
}

/// The visible flags of keyParams stay as they are: those of the dialog are the row's.
void CFilmsMainCtrl::OnMenuFilterKeys() {
    if (menuRow == nullptr || !menuRow->IsRoot() || menuRow->track == nullptr) {
        return;
    }
    CFilmTrack* track = menuRow->track;
    const IFilm* film = plugin.GetCurrentFilm();
    KeyKindParamsTable records = keyParams;
    for (std::size_t kind = 0; kind < records.size(); ++kind) {
        records[kind].visible = menuRow->kindFlags[kind] != 0;
    }
    CKeysFilterDlg dialog(plugin, this);
    dialog.SetTrack(track);
    dialog.SetParams(records);
    const Watch<CFilmsMainCtrl> window(this);
    const LevelWatch level(plugin);
    if (dialog.DoModal() != IDOK || !window.IsAlive()) {
        return;
    }
    dialog.GetParams(records);
    TakeKeyLooks(records);
    const bool isSameFilm = film == plugin.GetCurrentFilm() && level.IsSameLevel();
    CTrackCtrl* row = isSameFilm ? RootRowOf(track) : nullptr;
    if (row != nullptr) {
        TakeKeyFilter(FilterOf(records), dialog.applyToAll != 0 ? nullptr : row);
    }
}

void CFilmsMainCtrl::TakeKeyFilter(const KeyFilter& filter, CTrackCtrl* only) {
    const IFilm* film = plugin.GetCurrentFilm();
    const char* filmName = film != nullptr ? film->name : nullptr;
    if (only != nullptr) {
        FilterRow(*only, filter, filmName, /*oneOfAll*/ false);
    } else {
        for (CTrackCtrl* row : tracks) {
            if (row->IsRoot()) {
                FilterRow(*row, filter, filmName, /*oneOfAll*/ true);
            }
        }
    }
    RebuildVisibleRows(/*redraw*/ true, nullptr);
}

void CFilmsMainCtrl::TakeKeyLooks(const KeyKindParamsTable& records) {
    for (std::size_t kind = 0; kind < records.size(); ++kind) {
        const bool visible = keyParams[kind].visible;
        keyParams[kind] = records[kind];
        keyParams[kind].visible = visible;
    }
    for (CTrackCtrl* row : tracks) {
        if (const KeyKindParams* record = GetKeyParams(row->kind)) {
            for (CTrackKey* view : row->keys) {
                view->TakeLook(*record);
            }
        }
    }
    RepaintRows();
}
