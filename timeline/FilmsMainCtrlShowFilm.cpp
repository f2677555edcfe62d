#include "timeline/FilmsMainCtrl.h"

#include "files/AttachMovieObjectDlg.h"
#include "helpers/rules/FilmsLightHelper.h"
#include "keys/views/NullTimeTrackKey.h"
#include "keys/views/TimedTrackKey.h"
#include "plugin/PluginImpl.h"
#include "timeline/AdjustTimeDlg.h"
#include "timeline/rows/TrackOrder.h"
#include "timeline/ShownKey.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <unordered_set>
#include <vector>

namespace {

/// The settings as they are stored, to compare what no number equals too.
std::array<std::uint32_t, 11> AsWords(const FilmViewSettings& settings) {
    return std::bit_cast<std::array<std::uint32_t, 11>>(settings);
}

/// One more than the highest camera index among the track's keys, at least 1; 0 where there are no camera
/// rows.
int CountCameraRows(CFilmTrack* track) {
    if (AsLevelTrack(track) == nullptr) {
        return 0;
    }
    int highest = 0;
    for (const IFilmKey* key : track->keys) {
        if (key->kind == KeyKind::Camera) {
            highest = std::max(highest, static_cast<const CFilmCameraKey*>(key)->priority);
        }
    }
    return std::min(highest, CTrackCtrl::kMaxCameraRows - 1) + 1;
}

std::unique_ptr<CTrackKey> MakeView(IFilmKey* record) {
    std::unique_ptr<CTrackKey> view;
    if ((record->flags & KeyFlag::NoDuration) != 0) {
        view = std::make_unique<CNullTimeTrackKey>();
    } else {
        view = std::make_unique<CTimedTrackKey>();
    }
    view->SetRecord(record, /*takeTimes*/ true);
    return view;
}

/// Keys that an edit behind a box made while their rows were new have their views already.
std::unordered_set<const IFilmKey*> RecordsBelow(const CTrackCtrl& root) {
    std::unordered_set<const IFilmKey*> records;
    for (const CTrackCtrl* row : root.children) {
        for (const CTrackKey* view : row->keys) {
            records.insert(view->record);
        }
    }
    return records;
}

/// Brings a row's keys into draw order once, when all are in.
class FillScope {
public:
    explicit FillScope(CTrackCtrl& root) : rows(root.children.begin(), root.children.end()) {
        for (CTrackCtrl* row : rows) {
            row->keys.BeginFill();
        }
    }
    ~FillScope() {
        for (CTrackCtrl* row : rows) {
            row->keys.EndFill();
        }
    }
    FillScope(const FillScope&) = delete;
    FillScope& operator=(const FillScope&) = delete;

private:
    std::vector<CTrackCtrl*> rows;
};

} // namespace

void CFilmsMainCtrl::ShowFilm(IFilm* film, bool /*flag*/) {
    if (film != shownFilm) {
        adjustTimeDlg->LeaveFilm();
    }
    const float savedTime = plugin.currentTime;
    RowHandle handle;
    GetTopRowHandle(handle);
    ClearUndo();
    const bool isKeyShown = plugin.keyAttributesDlg && plugin.keyAttributesDlg->GetRecord() != nullptr;
    const Watch<CFilmsMainCtrl> window(this);
    const Watch<FilmShow> before(show.get());
    IFilmKey* shownRecord = LeaveShownKey(plugin, film);
    if (!window.IsAlive()) {
        return; // the user was asked about the key on show, and the window has gone
    }
    if (film != nullptr && !before.IsAlive()) {
        ReturnToKey(*this, shownRecord);
        return; // the question let in a newer call, which has done it all
    }
    if (isKeyShown && film != nullptr && !plugin.FilmExists(film)) {
        return; // deleted while the user was asked about the key on show
    }
    DeleteAllRows();
    if (attachDlg != nullptr) {
        attachDlg->OnFilmShown();
    }
    if (grid != nullptr) {
        grid->DeleteMarks();
    }
    show = std::make_unique<FilmShow>();
    const Watch<FilmShow> underWay(show.get());
    if (film == nullptr) {
        shownFilm = nullptr;
        rebuilding = false;
        CadvWnd::Invalidate(FALSE);
        return;
    }
    IKeyAttributesDlg* dialog = plugin.GetKeyAttributesDlg();
    plugin.AddSunTrack(film);
    TakeStoredSettings(*film);
    rebuilding = true;
    if (!MakeRows(film, underWay)) {
        return; // a message box let in a newer call, which has done it all, or the window's end
    }
    ClearSelection();
    rebuilding = false;
    if (dialog != nullptr) {
        dialog->locked = false;
        ReturnToKey(*this, shownRecord);
    }
    RebuildVisibleRows(/*redraw*/ true, &handle);
    plugin.SetTime(savedTime, /*fromWindow*/ false);
}

