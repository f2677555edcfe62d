#include "files/AddCameraDlg.h"

#include "framework/DataExchange.h"
#include "framework/MessageBox.h"
#include "framework/UserNote.h"
#include "plugin/session/FilmSession.h"
#include "resources/resource.h"

CAddCameraDlg::CAddCameraDlg(const FilmSession& shown, CWnd* parentWnd)
    : CDialog(IDD_ADD_CAMERA, parentWnd), session(shown) {
}

void CAddCameraDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_CAMERA_NAME, name);
}

void CAddCameraDlg::OnOK() {
    if (!UpdateData(TRUE)) {
        return;
    }
    const IFilm* film = session.GetCurrentFilm();
    if (film == nullptr) {
        AfxMessageBox(IDS_NO_FILM);
    } else if (film->FindCamera(name) != nullptr) {
        NoteForUser("Another camera of the film is called \"" + name + "\".");
        AfxMessageBox(IDC_CREATE_CAMERA_FRAME); // Required: this text stands for a name that is taken.
    } else {
        CDialog::OnOK();
    }
}
