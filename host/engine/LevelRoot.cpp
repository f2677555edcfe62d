#include "host/engine/LevelRoot.h"

#include "host/engine/Math.h"
#include "host/engine/ObjectFile.h"
#include "plugin/contract/ClassIds.h"

namespace engine {

namespace {

const Matrix4& Identity() {
    static const Matrix4 identity;
    return identity;
}

} // namespace

LevelRoot::LevelRoot(LevelData& levelData) : data(levelData) {
}

bool LevelRoot::IsA(int classId) const {
    return classId == ClassId::LevelRoot;
}

EditorObject* LevelRoot::LoadObject(fs::file& file, std::uint32_t dataSize, int classId,
                                    EditorObject* owner) {
    return LoadSceneObject(data, file, dataSize, classId, owner);
}

const float* LevelRoot::GetMatrix(int) const {
    return Identity().m;
}

const float* LevelRoot::GetPosition(int) const {
    return Identity().m + 12;
}

} // namespace engine
