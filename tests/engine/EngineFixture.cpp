#include "tests/engine/EngineFixture.h"

#include <cmath>
#include <cstdio>

namespace engine_test {

using engine::Matrix4;

TestMesh::TestMesh() {
    elements = {{"hip", -1, 1}, {"arm", 0, 1}, {"hand", 1, 1}};
    rest.resize(3);
    rest[0].SetTranslation({0.0f, 1.0f, 0.0f});
    rest[1].SetTranslation({0.0f, 1.0f, 0.0f});
    rest[2].SetTranslation({0.0f, 0.5f, 0.0f});
    clips = {{"Lift", 2.0f}, {"Turn", 4.0f}};
}

void TestMesh::Bounds(Vector3& low, Vector3& high) const {
    low = {-1.0f, -1.0f, 0.0f};
    high = {1.0f, 1.0f, 0.0f};
}

void TestMesh::SampleClip(int clip, float seconds, Matrix4* locals) const {
    std::copy(rest.begin(), rest.end(), locals);
    if (clip == 0) {
        locals[1].SetTranslation({seconds, 1.0f, 0.0f});
    } else if (clip == 1) {
        locals[0].SetTranslation({0.0f, 1.0f, seconds});
    }
}

bool TestMesh::RayCast(const Vector3& from, const Vector3& to, const Matrix4*, float& fraction) const {
    if ((from.z < 0.0f) == (to.z < 0.0f)) {
        return false;
    }
    fraction = from.z / (from.z - to.z);
    const float x = from.x + (to.x - from.x) * fraction;
    const float y = from.y + (to.y - from.y) * fraction;
    return y >= -1.0f && 2.0f * std::fabs(x) <= 1.0f - y;
}

void RecordingSink::OnKeyFired(IFilm&, CFilmTrack&, const IFilmKey& key, float late) {
    char text[64];
    std::snprintf(text, sizeof text, "%d@%g+%g", key.kind, key.time, late);
    events.emplace_back(text);
}

EngineTest::EngineTest() {
    level.SetMeshLibrary(&meshes);
    level.SetFilmSink(&sink);
    level.New("");
    film = &MakeFilm("Test");
}

engine::SceneObject& EngineTest::MakeObject(const std::string& name, const Vector3& position,
                                            engine::SceneObject* parent, const std::string& className,
                                            const std::string& mesh) {
    engine::ObjectSpec spec;
    spec.name = name;
    spec.className = className;
    spec.meshName = mesh;
    spec.matrix.SetTranslation(position);
    spec.parent = parent;
    return *level.CreateObject(spec);
}

engine::Film& EngineTest::MakeFilm(const std::string& name) {
    engine::Film& made = *Films().FilmAt(Films().AllocateFilm());
    made.SetName(name.c_str());
    made.AddTrack(made.CreateLevelTrack());
    made.Activate();
    return made;
}

CFilmTrack& EngineTest::AddTrack(CFilmTrack* track, engine::Film* target) {
    (target != nullptr ? target : film)->AddTrack(track);
    return *track;
}

CFilmObjectTrack& EngineTest::AddActor(engine::SceneObject& object, engine::Film* target) {
    auto& track = *AsObjectTrack(&AddTrack((target != nullptr ? target : film)->CreateObjectTrack(), target));
    track.SetActor(&object, false);
    track.RefreshTrack();
    return track;
}

CFilmCameraTrack& EngineTest::AddCamera(const std::string& name, engine::Film* target) {
    auto& track = *AsCameraTrack(&AddTrack((target != nullptr ? target : film)->CreateCameraTrack(), target));
    track.cameraName = name;
    return track;
}

IFilmKey* EngineTest::MakeKey(int kind, float time) {
    IFilmKey* key = Films().keyFactory->CreateKey(kind);
    key->SetTime(time);
    return key;
}

CFilmVectorKey& EngineTest::AddVector(CFilmTrack& track, int kind, float time, const Vector3& value,
                                      int method) {
    auto& key = Add<CFilmVectorKey>(track, kind, time);
    key.SetValue(value.Data());
    key.SetInHandle(value.Data());
    key.SetOutHandle(value.Data());
    key.SetInMethod(method);
    key.SetOutMethod(method);
    return key;
}

CFilmScalarKey& EngineTest::AddScalar(CFilmTrack& track, int kind, float time, float value, int method) {
    auto& key = Add<CFilmScalarKey>(track, kind, time);
    key.SetValue(&value);
    key.SetInHandle(&value);
    key.SetOutHandle(&value);
    key.SetInMethod(method);
    key.SetOutMethod(method);
    return key;
}

} // namespace engine_test
