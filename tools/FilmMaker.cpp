#include "tools/FilmMaker.h"

#include "host/engine/FilmManager.h"
#include "tools/InUnits.h"

#include <stdexcept>

FilmMaker::FilmMaker(engine::Level& ownLevel, const char* name, float length) : level(ownLevel) {
    engine::FilmManager& films = level.Data()->Films();
    film = films.GetFilm(films.AllocateFilm());
    film->SetName(name);
    film->length = length;
    if (film->mainTrack == nullptr) {
        film->AddTrack(film->CreateLevelTrack());
    }
}

EditorObject* FilmMaker::Find(const char* name) {
    EditorObject* object = level.FindObject(std::string(name));
    if (object == nullptr) {
        throw std::logic_error(std::string("no object is called ") + name);
    }
    return object;
}

CFilmObjectTrack* FilmMaker::Actor(const char* objectName) {
    CFilmTrack* track = film->CreateObjectTrack();
    film->AddTrack(track);
    CFilmObjectTrack* actor = AsObjectTrack(track);
    actor->SetActor(Find(objectName), /*isVirtual*/ false);
    return actor;
}

CFilmGLLightTrack* FilmMaker::Sun(EditorObject* helper) {
    CFilmGLLightTrack* track = GLLight(helper);
    track->isSun = 1;
    track->isFixedLight = 1;
    return track;
}

CFilmGLLightTrack* FilmMaker::GLLight(EditorObject* helper) {
    CFilmTrack* track = film->CreateGLLightTrack();
    film->AddTrack(track);
    CFilmGLLightTrack* light = AsGLLightTrack(track);
    light->lightObject = helper;
    return light;
}

CFilmDynLightTrack* FilmMaker::DynLight(EditorObject* helper) {
    CFilmTrack* track = film->CreateDynLightTrack();
    film->AddTrack(track);
    CFilmDynLightTrack* light = AsDynLightTrack(track);
    light->lightObject = helper;
    return light;
}

CFilmCameraTrack* FilmMaker::Camera(const char* name) {
    CFilmTrack* track = film->CreateCameraTrack();
    film->AddTrack(track);
    CFilmCameraTrack* camera = AsCameraTrack(track);
    camera->cameraName = name;
    return camera;
}

template <class Key> Key* FilmMaker::Make(int kind, float from, float to) {
    auto* key = static_cast<Key*>(level.Data()->Films().keyFactory->CreateKey(kind));
    key->SetTime(from);
    key->SetEndTime(to);
    return key;
}

void FilmMaker::Add(CFilmTrack* track, IFilmKey* key) {
    const int kind = key->kind;
    if (!track->AddKey(key)) {
        level.Data()->Films().keyFactory->DestroyKey(key);
        throw std::logic_error("a track holds no keys of kind " + std::to_string(kind));
    }
}

void FilmMaker::Vector(CFilmTrack* track, int kind, float time, const Vector3& value, Ease ease) {
    auto* key = Make<CFilmVectorKey>(kind, time, time);
    const Vector3 held = kind == KeyKind::Position ? InUnits(value) : value;
    key->SetValue(held.Data());
    key->SetInHandle(held.Data());
    key->SetOutHandle(held.Data());
    key->SetInMethod(ease.in);
    key->SetOutMethod(ease.out);
    Add(track, key);
}

void FilmMaker::Point(CFilmTrack* camera, int kind, float time, const Vector3& value, Ease ease,
                      const char* follows, const char* element) {
    auto* key = Make<CFilmLinkedKey>(kind, time, time);
    if (follows != nullptr) {
        key->SetLinkObject(Find(follows));
        key->SetLinkElement(element);
    }
    // Tying a key keeps its world point, so the value in the new space comes after it.
    key->value = key->inHandle = key->outHandle = InUnits(value);
    key->SetInMethod(ease.in);
    key->SetOutMethod(ease.out);
    Add(camera, key);
}

void FilmMaker::Scalar(CFilmTrack* camera, int kind, float time, float value, Ease ease) {
    auto* key = Make<CFilmScalarKey>(kind, time, time);
    key->SetValue(&value);
    key->SetInHandle(&value);
    key->SetOutHandle(&value);
    key->SetInMethod(ease.in);
    key->SetOutMethod(ease.out);
    Add(camera, key);
}

void FilmMaker::Cut(const char* cameraName, float from, float to, int priority) {
    auto* key = Make<CFilmCameraKey>(KeyKind::Camera, from, to);
    key->cameraName = cameraName;
    key->priority = priority;
    Add(Level(), key);
}

void FilmMaker::Animation(CFilmTrack* track, const char* clip, float from, float to, int repeats,
                          float frequency) {
    auto* key = Make<CFilmAnimationKey>(KeyKind::Animation, from, to);
    key->animationName = clip;
    key->repeats = repeats;
    key->frequency = frequency;
    Add(track, key);
}

void FilmMaker::Sound(CFilmTrack* track, const char* path, float from, float to, bool looped) {
    auto* key = Make<CFilmSoundKey>(KeyKind::Sound, from, to);
    key->wavPath = path;
    key->looped = looped ? 1 : 0;
    key->followObject = track->IsA(ClassId::ObjectTrack) ? 1 : 0;
    Add(track, key);
}

void FilmMaker::Speech(CFilmTrack* track, const char* path, const char* text, float from, float to) {
    auto* key = Make<CFilmSpeechKey>(KeyKind::Speech, from, to);
    key->speechPath = path;
    key->speechText = text;
    Add(track, key);
}

void FilmMaker::Effect(CFilmTrack* track, int kind, float from, float to, const Fx& fx) {
    auto* key = Make<CFilmFxKey>(kind, from, to);
    key->fxName = fx.name;
    key->position = InUnits(fx.place);
    key->normal = fx.normal;
    key->linkElement = fx.element;
    key->objectId = fx.at != nullptr ? Find(fx.at)->id : 0;
    // Rain and flares have no such flag.
    key->deleteFlag = kind != KeyKind::FxRain && kind != KeyKind::FxFlare ? 1 : 0;
    Add(track, key);
}

void FilmMaker::Method(CFilmTrack* track, const char* name, float time, bool afterStop) {
    auto* key = Make<CFilmJavaKey>(KeyKind::JavaMethod, time, time);
    key->methodName = name;
    key->callAfterStop = afterStop ? 1 : 0;
    Add(track, key);
}

void FilmMaker::Flags(CFilmTrack* track, float time, unsigned flags) {
    auto* key = Make<CFilmFlagsKey>(KeyKind::Flags, time, time);
    key->keyFlags = flags;
    Add(track, key);
}

void FilmMaker::Finish() {
    for (CFilmTrack* track : film->tracks) {
        track->Finish();
        track->RefreshTrack();
    }
}
