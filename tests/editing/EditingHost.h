#pragma once

#include "framework/FormView.h"
#include "tests/support/TestEditor.h"

#include <functional>
#include <memory>
#include <optional>
#include <QWidget>
#include <string>

namespace editing {

/// A host whose dialogs are answered by the world and whose objects have the mesh "robot.glb".
class EditingHost : public TestEditor {
public:
    ~EditingHost() override { HidePluginPanel(); }

    std::string BrowseMeshElement(EditorObject* object, const std::string& present) override {
        return browse ? browse(present) : TestEditor::BrowseMeshElement(object, present);
    }
    std::string BrowseMeshAnimation(EditorObject* object, const std::string& present) override {
        return browse ? browse(present) : TestEditor::BrowseMeshAnimation(object, present);
    }
    std::optional<std::string> BrowseObjectName(int kind, const std::string& present) override {
        return browseName ? browseName(present) : TestEditor::BrowseObjectName(kind, present);
    }

    void GetDataFilePath(std::string& path, const char* fileName) override;
    void ShowPluginPanel(const CRuntimeClass* formClass) override;
    void HidePluginPanel() override;

    /// An object as the host makes it, told to the plug-in with event 3.
    engine::SceneObject* Make(const std::string& className, const std::string& name, const Vector3& place);

    std::function<std::string(const std::string& present)> browse; ///< elements and animations
    std::function<std::optional<std::string>(const std::string& present)> browseName;
    std::function<bool()> losesFiles; ///< the data folder lacks a file this time
    CWnd* panel = nullptr;            ///< the plug-in's, while it is shown

private:
    std::unique_ptr<QWidget> holder; ///< around the panel
};

} // namespace editing
