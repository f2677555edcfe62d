#include "host/stage/headless/Headless.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/References.h"
#include "host/stage/headless/FilmPlayback.h"
#include "host/stage/headless/FilmSounds.h"
#include "host/stage/headless/FrameOutput.h"
#include "host/stage/headless/MissingFiles.h"
#include "host/stage/headless/Progress.h"
#include "host/stage/headless/SoundTrackFile.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

/// Sound of videos, frames a second.
constexpr int kSoundRate = 48000;

void Tell(std::FILE* messages, const std::string& text) {
    std::fprintf(messages, "stage: %s\n", text.c_str());
}

/// One run of the headless renderer.
class Run {
public:
    Run(const HeadlessOptions& asked, HeadlessHost& filmHost, std::FILE* stream)
        : options(asked), host(filmHost), messages(stream) {}

    int Execute() {
        try {
            const int result = OpenLevel() ? WriteFilm() : status;
            TellTroubles();
            return result;
        } catch (const OutputError& error) {
            Tell(messages, error.what());
        } catch (const sound::SoundError& error) {
            Tell(messages, error.what());
        } catch (const Stopped& stopped) {
            Tell(messages, stopped.what());
            return HeadlessExit::kStopped + stopped.signal;
        }
        return HeadlessExit::kOutput;
    }

private:
    bool OpenLevel() {
        try {
            TellMissing(host.Open(options.level));
        } catch (const engine::LevelFileError& error) {
            Tell(messages, error.what());
            status = HeadlessExit::kLevel;
            return false;
        }
        film = FindFilm();
        status = HeadlessExit::kFilm;
        return film != nullptr;
    }

    IFilm* FindFilm() {
        engine::FilmManager& films = host.Level().Data()->Films();
        std::string names;
        for (IFilm* other : films.films) {
            if (other != nullptr) {
                names += (names.empty() ? "\"" : ", \"") + std::string(other->name) + "\"";
            }
        }
        IFilm* found = films.FindFilm(options.film);
        if (found == nullptr) {
            Tell(messages, options.level + ": there is no film \"" + options.film + "\"; the level has " +
                               (names.empty() ? "none" : names));
        }
        return found;
    }

    int WriteFilm() {
        const int count = FrameCount(film->length, options.fps);
        const int last = options.lastFrame < 0 ? count - 1 : std::min(options.lastFrame, count - 1);
        if (options.firstFrame > last) {
            Tell(messages, "--frames starts at " + std::to_string(options.firstFrame) +
                               ", but the film's frames are 0 to " + std::to_string(count - 1));
            return HeadlessExit::kUsage;
        }
        TellTroubles();
        TellMissing(MissingFiles(host.Level(), host.Meshes(), *film));
        if (IsRefused()) {
            return HeadlessExit::kOutput;
        }
        FilmPlayback playback(host, *film, options, signals);
        std::string error;
        if (!playback.Prepare(error)) {
            Tell(messages, error);
            return HeadlessExit::kOutput;
        }
        FrameOutput output(options);
        const std::unique_ptr<SoundTrackFile> sound = MixSound(playback, last);
        if (IsRefused()) {
            return HeadlessExit::kOutput;
        }
        output.Start(sound != nullptr ? sound->Descriptor() : VideoPipe::kSilent);
        Progress progress(messages, last - options.firstFrame + 1);
        playback.Play(options.firstFrame, last, [&](int frame, const render::RenderImage& image) {
            output.Write(frame, image);
            progress.Show(frame - options.firstFrame + 1);
        });
        progress.Finish();
        output.Finish();
        return HeadlessExit::kDone;
    }

