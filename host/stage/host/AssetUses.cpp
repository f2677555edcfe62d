#include "host/stage/host/AssetUses.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "host/engine/Shape.h"
#include "plugin/contract/KeyKindTable.h"
#include "plugin/contract/TrackObjects.h"

#include <cstdio>

namespace stage {

namespace {

std::string NameOf(const EditorObject* object, const char* none) {
    return object != nullptr ? object->name : none;
}

/// None for keys that name nothing.
AssetUse UseOf(IFilmKey& key) {
    AssetUse use;
    switch (key.kind) {
    case KeyKind::Speech:
        use = {AssetKind::Sound, static_cast<CFilmSpeechKey&>(key).speechPath, ""};
        break;
    case KeyKind::Sound:
        use = {AssetKind::Sound, static_cast<CFilmSoundKey&>(key).wavPath, ""};
        break;
    default:
        if (const CFilmFxKey* effect = AsEffect(key)) {
            use = {AssetKind::Effect, effect->fxName, ""};
        }
    }
    use.key = &key;
    return use;
}

std::string Place(const IFilm& film, const CFilmTrack& track, const IFilmKey& key) {
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.2f s", double{key.time});
    const std::string who = TrackUser(track);
    return std::string(film.name != nullptr ? film.name : "") + ": " + (who.empty() ? "" : who + " ") +
           "at " + seconds;
}

} // namespace

const CFilmFxKey* AsEffect(const IFilmKey& key) {
    bool isEffect = false;
    WithKeyRecord(key.kind, [&]<class Record>(std::type_identity<Record>) {
        isEffect = std::is_same_v<Record, CFilmFxKey>;
    });
    return isEffect ? static_cast<const CFilmFxKey*>(&key) : nullptr;
}

std::string TrackUser(const CFilmTrack& track) {
    auto* asked = const_cast<CFilmTrack*>(&track); // the casts of the contract take it as it is stored
    if (const auto* actor = AsObjectTrack(asked)) {
        return NameOf(actor->actor, "an actor that is gone");
    }
    if (const auto* camera = AsCameraTrack(asked)) {
        return camera->cameraName;
    }
    if (const auto* sun = AsGLLightTrack(asked); sun != nullptr && sun->isSun != 0) {
        return "Sun";
    }
    return IsLightTrack(asked) ? NameOf(LightOf(asked), "a light") : "";
}

std::vector<AssetUse> UsesOf(const engine::LevelData& level) {
    std::vector<AssetUse> uses;
    for (const auto& object : level.Objects()) {
        if (!object->meshName.empty() && !engine::ShapeOf(object->meshName)) {
            uses.push_back({AssetKind::Model, object->meshName, object->name, object->id});
        }
    }
    for (int slot = 0; slot < IFilmManager::kFilms; ++slot) {
        const IFilm* film = level.filmManager->GetFilm(slot);
        if (film == nullptr) {
            continue;
        }
        for (CFilmTrack* track : film->tracks) {
            for (IFilmKey* key : track->keys) {
                AssetUse use = UseOf(*key);
                if (use.kind != AssetKind::None && !use.name.empty()) {
                    use.user = Place(*film, *track, *key);
                    use.track = track;
                    uses.push_back(std::move(use));
                }
            }
        }
    }
    return uses;
}

} // namespace stage
