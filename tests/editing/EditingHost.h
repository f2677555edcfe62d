#pragma once

#include "tests/support/TestEditor.h"

#include <functional>
#include <optional>
#include <string>

namespace editing {

/// A host whose dialogs are answered by the world and whose objects have the mesh "robot.glb".
class EditingHost : public TestEditor {
public:
    std::string BrowseMeshElement(EditorObject* object, const std::string& present) override {
        return browse ? browse(present) : TestEditor::BrowseMeshElement(object, present);
    }
    std::string BrowseMeshAnimation(EditorObject* object, const std::string& present) override {
        return browse ? browse(present) : TestEditor::BrowseMeshAnimation(object, present);
    }
    std::optional<std::string> BrowseObjectName(int kind, const std::string& present) override {
        return browseName ? browseName(present) : TestEditor::BrowseObjectName(kind, present);
    }

    /// An object as the host makes it, told to the plug-in with event 3.
    engine::SceneObject* Make(const std::string& className, const std::string& name, const Vector3& place);

    std::function<std::string(const std::string& present)> browse; ///< elements and animations
    std::function<std::optional<std::string>(const std::string& present)> browseName;
};

} // namespace editing
