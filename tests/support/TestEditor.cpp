#include "tests/support/TestEditor.h"

#include "framework/ToolBar.h"
#include "plugin/contract/EventCodes.h"

#include <algorithm>
#include <cstring>
#include <unordered_set>

using engine::Matrix4;
using engine::SceneObject;

namespace {

void Translate(Matrix4& matrix, float x, float y, float z) {
    matrix.m[12] = x;
    matrix.m[13] = y;
    matrix.m[14] = z;
}

} // namespace

TestEditor::TestEditor() {
    for (int i = 0; i < 16; i += 5) {
        viewMatrix[static_cast<std::size_t>(i)] = 1.0f;
    }
    level.Views().SetCount(2);
    level.SetDestroyHook([this](EditorObject* object) {
        if (plugin != nullptr) {
            plugin->OnObjectDestroyed(object);
        }
    });
    AddClassDescriptor("GLLightEditorObject", "gllight.mesh");
    AddClassDescriptor("FilmsDynLightEditorObject", "dynlight.mesh");
}

TestEditor::~TestEditor() {
    level.Close();
}

void TestEditor::AddClassDescriptor(const std::string& name, const std::string& path) {
    EditorClassDescriptor& descriptor = descriptors.emplace_back();
    name.copy(descriptor.name, sizeof(descriptor.name) - 1);
    path.copy(descriptor.path, sizeof(descriptor.path) - 1);
}

void TestEditor::ClearSelection() {
    Log("ClearSelection");
    level.ClearSelection();
}

void TestEditor::DeselectObject(EditorObject* object, int, int) {
    level.Deselect(object);
}

void TestEditor::SelectObject(EditorObject* object, int, int) {
    level.SetSelection({object});
}

void TestEditor::AddToSelection(EditorObject* object, int, int) {
    level.AddToSelection(object);
}

void TestEditor::SetSelection(const ObjectList& objects, int, int, int) {
    Log("SetSelection");
    level.SetSelection(objects);
}

void TestEditor::CollectObjects(ObjectList& objects, int) {
    level.CollectObjects(objects);
}

void TestEditor::DeleteObjects(const ObjectList& objects) {
    const ObjectList doomed = objects;
    std::list<DeleteMessage> messages;
    if (plugin != nullptr && !plugin->CanDeleteObjects(&doomed, &messages)) {
        return;
    }
    level.SetSelection(doomed);
    if (plugin != nullptr) {
        plugin->OnEvent(EventCode::ObjectsDeleting, nullptr);
    }
    level.ClearSelection();
    ObjectList present; // what the plug-in asked let the level go, too
    level.CollectObjects(present);
    const std::unordered_set<const EditorObject*> known(present.begin(), present.end());
    for (EditorObject* object : doomed) {
        if (known.contains(object)) {
            level.DeleteObject(object);
        }
    }
}

bool TestEditor::AttachViewToPlugin(int number, PluginCommandId owner) {
    Log("Attach " + std::to_string(number));
    if (refuseAttach || level.Views().At(number) == nullptr) {
        return false;
    }
    viewOwners[number] = owner.word;
    return true;
}

void TestEditor::DetachViewFromPlugin(int number, PluginCommandId) {
    Log("Detach " + std::to_string(number));
    viewOwners.erase(number);
}

bool TestEditor::IsViewAttachedToPlugin(int number, PluginCommandId owner) {
    const auto found = viewOwners.find(number);
    return found != viewOwners.end() && found->second == owner.word;
}

void TestEditor::ShowPluginPanel(const CRuntimeClass*) {
    Log("ShowPluginPanel");
}

void TestEditor::AddPluginToolbar(CToolBar* toolbar, unsigned resourceId) {
    Log("AddPluginToolbar " + std::to_string(resourceId));
    toolbar->LoadToolBar(resourceId);
}

void TestEditor::BroadcastEvent(int code, PluginCommandId, void* data) {
    if (!quiet) {
        broadcasts.push_back(code);
    }
    if (code == EventCode::ObjectsMoved && data != nullptr) {
        lastBroadcastObjects = *static_cast<ObjectList*>(data);
    }
    if (onBroadcast) {
        onBroadcast(code, data);
    }
}

void TestEditor::CreateHelperObject(const char* helperPlugin, PluginCommandId owner, int type,
                                    const HelperObjectParams& params, EditorObject** object) {
    Log("CreateHelperObject " + params.className + " " + std::to_string(type));
    helperParams.push_back(params);
    helperMakers.emplace_back(helperPlugin, owner);
    if (refusedHelpers.count(params.className) != 0) {
        *object = nullptr;
        return;
    }
    engine::ObjectSpec spec;
    spec.className = params.className;
    spec.name = params.name;
    spec.meshName = params.modelPath;
    spec.active = false;
    Translate(spec.matrix, params.position.x, params.position.y, params.position.z);
    SceneObject* created = level.CreateObject(spec);
    *object = created;
    if (created == nullptr || plugin == nullptr) {
        return;
    }
    const ObjectList before = level.selection;
    level.SetSelection({created});
    plugin->OnEvent(EventCode::ObjectsCreated, nullptr);
    level.SetSelection(before);
    if (onCreateHelper) {
        onCreateHelper();
    }
}

void TestEditor::SetObjectsHidden(const ObjectList& objects, bool hidden) {
    for (EditorObject* object : objects) {
        static_cast<SceneObject*>(object)->Info().hidden = hidden;
    }
    if (!quiet) {
        hideCalls.push_back({objects, hidden});
    }
}

void TestEditor::DrawLine(const float* from, const float* to, const float* color) {
    DrawnLine line{{from[0], from[1], from[2]}, {to[0], to[1], to[2]}, {}};
    std::copy_n(color, line.color.size(), line.color.begin());
    lines.push_back(line);
}

void* TestEditor::GetGroupOf(EditorObject* object) {
    auto* known = dynamic_cast<SceneObject*>(object); // a test may have an object of its own
    return level.Data() != nullptr && known != nullptr ? level.Data()->GroupOf(known) : nullptr;
}

SceneObject* TestEditor::Create(const std::string& name, float x, float y, float z) {
    return CreateOfClass("MeshObject", name, x, y, z);
}

SceneObject* TestEditor::CreateOfClass(const std::string& className, const std::string& name, float x,
                                       float y, float z) {
    engine::ObjectSpec spec;
    spec.className = className;
    spec.name = name;
    spec.meshName = "box.glb";
    Translate(spec.matrix, x, y, z);
    SceneObject* created = level.CreateObject(spec);
    if (plugin != nullptr) {
        const ObjectList before = level.selection;
        level.SetSelection({created});
        plugin->OnEvent(EventCode::ObjectsCreated, nullptr);
        level.SetSelection(before);
    }
    return created;
}

void TestEditor::Select(const std::vector<EditorObject*>& objects) {
    level.SetSelection(ObjectList(objects.begin(), objects.end()));
}

int TestEditor::Count(const std::string& call) const {
    return static_cast<int>(std::ranges::count(calls, call));
}
