#pragma once

#include "plugin/contract/ClassDatabase.h"
#include "plugin/contract/EditorObject.h"
#include "plugin/contract/PluginCommandId.h"

#include <list>
#include <optional>
#include <string>

class CToolBar;
class IPlugin;
struct CRuntimeClass;

/// A keyboard shortcut of a plug-in.
struct ShortcutRecord {
    int pluginKind = 0;
    int number = 0; ///< handed back in IPlugin::OnShortcut
    std::string description;
    int keyCode = 0;   ///< virtual key code; 13 is Enter
    int modifiers = 0; ///< 4 Shift, 8 Ctrl, 16 Alt
};

/// An entry of IEditor::GetEditorClasses: a class that helpers can be made of.
struct EditorClassDescriptor {
    char name[64] = {};
    char path[260] = {}; ///< file of the class's model, relative to the helper folder
};

/// What a helper object is made from.
struct HelperObjectParams {
    Vector3 position;
    Vector3 rotation; ///< degrees
    Vector3 scale{1.0f, 1.0f, 1.0f};
    std::string name;
    std::string className;
    std::string modelPath;
};

/// The editor as a plug-in sees it. Owned by the host, good until event 11.
class IEditor {
public:
    virtual ~IEditor() = default;
    virtual void ClearSelection() = 0;
    virtual void DeselectObject(EditorObject* object, int zero, int zero2) = 0;
    /// Makes this object the only selected one.
    virtual void SelectObject(EditorObject* object, int one, int zero) = 0;
    virtual void AddToSelection(EditorObject* object, int one, int zero) = 0;
    virtual void SetSelection(const ObjectList& objects, int zero, int zero2, int zero3) = 0;
    virtual void CollectObjects(ObjectList& objects, int one) = 0;
    /// Deletes as the user's delete command does, with its questions and events.
    virtual void DeleteObjects(const ObjectList& objects) = 0;
    /// Modal pickers; they return the name chosen, or the present one on cancel.
    virtual std::string BrowseMeshElement(EditorObject* object, const std::string& present) = 0;
    virtual std::string BrowseMeshAnimation(EditorObject* object, const std::string& present) = 0;
    /// Modal number input; false on cancel.
    virtual bool InputNumber(float* value, const char* title, const char* prompt) = 0;
    virtual std::optional<std::string> BrowseObjectName(int fxKind, const std::string& text) = 0;
    virtual void RedrawViews() = 0;
    virtual void RedrawView(int view) = 0;
    /// Number of the active 3D view, negative if there is none.
    virtual int GetActiveView() = 0;
    virtual bool AttachViewToPlugin(int view, PluginCommandId plugin) = 0;
    virtual void DetachViewFromPlugin(int view, PluginCommandId plugin) = 0;
    virtual bool IsViewAttachedToPlugin(int view, PluginCommandId plugin) = 0;
    /// Creates a form of this run-time class and shows it in the side panel. The host owns the form.
    virtual void ShowPluginPanel(const CRuntimeClass* formClass) = 0;
    virtual void HidePluginPanel() = 0;
    /// Creates the toolbar from the plug-in's toolbar resource and docks it.
    virtual void AddPluginToolbar(CToolBar* toolbar, unsigned resourceId) = 0;
    virtual bool HasObjectClass(const char* className) = 0;
    /// Calls OnEvent of the other plug-ins, never of the sender.
    virtual void BroadcastEvent(int code, PluginCommandId sender, void* data) = 0;
    /// Makes a helper object through the helper plug-in named; `object` is null on failure.
    virtual void CreateHelperObject(const char* helperPlugin, PluginCommandId owner, int type,
                                    const HelperObjectParams& params, EditorObject** object) = 0;
    /// Base folder of the helper files.
    virtual std::string GetHelperTemplate() = 0;
    virtual void GetDataFilePath(std::string& path, const char* fileName) = 0;
    virtual void AddListenerA(IPlugin* plugin) = 0;
    virtual void RemoveListenerA(IPlugin* plugin) = 0;
    virtual void AddListenerB(IPlugin* plugin) = 0;
    virtual void RemoveListenerB(IPlugin* plugin) = 0;
    virtual IClassDatabase* GetClassDatabase() = 0;
    virtual const std::list<EditorClassDescriptor>& GetEditorClasses() = 0;
    virtual void RefreshObjectTree(int zero) = 0;
    virtual void RefreshObjectPanel(int zero) = 0;
    /// The list is copied.
    virtual void AddShortcuts(const std::list<ShortcutRecord>& shortcuts) = 0;
    /// Hides or shows helper objects: no redraw, no event, no change of the selection.
    virtual void SetObjectsHidden(const ObjectList& objects, bool hidden) = 0;
};
