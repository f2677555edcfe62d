#include "host/stage/windows/FilmEffects.h"

#include "host/engine/References.h"
#include "host/stage/host/AssetUses.h"

namespace stage {

namespace {

std::array<float, 3> PlaceOf(const float* position) {
    return {position[0], position[1], position[2]};
}

const EditorObject* ObjectOf(const CFilmTrack& track) {
    // IsA and the cast do not change the track; the casts of the contract take it as it is stored.
    const CFilmObjectTrack* object = AsObjectTrack(const_cast<CFilmTrack*>(&track));
    return object != nullptr ? object->actor : nullptr;
}

} // namespace

FilmEffects::FilmEffects(engine::Level& filmLevel, std::function<void(const std::string&)> reporter)
    : level(filmLevel), report(std::move(reporter)) {
}

std::string FilmEffects::PathOf(const std::string& name) const {
    return engine::ReferencePath(level.Folder(), name);
}

void FilmEffects::Play(const sound::SoundRequest& request) {
    // Told once: a machine without a sound device would tell it at each key.
    if (player.Play(request) == 0 && player.LastError() != toldError) {
        toldError = player.LastError();
        report(toldError);
    }
}

void FilmEffects::PlaySound(const CFilmTrack& track, const CFilmSoundKey& key, float late) {
    if (key.wavPath.empty()) {
        return;
    }
    sound::SoundRequest request;
    request.path = PathOf(key.wavPath);
    request.offset = late;
    request.looped = key.looped != 0;
    const EditorObject* object = ObjectOf(track);
    if (key.followObject != 0 && object != nullptr) {
        request.position = PlaceOf(object->GetPosition(0));
    } else if (key.soundPosition != Vector3{}) {
        request.position = PlaceOf(key.soundPosition.Data());
    }
    Play(request);
}

void FilmEffects::PlaySpeech(const CFilmSpeechKey& key, float late) {
    if (!key.speechText.empty()) {
        report("\u201c" + key.speechText + "\u201d");
    }
    if (!key.speechPath.empty()) {
        sound::SoundRequest request;
        request.path = PathOf(key.speechPath);
        request.offset = late;
        Play(request);
    }
}

void FilmEffects::OnKeyFired(IFilm& film, CFilmTrack& track, const IFilmKey& key, float late) {
    const std::string name = film.name != nullptr ? film.name : "";
    switch (key.kind) {
    case KeyKind::Sound:
        PlaySound(track, static_cast<const CFilmSoundKey&>(key), late);
        break;
    case KeyKind::Speech:
        PlaySpeech(static_cast<const CFilmSpeechKey&>(key), late);
        break;
    case KeyKind::JavaMethod:
        report(name + ": script " + static_cast<const CFilmJavaKey&>(key).methodName);
        break;
    default:
        if (const CFilmFxKey* effect = AsEffect(key)) {
            report(name + ": effect " + effect->fxName);
        }
    }
}

void FilmEffects::OnFilmStopped(IFilm&) {
    player.StopAll();
    if (onStopped) {
        onStopped();
    }
}

} // namespace stage
