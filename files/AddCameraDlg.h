#pragma once

#include "framework/Dialog.h"

#include <string>

class FilmSession;

/// The dialog "Add camera": asks for a name that no camera of the current film has. Modal; the caller fills
/// the name and reads it after OK.
class CAddCameraDlg : public CDialog {
public:
    explicit CAddCameraDlg(const FilmSession& shown, CWnd* parentWnd = nullptr);

    std::string name;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;

private:
    const FilmSession& session; ///< outlives the dialog
};
