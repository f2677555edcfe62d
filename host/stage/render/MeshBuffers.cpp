#include "host/stage/render/MeshBuffers.h"

#include <cstddef>
#include <epoxy/gl.h>

namespace render {

namespace {

void DescribeVertices() {
    constexpr auto kStride = static_cast<GLsizei>(sizeof(mesh::MeshVertex));
    const auto at = [](std::size_t offset) { return reinterpret_cast<const void*>(offset); };
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, kStride, at(offsetof(mesh::MeshVertex, position)));
    glVertexAttribPointer(1, 3, GL_FLOAT, GL_FALSE, kStride, at(offsetof(mesh::MeshVertex, normal)));
    glVertexAttribPointer(2, 4, GL_UNSIGNED_BYTE, GL_TRUE, kStride, at(offsetof(mesh::MeshVertex, color)));
    glVertexAttribPointer(3, 4, GL_UNSIGNED_BYTE, GL_TRUE, kStride, at(offsetof(mesh::MeshVertex, surface)));
    for (GLuint i = 0; i < 4; ++i) {
        glEnableVertexAttribArray(i);
    }
}

template <class T> GLsizeiptr Bytes(const std::vector<T>& list) {
    return static_cast<GLsizeiptr>(list.size() * sizeof(T));
}

} // namespace

MeshBuffers::~MeshBuffers() {
    for (const auto& [mesh, still] : meshes) {
        const GLuint buffers[] = {still.vertices, still.indices};
        glDeleteBuffers(2, buffers);
        glDeleteVertexArrays(1, &still.array);
    }
    for (const Bent& item : bent) {
        glDeleteBuffers(1, &item.vertices);
        glDeleteVertexArrays(1, &item.array);
    }
}

void MeshBuffers::DropExpired() {
    for (auto it = meshes.begin(); it != meshes.end();) {
        if (!it->second.mesh.expired()) {
            ++it;
            continue;
        }
        for (Bent& item : bent) {
            item.indices = item.indices == it->second.indices ? 0 : item.indices;
        }
        const GLuint buffers[] = {it->second.vertices, it->second.indices};
        glDeleteBuffers(2, buffers);
        glDeleteVertexArrays(1, &it->second.array);
        it = meshes.erase(it);
    }
}

const MeshBuffers::Still& MeshBuffers::Upload(const std::shared_ptr<const mesh::Mesh>& mesh) {
    const auto [entry, isNew] = meshes.try_emplace(mesh.get());
    Still& still = entry->second;
    if (isNew) {
        still.mesh = mesh;
        glGenVertexArrays(1, &still.array);
        glGenBuffers(1, &still.vertices);
        glGenBuffers(1, &still.indices);
        glBindVertexArray(still.array);
        glBindBuffer(GL_ARRAY_BUFFER, still.vertices);
        glBufferData(GL_ARRAY_BUFFER, Bytes(mesh->vertices), mesh->vertices.data(), GL_STATIC_DRAW);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, still.indices);
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, Bytes(mesh->indices), mesh->indices.data(), GL_STATIC_DRAW);
        DescribeVertices();
    }
    return still;
}

unsigned MeshBuffers::UploadBent(std::size_t slot, const mesh::MeshPose& pose, unsigned indices) {
    if (slot == bent.size()) {
        Bent& fresh = bent.emplace_back();
        glGenVertexArrays(1, &fresh.array);
        glGenBuffers(1, &fresh.vertices);
        glBindVertexArray(fresh.array);
        glBindBuffer(GL_ARRAY_BUFFER, fresh.vertices);
        DescribeVertices();
    }
    Bent& item = bent[slot];
    glBindVertexArray(item.array);
    if (item.indices != indices) {
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indices);
        item.indices = indices;
    }
    glBindBuffer(GL_ARRAY_BUFFER, item.vertices);
    glBufferData(GL_ARRAY_BUFFER, Bytes(pose.skinned), pose.skinned.data(), GL_STREAM_DRAW);
    return item.array;
}

void MeshBuffers::Prepare(const std::vector<const RenderItem*>& items) {
    DropExpired();
    drawn.clear();
    std::size_t slot = 0;
    for (const RenderItem* item : items) {
        const Still& still = Upload(item->mesh);
        Drawn entry{still.array, still.array};
        if (item->pose != nullptr && item->pose->skinned.size() == item->mesh->vertices.size()) {
            entry.bentArray = UploadBent(slot++, *item->pose, still.indices);
        }
        drawn.push_back(entry);
    }
    glBindVertexArray(0);
}

void MeshBuffers::Draw(std::size_t item, const mesh::MeshPart& part) const {
    glBindVertexArray(part.skin >= 0 ? drawn[item].bentArray : drawn[item].stillArray);
    const auto offset = static_cast<std::size_t>(part.firstIndex) * sizeof(std::uint32_t);
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(part.indexCount), GL_UNSIGNED_INT,
                   reinterpret_cast<const void*>(offset));
}

} // namespace render
