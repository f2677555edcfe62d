#pragma once

#include "host/engine/ClassDatabase.h"
#include "host/engine/Level.h"
#include "host/engine/SceneObject.h"
#include "plugin/contract/Editor.h"
#include "plugin/contract/EditorView.h"
#include "plugin/contract/Plugin.h"

#include <array>
#include <functional>
#include <list>
#include <map>
#include <set>
#include <string>
#include <vector>

/// A line that the plug-in drew.
struct DrawnLine {
    Vector3 from;
    Vector3 to;
    std::array<float, 4> color{};

    bool operator==(const DrawnLine&) const = default;
};

/// A call of SetObjectsHidden.
struct HideCall {
    ObjectList objects;
    bool hidden = false;
};

/// A host without windows over a real level. It writes down what is called, and tests set what it answers.
class TestEditor : public IEditor, public IEditorView {
public:
    TestEditor();
    ~TestEditor() override;

    // IEditor
    void ClearSelection() override;
    void DeselectObject(EditorObject* object, int, int) override;
    void SelectObject(EditorObject* object, int, int) override;
    void AddToSelection(EditorObject* object, int, int) override;
    void SetSelection(const ObjectList& objects, int, int, int) override;
    void CollectObjects(ObjectList& objects, int) override;
    void DeleteObjects(const ObjectList& objects) override;
    std::string BrowseMeshElement(EditorObject*, const std::string& present) override {
        return Browse(present).value_or(present);
    }
    std::string BrowseMeshAnimation(EditorObject*, const std::string& present) override {
        return Browse(present).value_or(present);
    }
    bool InputNumber(float* value, const char* title, const char* prompt) override {
        return onInputNumber && onInputNumber(*value, title, prompt);
    }
    std::optional<std::string> BrowseObjectName(int, const std::string& present) override {
        return Browse(present);
    }
    void RedrawViews() override { Log("RedrawViews"); }
    void RedrawView(int number) override { Log("RedrawView " + std::to_string(number)); }
    int GetActiveView() override { return activeView; }
    bool AttachViewToPlugin(int number, PluginCommandId plugin) override;
    void DetachViewFromPlugin(int number, PluginCommandId plugin) override;
    bool IsViewAttachedToPlugin(int number, PluginCommandId plugin) override;
    void ShowPluginPanel(const CRuntimeClass* formClass) override;
    void HidePluginPanel() override { Log("HidePluginPanel"); }
    void AddPluginToolbar(CToolBar* toolbar, unsigned resourceId) override;
    bool HasObjectClass(const char* className) override {
        return hasControl && std::string(className) == "Control";
    }
    void BroadcastEvent(int code, PluginCommandId sender, void* data) override;
    void CreateHelperObject(const char* helperPlugin, PluginCommandId owner, int type,
                            const HelperObjectParams& params, EditorObject** object) override;
    std::string GetHelperTemplate() override { return helperFolder; }
    void GetDataFilePath(std::string& path, const char* fileName) override { path = fileName; }
    void AddListenerA(IPlugin*) override { Log("AddListenerA"); }
    void RemoveListenerA(IPlugin*) override { Log("RemoveListenerA"); }
    void AddListenerB(IPlugin*) override { Log("AddListenerB"); }
    void RemoveListenerB(IPlugin*) override { Log("RemoveListenerB"); }
    IClassDatabase* GetClassDatabase() override { return &classes; }
    const std::list<EditorClassDescriptor>& GetEditorClasses() override { return descriptors; }
    void RefreshObjectTree(int) override { Log("RefreshObjectTree"); }
    void RefreshObjectPanel(int) override { Log("RefreshObjectPanel"); }
    void AddShortcuts(const std::list<ShortcutRecord>& added) override { shortcuts = added; }
    void SetObjectsHidden(const ObjectList& objects, bool hidden) override;

    // IEditorView
    ILevel* GetLevel() override { return &level; }
    const float* GetViewMatrix(int number) override {
        return number == activeView ? viewMatrix.data() : nullptr;
    }
    ObjectList* GetSelectedObjects() override { return &level.selection; }
    void GetAllObjects(ObjectList& objects, int) override { level.CollectObjects(objects); }
    void* GetGroupOf(EditorObject* object) override;
    void DrawLine(const float* from, const float* to, const float* color) override;

    /// A mesh object at a place, told to the plug-in with event 3 as a host tells it.
    engine::SceneObject* Create(const std::string& name, float x = 0.0f, float y = 0.0f, float z = 0.0f);
    engine::SceneObject* CreateOfClass(const std::string& className, const std::string& name, float x = 0.0f,
                                       float y = 0.0f, float z = 0.0f);
    void Select(const std::vector<EditorObject*>& objects);
    void AddClassDescriptor(const std::string& name, const std::string& path);
    /// How often a call was written down.
    int Count(const std::string& call) const;
    void Log(const std::string& call) {
        if (!quiet) {
            calls.push_back(call);
        }
    }

    engine::Level level;
    engine::ClassDatabase classes;
    std::list<EditorClassDescriptor> descriptors;
    std::list<ShortcutRecord> shortcuts;
    std::vector<std::string> calls;
    std::map<int, std::uint32_t> viewOwners; ///< view number to command word
    std::array<float, 16> viewMatrix{};
    std::function<void(int code, void* data)> onBroadcast; ///< code that runs inside an event of the plug-in
    /// What the user does when asked for a number; cancels while it is empty.
    std::function<bool(float& value, const std::string& title, const std::string& prompt)> onInputNumber;
    /// What the user chooses in the browsers of elements, animations and effects; cancels while it is empty.
    std::function<std::optional<std::string>(const std::string& present)> onBrowse;
    std::vector<int> broadcasts;
    std::vector<DrawnLine> lines;
    std::vector<HideCall> hideCalls;
    std::vector<HelperObjectParams> helperParams;                      ///< of each CreateHelperObject
    std::vector<std::pair<std::string, PluginCommandId>> helperMakers; ///< helper plug-in and owner of each
    std::function<void()> onCreateHelper; ///< code that runs inside CreateHelperObject, at its end
    std::set<std::string> refusedHelpers; ///< classes that CreateHelperObject makes no object of
    std::string helperFolder = "helpers/";
    ObjectList lastBroadcastObjects; ///< the list that came with the last event 14 that had one
    IPlugin* plugin = nullptr;       ///< hears of created and deleted objects
    bool hasControl = true;
    bool refuseAttach = false;
    bool quiet = false; ///< writes nothing down, so that a frame allocates only what the plug-in does
    int activeView = 0;

private:
    std::optional<std::string> Browse(const std::string& present) const {
        return onBrowse ? onBrowse(present) : std::nullopt;
    }
};
