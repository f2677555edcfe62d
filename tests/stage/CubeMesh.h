#pragma once

#include "host/engine/MeshLibrary.h"

#include <algorithm>

/// A cube of side 2 around its middle; the ray cast is exact for it.
class CubeMesh : public engine::IMesh {
public:
    const std::vector<MeshElement>& Elements() const override { return elements; }
    const std::vector<engine::Matrix4>& RestLocals() const override { return locals; }
    const std::vector<engine::MeshClip>& Clips() const override { return clips; }
    void Bounds(Vector3& low, Vector3& high) const override {
        low = {-1, -1, -1};
        high = {1, 1, 1};
    }
    void SampleClip(int, float, engine::Matrix4*) const override {}
    bool RayCast(const Vector3& from, const Vector3& to, const engine::Matrix4*,
                 float& fraction) const override {
        float enter = 0.0f;
        float leave = 1.0f;
        for (int axis = 0; axis < 3; ++axis) {
            const float start = from.Data()[axis];
            const float way = to.Data()[axis] - start;
            if (way == 0.0f) {
                if (start < -1.0f || start > 1.0f) {
                    return false;
                }
                continue;
            }
            const float a = (-1.0f - start) / way;
            const float b = (1.0f - start) / way;
            enter = std::max(enter, std::min(a, b));
            leave = std::min(leave, std::max(a, b));
        }
        fraction = enter;
        return enter <= leave;
    }
    std::vector<MeshElement> elements;
    std::vector<engine::Matrix4> locals;
    std::vector<engine::MeshClip> clips;
};

class CubeLibrary : public engine::IMeshLibrary {
public:
    const engine::IMesh* FindMesh(const std::string& name) override {
        return name == "cube" ? &cube : nullptr;
    }
    CubeMesh cube;
};
