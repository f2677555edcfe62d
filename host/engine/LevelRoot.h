#pragma once

#include "host/engine/SceneObjectInfo.h"
#include "plugin/contract/EditorObject.h"

namespace engine {

class LevelData;

/// The root object handed to plug-ins with the level's own chunks. Its name is the level's folder with a
/// separator. It has no matrix, and its matrix operations do nothing.
class LevelRoot : public EditorObject {
public:
    explicit LevelRoot(LevelData& levelData);

    bool IsA(int classId) const override;
    EditorObjectInfo* GetInfo() override { return &info; }
    void Save(fs::file&) override {}
    EditorObject* LoadObject(fs::file& file, std::uint32_t dataSize, int classId,
                             EditorObject* owner) override;
    void SetMatrix(const float*, int) override {}
    const float* GetMatrix(int) const override;
    void SetPosition(const float*, int) override {}
    const float* GetPosition(int) const override;
    int FindAnimation(const std::string&) const override { return -1; }
    std::uint32_t GetFlags() const override { return 0; }
    void SetFlags(std::uint32_t) override {}
    const MeshElement* GetMeshElement(int) const override { return nullptr; }
    int FindMeshElement(const std::string&) const override { return -1; }
    float GetAnimationDuration(int) const override { return -1.0f; }

private:
    LevelData& data;
    SceneObjectInfo info;
};

} // namespace engine
