#include "keys/attributes/KeyAttributes.h"

#include "keys/attributes/FillAndApply.h"

#include <algorithm>
#include <iterator>

namespace {

struct KindRow {
    int kind;
    KeyAttributes attributes;
};

template <class Record> void Call(void (*fill)(AttrRows&, Record&), AttrRows& rows, IFilmKey& record) {
    fill(rows, static_cast<Record&>(record));
}

template <class Record>
void Call(void (*apply)(const AttrRows&, Record&), const AttrRows& rows, IFilmKey& record,
          const AttrScope& /*scope*/) {
    apply(rows, static_cast<Record&>(record));
}

template <class Record>
void Call(void (*apply)(const AttrRows&, Record&, const AttrScope&), const AttrRows& rows, IFilmKey& record,
          const AttrScope& scope) {
    apply(rows, static_cast<Record&>(record), scope);
}

/// The functions of a kind behind a face that doesn't know the kind's record.
template <auto Fill, auto Apply> constexpr KeyAttributes Of() {
    return {[](AttrRows& rows, IFilmKey& record) { Call(Fill, rows, record); },
            [](const AttrRows& rows, IFilmKey& record, const AttrScope& scope) {
                Call(Apply, rows, record, scope);
            }};
}

/// Every kind that has attributes.
constexpr KindRow kKinds[] = {
    {KeyKind::Camera, Of<&FillCamera, &ApplyCamera>()},
    {KeyKind::Animation, Of<&FillAnimation, &ApplyAnimation>()},
    {KeyKind::FxSequence, Of<&FillPlacedFx, &ApplyPlacedFx>()},
    {KeyKind::FxParticle, Of<&FillPlacedFx, &ApplyPlacedFx>()},
    {KeyKind::FxTrace, Of<&FillPlacedFx, &ApplyPlacedFx>()},
    {KeyKind::FxRain, Of<&FillScreenFx, &ApplyScreenFx>()},
    {KeyKind::FxBlind, Of<&FillScreenFx, &ApplyScreenFx>()},
    {KeyKind::FxFlare, Of<&FillPlacedFx, &ApplyPlacedFx>()},
    {KeyKind::Speech, Of<&FillSpeech, &ApplySpeech>()},
    {KeyKind::Sound, Of<&FillSound, &ApplySound>()},
    {KeyKind::Position, Of<&FillVector, &ApplyVector>()},
    {KeyKind::Rotation, Of<&FillVector, &ApplyVector>()},
    {KeyKind::Scale, Of<&FillVector, &ApplyVector>()},
    {KeyKind::JavaMethod, Of<&FillJavaMethod, &ApplyJavaMethod>()},
    {KeyKind::Color, Of<&FillColor, &ApplyColor>()},
    {KeyKind::Flags, Of<&FillFlags, &ApplyFlags>()},
    {KeyKind::CameraPosition, Of<&FillCameraPoint, &ApplyCameraPoint>()},
    {KeyKind::CameraTarget, Of<&FillCameraPoint, &ApplyCameraPoint>()},
    {KeyKind::Roll, Of<&FillScalar, &ApplyScalar>()},
    {KeyKind::FieldOfView, Of<&FillScalar, &ApplyScalar>()},
};

} // namespace

const KeyAttributes* GetKeyAttributes(int kind) {
    const auto* found = std::ranges::find(kKinds, kind, &KindRow::kind);
    return found != std::end(kKinds) ? &found->attributes : nullptr;
}
