#include "files/CameraSubtrackParamsDlg.h"

#include "framework/DataExchange.h"
#include "framework/MessageBox.h"
#include "resources/resource.h"

BEGIN_MESSAGE_MAP(CCameraSubtrackParamsDlg, CDialog)
ON_CONTROL_RANGE(BN_CLICKED, IDC_TRACK_NO_LOOP, IDC_TRACK_PING_PONG, &CCameraSubtrackParamsDlg::OnLoopMode)
END_MESSAGE_MAP()

CCameraSubtrackParamsDlg::CCameraSubtrackParamsDlg(const FilmSession& session, CWnd* parentWnd)
    : CDialog(IDD_TRACK_PARAMETERS, parentWnd), watch(session) {
}

void CCameraSubtrackParamsDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    lengthField.Exchange(exchange, IDC_TRACK_LENGTH, length);
}

bool CCameraSubtrackParamsDlg::HasSubTrack() const {
    return track != nullptr && kind >= KeyKind::CameraPosition && kind <= KeyKind::FieldOfView;
}

BOOL CCameraSubtrackParamsDlg::OnInitDialog() {
    watch.Begin(track);
    const CFilmCameraTrack* camera = HasSubTrack() ? AsCameraTrack(track) : nullptr;
    loopMode = camera != nullptr ? camera->loopMode[kind - KeyKind::CameraPosition] : 0;
    length = camera != nullptr ? camera->subTrackLength[kind - KeyKind::CameraPosition] : 0.0f;
    const BOOL result = CDialog::OnInitDialog();
    CheckLoopMode();
    return result;
}

/// The buttons stand in the order of the modes.
void CCameraSubtrackParamsDlg::CheckLoopMode() {
    for (int mode = LoopMode::None; mode <= LoopMode::PingPong; ++mode) {
        CheckDlgButton(IDC_TRACK_NO_LOOP + mode, mode == loopMode ? BST_CHECKED : BST_UNCHECKED);
    }
}

void CCameraSubtrackParamsDlg::OnLoopMode(UINT button) {
    loopMode = static_cast<std::int32_t>(button) - IDC_TRACK_NO_LOOP;
    CheckLoopMode();
}

void CCameraSubtrackParamsDlg::OnOK() {
    if (!UpdateData(TRUE)) {
        return;
    }
    if (HasSubTrack()) {
        CFilmCameraTrack* camera = watch.Find();
        if (camera == nullptr) {
            AfxMessageBox(IDS_NO_FILM);
            return;
        }
        camera->loopMode[kind - KeyKind::CameraPosition] = loopMode;
        camera->subTrackLength[kind - KeyKind::CameraPosition] = length;
    }
    EndDialog(IDOK);
}
