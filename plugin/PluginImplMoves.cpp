#include "plugin/PluginImpl.h"

#include "keys/views/OtherFilmKeys.h"

#include <algorithm>

void IPluginImpl::RecordTransformKeys(EditorObject* object, IFilm* film, float time, const float* newMatrix,
                                      const float* oldMatrix) {
    CFilmTrack* track = FindTrackOfObject(film, object);
    if (track == nullptr) {
        return;
    }
    if (film == currentFilm) {
        if (IMainCtrl* control = GetMainCtrl()) {
            control->RecordObjectKeys(object, std::max(time, 0.0f), newMatrix, oldMatrix);
        }
        return;
    }
    const IFilmManager* manager = GetFilmManager();
    if (manager == nullptr || manager->keyFactory == nullptr) {
        return;
    }
    // Required: keys of a film that is not shown go to the present time, whatever time was given.
    OtherFilmKeys keys(*this, *track, currentTime);
    const Vector3 reference = ReferenceRotation(keys.Rotations(), *track, currentTime);
    RecordTransform(keys, kOtherFilmRules, reference, newMatrix, oldMatrix);
}
