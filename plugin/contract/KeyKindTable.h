#pragma once

#include "plugin/contract/ClassIds.h"
#include "plugin/contract/FilmKey.h"

#include <array>
#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

/// Classes of tracks as bits.
namespace TrackBit {
constexpr unsigned Level = 1;
constexpr unsigned Object = 2;
constexpr unsigned GLLight = 4;
constexpr unsigned DynLight = 8;
constexpr unsigned Camera = 16;
} // namespace TrackBit

/// The bit of a class of tracks, 0 for other classes.
constexpr unsigned TrackBitOf(int classId) {
    return classId == ClassId::LevelTrack      ? TrackBit::Level
           : classId == ClassId::ObjectTrack   ? TrackBit::Object
           : classId == ClassId::GLLightTrack  ? TrackBit::GLLight
           : classId == ClassId::DynLightTrack ? TrackBit::DynLight
           : classId == ClassId::CameraTrack   ? TrackBit::Camera
                                               : 0u;
}

/// How long keys of a kind are.
enum class KeyDuration {
    None,    ///< moments
    Content, ///< as long as what they play, which stays so when time is stretched
    Free,    ///< as long as the user wants
};

/// What is known of a kind of keys besides its record.
struct KeyKindInfo {
    const char* rowName; ///< of a row of such keys
    const char* title;   ///< first line of a key's description
    unsigned tracks;     ///< TrackBit: the tracks that hold such keys
    KeyDuration duration = KeyDuration::None;
    bool isFired = false; ///< happens once, when the film passes its start
    bool isBezier = false;
};

/// A record class whose keys have Bezier sides.
template <class Record>
concept HasBezierSides = requires {
    &Record::inMethod;
};

/// A row of the table: the record class of a kind, and the rest.
template <class RecordType> struct KeyKindRow {
    using Record = RecordType;

    constexpr KeyKindRow(const char* rowName, const char* title, unsigned tracks,
                         KeyDuration duration = KeyDuration::None, bool isFired = false)
        : info{rowName, title, tracks, duration, isFired, HasBezierSides<RecordType>} {}

    KeyKindInfo info;
};

/// The kinds of keys, by their number. A new kind is a row here; its record class stands in FilmKey.h, what
/// its record holds in the host's list of fields, and its attributes in the table of
/// keys/attributes/KeyAttributes.cpp.
inline constexpr std::tuple kKeyKindRows{
    KeyKindRow<CFilmCameraKey>("Camera keys", "Camera key", TrackBit::Level, KeyDuration::Free),
    KeyKindRow<CFilmAnimationKey>("Animation keys", "Animation key", TrackBit::Object, KeyDuration::Content),
    KeyKindRow<CFilmFxKey>("FX sequence keys", "FX sequence key", TrackBit::Level | TrackBit::Object,
                           KeyDuration::Free, /*isFired*/ true),
    KeyKindRow<CFilmFxKey>("FX particle keys", "FX particle key", TrackBit::Level | TrackBit::Object,
                           KeyDuration::Free, /*isFired*/ true),
    KeyKindRow<CFilmFxKey>("FX trace keys", "FX trace key", TrackBit::Level | TrackBit::Object,
                           KeyDuration::Free, /*isFired*/ true),
    KeyKindRow<CFilmFxKey>("FX rain keys", "FX rain key", TrackBit::Level, KeyDuration::Free,
                           /*isFired*/ true),
    KeyKindRow<CFilmFxKey>("FX blind keys", "FX blind key", TrackBit::Level, KeyDuration::Free,
                           /*isFired*/ true),
    KeyKindRow<CFilmFxKey>("FX flare keys", "FX flare key", TrackBit::Level | TrackBit::Object,
                           KeyDuration::Free, /*isFired*/ true),
    KeyKindRow<CFilmSpeechKey>("Speech keys", "Speech key", TrackBit::Object, KeyDuration::Content,
                               /*isFired*/ true),
    KeyKindRow<CFilmSoundKey>("Sound keys", "Sound key", TrackBit::Level | TrackBit::Object,
                              KeyDuration::Content, /*isFired*/ true),
    KeyKindRow<CFilmVectorKey>("Position keys", "Position key",
                               TrackBit::Object | TrackBit::GLLight | TrackBit::DynLight),
    KeyKindRow<CFilmVectorKey>("Rotation keys", "Rotation key", TrackBit::Object | TrackBit::DynLight),
    KeyKindRow<CFilmVectorKey>("Scale keys", "Scale key", TrackBit::Object | TrackBit::DynLight),
    KeyKindRow<CFilmJavaKey>("Java method keys", "Java method key", TrackBit::Level | TrackBit::Object,
                             KeyDuration::None, /*isFired*/ true),
    KeyKindRow<CFilmVectorKey>("Color keys", "Color key", TrackBit::GLLight | TrackBit::DynLight),
    KeyKindRow<CFilmFlagsKey>("Flags keys", "Flags key",
                              TrackBit::Level | TrackBit::Object | TrackBit::GLLight | TrackBit::DynLight),
    KeyKindRow<CFilmLinkedKey>("Camera position keys", "Camera position key", TrackBit::Camera),
    KeyKindRow<CFilmLinkedKey>("Target position keys", "Target position key", TrackBit::Camera),
    KeyKindRow<CFilmScalarKey>("Roll keys", "Roll key", TrackBit::Camera),
    KeyKindRow<CFilmScalarKey>("FOV keys", "FOV key", TrackBit::Camera),
};

/// The rows without their record classes, by number of the kind.
inline constexpr auto kKeyKinds =
    std::apply([](const auto&... row) { return std::array{row.info...}; }, kKeyKindRows);

/// Kinds that there are: as many as stored formats know, or more.
inline constexpr std::size_t kKeyKindCount = kKeyKinds.size();
static_assert(kKeyKindCount >= KeyKind::FilterCount && kKeyKindCount <= KeyKind::None);

/// Null for a number without a kind.
constexpr const KeyKindInfo* FindKeyKind(int kind) {
    return kind >= 0 && static_cast<std::size_t>(kind) < kKeyKinds.size()
               ? &kKeyKinds[static_cast<std::size_t>(kind)]
               : nullptr;
}

/// Whether keys of the kind have a duration.
constexpr bool IsTimedKind(int kind) {
    const KeyKindInfo* info = FindKeyKind(kind);
    return info != nullptr && info->duration != KeyDuration::None;
}

/// Calls `with` with `std::type_identity` of the kind's record class; false, and nothing is called, for a
/// number without a kind.
template <class With> constexpr bool WithKeyRecord(int kind, With&& with) {
    using Rows = std::remove_const_t<decltype(kKeyKindRows)>;
    return [&]<std::size_t... number>(std::index_sequence<number...>) {
        const auto call = [&]<class Row>(std::type_identity<Row>) {
            with(std::type_identity<typename Row::Record>());
            return true;
        };
        return ((kind == static_cast<int>(number) &&
                 call(std::type_identity<std::tuple_element_t<number, Rows>>())) ||
                ...);
    }
    (std::make_index_sequence<std::tuple_size_v<Rows>>());
}
