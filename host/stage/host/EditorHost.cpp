#include "host/stage/host/EditorHost.h"

#include "host/stage/host/FreeLights.h"
#include "plugin/contract/EventCodes.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <unordered_set>

namespace stage {

namespace {
/// The helper plug-in that the editor brings itself.
constexpr const char* kControlPlugin = "Control";
/// Helpers of this type live for the session only; they never enter the level's object list in a file.
constexpr int kTransientHelper = 2;

/// Plug-ins leave a key alone whose animation the object hasn't, and say nothing.
std::string UnknownAnimationText(const std::string& object, const std::string& animation) {
    return object + " has no animation \"" + animation + "\": the key keeps what it had.";
}

engine::Matrix4 MatrixOf(const HelperObjectParams& params) {
    return engine::Compose(params.position, params.rotation, params.scale);
}

template <std::size_t Size> void CopyText(char (&target)[Size], const std::string& text) {
    const std::size_t length = std::min(text.size(), Size - 1);
    std::memcpy(target, text.data(), length);
    target[length] = '\0';
}
} // namespace

EditorHost::EditorHost(IStageWindows& stageWindows, HostFolders hostFolders)
    : plugins([this](const std::string& text) { windows.ReportError(text); }), views(level.Views()),
      windows(stageWindows), folders(std::move(hostFolders)) {
    MakeEditorClasses();
    level.SetMeshLibrary(&meshes);
    level.SetUnsavedFolder(folders.state);
    level.SetChunkClient(&chunkClient);
    level.SetDestroyHook([this](EditorObject* object) {
        windows.ObjectGone(object);
        plugins.Each([object](IPlugin& plugin) { plugin.OnObjectDestroyed(object); });
    });
    level.SetFreedLightHook(
        [this](const EditorObject* light) { windows.Report(FreedLightText(light->name)); });
    level.SetUnknownAnimationHook([this](const EditorObject& object, const std::string& animation) {
        windows.Report(UnknownAnimationText(object.name, animation));
    });
}

EditorHost::~EditorHost() {
    Shutdown();
}

void EditorHost::MakeEditorClasses() {
    for (const CClassDefinition* definition : classes.classes) {
        if (classes.IsDerivedFrom(definition->name, ClassName::Helper)) {
            EditorClassDescriptor descriptor;
            CopyText(descriptor.name, definition->name);
            CopyText(descriptor.path, definition->name + ".helper");
            editorClasses.push_back(descriptor);
        }
    }
}

// Selection calls of plug-ins raise no event: the caller must not hear its own change.
void EditorHost::ClearSelection() {
    level.ClearSelection();
    windows.SelectionChanged();
}

void EditorHost::DeselectObject(EditorObject* object, int /*zero*/, int /*zero2*/) {
    level.Deselect(object);
    windows.SelectionChanged();
}

void EditorHost::SelectObject(EditorObject* object, int /*one*/, int /*zero*/) {
    SetSelection({object}, 0, 0, 0);
}

void EditorHost::AddToSelection(EditorObject* object, int /*one*/, int /*zero*/) {
    if (Contains(object)) {
        level.AddToSelection(object);
        windows.SelectionChanged();
    }
}

void EditorHost::SetSelection(const ObjectList& objects, int /*zero*/, int /*zero2*/, int /*zero3*/) {
    ObjectList known = objects;
    known.remove_if([this](const EditorObject* object) { return !Contains(object); });
    level.SetSelection(known);
    windows.SelectionChanged();
}

void EditorHost::Select(const ObjectList& objects) {
    ObjectList known = objects;
    known.remove_if([this](const EditorObject* object) { return !Contains(object); });
    if (known == level.selection) {
        return;
    }
    level.SetSelection(known);
    plugins.SendEvent(EventCode::SelectionChanged, nullptr);
    windows.SelectionChanged();
}

void EditorHost::CollectObjects(ObjectList& objects, int /*one*/) {
    level.CollectObjects(objects);
}

void EditorHost::GetAllObjects(ObjectList& objects, int /*one*/) {
    level.CollectObjects(objects);
}

bool EditorHost::Contains(const EditorObject* object) const {
    const engine::LevelData* data = level.Data();
    return data != nullptr && data->Holds(object);
}

void EditorHost::WithSelection(const ObjectList& objects, const std::function<void()>& call) {
    const ObjectList before = level.selection;
    level.SetSelection(objects);
    call();
    ObjectList after = before;
    after.remove_if([this](const EditorObject* object) { return !Contains(object); });
    level.SetSelection(after);
}

void EditorHost::DeleteObjects(const ObjectList& objects) {
    ObjectList doomed;
    std::unordered_set<const EditorObject*> known;
    for (EditorObject* object : objects) {
        if (Contains(object) && known.insert(object).second) {
            doomed.push_back(object);
        }
    }
    if (doomed.empty()) {
        return;
    }
    bool allowed = true;
    std::list<DeleteMessage> messages;
    plugins.Each([&](IPlugin& plugin) { allowed = plugin.CanDeleteObjects(&doomed, &messages) && allowed; });
    if (allowed) {
        DestroyObjects(doomed);
    } else {
        windows.ShowDeleteRefusals(messages);
    }
}

void EditorHost::DestroyObjects(const ObjectList& objects) {
    const ObjectList doomed = objects; // the caller's list may be the selection itself
    const std::unordered_set<const EditorObject*> known(doomed.begin(), doomed.end());
    const bool selectionShrinks =
        std::ranges::any_of(level.selection, [&](EditorObject* object) { return known.contains(object); });
    WithSelection(doomed, [&] {
        plugins.SendEvent(EventCode::ObjectsDeleting, nullptr);
        for (EditorObject* object : doomed) {
            if (Contains(object)) {
                level.DeleteObject(object);
            }
        }
    });
    if (selectionShrinks) {
        plugins.SendEvent(EventCode::SelectionChanged, nullptr);
        windows.SelectionChanged();
    }
    windows.ObjectsChanged();
}

std::string EditorHost::BrowseMeshElement(EditorObject* object, const std::string& present) {
    return windows.BrowseMeshElement(object, present).value_or(present);
}

std::string EditorHost::BrowseMeshAnimation(EditorObject* object, const std::string& present) {
    return windows.BrowseMeshAnimation(object, present).value_or(present);
}

bool EditorHost::InputNumber(float* value, const char* title, const char* prompt) {
    if (value == nullptr) {
        return false;
    }
    const std::optional<float> number =
        windows.InputNumber(*value, title != nullptr ? title : "", prompt != nullptr ? prompt : "");
    *value = number.value_or(*value);
    return number.has_value();
}

std::optional<std::string> EditorHost::BrowseObjectName(int fxKind, const std::string& text) {
    return windows.BrowseFx(fxKind, text);
}

void EditorHost::ShowPluginPanel(const CRuntimeClass* formClass) {
    windows.HidePanel();
    windows.ShowPanel(formClass);
}

void EditorHost::HidePluginPanel() {
    windows.HidePanel();
}

void EditorHost::PanelClosed() {
    plugins.SendEvent(EventCode::PanelTaken, nullptr);
}

void EditorHost::AddPluginToolbar(CToolBar* toolbar, unsigned resourceId) {
    if (toolbar != nullptr && windows.AddToolbar(toolbar, resourceId)) {
        toolbars.push_back(toolbar);
    }
}

bool EditorHost::HasObjectClass(const char* className) {
    return className != nullptr && std::strcmp(className, kControlPlugin) == 0;
}

void EditorHost::BroadcastEvent(int code, PluginCommandId sender, void* data) {
    switch (code) {
    case EventCode::PanelTaken:
        windows.HidePanel();
        break;
    case EventCode::SelectionChanged:
        windows.SelectionChanged();
        break;
    case EventCode::ObjectSetChanged:
    case EventCode::ClassesChanged:
        windows.ObjectsChanged();
        break;
    case EventCode::ObjectsMoved:
        windows.ObjectsMoved();
        break;
    default:
        break;
    }
    plugins.SendEvent(code, data, sender.PluginNumber());
}

void EditorHost::CreateHelperObject(const char* helperPlugin, PluginCommandId /*owner*/, int type,
                                    const HelperObjectParams& params, EditorObject** object) {
    level.OnShowing(); // a plug-in makes these to show something, not because the user asked for one
    if (object == nullptr) {
        return;
    }
    *object = nullptr;
    if (!HasObjectClass(helperPlugin) || !classes.IsDerivedFrom(params.className, ClassName::Helper)) {
        return;
    }
    engine::ObjectSpec spec;
    spec.className = params.className;
    spec.name = params.name.empty() ? params.className : params.name;
    spec.matrix = MatrixOf(params);
    spec.active = false;
    engine::SceneObject* made = level.CreateObject(spec);
    if (made == nullptr) {
        return;
    }
    made->transient = type == kTransientHelper;
    // Plug-ins take the object's matrix now; that it is not yet active keeps it from becoming a light track.
    WithSelection({made}, [this] { plugins.SendEvent(EventCode::ObjectsCreated, nullptr); });
    windows.ObjectsChanged();
    *object = Contains(made) ? made : nullptr;
}

void EditorHost::GetDataFilePath(std::string& path, const char* fileName) {
    const std::filesystem::path name = fileName != nullptr ? fileName : "";
    path = (std::filesystem::path(folders.data) / name).string();
    const std::filesystem::path shipped = std::filesystem::path(folders.shipped) / name;
    std::error_code error;
    if (!folders.shipped.empty() && !std::filesystem::exists(path, error) &&
        std::filesystem::exists(shipped, error)) {
        path = shipped.string();
    }
}

void EditorHost::RefreshObjectTree(int /*zero*/) {
    windows.RefreshObjectTree();
}

void EditorHost::RefreshObjectPanel(int /*zero*/) {
    windows.RefreshObjectPanel();
}

void EditorHost::AddShortcuts(const std::list<ShortcutRecord>& added) {
    shortcuts.insert(shortcuts.end(), added.begin(), added.end());
    windows.ShortcutsChanged();
}

void EditorHost::SetObjectsHidden(const ObjectList& objects, bool hidden) {
    for (EditorObject* object : objects) {
        if (Contains(object)) {
            static_cast<engine::SceneObject*>(object)->Info().hidden = hidden;
        }
    }
}

void* EditorHost::GetGroupOf(EditorObject* object) {
    return Contains(object) ? level.Data()->GroupOf(static_cast<engine::SceneObject*>(object)) : nullptr;
}

} // namespace stage