/// A film that is shown anew keeps the part of its time axis that is shown, unless the stored part has
/// changed since or the film now ends before it. A command that changes the film's length alone zooms
/// nothing.
void CFilmsMainCtrl::TakeStoredSettings(const IFilm& film) {
    if (film.index < 0 || film.index >= IFilmManager::kFilms) {
        return;
    }
    FilmViewSettings stored = plugin.filmViewSettings[static_cast<std::size_t>(film.index)];
    const FilmViewSettings before = shownSettings;
    const bool isShown = shownFilm == &film;
    shownFilm = &film;
    shownSettings = stored;
    if (isShown && AsWords(stored) == AsWords(before)) {
        stored.mask &= ~(FilmViewSettings::kMovie | FilmViewSettings::kView);
    } else if (isShown && stored.viewStart == before.viewStart && stored.viewEnd == before.viewEnd &&
               viewStart < stored.movieEnd) {
        stored.viewStart = viewStart;
        stored.viewEnd = viewEnd;
    }
    ApplySettings(stored);
}

/// False if another call of ShowFilm came between, or the control has gone.
bool CFilmsMainCtrl::MakeRows(IFilm* film, const Watch<FilmShow>& underWay) {
    std::vector<CFilmTrack*> order(film->tracks.begin(), film->tracks.end());
    for (CFilmTrack* track : order) {
        track->Finish();
    }
    SortTracks(session, order);
    for (CFilmTrack* track : order) {
        // Removed, behind a box, without the film being shown anew.
        const bool isGone = film->tracks.size() != order.size() &&
                            std::ranges::find(film->tracks, track) == film->tracks.end();
        if (!isGone && !ShowTrack(track, underWay)) {
            return false;
        }
    }
    return true;
}

bool CFilmsMainCtrl::ShowTrack(CFilmTrack* track, const Watch<FilmShow>& underWay) {
    CTrackCtrl* root = AddTrackCtrl(/*redraw*/ true);
    if (root == nullptr) {
        return true;
    }
    root->track = track;
    root->name = RootRowName(session, track);
    const Watch watched(root);
    root->CreateChildRows(CountCameraRows(track));
    if (!underWay.IsAlive()) {
        return false;
    }
    if (!watched.IsAlive()) {
        return true; // the track was removed behind the box
    }
    const std::unordered_set<const IFilmKey*> shown = RecordsBelow(*root);
    {
        const FillScope fill(*root);
        for (IFilmKey* record : track->keys) {
            if (!shown.contains(record)) {
                ShowKey(root, record);
            }
        }
    }
    std::uint8_t expanded = 0;
    root->ReadStoredState(expanded);
    root->UpdateVisibility(/*show*/ true);
    root->SetExpanded(expanded != 0, /*redraw*/ false);
    return true;
}

void CFilmsMainCtrl::ShowKey(CTrackCtrl* root, IFilmKey* record) {
    std::unique_ptr<CTrackKey> view = MakeView(record);
    if (root->AddKeyView(view.get(), /*redraw*/ false, /*existing*/ true, /*noUndo*/ true)) {
        static_cast<void>(view.release()); // the row owns it now
    } else {
        ForgetView(view.get());
    }
}
