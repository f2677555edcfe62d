#pragma once

#include "tests/support/FakeAttributes.h"
#include "tests/support/TestEditor.h"
#include "timeline/ScenarioWindow.h"

#include <functional>

namespace editing {

/// A host whose dialogs are answered by the world and whose objects have the mesh "robot.glb".
class EditingHost : public TestEditor {
public:
    std::string BrowseMeshElement(EditorObject* object, const std::string& present) override {
        return browse ? browse(present) : TestEditor::BrowseMeshElement(object, present);
    }

    /// An object as the host makes it, told to the plug-in with event 3.
    engine::SceneObject* Make(const std::string& className, const std::string& name, const Vector3& place);

    std::function<std::string(const std::string& present)> browse;
};

/// The key attributes window as far as keys notice it: it looks at its record whenever it takes another, as a
/// window does that writes what was typed.
class EditingAttributes final : public FakeAttributes {
public:
    void SetKey(CTrackKey* newKey, bool refresh) override;

    float lastWritten = 0.0f; ///< seconds, of the record that was left last
};

} // namespace editing
