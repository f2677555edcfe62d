#include "files/MovieFrameDlg.h"

#include "framework/DataExchange.h"
#include "framework/MessageBox.h"
#include "framework/UserNote.h"
#include "keys/properties/NumberText.h"
#include "plugin/session/FilmSession.h"
#include "resources/resource.h"

#include <cmath>
#include <cstdio>
#include <string>

CMovieFrameDlg::CMovieFrameDlg(const FilmSession& shown, CWnd* parentWnd)
    : CDialog(IDD_MOVIE_FRAME, parentWnd), session(shown) {
}

void CMovieFrameDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_MOVIE_FRAME, text);
}

BOOL CMovieFrameDlg::OnInitDialog() {
    fps = session.framesPerSecond;
    film = session.GetCurrentFilm();
    if (film == nullptr) {
        text.assign(1, '0');
        AfxMessageBox(IDS_FRAME_NO_FILM);
        EndDialog(IDCANCEL);
        return FALSE;
    }
    length = film->length;
    oldText = text;
    return CDialog::OnInitDialog();
}

/// The frame behind the last whole one counts too. Float32, since a film of 10.1 seconds has 303 frames.
double CMovieFrameDlg::LastFrame() const {
    return std::ceil(static_cast<float>(fps) * length);
}

bool CMovieFrameDlg::IsInFilm() const {
    const int frame = IntFromText(text.c_str());
    return frame >= 0 && !(static_cast<double>(frame) > LastFrame());
}

void CMovieFrameDlg::OnOK() {
    if (!UpdateData(TRUE)) {
        return;
    }
    if (!IsInFilm()) {
        char last[32];
        std::snprintf(last, sizeof last, "%.0f", LastFrame());
        NoteForUser(std::string("The film has the frames 0 to ") + last + ".");
        AfxMessageBox(IDS_FRAME_RANGE);
        return; // the user corrects it
    }
    EndDialog(IDOK);
}

/// Required: a number that could have been taken stays in the text; it is the caller who doesn't use it.
void CMovieFrameDlg::OnCancel() {
    if (UpdateData(TRUE) && !IsInFilm()) {
        text = oldText;
    }
    CDialog::OnCancel();
}
