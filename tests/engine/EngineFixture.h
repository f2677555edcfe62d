#pragma once

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/ObjectTrack.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace engine_test {

inline void ExpectVector(const Vector3& actual, const Vector3& expected, float tolerance = 1e-5f) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

/// Two bones, "hip" at height 1 and "arm" one unit above it along y, and a clip "Lift" of 2 seconds that
/// moves "arm" by one unit a second along x. "Turn" of 4 seconds moves "hip" by one unit a second along z.
/// One triangle stands across the z axis at z = 0, from (-1, -1) to (1, -1) to (0, 1).
class TestMesh : public engine::IMesh {
public:
    TestMesh();
    const std::vector<MeshElement>& Elements() const override { return elements; }
    const std::vector<engine::Matrix4>& RestLocals() const override { return rest; }
    const std::vector<engine::MeshClip>& Clips() const override { return clips; }
    void Bounds(Vector3& low, Vector3& high) const override;
    void SampleClip(int clip, float seconds, engine::Matrix4* locals) const override;
    bool RayCast(const Vector3& from, const Vector3& to, const engine::Matrix4* pose,
                 float& fraction) const override;

private:
    std::vector<MeshElement> elements;
    std::vector<engine::Matrix4> rest;
    std::vector<engine::MeshClip> clips;
};

/// Knows the one mesh "robot.glb".
class TestMeshLibrary : public engine::IMeshLibrary {
public:
    const engine::IMesh* FindMesh(const std::string& meshName) override {
        return meshName == "robot.glb" ? &robot : nullptr;
    }

    TestMesh robot;
};

/// Writes down what films set off, as "kind@time+late" and "stop".
class RecordingSink : public engine::IFilmSink {
public:
    void OnKeyFired(IFilm& film, CFilmTrack& track, const IFilmKey& key, float late) override;
    void OnFilmStopped(IFilm&) override { events.emplace_back("stop"); }

    std::vector<std::string> events;
};

/// A level with one active film "Test" that has its level track.
class EngineTest : public ::testing::Test {
protected:
    EngineTest();

    engine::SceneObject& MakeObject(const std::string& name, const Vector3& position = {},
                                    engine::SceneObject* parent = nullptr,
                                    const std::string& className = "MeshObject",
                                    const std::string& mesh = "");
    /// An active film with its level track.
    engine::Film& MakeFilm(const std::string& name);
    CFilmTrack& AddTrack(CFilmTrack* track, engine::Film* target = nullptr);
    CFilmObjectTrack& AddActor(engine::SceneObject& object, engine::Film* target = nullptr);
    CFilmCameraTrack& AddCamera(const std::string& name, engine::Film* target = nullptr);
    IFilmKey* MakeKey(int kind, float time);
    CFilmVectorKey& AddVector(CFilmTrack& track, int kind, float time, const Vector3& value,
                              int method = BezierMethod::Linear);
    CFilmScalarKey& AddScalar(CFilmTrack& track, int kind, float time, float value,
                              int method = BezierMethod::Linear);
    template <class Record> Record& Add(CFilmTrack& track, int kind, float time, float endTime = 0.0f) {
        IFilmKey* key = MakeKey(kind, time);
        key->SetEndTime(endTime);
        EXPECT_TRUE(track.AddKey(key));
        return static_cast<Record&>(*key);
    }
    engine::FilmManager& Films() { return level.Data()->Films(); }

    TestMeshLibrary meshes;
    RecordingSink sink;
    engine::Level level;
    engine::Film* film = nullptr;
};

} // namespace engine_test
