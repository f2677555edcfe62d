#include "framework/MessageBox.h"
#include "keys/attributes/AttrBrowsers.h"
#include "keys/attributes/FillAndApply.h"
#include "keys/attributes/RowAccess.h"
#include "plugin/contract/Film.h"

namespace {

constexpr const char* kCategory = "CAMERA";
constexpr const char* kName = "Camera";
constexpr const char* kDelay = "Delay time"; // seconds
constexpr const char* kQuestion =
    "There is no camera with such a name. Movie will be invalid.\n Do you still want to set that name?";

bool FilmHasCamera(const IFilmKey& record, const std::string& name) {
    const IFilm* film = record.track != nullptr ? record.track->film : nullptr;
    return film != nullptr && film->FindCamera(name) != nullptr;
}

} // namespace

void FillCamera(AttrRows& rows, CFilmCameraKey& record) {
    AddText(rows, kName, kCategory, record.cameraName, &BrowseCamera);
    AddFloat(rows, kDelay, kCategory, record.delayTime);
}

void ApplyCamera(const AttrRows& rows, CFilmCameraKey& record, const AttrScope& scope) {
    std::string name;
    if (!ReadText(rows, kName, kCategory, name)) {
        return;
    }
    float delay = 0.0f;
    const bool hasDelay = ReadFloat(rows, kDelay, kCategory, delay);
    bool take = name.empty() || FilmHasCamera(record, name);
    if (!take) {
        take = AfxMessageBox(kQuestion, MB_YESNO) == IDYES;
        if (scope.alive && !scope.alive()) {
            return;
        }
    }
    if (take) {
        record.SetValue(&name);
    }
    if (hasDelay) {
        record.delayTime = delay;
    }
}
