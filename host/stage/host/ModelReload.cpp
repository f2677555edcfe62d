#include "host/stage/host/ModelReload.h"

#include "host/engine/LevelData.h"
#include "host/stage/host/EditorHost.h"
#include "plugin/contract/EventCodes.h"

#include <set>

namespace stage {

ModelNews ReloadModels(EditorHost& host) {
    ModelNews news;
    std::set<std::string> names;
    for (const std::string& name : host.meshes.Changed()) {
        std::string error;
        if (host.meshes.Reload(name, error)) {
            names.insert(name);
            news.loaded.push_back(name);
        } else {
            news.refused.push_back(error);
        }
    }
    engine::LevelData* level = host.level.Data();
    if (names.empty() || level == nullptr) {
        return news;
    }
    for (const auto& object : level->Objects()) {
        if (names.contains(object->meshName)) {
            object->SetMeshName(std::string(object->meshName)); // the same, with another mesh behind it
        }
    }
    host.meshes.DropReplaced();
    // An open film poses what stands at rest now. Its rows and what is chosen in them stay: event 8 would
    // have them made anew.
    ObjectList none;
    host.plugins.SendEvent(EventCode::ObjectsChangedOutside, &none);
    host.windows.RefreshObjectPanel();
    host.RedrawViews();
    return news;
}

} // namespace stage
