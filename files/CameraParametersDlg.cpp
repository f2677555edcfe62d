#include "files/CameraParametersDlg.h"

#include "framework/DataExchange.h"
#include "framework/MessageBox.h"
#include "framework/UserNote.h"
#include "keys/views/TimedTrackKey.h"
#include "plugin/session/FilmSession.h"
#include "resources/resource.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

/// Seconds by which lengths may differ that count as one.
constexpr float kSameLength = 0.00001f;

constexpr std::pair<UINT, int> kLoopButtons[] = {
    {IDC_CAMERA_NO_LOOP, LoopMode::None},
    {IDC_CAMERA_LOOP, LoopMode::Loop},
    {IDC_CAMERA_SMOOTH_LOOP, LoopMode::SmoothLoop},
    {IDC_CAMERA_PING_PONG, LoopMode::PingPong},
};

/// The fold state and filter of the camera's row go along. What is still kept of a former camera of the new
/// name makes room.
void RenameStore(std::list<CPluginFilmsParams>& stores, const std::string& film, const std::string& from,
                 const std::string& to) {
    const auto isOf = [&film](const std::string& camera) {
        return [&film, &camera](const MovieParamsRecord& record) {
            return record.filmName == film && record.objectName == camera;
        };
    };
    const bool isKept = std::ranges::any_of(stores, [&](const CPluginFilmsParams& store) {
        return std::ranges::any_of(store.records, isOf(from));
    });
    if (!isKept) {
        return;
    }
    for (auto store = stores.begin(); store != stores.end();) {
        const bool madeRoom = store->records.remove_if(isOf(to)) != 0;
        for (MovieParamsRecord& record : store->records) {
            record.objectName = isOf(from)(record) ? to : record.objectName;
        }
        store = madeRoom && store->records.empty() ? stores.erase(store) : std::next(store);
    }
}

} // namespace

BEGIN_MESSAGE_MAP(CCameraParametersDlg, CDialog)
ON_CONTROL_RANGE(BN_CLICKED, IDC_CAMERA_NO_LOOP, IDC_CAMERA_PING_PONG, &CCameraParametersDlg::OnLoopMode)
ON_CONTROL_RANGE(BN_CLICKED, IDC_CAMERA_SMOOTH_LOOP, IDC_CAMERA_SMOOTH_LOOP,
                 &CCameraParametersDlg::OnLoopMode)
ON_EN_CHANGE(IDC_ALL_LENGTH, &CCameraParametersDlg::OnLengthChanged)
END_MESSAGE_MAP()

CCameraParametersDlg::CCameraParametersDlg(FilmSession& shown, CWnd* parentWnd)
    : CDialog(IDD_CAMERA_PARAMETERS, parentWnd), session(shown) {
}

void CCameraParametersDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_CAMERA_NAME, name);
    farField.Exchange(exchange, IDC_FAR_PLANE, farPlane);
    nearField.Exchange(exchange, IDC_NEAR_PLANE, nearPlane);
    lengthField.Exchange(exchange, IDC_ALL_LENGTH, allLength);
}

BOOL CCameraParametersDlg::OnInitDialog() {
    watch.Begin(track);
    if (const CFilmCameraTrack* camera = AsCameraTrack(track)) {
        TakeFrom(*camera);
    }
    const BOOL result = CDialog::OnInitDialog();
    CheckLoopMode();
    lengthChanged = 0; // by the user only
    return result;
}

void CCameraParametersDlg::TakeFrom(const CFilmCameraTrack& camera) {
    name = oldName = camera.cameraName;
    farPlane = camera.farPlane;
    nearPlane = camera.nearPlane;
    const auto [shortest, longest] = std::ranges::minmax(camera.subTrackLength);
    allLength = longest - shortest < kSameLength ? longest : 0.0f;
    loopMode = camera.loopMode[0];
    loopSet = std::ranges::count(camera.loopMode, loopMode) == std::ssize(camera.loopMode) ? 1 : 0;
}

/// None is checked while the sub-tracks' modes differ.
void CCameraParametersDlg::CheckLoopMode() {
    for (const auto& [button, mode] : kLoopButtons) {
        const bool checked = loopSet != 0 && loopMode == mode;
        CheckDlgButton(static_cast<int>(button), checked ? BST_CHECKED : BST_UNCHECKED);
    }
}

void CCameraParametersDlg::OnLoopMode(UINT button) {
    for (const auto& [candidate, mode] : kLoopButtons) {
        if (candidate == button) {
            loopMode = mode;
            loopSet = 1;
        }
    }
    CheckLoopMode();
}

void CCameraParametersDlg::OnOK() {
    if (!UpdateData(TRUE)) {
        return;
    }
    IFilm* film = session.GetCurrentFilm();
    CFilmCameraTrack* camera = watch.Find();
    if (film == nullptr || (track != nullptr && camera == nullptr)) {
        AfxMessageBox(IDS_NO_FILM);
        return;
    }
    if (name != oldName && film->FindCamera(name) != nullptr) {
        NoteForUser("Another camera of the film is called \"" + name + "\".");
        AfxMessageBox(IDC_CREATE_CAMERA_FRAME); // Required: this text stands for a name that is taken.
        return;
    }
    if (camera != nullptr) {
        GiveTo(*camera);
    }
    RenameCamera(*film);
    if (IMainCtrl* control = session.GetMainCtrl()) {
        control->ShowFilm(film, /*flag*/ true);
    }
    EndDialog(IDOK);
}

void CCameraParametersDlg::GiveTo(CFilmCameraTrack& camera) const {
    camera.cameraName = name;
    camera.farPlane = farPlane;
    camera.nearPlane = nearPlane;
    if (lengthChanged != 0) {
        std::ranges::fill(camera.subTrackLength, allLength);
    }
    if (loopSet != 0) {
        std::ranges::fill(camera.loopMode, loopMode);
    }
}

/// In the keys that show the camera and in what is kept of its row.
void CCameraParametersDlg::RenameCamera(const IFilm& film) const {
    if (name == oldName) {
        return;
    }
    CTimedTrackKey last;
    for (CFilmTrack* each : film.tracks) {
        for (IFilmKey* key : each->keys) {
            if (key->kind == KeyKind::Camera && static_cast<CFilmCameraKey*>(key)->cameraName == oldName) {
                key->SetValue(&name);
                last.record = key;
            }
        }
    }
    RenameStore(session.cameraParams, film.name, oldName, name);
    IKeyAttributesDlg* attributes = session.keyAttributesDlg.get();
    if (attributes != nullptr && last.record != nullptr) {
        attributes->SetKey(&last, /*refresh*/ true); // only read anew: it would write the old name back else
    }
}
