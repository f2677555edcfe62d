#pragma once

#include "framework/Button.h"
#include "framework/Dialog.h"
#include "framework/ListBox.h"
#include "plugin/base/Watch.h"
#include "plugin/contract/Film.h"

class IPluginImpl;

/// The page "Movies" of the panel: the level's films. A child of the panel's tab control.
class CMoviesDialog : public CDialog, public Watched {
    DECLARE_MESSAGE_MAP()

public:
    explicit CMoviesDialog(IPluginImpl& newPlugin) : plugin(newPlugin) {}

    /// Fills the list anew and sets the buttons; after each change of the level's films.
    void Refresh();
    void FillList();
    void UpdateButtons();
    /// The film of the selected line, null for "<none>", without a line or if the film is gone.
    IFilm* GetSelectedFilm() const;

    CListBox list;
    CButton deleteButton;
    CButton validateButton;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    /// Return and Escape leave the page as it is.
    void OnOK() override {}
    void OnCancel() override {}

private:
    IPluginImpl& plugin; ///< outlives the page

    void OnAdd();
    void OnDelete();
    void OnValidate();
    void OnSelectionChanged();
    void OnListDoubleClick();
};
