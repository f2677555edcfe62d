#include "host/stage/windows/ObjectLook.h"

#include "host/engine/ClassDatabase.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "host/engine/SceneObject.h"
#include "plugin/contract/ClassIds.h"
#include "plugin/contract/Film.h"
#include "plugin/contract/FilmTrack.h"

#include <algorithm>

namespace stage {

namespace {
struct ClassLook {
    const char* className;
    IconId icon;
    const char* text;
};

constexpr ClassLook kLooks[] = {
    {ClassName::Mesh, IconId::Mesh, "Mesh"},
    {"SkinnedMeshObject", IconId::Character, "Character"},
    {"EmptyObject", IconId::Empty, "Empty"},
    {"SoundEmitter", IconId::Sound, "Sound emitter"},
    {engine::kCameraClass, IconId::Camera, "Camera"},
    {engine::kLabelClass, IconId::Label, "Text label"},
    {ClassName::GLLight, IconId::Light, "Light"},
    {ClassName::DynLight, IconId::DynamicLight, "Dynamic light"},
    {ClassName::VirtualObject, IconId::Film, "Virtual object"},
    {ClassName::CameraPosition, IconId::CameraPoint, "Camera eye"},
    {ClassName::CameraTarget, IconId::CameraPoint, "Camera target"},
    {ClassName::CameraControlPoint, IconId::CameraPoint, "Camera path handle"},
};

const ClassLook* LookOf(const engine::SceneObject& object) {
    for (const ClassLook& look : kLooks) {
        if (object.Info().className == look.className) {
            return &look;
        }
    }
    return nullptr;
}
} // namespace

namespace {

/// The body that stands where the sun's light comes from.
bool IsBodyOfSun(const engine::SceneObject& object) {
    const auto isOfSun = [&object](CFilmTrack* track) {
        const CFilmGLLightTrack* light = AsGLLightTrack(track);
        return light != nullptr && light->isSun != 0 && light->lightObject == &object;
    };
    return object.IsLight() && std::ranges::any_of(object.Data().Films().films, [&](const IFilm* film) {
               return film != nullptr && std::ranges::any_of(film->tracks, isOfSun);
           });
}

} // namespace

IconId IconOf(const engine::SceneObject& object) {
    const ClassLook* look = LookOf(object);
    return look != nullptr ? look->icon : IconId::Mesh;
}

QString ClassText(const engine::SceneObject& object) {
    const ClassLook* look = LookOf(object);
    return look != nullptr ? QString(look->text) : QString::fromStdString(object.Info().className);
}

QString MenuText(const QString& name) {
    return QString(name).replace('&', "&&");
}

bool IsListed(const engine::SceneObject& object) {
    return !object.transient && !engine::IsCameraPointClass(object.Info().className) && !IsBodyOfSun(object);
}

} // namespace stage
