#pragma once

#include "host/engine/Level.h"

#include <vector>

namespace stage {

/// Objects by ids, which outlive objects that go and come back.
template <typename Objects> std::vector<int> IdsOf(const Objects& objects) {
    std::vector<int> ids;
    ids.reserve(objects.size());
    for (const EditorObject* object : objects) {
        ids.push_back(object->id);
    }
    return ids;
}

inline std::vector<int> SelectedIds(const engine::Level& level) {
    return IdsOf(level.selection);
}

/// The objects of these ids that are there.
inline ObjectList ObjectsOf(const engine::Level& level, const std::vector<int>& ids) {
    ObjectList objects;
    for (const int id : ids) {
        if (engine::SceneObject* object = level.FindObject(id)) {
            objects.push_back(object);
        }
    }
    return objects;
}

} // namespace stage