    /// The film's sound for a video; null for output without.
    std::unique_ptr<SoundTrackFile> MixSound(FilmPlayback& playback, int last) {
        if (options.video.empty() || FindProgram("ffmpeg").empty()) {
            return nullptr;
        }
        auto track = std::make_unique<SoundTrackFile>(options.video, kSoundRate);
        FilmSounds sounds(host.Level().Folder(), kSoundRate,
                          [&](const std::vector<float>& samples) { track->Writer().Write(samples); });
        if (!sounds.IsReady()) {
            TellMissing({"the sound library can't mix into memory; the video is silent"});
            return nullptr;
        }
        playback.PlaySound(options.firstFrame, last, sounds);
        TellMissing({sounds.Errors().begin(), sounds.Errors().end()});
        track->Writer().Finish();
        return track;
    }

    void TellMissing(const std::vector<std::string>& sentences) {
        for (const std::string& sentence : sentences) {
            Tell(messages, sentence);
        }
        missing += sentences.size();
    }

    void TellTroubles() { TellMissing(host.TakeTroubles()); }

    /// With --strict, whether something is missing; then it is told that nothing is written.
    bool IsRefused() const {
        if (!options.strict || missing == 0) {
            return false;
        }
        Tell(messages, "nothing was written, since --strict allows nothing to be missing");
        return true;
    }

    const HeadlessOptions& options;
    HeadlessHost& host;
    std::FILE* messages;
    const StopSignals signals;
    IFilm* film = nullptr;
    std::size_t missing = 0; ///< things told so far
    int status = HeadlessExit::kDone;
};

} // namespace

struct HeadlessHost::Own {
    mesh::GltfMeshLibrary meshes;
    engine::Level level;
};

HeadlessHost::HeadlessHost() = default;
HeadlessHost::~HeadlessHost() = default;

HeadlessHost::Own& HeadlessHost::Mine() {
    if (own == nullptr) {
        own = std::make_unique<Own>();
        own->level.SetMeshLibrary(&own->meshes);
    }
    return *own;
}

engine::Level& HeadlessHost::Level() {
    return Mine().level;
}

mesh::GltfMeshLibrary& HeadlessHost::Meshes() {
    return Mine().meshes;
}

engine::LevelMessages HeadlessHost::Open(const std::string& path) {
    Meshes().SetFolder(engine::LevelFolder(path));
    return engine::LoadLevel(Level(), path);
}

void HeadlessHost::Begin(IFilm& film) {
    film.Activate();
}

void HeadlessHost::Pose(IFilm& film, float time, float previous) {
    film.SetTime(time, previous);
}

void HeadlessHost::End(IFilm& film) {
    film.Stop();
    film.Deactivate();
}

int FrameCount(float filmSeconds, int fps) {
    if (!std::isfinite(filmSeconds) || filmSeconds <= 0.0f) {
        return 1;
    }
    constexpr double kEdge = 1e-4; // of a frame: a film of 24.0 s at 30 ends before frame 720
    const double frames = std::ceil(static_cast<double>(filmSeconds) * fps - kEdge);
    return static_cast<int>(std::clamp(frames, 1.0, 1e7));
}

int RunHeadless(const HeadlessOptions& options, HeadlessHost& host, std::FILE* messages) {
    return Run(options, host, messages).Execute();
}

std::optional<HeadlessOptions> ReadArguments(const std::vector<std::string>& arguments, std::FILE* messages,
                                             int& status) {
    std::string error;
    std::optional<HeadlessOptions> options = ParseHeadlessOptions(arguments, error);
    status = HeadlessExit::kDone;
    if (!options) {
        Tell(messages, error + " (--help tells more)");
        status = HeadlessExit::kUsage;
    } else if (options->help) {
        std::fputs(kHeadlessUsage, stdout);
        options.reset();
    }
    return options;
}

int RunHeadless(const std::vector<std::string>& arguments, HeadlessHost& host, std::FILE* messages) {
    int status = HeadlessExit::kDone;
    const std::optional<HeadlessOptions> options = ReadArguments(arguments, messages, status);
    return options ? RunHeadless(*options, host, messages) : status;
}

} // namespace headless
