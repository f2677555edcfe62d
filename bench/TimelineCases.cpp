#include "bench/TimelineCases.h"

#include "bench/RowWindows.h"
#include "framework/TestHooks.h"

namespace films_bench {

TimelineFilm::TimelineFilm(const Case& size) : film(size), host(film.level) {
    Hooks().messageBox = [](const std::string&, UINT) { return int{IDOK}; }; // no data folder here
    film.Build();
    film.film->length = static_cast<float>(size.keys) * kKeySeconds;
    plugin.Initialize(&host, 1, &host);
    plugin.framesPerSecond = IPluginImpl::kFramesPerSecond;
    plugin.filmViewSettings[0].movieEnd = film.film->length;
    plugin.filmViewSettings[0].viewEnd = film.film->length;
    plugin.currentFilm = film.film;
    control = std::make_unique<CFilmsMainCtrl>(plugin);
    frame.Create(nullptr, "", WS_POPUP | WS_VISIBLE, CRect(0, 0, kWidth, kHeight), nullptr, 0);
    control->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, kWidth, kHeight), &frame, 1);
    control->RecalcLayout();
    holder.control = control.get();
    plugin.scenarioDlg = &holder;
    Paint();
}

TimelineFilm::~TimelineFilm() {
    plugin.scenarioDlg = nullptr;
    control.reset();
    frame.DestroyWindow();
    Paint();
    plugin.currentFilm = nullptr;
    plugin.OnEvent(EventCode::HostGoesAway, nullptr);
}

void TimelineFilm::Unfold() {
    for (CTrackCtrl* row : control->tracks) {
        if (row->IsRoot()) {
            row->SetExpanded(true, /*redraw*/ false);
        }
    }
    control->RebuildVisibleRows(/*redraw*/ true, nullptr);
    Paint();
}

void TimelineFilm::Paint() {
    ProcessEvents();
}

std::size_t TimelineFilm::CountViews() const {
    std::size_t count = 0;
    for (const CTrackCtrl* row : control->tracks) {
        count += row->keys.size();
    }
    return count;
}

} // namespace films_bench
