#include "host/engine/LightTrack.h"

#include "host/engine/FilmKeys.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"

#include <utility>

namespace engine {

namespace {

/// Null where there is no such light.
LightProperties* LightOf(const LevelData& data, SceneObject* object) {
    if (object != nullptr) {
        return object->light ? &*object->light : nullptr;
    }
    return data.Sun() != nullptr ? &data.Sun()->light : nullptr;
}

} // namespace

void LightDriver::Apply(const LevelData& data, SceneObject* object, const VectorChannel* colors, float time,
                        bool on) {
    if (driving && object != driven) {
        Restore(data);
    }
    LightProperties* light = LightOf(data, object);
    if (light == nullptr) {
        return;
    }
    if (!driving) {
        driving = true;
        driven = object;
        onBefore = light->on;
    }
    light->on = on;
    Vector3 color;
    if (colors != nullptr && colors->Evaluate(time, color.Data())) {
        colorBefore = colorBefore.value_or(light->color);
        light->color = color;
    } else if (colorBefore) { // its last key is gone
        light->color = *std::exchange(colorBefore, std::nullopt);
    }
}

void LightDriver::Restore(const LevelData& data) {
    LightProperties* light = driving ? LightOf(data, driven) : nullptr;
    if (light != nullptr) {
        light->on = onBefore;
        light->color = colorBefore.value_or(light->color);
    }
    driving = false;
    driven = nullptr;
    colorBefore.reset();
}

void LightDriver::Forget(const DoomedObjects& doomed) {
    if (doomed.Has(driven)) {
        driving = false;
        driven = nullptr;
        colorBefore.reset();
    }
}

void GLLightTrack::Pose(float time) {
    Vector3 position;
    const bool moved = ChannelAs<VectorChannel>(KeyKind::Position)->Evaluate(time, position.Data());
    if (moved && lightObject != nullptr) {
        KeepPlace();
        lightObject->SetPosition(position.Data(), 0);
    }
    SunObject* sun = isSun != 0 ? Manager().Data().Sun() : nullptr;
    if (moved && sun != nullptr) {
        if (!sunDirectionBefore) {
            sunDirectionBefore = sun->direction;
        }
        sun->direction = Normalized(position, sun->direction);
    }
    const bool on = (FlagsAt(time, TrackFlag::LightOn) & TrackFlag::LightOn) != 0;
    auto* object = isSun != 0 ? nullptr : Light();
    if (isSun != 0 || object != nullptr) {
        driver.Apply(Manager().Data(), object, ChannelAs<VectorChannel>(KeyKind::Color), time, on);
    }
}

void GLLightTrack::Rest() {
    LightTrackOf::Rest();
    SunObject* sun = Manager().Data().Sun();
    if (sun != nullptr && sunDirectionBefore) {
        sun->direction = *sunDirectionBefore;
    }
    sunDirectionBefore.reset();
}

void GLLightTrack::ShowAtRest() const {
    LightTrackOf::ShowAtRest();
    SunObject* sun = Manager().Data().Sun();
    if (sun != nullptr && sunDirectionBefore) {
        sun->direction = *sunDirectionBefore;
    }
}

void GLLightTrack::Refresh() {
    TrackBase::Refresh();
    if (isSun == 0) {
        Adopt();
    }
}

void DynLightTrack::Refresh() {
    TrackBase::Refresh();
    Adopt();
}

void DynLightTrack::Pose(float time) {
    SceneObject* object = Light();
    if (object == nullptr) {
        return;
    }
    KeepPlace();
    Vector3 position;
    Vector3 rotation;
    Vector3 scale;
    Decompose(object->World(), position, rotation, scale);
    ChannelAs<VectorChannel>(KeyKind::Position)->Evaluate(time, position.Data());
    ChannelAs<VectorChannel>(KeyKind::Rotation)->Evaluate(time, rotation.Data());
    if (const auto* scales = ChannelAs<VectorChannel>(KeyKind::Scale)) {
        scales->Evaluate(time, scale.Data());
    }
    object->SetMatrix(Compose(position, rotation, scale).m, 0);
    const bool on = (FlagsAt(time, TrackFlag::LightOn) & TrackFlag::LightOn) != 0;
    driver.Apply(Manager().Data(), object, ChannelAs<VectorChannel>(KeyKind::Color), time, on);
}

} // namespace engine
