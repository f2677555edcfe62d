#pragma once

#include "host/stage/headless/Headless.h"
#include "host/stage/headless/StopSignals.h"
#include "host/stage/render/LevelScene.h"
#include "host/stage/render/Renderer.h"

#include <functional>

namespace headless {

class FilmSounds;

/// Plays one film frame by frame and shows what its cameras see.
class FilmPlayback {
public:
    FilmPlayback(HeadlessHost& filmHost, IFilm& playedFilm, const HeadlessOptions& asked,
                 const StopSignals& stopSignals);

    /// False with a reason if the machine can't draw.
    bool Prepare(std::string& error);
    /// Draws frames `first` to `last`, both included. Throws Stopped between two frames.
    void Play(int first, int last, const std::function<void(int frame, const render::RenderImage&)>& onFrame);
    /// Plays the same frames for their sound alone.
    void PlaySound(int first, int last, FilmSounds& sounds);

private:
    void ForEachFrame(int first, int last, const std::function<void(int frame, float time)>& onFrame);
    render::RenderCamera Camera() const;
    const float* ListenerMatrix() const;
    bool HasBlackBars() const;

    HeadlessHost& host;
    IFilm& film;
    const HeadlessOptions& options;
    const StopSignals& signals;
    render::LevelScene scene;
    std::unique_ptr<render::Renderer> renderer;
};

/// Blackens the upper and lower edge so that a picture of 2.35 to 1 remains.
void DrawBlackBars(render::RenderImage& image);

} // namespace headless
