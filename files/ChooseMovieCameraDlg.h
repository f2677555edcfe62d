#pragma once

#include "framework/Dialog.h"
#include "framework/ListBox.h"

#include <string>

class IFilm;

/// The dialog "Choose camera": the cameras of a film in the order of its tracks. Modal; the caller sets film
/// and name, and reads the name after OK. The film is looked at only when the dialog opens.
class CChooseMovieCameraDlg : public CDialog {
    DECLARE_MESSAGE_MAP()

public:
    explicit CChooseMovieCameraDlg(CWnd* parentWnd = nullptr);

    IFilm* film = nullptr; ///< null for an empty list; may go while the dialog is open
    std::string name;      ///< selected at first; after OK the selected one, empty for none

    CListBox list;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;

private:
    void FillList();
    void SelectName();
};
