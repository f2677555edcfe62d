#pragma once

#include "host/engine/FilmSink.h"
#include "host/sound/SoundMixer.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace headless {

/// Hears a film's sound and speech keys and mixes what they play.
class FilmSounds : public engine::IFilmSink {
public:
    /// Takes the next interleaved stereo samples.
    using Output = std::function<void(const std::vector<float>& samples)>;

    /// Paths of keys are relative to the folder unless they are absolute.
    FilmSounds(const std::string& levelFolder, int rate, Output samplesOutput);

    void OnKeyFired(IFilm& film, CFilmTrack& track, const IFilmKey& key, float late) override;
    void OnFilmStopped(IFilm& film) override;
    /// Gives out sound until `length` seconds were given in all, as it is at a time of the film, a tenth of a
    /// second at a time. `camera` is the matrix of the listener, or null to leave him where he is.
    void MixUpTo(float time, float length, const float* camera);
    bool IsReady() const { return mixer.IsReady(); }
    /// Files that could not be played, each once.
    const std::set<std::string>& Errors() const { return errors; }

private:
    struct Playing {
        int sound = 0;
        float end = 0.0f;                ///< seconds of the film
        EditorObject* follows = nullptr; ///< the sound moves with it
    };

    void Start(const std::string& path, const IFilmKey& key, sound::SoundRequest request,
               EditorObject* follows, float late);
    void Update(float time);

    std::string folder;
    sound::SoundMixer mixer;
    Output output;
    std::vector<float> block;
    long long mixed = 0; ///< frames given out
    std::vector<Playing> playing;
    std::set<std::string> errors;
};

} // namespace headless
