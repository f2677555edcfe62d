#pragma once

#include "tests/support/TestEditor.h"

#include <functional>
#include <string>
#include <vector>

/// An editor whose user picks a mesh element. It lives beside the one with the level.
class PickingEditor final : public TestEditor {
public:
    std::string BrowseMeshElement(EditorObject* object, const std::string& present) override {
        asked.push_back(object->name + "/" + present);
        if (onBrowse) {
            onBrowse();
        }
        return answer;
    }

    std::vector<std::string> asked; ///< "object/element on show"
    std::string answer;
    std::function<void()> onBrowse;
};
