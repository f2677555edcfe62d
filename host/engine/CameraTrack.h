#pragma once

#include "host/engine/CameraPath.h"
#include "host/engine/TrackBase.h"

#include <optional>

namespace engine {

/// A film camera. Posing fills the eye and target points and the camera record.
class CameraTrack final : public TrackOf<CFilmCameraTrack, ClassId::CameraTrack> {
public:
    explicit CameraTrack(FilmManager& filmManager);

    CFilmLinkedKey* GetEyeKeyAt(float time) const override { return KeyAt(KeyKind::CameraPosition, time); }
    CFilmLinkedKey* GetTargetKeyAt(float time) const override { return KeyAt(KeyKind::CameraTarget, time); }

    void Pose(float time) override;
    /// World point of kind 16 or 17 at a film time, loop modes included; (0, 0, 0) without keys.
    Vector3 PointAt(int kind, float time, const ILinkSpace& links) const;
    /// The same at a time of the sub-track itself, without loop modes.
    Vector3 CurvePointAt(int kind, float time, const ILinkSpace& links) const;

    /// Degrees: what the camera has where no key says otherwise. A pose writes what the keys say into
    /// `fieldOfView`, so that this one is what a file keeps: it does not depend on the time last shown.
    float OwnFieldOfView() const;

    CameraPath paths[2]; ///< eye, target

    /// Where a film time falls in a sub-track of this mode and length.
    static float LoopTime(int mode, float length, float time);

private:
    CFilmLinkedKey* KeyAt(int kind, float time) const;
    /// The time in the sub-track of a kind; the channel's curve is closed or opened to fit.
    template <int N> float SubTrackTime(int kind, const CurveChannel<N>& channel, float time) const;
    float ScalarAt(int kind, float time, float missing) const;

    CameraRecord record;
    std::optional<float> posedFieldOfView; ///< what the last pose wrote, unless it has never posed
    float fieldOfViewBefore = 0.0f;        ///< what stood there then
};

} // namespace engine
