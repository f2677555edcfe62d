#include "plugin/PluginImpl.h"

#include "framework/Pump.h"
#include "framework/Resource.h"
#include "plugin/PluginResources.h"

#include <cstdio>

namespace {

constexpr int kSpaceKey = 32;
constexpr int kPlayShortcut = 0;
/// Plays inside plays. A ruler that is dragged in a playing film starts one at each move; deeper ones are
/// left to the loop that runs, so that the stack stays bounded.
constexpr int kDeepestPlay = 32;
/// Degrees to radians, float32 as the host's views take it.
constexpr float kRadiansPerDegree = 0.017453292f;
/// Milliseconds to seconds. Float32 and widened: films play by its value, not by an exact 0.001.
constexpr double kSecondsPerMillisecond = 0.001f;

double ClockMilliseconds() {
    return static_cast<double>(timeGetTime()); // an unsigned 32-bit count
}

} // namespace

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
    CopyCameraToViews();
    cameraHelpers.UpdateObjects(trackVisualizer.renderTrack, time);
    if (editor != nullptr) {
        editor->RedrawViews();
    }
}

void IPluginImpl::CopyCameraToViews() {
    // The event before may have run other code: the film is looked at anew.
    const CFilmLevelTrack* main = currentFilm != nullptr ? AsLevelTrack(currentFilm->mainTrack) : nullptr;
    const CFilmCameraTrack* camera =
        main != nullptr && main->cameraHolder != nullptr ? main->cameraHolder->activeCamera : nullptr;
    IViewManager* views = level != nullptr ? level->GetViewManager() : nullptr;
    if (camera == nullptr || camera->cameraData == nullptr || views == nullptr) {
        return;
    }
    const CameraData& record = camera->cameraData->data;
    for (const int number : attachedViews) {
        IView* attached = views->GetView(number);
        if (attached == nullptr || attached->camera == nullptr) {
            continue;
        }
        attached->camera->data = record;
        attached->SetProjection(camera->fieldOfView * kRadiansPerDegree, record.recordNear, record.recordFar,
                                0);
    }
}

void IPluginImpl::Play(float) {
    if (isPlaying != 0) {
        StopPlaying();
    }
    if (currentFilm == nullptr) {
        return;
    }
    ValidateFilm(currentFilm);
    isPlaying = 1;
    StartTiming();
    if (playDepth >= kDeepestPlay) {
        return;
    }
    ++playDepth;
    while (isPlaying != 0 && PumpMessages() && AdvancePlaying()) {
    }
    --playDepth;
}

/// The loss of precision of the float32 origin is part of how films play.
void IPluginImpl::StartTiming() {
    playOrigin = static_cast<float>(ClockMilliseconds() - static_cast<double>(currentTime) * 1000.0);
}

/// Dispatches what waits in the thread's queue. False once the film no longer plays. The press of the
/// space bar that stops the film reaches nothing else.
bool IPluginImpl::PumpMessages() {
    MSG message;
    while (PeekMessage(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_KEYDOWN && message.wParam == kSpaceKey && isPlaying == 1) {
            StopPlaying();
            return false;
        }
        TranslateMessage(&message);
        DispatchMessage(&message);
    }
    return isPlaying != 0;
}

/// Shows the frame of the present clock. False once the film is over; the last frame shown stays.
bool IPluginImpl::AdvancePlaying() {
    const double time = (ClockMilliseconds() - static_cast<double>(playOrigin)) * kSecondsPerMillisecond;
    if (currentFilm == nullptr || time > static_cast<double>(currentFilm->length)) {
        StopPlaying();
        return false;
    }
    SetTime(static_cast<float>(time), /*fromWindow*/ false);
    return true;
}

void IPluginImpl::StopPlaying() {
    isPlaying = 0;
    if (currentFilm != nullptr) {
        currentFilm->Stop();
    }
}

void IPluginImpl::OnShortcut(Word, int number, Word) {
    const ResourceScope resources(PluginResources());
    if (number != kPlayShortcut || currentFilm == nullptr) {
        return;
    }
    if (isPlaying != 0) {
        StopPlaying();
    } else {
        Play(currentTime);
    }
}

bool IPluginImpl::ValidateFilm(IFilm* film) {
    if (film == nullptr) {
        return false;
    }
    film->validated = 1;
    return true;
}

void IPluginImpl::WriteValidationFile(const EditorObject& root) const {
    const std::string path = root.name + "FilmsValidation.txt";
    FILE* report = std::fopen(path.c_str(), "wt");
    if (const IFilmManager* manager = GetFilmManager()) {
        for (IFilm* film : manager->films) {
            if (film != nullptr) {
                film->validated = 1;
            }
        }
    }
    if (report != nullptr) {
        std::fclose(report);
    }
}
