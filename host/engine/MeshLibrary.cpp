#include "host/engine/MeshLibrary.h"

#include <algorithm>

namespace engine {

namespace {

template <class Items> int IndexOfName(const Items& items, const std::string& name) {
    const auto found =
        std::find_if(items.begin(), items.end(), [&](const auto& item) { return item.name == name; });
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

} // namespace

void ComposePose(const IMesh& mesh, const Matrix4* locals, Matrix4* pose) {
    const auto& elements = mesh.Elements();
    for (int i = 0; i < static_cast<int>(elements.size()); ++i) {
        const int parent = elements[i].parent;
        pose[i] = parent >= 0 && parent < i ? Multiply(locals[i], pose[parent]) : locals[i];
    }
}

int FindElement(const IMesh& mesh, const std::string& name) {
    return IndexOfName(mesh.Elements(), name);
}

int FindClip(const IMesh& mesh, const std::string& name) {
    return IndexOfName(mesh.Clips(), name);
}

} // namespace engine
