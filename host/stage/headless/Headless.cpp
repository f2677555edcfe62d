#include "host/stage/headless/Headless.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/References.h"
#include "host/stage/headless/FilmPlayback.h"
#include "host/stage/headless/FilmSounds.h"
#include "host/stage/headless/FrameOutput.h"
#include "host/stage/headless/Progress.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace {

/// Sound of videos, frames a second.
constexpr int kSoundRate = 48000;

void Tell(std::FILE* messages, const std::string& text) {
    std::fprintf(messages, "stage: %s\n", text.c_str());
}

/// A sound file beside the video while ffmpeg reads it.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& video) : path(video + ".sound.wav") {}
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string path;
};

/// One run of the headless renderer.
class Run {
public:
    Run(const HeadlessOptions& asked, HeadlessHost& filmHost, std::FILE* stream)
        : options(asked), host(filmHost), messages(stream) {}

    int Execute() {
        try {
            return OpenLevel() ? WriteFilm() : status;
        } catch (const OutputError& error) {
            Tell(messages, error.what());
        } catch (const SoundError& error) {
            Tell(messages, error.what());
        }
        return HeadlessExit::kOutput;
    }

private:
    bool OpenLevel() {
        try {
            for (const std::string& message : host.Open(options.level)) {
                Tell(messages, message);
            }
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
        FilmPlayback playback(host, *film, options);
        std::string error;
        if (!playback.Prepare(error)) {
            Tell(messages, error);
            return HeadlessExit::kOutput;
        }
        const ScratchFile sound(options.video);
        FrameOutput output(options);
        output.Start(MixSound(playback, last, sound.path));
        Progress progress(messages, last - options.firstFrame + 1);
        playback.Play(options.firstFrame, last, [&](int frame, const RenderImage& image) {
            output.Write(frame, image);
            progress.Show(frame - options.firstFrame + 1);
        });
        progress.Finish();
        output.Finish();
        return HeadlessExit::kDone;
    }

    /// The file with the film's sound, or "" for silent output.
    std::string MixSound(FilmPlayback& playback, int last, const std::string& path) {
        if (options.video.empty() || FindProgram("ffmpeg").empty()) {
            return "";
        }
        FilmSounds sounds(host.Level().Folder(), kSoundRate);
        if (!sounds.IsReady()) {
            Tell(messages, "the sound library can't mix into memory; the video is silent");
            return "";
        }
        playback.PlaySound(options.firstFrame, last, sounds);
        for (const std::string& trouble : sounds.Errors()) {
            Tell(messages, trouble);
        }
        SaveStereoWav(path, sounds.Samples(), sounds.Rate());
        return path;
    }

    const HeadlessOptions& options;
    HeadlessHost& host;
    std::FILE* messages;
    IFilm* film = nullptr;
    int status = HeadlessExit::kDone;
};

} // namespace

struct HeadlessHost::Own {
    GltfMeshLibrary meshes;
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

GltfMeshLibrary& HeadlessHost::Meshes() {
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

int RunHeadless(const std::vector<std::string>& arguments, HeadlessHost& host, std::FILE* messages) {
    std::string error;
    const std::optional<HeadlessOptions> options = ParseHeadlessOptions(arguments, error);
    if (!options) {
        Tell(messages, error + " (--help tells more)");
        return HeadlessExit::kUsage;
    }
    if (options->help) {
        std::fputs(kHeadlessUsage, stdout);
        return HeadlessExit::kDone;
    }
    return RunHeadless(*options, host, messages);
}
