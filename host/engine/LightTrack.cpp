#include "host/engine/LightTrack.h"

#include "host/engine/FilmKeys.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"

namespace engine {

void LightDriver::Apply(LightProperties* target, const VectorChannel* colors, float time, bool on) {
    if (target != driven) {
        Restore();
        driven = target;
        before = target != nullptr ? *target : LightProperties{};
    }
    if (target != nullptr) {
        target->on = on;
        if (colors != nullptr) {
            colors->Evaluate(time, target->color.Data());
        }
    }
}

void LightDriver::Restore() {
    if (driven != nullptr) {
        *driven = before;
        driven = nullptr;
    }
}

LightProperties* GLLightTrack::Target() const {
    if (isSun != 0) {
        SunObject* sun = Manager().Data().Sun();
        return sun != nullptr ? &sun->light : nullptr;
    }
    auto* object = static_cast<SceneObject*>(lightObject);
    return object != nullptr && object->light ? &*object->light : nullptr;
}

void GLLightTrack::Pose(float time) {
    Vector3 position;
    const bool moved = ChannelAs<VectorChannel>(KeyKind::Position)->Evaluate(time, position.Data());
    if (moved && lightObject != nullptr) {
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
    driver.Apply(Target(), ChannelAs<VectorChannel>(KeyKind::Color), time, on);
}

void GLLightTrack::Rest() {
    driver.Restore();
    SunObject* sun = Manager().Data().Sun();
    if (sun != nullptr && sunDirectionBefore) {
        sun->direction = *sunDirectionBefore;
    }
    sunDirectionBefore.reset();
}

void GLLightTrack::Forget(const DoomedObjects& doomed) {
    TrackBase::Forget(doomed);
    if (doomed.Has(lightObject)) {
        lightObject = nullptr;
        if (isSun == 0) {
            driver.Drop();
        }
    }
}

void DynLightTrack::Pose(float time) {
    auto* object = static_cast<SceneObject*>(lightObject);
    if (object == nullptr) {
        return;
    }
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
    driver.Apply(object->light ? &*object->light : nullptr, ChannelAs<VectorChannel>(KeyKind::Color), time,
                 on);
}

void DynLightTrack::Forget(const DoomedObjects& doomed) {
    TrackBase::Forget(doomed);
    if (doomed.Has(lightObject)) {
        lightObject = nullptr;
        driver.Drop();
    }
}

} // namespace engine
