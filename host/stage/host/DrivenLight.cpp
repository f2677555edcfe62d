#include "host/stage/host/DrivenLight.h"

#include "host/engine/KeyChannel.h"
#include "host/engine/LevelData.h"
#include "host/engine/SceneObject.h"
#include "plugin/contract/Film.h"
#include "plugin/contract/FilmManager.h"
#include "plugin/contract/TrackObjects.h"

#include <algorithm>

namespace stage {

namespace {

bool Drives(CFilmTrack* track, const engine::SceneObject* object) {
    const auto* gl = AsGLLightTrack(track);
    if (gl != nullptr && gl->isSun != 0) {
        return object == nullptr;
    }
    return object != nullptr && LightOf(track) == object;
}

bool HasKeys(const CFilmTrack& track, int kind) {
    const auto* keys = static_cast<const engine::KeyChannel*>(track.subTracks[kind]); // the engine made it
    return keys != nullptr && !keys->Empty();
}

} // namespace

DrivenLight DrivenLightOf(const engine::LevelData& data, const engine::SceneObject* object) {
    const IFilm* film = data.filmManager->currentFilm;
    if (film == nullptr) {
        return {};
    }
    const auto found =
        std::ranges::find_if(film->tracks, [object](CFilmTrack* track) { return Drives(track, object); });
    if (found == film->tracks.end()) {
        return {};
    }
    return {true, HasKeys(**found, KeyKind::Color), object == nullptr && HasKeys(**found, KeyKind::Position),
            film->name != nullptr ? film->name : ""};
}

} // namespace stage
