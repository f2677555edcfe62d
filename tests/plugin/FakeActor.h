#pragma once

#include "tests/plugin/PluginFixture.h"

#include <algorithm>
#include <array>
#include <memory_resource>
#include <string>
#include <vector>

/// The editor's record of an object without an engine.
class FakeInfo final : public EditorObjectInfo {
public:
    bool IsA(int) const override { return false; }
    void Update(int) override {}
    bool IsPlaced() const override { return false; }
    bool IsActive() const override { return true; }
    void SetClassName(const std::string& name) override { className = saveClassName = name; }
    void SetPluginData(int, void* newData) override { data = newData; }
    void* GetPluginData(int) const override { return data; }

    void* data = nullptr;
};

/// A level object without an engine: it writes down where it is put, and its file may fail.
class FakeActor final : public EditorObject {
public:
    explicit FakeActor(std::vector<std::string>& calls) : log(calls) {
        matrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    }
    bool IsA(int classId) const override {
        return classId == ClassId::LevelObject || classId == ClassId::EditorObject;
    }
    EditorObjectInfo* GetInfo() override { return &info; }
    void Save(fs::file&) override {
        log.push_back("Save " + info.saveClassName);
        if (fails) {
            throw fs::file_exception(fs::file_exception::kWrite);
        }
    }
    EditorObject* LoadObject(fs::file&, std::uint32_t, int, EditorObject*) override { return nullptr; }
    void SetMatrix(const float* values, int) override {
        std::copy_n(values, matrix.size(), matrix.begin());
        log.push_back("SetMatrix " + std::to_string(static_cast<int>(values[12])));
    }
    const float* GetMatrix(int) const override { return matrix.data(); }
    void SetPosition(const float* position, int) override { std::copy_n(position, 3, matrix.begin() + 12); }
    const float* GetPosition(int) const override { return matrix.data() + 12; }
    int FindAnimation(const std::string&) const override { return -1; }
    std::uint32_t GetFlags() const override { return 0; }
    void SetFlags(std::uint32_t) override {}
    const MeshElement* GetMeshElement(int) const override { return nullptr; }
    int FindMeshElement(const std::string&) const override { return -1; }
    float GetAnimationDuration(int) const override { return -1.0f; }

    FakeInfo info;
    std::array<float, 16> matrix{};
    bool fails = false;
    std::vector<std::string>& log;
};

/// A track that poses its actor at x = 1, whatever the time.
class FakeActorTrack final : public CFilmObjectTrack {
public:
    FakeActorTrack() : CFilmObjectTrack(std::pmr::new_delete_resource()) {}
    bool IsA(int classId) const override { return classId == ClassId::ObjectTrack; }
    bool AddKey(IFilmKey*) override { return false; }
    void RemoveKey(IFilmKey*, bool) override {}
    void ClearKind(int) override {}
    void NotifyKeysChanged(int) override {}
    void Finish() override {}
    void RefreshTrack() override {}
    void ApplyAt(float, float, int) override {
        const float pose[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1};
        actor->SetMatrix(pose, 0);
    }
    Vector3 GetPositionAt(float) const override { return {}; }
    Vector3 GetRotationAt(float) const override { return {}; }
    void SetActor(EditorObject* object, bool) override { actor = object; }
    void SetParent(EditorObject* object, bool, const std::string&) override { parentObject = object; }
    void ToParentSpace(float*) const override {}
};

/// A film whose one track drives such an object.
class FakeActorFilm final : public LoggingFilm {
public:
    explicit FakeActorFilm(std::vector<std::string>& calls) : LoggingFilm(calls), object(calls) {
        track.film = this;
        track.actor = &object;
        tracks.push_back(&track);
    }
    CFilmTrack* FindObjectTrack(const EditorObject* wanted) const override {
        return wanted == &object ? const_cast<FakeActorTrack*>(&track) : nullptr;
    }

    FakeActor object;
    FakeActorTrack track;
};
