#include "host/engine/mesh/Mesh.h"

#include "host/engine/mesh/MeshPose.h"

#include <algorithm>

namespace mesh {

namespace {

template <class List> int FindByName(const List& list, const std::string& name) {
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const auto& item) { return item.name == name; });
    return found == list.end() ? -1 : static_cast<int>(found - list.begin());
}

} // namespace

int Mesh::FindClip(const std::string& name) const {
    return FindByName(clips, name);
}

bool Mesh::IsPosable() const {
    return std::any_of(parts.begin(), parts.end(),
                       [](const MeshPart& part) { return part.node >= 0 || part.skin >= 0; });
}

void Mesh::Finish() {
    MeshPose pose;
    pose.Evaluate(*this, {});
    restNodes = pose.nodes;
    const std::vector<glm::vec3> positions = pose.ModelPositions(*this);
    box = MeshBox();
    for (const glm::vec3& position : positions) {
        box.Add(position);
    }
    bvh.Build(positions, indices);
}

} // namespace mesh
