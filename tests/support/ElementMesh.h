#pragma once

#include "host/engine/MeshLibrary.h"

#include <string>
#include <utility>
#include <vector>

/// A mesh of named elements and clips without a shape, and the library that has it.
class ElementMesh final : public engine::IMesh, public engine::IMeshLibrary {
public:
    /// Without a file's name every file holds this mesh.
    explicit ElementMesh(std::vector<MeshElement> meshElements, std::vector<engine::MeshClip> meshClips = {},
                         std::string meshFile = "")
        : elements(std::move(meshElements)), clips(std::move(meshClips)), rest(elements.size()),
          file(std::move(meshFile)) {}

    const engine::IMesh* FindMesh(const std::string& name) override {
        return file.empty() || name == file ? this : nullptr;
    }
    const std::vector<MeshElement>& Elements() const override { return elements; }
    const std::vector<engine::Matrix4>& RestLocals() const override { return rest; }
    const std::vector<engine::MeshClip>& Clips() const override { return clips; }
    void Bounds(Vector3& low, Vector3& high) const override { low = high = {}; }
    void SampleClip(int, float, engine::Matrix4*) const override {}
    bool RayCast(const Vector3&, const Vector3&, const engine::Matrix4*, float&) const override {
        return false;
    }

    std::vector<MeshElement> elements;
    std::vector<engine::MeshClip> clips;

private:
    std::vector<engine::Matrix4> rest;
    std::string file;
};
