#include "host/engine/mesh/GltfAccessor.h"

#include "host/engine/mesh/Mesh.h"

#include <algorithm>
#include <cstring>
#include <tiny_gltf.h>

namespace mesh {

namespace {

/// Bound on what one accessor may unfold to: elements may overlap in the file, so its size is no bound.
constexpr std::size_t kMaxElements = 24'000'000;
constexpr std::size_t kMaxVectors = 4'000'000;

/// The bytes of one accessor, checked.
struct Elements {
    const unsigned char* data = nullptr;
    std::size_t count = 0;
    std::size_t stride = 0;
    int componentType = 0;
    int components = 0;
    bool normalized = false;
};

[[noreturn]] void Fail(int index, const char* reason) {
    throw MeshError("accessor " + std::to_string(index) + ": " + reason);
}

template <class List> bool InRange(int index, const List& list) {
    return index >= 0 && static_cast<std::size_t>(index) < list.size();
}

bool Fits(std::size_t offset, std::size_t count, std::size_t stride, std::size_t size, std::size_t limit) {
    if (offset > limit || size > limit - offset) {
        return false;
    }
    return count <= 1 || (stride > 0 && (count - 1) <= (limit - offset - size) / stride);
}

Elements Locate(const tinygltf::Model& model, int index) {
    if (!InRange(index, model.accessors)) {
        Fail(index, "does not exist");
    }
    const tinygltf::Accessor& accessor = model.accessors[static_cast<std::size_t>(index)];
    if (accessor.sparse.isSparse) {
        Fail(index, "sparse accessors are not supported");
    }
    if (!InRange(accessor.bufferView, model.bufferViews)) {
        Fail(index, "its buffer view does not exist");
    }
    const tinygltf::BufferView& view = model.bufferViews[static_cast<std::size_t>(accessor.bufferView)];
    if (!InRange(view.buffer, model.buffers)) {
        Fail(index, "its buffer does not exist");
    }
    const std::vector<unsigned char>& bytes = model.buffers[static_cast<std::size_t>(view.buffer)].data;
    const int components = tinygltf::GetNumComponentsInType(static_cast<std::uint32_t>(accessor.type));
    const int componentSize =
        tinygltf::GetComponentSizeInBytes(static_cast<std::uint32_t>(accessor.componentType));
    const int stride = accessor.ByteStride(view);
    if (components <= 0 || componentSize <= 0 || stride <= 0) {
        Fail(index, "unknown type or stride");
    }
    if (accessor.count > (components > 1 ? kMaxVectors : kMaxElements)) {
        Fail(index, "has too many elements");
    }
    const auto size = static_cast<std::size_t>(components) * static_cast<std::size_t>(componentSize);
    if (view.byteOffset > bytes.size() || view.byteLength > bytes.size() - view.byteOffset ||
        !Fits(accessor.byteOffset, accessor.count, static_cast<std::size_t>(stride), size, view.byteLength)) {
        Fail(index, "reaches beyond its buffer");
    }
    return {bytes.data() + view.byteOffset + accessor.byteOffset,
            accessor.count,
            static_cast<std::size_t>(stride),
            accessor.componentType,
            components,
            accessor.normalized};
}

template <class T> T Load(const unsigned char* from) {
    T value;
    std::memcpy(&value, from, sizeof(T));
    return value;
}

float Component(const Elements& e, std::size_t element, int component) {
    const unsigned char* at = e.data + element * e.stride;
    const auto place = static_cast<std::ptrdiff_t>(component);
    switch (e.componentType) {
    case TINYGLTF_COMPONENT_TYPE_FLOAT:
        return Load<float>(at + place * 4);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
        return static_cast<float>(at[component]) / (e.normalized ? 255.0f : 1.0f);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
        return static_cast<float>(Load<std::uint16_t>(at + place * 2)) / (e.normalized ? 65535.0f : 1.0f);
    case TINYGLTF_COMPONENT_TYPE_BYTE: {
        const auto value = static_cast<float>(Load<std::int8_t>(at + component));
        return e.normalized ? std::max(value / 127.0f, -1.0f) : value;
    }
    case TINYGLTF_COMPONENT_TYPE_SHORT: {
        const auto value = static_cast<float>(Load<std::int16_t>(at + place * 2));
        return e.normalized ? std::max(value / 32767.0f, -1.0f) : value;
    }
    default:
        return static_cast<float>(Load<std::uint32_t>(at + place * 4));
    }
}

std::uint32_t IndexAt(const Elements& e, std::size_t element) {
    const unsigned char* at = e.data + element * e.stride;
    switch (e.componentType) {
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
        return *at;
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
        return Load<std::uint16_t>(at);
    default:
        return Load<std::uint32_t>(at);
    }
}

} // namespace

std::vector<glm::vec4> ReadVectors(const tinygltf::Model& model, int index, int components) {
    const Elements e = Locate(model, index);
    if (e.components < components || e.components > 4 || e.componentType == TINYGLTF_COMPONENT_TYPE_DOUBLE) {
        Fail(index, "has another type than its use asks for");
    }
    std::vector<glm::vec4> values(e.count, glm::vec4(0.0f));
    for (std::size_t i = 0; i < e.count; ++i) {
        for (int c = 0; c < e.components; ++c) {
            values[i][c] = Component(e, i, c);
        }
    }
    return values;
}

std::vector<float> ReadFloats(const tinygltf::Model& model, int index) {
    const std::vector<glm::vec4> vectors = ReadVectors(model, index, 1);
    std::vector<float> values(vectors.size());
    std::transform(vectors.begin(), vectors.end(), values.begin(), [](const glm::vec4& v) { return v.x; });
    return values;
}

std::vector<std::uint32_t> ReadIndices(const tinygltf::Model& model, int index, std::size_t vertexCount) {
    const Elements e = Locate(model, index);
    const bool integers = e.componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE ||
                          e.componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT ||
                          e.componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT;
    if (e.components != 1 || !integers) {
        Fail(index, "can't hold indices");
    }
    std::vector<std::uint32_t> values(e.count);
    for (std::size_t i = 0; i < e.count; ++i) {
        values[i] = IndexAt(e, i);
        if (values[i] >= vertexCount) {
            Fail(index, "names a vertex that does not exist");
        }
    }
    return values;
}

std::vector<glm::mat4> ReadMatrices(const tinygltf::Model& model, int index) {
    const Elements e = Locate(model, index);
    if (e.components != 16 || e.componentType != TINYGLTF_COMPONENT_TYPE_FLOAT) {
        Fail(index, "can't hold matrices");
    }
    std::vector<glm::mat4> values(e.count);
    for (std::size_t i = 0; i < e.count; ++i) {
        for (int c = 0; c < 16; ++c) {
            values[i][c / 4][c % 4] = Component(e, i, c);
        }
    }
    return values;
}

} // namespace mesh
