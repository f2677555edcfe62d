#include "host/stage/windows/films/PanelHand.h"

#include "framework/FormView.h"
#include "framework/QtBridge.h"
#include "framework/Wnd.h"
#include "host/stage/windows/films/FilmsIds.h"
#include "plugin/contract/FilmManager.h"

#include <algorithm>
#include <iterator>
#include <QAbstractItemView>

namespace stage {

namespace {

/// The window that the list of films is a control of.
CWnd* WithList(CWnd* window) {
    if (window == nullptr || window->GetDlgItem(films_id::kFilmAdd) != nullptr) {
        return window;
    }
    CWnd* found = nullptr;
    for (int i = 0; found == nullptr; ++i) {
        CWnd* child = window->GetWindowChild(i);
        if (child == nullptr) {
            return nullptr;
        }
        found = WithList(child);
    }
    return found;
}

} // namespace

CWnd* PanelHand::Page() const {
    return WithList(form());
}

void PanelHand::Tell(unsigned control, unsigned code) const {
    if (CWnd* page = Page()) {
        page->SendMessage(WM_COMMAND, MAKEWPARAM(control, code));
    }
}

IFilm* PanelHand::Add(const IFilmManager& manager) const {
    const IFilm* const before = manager.currentFilm;
    int count = 0;
    const auto films = [&] {
        return std::ranges::count_if(manager.films, [](const IFilm* film) { return film != nullptr; });
    };
    count = static_cast<int>(films());
    Tell(films_id::kFilmAdd, BN_CLICKED);
    return films() > count && manager.currentFilm != before ? manager.currentFilm : nullptr;
}

bool PanelHand::Choose(const IFilmManager& manager, const IFilm* film) const {
    CWnd* page = Page();
    if (page == nullptr) {
        return false;
    }
    Refresh(); // the lines are "<none>" and the films in the order of their slots
    int line = 0;
    if (film != nullptr) {
        const auto* slot = std::ranges::find(manager.films, film);
        if (slot == std::end(manager.films)) {
            return false;
        }
        line = 1 + static_cast<int>(std::count_if(std::begin(manager.films), slot,
                                                  [](const IFilm* other) { return other != nullptr; }));
    }
    page = Page();
    page->SendDlgItemMessage(films_id::kFilmList, LB_SETCURSEL, static_cast<WPARAM>(line));
    Tell(films_id::kFilmList, LBN_SELCHANGE);
    return manager.currentFilm == film;
}

void PanelHand::ShowTimeline() const {
    Tell(films_id::kFilmList, LBN_DBLCLK);
}

bool PanelHand::Delete(const IFilmManager& manager, const IFilm* film) const {
    if (manager.currentFilm == film) {
        Tell(films_id::kFilmDelete, BN_CLICKED);
    }
    return std::ranges::find(manager.films, film) == std::end(manager.films);
}

QAbstractItemView* PanelHand::List() const {
    const CWnd* page = Page();
    const CWnd* list = page != nullptr ? page->GetDlgItem(films_id::kFilmList) : nullptr;
    return list != nullptr ? qobject_cast<QAbstractItemView*>(NativeWidget(*list)) : nullptr;
}

void PanelHand::Refresh() const {
    if (auto* view = dynamic_cast<CView*>(form())) {
        UpdateView(*view);
    }
}

} // namespace stage
