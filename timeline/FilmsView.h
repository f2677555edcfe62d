#pragma once

#include "files/MoviesDialog.h"
#include "framework/FormView.h"
#include "framework/TabCtrl.h"
#include "plugin/session/ScenarioWindow.h"

class IPluginImpl;

/// The plug-in's panel in the host: a form with the tab "Movies". The host makes and destroys it through
/// its run-time class; there is one at a time.
class CFilmsView : public CFormView, public IFilmsPanel {
    DECLARE_DYNCREATE(CFilmsView)
    DECLARE_MESSAGE_MAP()

public:
    CFilmsView();
    ~CFilmsView() override;

    /// The living panel, null while there is none.
    static CFilmsView* GetPanel();
    /// The plug-in object's panel is one of these from now on.
    static void OfferTo(IPluginImpl& plugin);

    /// Makes the page, the tab and the scenario window in the first update, refreshes the list in each.
    void OnUpdate(CView* sender, LPARAM hint, CObject* object) override;
    void RefreshMovies() override;

    CTabCtrl tabCtrl;
    int currentTab = -1; ///< -1 before the first update
    bool firstUpdate = true;
    IPluginImpl& films; ///< the plug-in object of this library
    CMoviesDialog moviesPage;

protected:
    void DoDataExchange(CDataExchange* exchange) override;

private:
    void OnTabChanged(NMHDR* notification, LRESULT* result);
    void CreatePages();
    void ShowPage(int index);
};
