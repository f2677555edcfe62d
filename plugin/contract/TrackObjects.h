#pragma once

#include "plugin/contract/FilmTrack.h"

/// Where the track of a light, GL or dynamic, keeps its light; null for other tracks and for null. What
/// stands there is not owned, and null for the sun.
inline EditorObject** LightSlotOf(CFilmTrack* track) {
    if (auto* gl = AsGLLightTrack(track)) {
        return &gl->lightObject;
    }
    auto* dynamic = AsDynLightTrack(track);
    return dynamic != nullptr ? &dynamic->lightObject : nullptr;
}

inline bool IsLightTrack(CFilmTrack* track) {
    return LightSlotOf(track) != nullptr;
}

/// The light that the track drives, or null.
inline EditorObject* LightOf(CFilmTrack* track) {
    EditorObject** slot = LightSlotOf(track);
    return slot != nullptr ? *slot : nullptr;
}

/// The object that the track plays, an actor or a light, or null.
inline EditorObject* PlayedObject(CFilmTrack* track) {
    const auto* actor = AsObjectTrack(track);
    return actor != nullptr ? actor->actor : LightOf(track);
}
