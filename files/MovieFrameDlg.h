#pragma once

#include "framework/Dialog.h"

#include <string>

class FilmSession;
class IFilm;

/// The dialog "Set movie frame": asks for a frame of the current film by its number. Modal; the caller fills
/// the text and reads it after OK. Without a film it says so and doesn't open.
class CMovieFrameDlg : public CDialog {
public:
    explicit CMovieFrameDlg(const FilmSession& shown, CWnd* parentWnd = nullptr);

    int fps = 0;           ///< frames a second
    IFilm* film = nullptr; ///< looked at only when the dialog opens
    float length = 0.0f;   ///< seconds, of the film as the dialog opened
    std::string oldText;   ///< as the dialog opened
    std::string text;      ///< the frame's number; what begins with no number is 0

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;

private:
    double LastFrame() const;
    bool IsInFilm() const;

    const FilmSession& session; ///< outlives the dialog
};
