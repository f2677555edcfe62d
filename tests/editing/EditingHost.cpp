#include "tests/editing/EditingHost.h"

#include "plugin/contract/EventCodes.h"

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
        const ObjectList before = level.selection;
        level.SetSelection({made});
        plugin->OnEvent(EventCode::ObjectsCreated, nullptr);
        level.SetSelection(before);
    }
    return made;
}

} // namespace editing
