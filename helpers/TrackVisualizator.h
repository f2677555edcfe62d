#pragma once

#include "plugin/contract/Film.h"

#include <array>
#include <cstdint>
#include <list>
#include <memory>

class FilmSession;

/// Draws the eye's and the target's path of the camera under edit into the 3D views. A member of the plug-in
/// object.
class CTrackVisualizator {
public:
    explicit CTrackVisualizator(const FilmSession& openSession) : session(openSession) { SetDefaults(); }
    virtual ~CTrackVisualizator() = default;
    CTrackVisualizator(const CTrackVisualizator&) = delete;
    CTrackVisualizator& operator=(const CTrackVisualizator&) = delete;

    /// The track to draw from now on, null for none. Its record is made once and kept.
    void SetRenderTrack(CFilmTrack* track);
    /// Samples the path, which moves the film, poses the film again and draws into the view being drawn.
    void Draw();
    /// For a track that is about to go: its record goes, and it is drawn no more.
    void RemoveTrack(CFilmTrack* track);
    void RemoveCameraTracksOf(IFilm* film);
    /// Drops all records.
    void Reset();

    using Color = std::array<float, 4>; ///< r, g, b, a

    std::list<std::unique_ptr<TrackRenderData>> renderData;
    std::array<Color, 2> colors{}; ///< eye path, target path
    std::int32_t detail = 0;
    CFilmTrack* renderTrack = nullptr;
    TrackRenderData* renderTrackData = nullptr; ///< of renderTrack; owned by renderData

private:
    void SetDefaults();
    void DrawStrip(PointStrip& strip, const Color& color) const;

    const FilmSession& session;
};
