#pragma once

#include "plugin/contract/EditorObject.h"

#include <algorithm>
#include <map>

namespace engine {

/// The editor's record of a scene object, or of the film manager.
class SceneObjectInfo : public EditorObjectInfo {
public:
    bool IsA(int) const override { return false; }
    void Update(int) override { active = true; }
    bool IsPlaced() const override { return hidden; }
    bool IsActive() const override { return active; }
    void SetClassName(const std::string& name) override {
        className = name;
        saveClassName = name;
    }
    void SetPluginData(int pluginKind, void* data) override { pluginData[pluginKind] = data; }
    void* GetPluginData(int pluginKind) const override {
        const auto found = pluginData.find(pluginKind);
        return found == pluginData.end() ? nullptr : found->second;
    }

    /// Whether any plug-in keeps something for the object.
    bool HasPluginData() const {
        return std::ranges::any_of(pluginData, [](const auto& kept) { return kept.second != nullptr; });
    }

    bool hidden = false; ///< set through IEditor::SetObjectsHidden
    bool active = true;  ///< false in a fresh helper object until Update

private:
    std::map<int, void*> pluginData;
};

} // namespace engine
