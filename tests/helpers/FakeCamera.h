#pragma once

#include "tests/plugin/PluginFixture.h"

#include <memory_resource>
#include <vector>

/// A camera track without an engine: its keys and points are what the test sets.
class FakeCamera final : public CFilmCameraTrack {
public:
    FakeCamera() : CFilmCameraTrack(std::pmr::new_delete_resource()) {}
    bool IsA(int classId) const override { return classId == ClassId::CameraTrack; }
    bool AddKey(IFilmKey*) override { return false; }
    void RemoveKey(IFilmKey*, bool) override {}
    void ClearKind(int) override {}
    void NotifyKeysChanged(int) override {}
    void Finish() override {}
    void RefreshTrack() override {}
    void ApplyAt(float, float, int) override {}
    Vector3 GetPositionAt(float) const override { return {}; }
    Vector3 GetRotationAt(float) const override { return {}; }
    CFilmLinkedKey* GetEyeKeyAt(float) const override { return eyeKey; }
    CFilmLinkedKey* GetTargetKeyAt(float) const override { return targetKey; }

    CFilmLinkedKey* eyeKey = nullptr; ///< owned by the test
    CFilmLinkedKey* targetKey = nullptr;
};

/// A film whose camera paths are the points that the test sets.
class PathFilm final : public LoggingFilm {
public:
    explicit PathFilm(std::vector<std::string>& calls) : LoggingFilm(calls) {}
    void SampleCameraPath(TrackRenderData* data, int one) override {
        log.push_back("SampleCameraPath " + std::to_string(one));
        sampled = data;
        sampledDetail = data->detail;
        for (int strip = 0; strip < 2; ++strip) {
            for (std::size_t i = 0; i < points[strip].size(); ++i) {
                *data->strips[strip].At(static_cast<std::int32_t>(i)) = points[strip][i];
            }
        }
    }

    std::vector<Vector3> points[2]; ///< eye, target
    TrackRenderData* sampled = nullptr;
    std::int32_t sampledDetail = 0;
};
