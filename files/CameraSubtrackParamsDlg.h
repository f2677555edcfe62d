#pragma once

#include "files/CameraWatch.h"
#include "files/KeptNumber.h"
#include "framework/Dialog.h"
#include "plugin/contract/KeyKind.h"

#include <cstdint>

/// The dialog "Track parameters": loop mode and length of one of a camera's four sub-tracks. Modal; the
/// caller sets track and kind. OK changes the camera; posing the film is left to the caller.
class CCameraSubtrackParamsDlg : public CDialog {
    DECLARE_MESSAGE_MAP()

public:
    explicit CCameraSubtrackParamsDlg(const FilmSession& session, CWnd* parentWnd = nullptr);

    CFilmTrack* track = nullptr;       ///< of a camera; may go while the dialog is open
    std::int32_t kind = KeyKind::None; ///< 16 to 19; others show zeros and change nothing
    std::int32_t loopMode = 0;
    float length = 0.0f; ///< seconds

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnLoopMode(UINT button);

private:
    bool HasSubTrack() const;
    void CheckLoopMode();

    CameraWatch watch;
    KeptNumber lengthField;
};
