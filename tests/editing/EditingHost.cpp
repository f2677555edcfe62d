#include "tests/editing/EditingHost.h"

#include "framework/QtBridge.h"
#include "plugin/contract/EventCodes.h"
#include "tests/support/Paths.h"

#include <unordered_set>
#include <utility>

namespace editing {

engine::SceneObject* EditingHost::Make(const std::string& className, const std::string& name,
                                       const Vector3& place) {
    engine::ObjectSpec spec;
    spec.className = className;
    spec.name = name;
    spec.meshName = "robot.glb";
    spec.matrix.SetTranslation(place);
    engine::SceneObject* made = level.CreateObject(spec);
    if (made != nullptr && plugin != nullptr) {
        ObjectList before = level.selection;
        level.SetSelection({made});
        plugin->OnEvent(EventCode::ObjectsCreated, nullptr);
        ObjectList present; // what the plug-in asked let things go, the level too
        level.CollectObjects(present);
        const std::unordered_set<const EditorObject*> known(present.begin(), present.end());
        before.remove_if([&](const EditorObject* object) { return !known.contains(object); });
        level.SetSelection(before);
        return known.contains(made) ? made : nullptr;
    }
    return made;
}

void EditingHost::GetDataFilePath(std::string& path, const char* fileName) {
    const bool isLost = losesFiles && losesFiles();
    path = isLost ? "/nowhere/" + std::string(fileName) : SourceFolder() + "/host/stage/data/" + fileName;
}

void EditingHost::ShowPluginPanel(const CRuntimeClass* formClass) {
    constexpr int kWidth = 320; // pixels: the whole form
    constexpr int kHeight = 540;
    HidePluginPanel();
    holder = std::make_unique<QWidget>();
    holder->resize(kWidth, kHeight);
    holder->show();
    panel = CreateFormView(formClass, holder.get(), /*id*/ 1);
    if (panel != nullptr) {
        panel->MoveWindow(0, 0, kWidth, kHeight);
        panel->ShowWindow(SW_SHOWNA);
    }
}

/// The panel may be hidden from inside itself.
void EditingHost::HidePluginPanel() {
    if (CWnd* form = std::exchange(panel, nullptr)) {
        form->DestroyWindow();
    }
    if (holder) {
        holder->hide();
        holder.release()->deleteLater();
    }
}

} // namespace editing
