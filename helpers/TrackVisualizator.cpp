#include "helpers/TrackVisualizator.h"

#include "files/base/Log.h"
#include "plugin/session/FilmSession.h"

#include <algorithm>
#include <new>

namespace {

/// Segments between neighbouring keys.
constexpr std::int32_t kDetail = 40;
constexpr CTrackVisualizator::Color kEyeColor{1.0f, 1.0f, 1.0f, 1.0f};
constexpr CTrackVisualizator::Color kTargetColor{1.0f, 0.0f, 1.0f, 1.0f};

bool ClosesPath(std::int32_t loopMode) {
    return loopMode == LoopMode::Loop || loopMode == LoopMode::SmoothLoop;
}

} // namespace

void CTrackVisualizator::SetDefaults() {
    colors = {kEyeColor, kTargetColor};
    detail = kDetail;
    renderTrack = nullptr;
    renderTrackData = nullptr;
}

void CTrackVisualizator::SetRenderTrack(CFilmTrack* track) {
    renderTrack = track;
    renderTrackData = nullptr;
    if (track == nullptr) {
        return;
    }
    const auto known = std::ranges::find(renderData, track, [](const auto& record) { return record->track; });
    if (known != renderData.end()) {
        renderTrackData = known->get();
        return;
    }
    std::unique_ptr<TrackRenderData> made(new (std::nothrow) TrackRenderData);
    if (made == nullptr) {
        DebugPrint("[CTrackVisualizator::SetRenderTrack] cannot create render track data\n");
        return;
    }
    made->track = track;
    made->detail = detail;
    renderTrackData = renderData.emplace_back(std::move(made)).get();
}

void CTrackVisualizator::Draw() {
    const CFilmCameraTrack* camera = AsCameraTrack(renderTrack);
    if (renderTrackData == nullptr || camera == nullptr || camera->film == nullptr ||
        session.view == nullptr) {
        return;
    }
    renderTrackData->detail = detail;
    camera->film->SampleCameraPath(renderTrackData, 1);
    camera->film->SetTime(session.currentTime, FilmSession::kNoPrevious);

    PointStrip& eyePath = renderTrackData->strips[0];
    DrawStrip(eyePath, colors[0]);
    // Required by the look: a loop of the target alone closes the eye's path too, and the target's is never
    // closed.
    const bool closes = ClosesPath(camera->loopMode[0]) || ClosesPath(camera->loopMode[1]);
    if (closes && eyePath.count > 0) {
        session.view->DrawLine(eyePath.At(0)->Data(), eyePath.At(eyePath.count - 1)->Data(),
                               colors[0].data());
    }
    DrawStrip(renderTrackData->strips[1], colors[1]);
}

void CTrackVisualizator::DrawStrip(PointStrip& strip, const Color& color) const {
    if (strip.count == 0) {
        return; // asking for a point would make one
    }
    IEditorView& view = *session.view;
    const Vector3* from = strip.At(0);
    for (std::int32_t point = 1; point < strip.count; ++point) {
        const Vector3* to = strip.At(point); // points never move, so the one before stays good
        view.DrawLine(from->Data(), to->Data(), color.data());
        from = to;
    }
}

void CTrackVisualizator::RemoveTrack(CFilmTrack* track) {
    if (track == renderTrack) {
        renderTrack = nullptr;
        renderTrackData = nullptr;
    }
    renderData.remove_if([track](const auto& record) { return record->track == track; });
}

void CTrackVisualizator::RemoveCameraTracksOf(IFilm* film) {
    if (film == nullptr) {
        return;
    }
    for (CFilmTrack* track : film->tracks) {
        if (AsCameraTrack(track) != nullptr) {
            RemoveTrack(track);
        }
    }
}

void CTrackVisualizator::Reset() {
    SetDefaults();
    renderData.clear();
}
