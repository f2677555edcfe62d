#include "files/MoviesDialog.h"

#include "files/ValidateMovie.h"
#include "framework/DataExchange.h"
#include "framework/UserNote.h"
#include "plugin/PluginImpl.h"
#include "resources/resource.h"

BEGIN_MESSAGE_MAP(CMoviesDialog, CDialog)
ON_BN_CLICKED(IDC_MOVIE_ADD, &CMoviesDialog::OnAdd)
ON_BN_CLICKED(IDC_MOVIE_DELETE, &CMoviesDialog::OnDelete)
ON_BN_CLICKED(IDC_MOVIE_VALIDATE, &CMoviesDialog::OnValidate)
ON_LBN_SELCHANGE(IDC_MOVIE_LIST, &CMoviesDialog::OnSelectionChanged)
ON_LBN_DBLCLK(IDC_MOVIE_LIST, &CMoviesDialog::OnListDoubleClick)
END_MESSAGE_MAP()

void CMoviesDialog::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_MOVIE_LIST, list);
    DDX_Control(exchange, IDC_MOVIE_DELETE, deleteButton);
    DDX_Control(exchange, IDC_MOVIE_VALIDATE, validateButton);
}

void CMoviesDialog::Refresh() {
    FillList();
    UpdateButtons();
}

void CMoviesDialog::FillList() {
    list.SetRedraw(false);
    list.ResetContent();
    if (plugin.GetFilmManager() != nullptr) {
        const int none = list.AddString("<none>");
        list.SetItemData(none, 0);
        for (int index = 0; index < IFilmManager::kFilms; ++index) {
            IFilm* film = plugin.GetFilmByIndex(index);
            if (film == nullptr) {
                continue;
            }
            const int line = list.AddString(film->name != nullptr ? film->name : "");
            list.SetItemData(line, reinterpret_cast<UINT_PTR>(film));
            if (film == plugin.GetCurrentFilm()) {
                list.SetCurSel(line);
            }
        }
    }
    list.SetRedraw(true);
}

void CMoviesDialog::UpdateButtons() {
    const bool hasFilm = GetSelectedFilm() != nullptr;
    deleteButton.EnableWindow(hasFilm);
    validateButton.EnableWindow(hasFilm);
}

IFilm* CMoviesDialog::GetSelectedFilm() const {
    const int line = list.GetCurSel();
    if (line == LB_ERR) {
        return nullptr;
    }
    auto* film = reinterpret_cast<IFilm*>(list.GetItemData(line));
    return plugin.FilmExists(film) ? film : nullptr; // the level may have changed under the list
}

// Leaving and opening a film may ask the user, and the panel may go with its page meanwhile.

void CMoviesDialog::OnAdd() {
    const Watch<CMoviesDialog> page(this);
    if (plugin.editor != nullptr) {
        plugin.editor->ClearSelection();
    }
    if (!page.IsAlive()) {
        return;
    }
    const int index = plugin.CreateFilm();
    if (index >= 0) {
        plugin.SelectFilmByIndex(index);
        if (!page.IsAlive()) {
            return;
        }
        FillList();
    } else if (plugin.GetFilmManager() != nullptr) {
        NoteForUser("No film was added: a level holds " + std::to_string(IFilmManager::kFilms) + " at most.");
    }
    UpdateButtons();
}

void CMoviesDialog::OnDelete() {
    IFilm* film = GetSelectedFilm();
    if (film == nullptr) {
        return;
    }
    const Watch<CMoviesDialog> page(this);
    plugin.DeleteFilm(film);
    if (page.IsAlive()) {
        Refresh();
    }
}

void CMoviesDialog::OnValidate() {
    ValidateMovie(plugin, GetSelectedFilm());
}

void CMoviesDialog::OnSelectionChanged() {
    const Watch<CMoviesDialog> page(this);
    if (plugin.editor != nullptr) {
        plugin.editor->ClearSelection();
    }
    if (page.IsAlive()) {
        plugin.SetCurrentFilm(GetSelectedFilm());
    }
    if (page.IsAlive()) {
        UpdateButtons();
    }
}

void CMoviesDialog::OnListDoubleClick() {
    IScenarioWindow* scenario = plugin.scenarioDlg;
    if (scenario != nullptr && !scenario->IsVisible()) {
        scenario->Show();
    }
}
