#include "plugin/PluginImpl.h"

#include "keys/rules/FrameTimes.h"
#include "plugin/session/LevelWatch.h"

#include <memory>

namespace {

constexpr float kNewFilmLength = 10.0f;
/// Camera keys from this priority on never show.
constexpr int kPriorityLimit = 2000;

bool IsIndex(int index) {
    return index >= 0 && index < IFilmManager::kFilms;
}

float NotNegative(float time) {
    return time > 0.0f ? time : 0.0f; // NaN too gives 0
}

} // namespace

void IPluginImpl::SelectFilmByIndex(int index) {
    SetCurrentFilm(GetFilmByIndex(index));
}

void IPluginImpl::SetCurrentFilm(IFilm* film) {
    IFilm* old = currentFilm;
    isPlaying = 0;
    if (old != nullptr) {
        old->Stop();
        RestoreMatrices();
    }
    lightHelpers.SetLightsForFilm(old, /*hide*/ true);
    const float newTime = film == old ? currentTime : 0.0f;
    if (old != nullptr) {
        old->Deactivate();
    }
    currentFilm = film;
    if (film != nullptr) {
        film->Activate();
    }
    if (IFilmManager* manager = GetFilmManager()) {
        manager->currentFilm = film;
    }
    lightHelpers.SetLightsForFilm(film, /*hide*/ false);
    RebuildWindow();
    SetTime(newTime, /*fromWindow*/ false);
    PoseForOpening();
    if (editor != nullptr) {
        editor->RedrawViews();
    }
}

/// An unvalidated film is posed without the event and the view copy of SetFrame.
void IPluginImpl::PoseForOpening() {
    if (currentFilm == nullptr) {
        return;
    }
    if (currentFilm->validated != 0) {
        SetFrame(currentTime, kNoPrevious);
    } else {
        PoseAllTracks();
    }
}

void IPluginImpl::PoseAllTracks() {
    for (CFilmTrack* track : currentFilm->tracks) {
        if (!track->IsA(ClassId::LevelTrack)) {
            track->ApplyAt(currentTime, kNoPrevious, 0);
        }
    }
}

int IPluginImpl::CreateFilm() {
    IFilmManager* manager = GetFilmManager();
    if (manager == nullptr) {
        return -1;
    }
    const int index = manager->AllocateFilm();
    IFilm* film = GetFilmByIndex(index);
    if (film == nullptr) {
        return -1;
    }
    const std::unique_ptr<char[]> name(manager->NewFilmName());
    film->SetName(name.get());
    film->AddTrack(film->CreateLevelTrack());
    AddSunTrack(film);
    ResetFilmViewSettings(index);
    film->length = kNewFilmLength;
    return index;
}

void IPluginImpl::DeleteFilm(IFilm* film) {
    if (film == nullptr || GetFilmManager() == nullptr) {
        return;
    }
    if (film == currentFilm) {
        const LevelWatch watch(*this);
        SetCurrentFilm(nullptr);
        if (!watch.IsSameLevel() || !FilmExists(film)) {
            return; // gone while the user was asked about the key on show
        }
    }
    DeleteMovieParams(film);
    trackVisualizer.RemoveCameraTracksOf(film);
    lightHelpers.ForgetFilm(film);
    if (suspendedFilm == film) {
        suspendedFilm = nullptr;
    }
    GetFilmManager()->DeleteFilm(film->index);
}

void IPluginImpl::SetTime(float time, bool fromWindow) {
    const float previous = currentTime;
    currentTime = NotNegative(time);
    if (!fromWindow && scenarioDlg != nullptr) {
        scenarioDlg->SetTime(currentTime);
    }
    SetFrame(currentTime, previous);
}

void IPluginImpl::SetFrame(float time, float previous) {
    if (currentFilm == nullptr) {
        return;
    }
    if (isPlaying == 0 || previous > time) {
        previous = kNoPrevious;
    }
    currentFilm->SetTime(time, previous);
    if (editor != nullptr) {
        editor->BroadcastEvent(EventCode::ObjectsMoved, pluginId, nullptr);
    }
    // The event before may have run other code: the film is looked at anew.
    views.CopyCamera();
    cameraHelpers.UpdateObjects(trackVisualizer.renderTrack, time);
    if (editor != nullptr) {
        editor->RedrawViews();
    }
}

void IPluginImpl::GetCameraNameAtTime(std::string& name, float time, IFilmKey** key) const {
    const CFilmCameraKey* winner = nullptr;
    if (currentFilm != nullptr && currentFilm->mainTrack != nullptr) {
        int best = kPriorityLimit;
        for (const IFilmKey* candidate : currentFilm->mainTrack->keys) {
            if (candidate->kind != KeyKind::Camera || candidate->time > time || candidate->endTime <= time) {
                continue;
            }
            const auto* camera = static_cast<const CFilmCameraKey*>(candidate);
            if (camera->priority < best) {
                best = camera->priority;
                winner = camera;
            }
        }
    }
    name = winner != nullptr ? winner->cameraName : std::string();
    if (key != nullptr) {
        *key = const_cast<CFilmCameraKey*>(winner);
    }
}

void IPluginImpl::ResetFilmViewSettings(int index) {
    if (IsIndex(index)) {
        filmViewSettings[static_cast<std::size_t>(index)].Reset();
    }
}

void IPluginImpl::SetFilmViewSettings(int index, const FilmViewSettings& update) {
    if (IsIndex(index)) {
        filmViewSettings[static_cast<std::size_t>(index)].Apply(update);
    }
}
