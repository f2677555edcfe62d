#include "host/stage/windows/films/FilmCopy.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/ObjectTrack.h"

#include <algorithm>

namespace stage {

namespace {

/// What a new track came with, as the sun's first colour, goes.
void CopyKeys(const CFilmTrack& from, CFilmTrack& to, IKeyFactory& factory) {
    for (int kind = 0; kind < KeyKind::Count; ++kind) {
        if (to.subTracks[kind] != nullptr) {
            to.ClearKind(kind);
        }
    }
    for (const IFilmKey* key : from.keys) {
        IFilmKey* copy = factory.CreateKey(key->kind);
        copy->SetTime(key->time);
        copy->SetEndTime(key->endTime);
        if (to.AddKey(copy)) {
            copy->CopyFrom(*key, 0); // in its track, since links count from there
        } else {
            factory.DestroyKey(copy);
        }
    }
    to.Finish();
}

CFilmTrack* CopyActor(const CFilmObjectTrack& from, engine::Film& to) {
    if (from.actor == nullptr) {
        return nullptr; // broken
    }
    const auto& source = static_cast<const engine::ObjectTrack&>(from);
    CFilmTrack* track = to.CreateObjectTrack();
    to.AddTrack(track);
    AsObjectTrack(track)->SetActor(from.actor, source.actorIsVirtual);
    if (from.parentObject != nullptr) {
        AsObjectTrack(track)->SetParent(from.parentObject, source.parentIsVirtual, from.parentElement);
    }
    return track;
}

CFilmTrack* CopyCamera(const CFilmCameraTrack& from, engine::Film& to) {
    CFilmTrack* track = to.CreateCameraTrack();
    CFilmCameraTrack& camera = *AsCameraTrack(track);
    camera.cameraName = from.cameraName;
    camera.fieldOfView = from.fieldOfView;
    camera.nearPlane = from.nearPlane;
    camera.farPlane = from.farPlane;
    std::ranges::copy(from.loopMode, camera.loopMode);
    std::ranges::copy(from.subTrackLength, camera.subTrackLength);
    to.AddTrack(track);
    return track;
}

CFilmTrack* SunTrackOf(const IFilm& film) {
    const auto found = std::ranges::find_if(film.tracks, [](CFilmTrack* track) {
        const CFilmGLLightTrack* light = AsGLLightTrack(track);
        return light != nullptr && light->isSun != 0;
    });
    return found != film.tracks.end() ? *found : nullptr;
}

} // namespace

int CopyFilm(const engine::Film& from, engine::Film& to) {
    IKeyFactory& factory = *to.Manager().keyFactory;
    to.length = from.length;
    int left = 0;
    for (CFilmTrack* track : from.tracks) {
        CFilmTrack* copy = nullptr;
        if (AsLevelTrack(track) != nullptr) {
            copy = to.mainTrack;
        } else if (const CFilmObjectTrack* actor = AsObjectTrack(track)) {
            copy = CopyActor(*actor, to);
        } else if (const CFilmCameraTrack* camera = AsCameraTrack(track)) {
            copy = CopyCamera(*camera, to);
        } else if (track == SunTrackOf(from)) {
            copy = SunTrackOf(to);
        } else {
            ++left;
        }
        if (copy != nullptr) {
            CopyKeys(*track, *copy, factory);
        }
    }
    for (CFilmTrack* track : to.tracks) {
        track->RefreshTrack();
    }
    return left;
}

} // namespace stage
