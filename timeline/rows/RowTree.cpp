#include "timeline/rows/RowTree.h"

#include "plugin/contract/FilmTrack.h"

namespace {

constexpr std::array kLevelRows{KeyKind::Sound,      KeyKind::JavaMethod, KeyKind::Flags,
                                KeyKind::FxSequence, KeyKind::FxParticle, KeyKind::FxTrace,
                                KeyKind::FxRain,     KeyKind::FxBlind,    KeyKind::FxFlare};
/// The rows of an object stand before and behind those of its mesh elements.
constexpr std::array kObjectRows{KeyKind::Position, KeyKind::Rotation, KeyKind::Scale,     KeyKind::Animation,
                                 KeyKind::Speech,   KeyKind::Sound,    KeyKind::JavaMethod};
constexpr std::array kLastObjectRows{KeyKind::FxSequence, KeyKind::FxParticle, KeyKind::FxTrace,
                                     KeyKind::FxFlare, KeyKind::Flags};
constexpr std::array kGLLightRows{KeyKind::Position, KeyKind::Color, KeyKind::Flags};
constexpr std::array kDynLightRows{KeyKind::Position, KeyKind::Rotation, KeyKind::Scale, KeyKind::Color,
                                   KeyKind::Flags};
constexpr std::array kCameraRows{KeyKind::CameraPosition, KeyKind::CameraTarget, KeyKind::FieldOfView,
                                 KeyKind::Roll};

struct TrackRows {
    int trackClass;
    ChildRowKinds rows;
};

constexpr TrackRows kTrackRows[] = {
    {ClassId::LevelTrack, {kLevelRows, {}, false}},
    {ClassId::ObjectTrack, {kObjectRows, kLastObjectRows, true}},
    {ClassId::GLLightTrack, {kGLLightRows, {}, false}},
    {ClassId::DynLightTrack, {kDynLightRows, {}, false}},
    {ClassId::CameraTrack, {kCameraRows, {}, false}},
};

} // namespace

ChildRowKinds ChildRowKindsOf(const CFilmTrack* track) {
    const auto found = std::ranges::find_if(kTrackRows, [track](const TrackRows& candidate) {
        return track != nullptr && track->IsA(candidate.trackClass);
    });
    return found != std::end(kTrackRows) ? found->rows : ChildRowKinds();
}
