#pragma once

#include "host/engine/Level.h"

#include <vector>

namespace stage {

/// The selection by ids, which outlives objects that go and come back.
inline std::vector<int> SelectedIds(const engine::Level& level) {
    std::vector<int> ids;
    for (const EditorObject* object : level.selection) {
        ids.push_back(object->id);
    }
    return ids;
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
