#pragma once

#include "host/engine/Level.h"
#include "host/sound/SoundPlayer.h"

#include <functional>
#include <string>

namespace stage {

/// What the editor does with the keys that a film fires: sounds and speech are played; effects and script
/// calls, which only the game has, are told in words.
class FilmEffects : public engine::IFilmSink {
public:
    /// Both outlive this object.
    FilmEffects(engine::Level& filmLevel, std::function<void(const std::string&)> reporter);

    void OnKeyFired(IFilm& film, CFilmTrack& track, const IFilmKey& key, float late) override;
    void OnFilmStopped(IFilm& film) override;

    sound::SoundPlayer player;
    std::function<void()> onStopped; ///< called when a film has ended

private:
    void PlaySound(const CFilmTrack& track, const CFilmSoundKey& key, float late);
    void PlaySpeech(const CFilmSpeechKey& key, float late);
    void Play(const sound::SoundRequest& request);
    std::string PathOf(const std::string& name) const;

    engine::Level& level;
    std::function<void(const std::string&)> report;
    std::string toldError;
};

} // namespace stage
