#pragma once

#include "files/CameraWatch.h"
#include "files/KeptNumber.h"
#include "framework/Dialog.h"

#include <cstdint>
#include <string>

class IFilm;

/// The dialog "Camera parameters": name and clipping planes of a camera, and loop mode and length of its four
/// sub-tracks at once. Modal; the caller sets the track. OK changes the camera, gives its new name to the
/// keys that name it, and shows the film anew.
class CCameraParametersDlg : public CDialog {
    DECLARE_MESSAGE_MAP()

public:
    explicit CCameraParametersDlg(FilmSession& shown, CWnd* parentWnd = nullptr);

    CFilmTrack* track = nullptr;    ///< of a camera; may go while the dialog is open
    std::int32_t loopMode = 0;      ///< of all sub-tracks, if loopSet
    std::int32_t loopSet = 0;       ///< the four modes are alike, or the user chose one for all
    std::int32_t lengthChanged = 0; ///< the user edited the text of the length
    std::string name;
    float farPlane = 0.0f;  ///< units
    float nearPlane = 0.0f; ///< units
    float allLength = 0.0f; ///< seconds; 0 while the four lengths differ
    std::string oldName;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnLoopMode(UINT button);
    void OnLengthChanged() { lengthChanged = 1; }

private:
    void TakeFrom(const CFilmCameraTrack& camera);
    void GiveTo(CFilmCameraTrack& camera) const;
    void CheckLoopMode();
    void RenameCamera(const IFilm& film) const;

    FilmSession& session; ///< outlives the dialog
    CameraWatch watch{session};
    KeptNumber farField;
    KeptNumber nearField;
    KeptNumber lengthField;
};
