#include "timeline/FilmsView.h"

#include "framework/DataExchange.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "plugin/PluginImpl.h"
#include "resources/resource.h"

namespace {

constexpr int kMoviesTab = 0;

CFilmsView* thePanel = nullptr;

} // namespace

IMPLEMENT_DYNCREATE(CFilmsView, CFormView)

BEGIN_MESSAGE_MAP(CFilmsView, CFormView)
ON_NOTIFY(TCN_SELCHANGE, IDC_PANEL_TABS, &CFilmsView::OnTabChanged)
END_MESSAGE_MAP()

/// The host makes it by its run-time class alone.
CFilmsView::CFilmsView() : CFormView(IDD_FILMS_VIEW), films(GetPlugin()), moviesPage(films) {
    thePanel = this;
}

CFilmsView::~CFilmsView() {
    thePanel = nullptr;
}

CFilmsView* CFilmsView::GetPanel() {
    return thePanel;
}

void CFilmsView::OfferTo(IPluginImpl& plugin) {
    plugin.panelClass = RUNTIME_CLASS(CFilmsView);
    plugin.findPanel = []() -> IFilmsPanel* { return thePanel; };
}

void CFilmsView::DoDataExchange(CDataExchange* exchange) {
    CFormView::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_PANEL_TABS, tabCtrl);
}

void CFilmsView::OnUpdate(CView*, LPARAM, CObject*) {
    if (firstUpdate) {
        CreatePages();
    }
    RefreshMovies();
}

void CFilmsView::CreatePages() {
    const ResourceScope resources(PluginResources());
    moviesPage.Create(IDD_MOVIES, &tabCtrl);
    tabCtrl.InsertItem(kMoviesTab, "Movies");
    if (films.scenarioDlg == nullptr && films.makeScenarioWindow != nullptr) {
        films.scenarioDlg = films.makeScenarioWindow(films);
    }
    firstUpdate = false;
    if (currentTab != kMoviesTab) {
        ShowPage(kMoviesTab);
    }
}

void CFilmsView::RefreshMovies() {
    if (moviesPage.GetSafeHwnd() != nullptr) {
        moviesPage.Refresh();
    }
}

void CFilmsView::OnTabChanged(NMHDR*, LRESULT* result) {
    *result = 0;
    const int selected = tabCtrl.GetCurSel();
    if (selected == kMoviesTab && selected != currentTab) {
        ShowPage(selected);
    }
}

/// There is one page, so nothing has to be hidden for it.
void CFilmsView::ShowPage(int index) {
    CRect page;
    tabCtrl.GetClientRect(&page);
    tabCtrl.AdjustRect(FALSE, &page);
    moviesPage.MoveWindow(page);
    moviesPage.ShowWindow(SW_SHOW);
    currentTab = index;
}
