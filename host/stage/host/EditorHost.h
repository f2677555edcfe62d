#pragma once

#include "host/engine/ChunkClient.h"
#include "host/engine/ClassDatabase.h"
#include "host/engine/Level.h"
#include "host/engine/mesh/GltfMeshLibrary.h"
#include "host/stage/host/PluginRegistry.h"
#include "host/stage/host/StageView.h"
#include "host/stage/host/StageWindows.h"
#include "plugin/contract/Editor.h"
#include "plugin/contract/EditorView.h"

#include <list>
#include <string>
#include <vector>

namespace stage {

/// A line of a plug-in in the view that is being drawn; world points.
struct OverlayLine {
    float from[3] = {};
    float to[3] = {};
    float color[4] = {}; ///< r, g, b, a
};

/// Where the editor finds its own files.
struct HostFolders {
    std::string data;    ///< the editor's data files, without a separator at the end
    std::string helpers; ///< base folder of the helper files
    /// Data files that come with the program; the user's own of the same name go first. Empty for none.
    std::string shipped{};
    /// What a level without a folder has in its place; see UserStateFolder. Empty for none.
    std::string state{};
};

/// The editor as plug-ins see it, over one engine level. It owns the level, the views and the plug-ins and
/// no window: what needs one goes through IStageWindows. Level commands of the user are in ObjectCommands,
/// new, open and save in LevelSession.
class EditorHost : public IEditor, public IEditorView {
public:
    /// The windows must live until Shutdown has run.
    EditorHost(IStageWindows& stageWindows, HostFolders hostFolders);
    ~EditorHost() override;

    // What plug-ins call.
    void ClearSelection() override;
    void DeselectObject(EditorObject* object, int zero, int zero2) override;
    void SelectObject(EditorObject* object, int one, int zero) override;
    void AddToSelection(EditorObject* object, int one, int zero) override;
    void SetSelection(const ObjectList& objects, int zero, int zero2, int zero3) override;
    void CollectObjects(ObjectList& objects, int one) override;
    void DeleteObjects(const ObjectList& objects) override;
    std::string BrowseMeshElement(EditorObject* object, const std::string& present) override;
    std::string BrowseMeshAnimation(EditorObject* object, const std::string& present) override;
    bool InputNumber(float* value, const char* title, const char* prompt) override;
    std::optional<std::string> BrowseObjectName(int fxKind, const std::string& text) override;
    void RedrawViews() override;
    void RedrawView(int view) override;
    int GetActiveView() override;
    bool AttachViewToPlugin(int view, PluginCommandId plugin) override;
    void DetachViewFromPlugin(int view, PluginCommandId plugin) override;
    bool IsViewAttachedToPlugin(int view, PluginCommandId plugin) override;
    void ShowPluginPanel(const CRuntimeClass* formClass) override;
    void HidePluginPanel() override;
    void AddPluginToolbar(CToolBar* toolbar, unsigned resourceId) override;
    bool HasObjectClass(const char* className) override;
    void BroadcastEvent(int code, PluginCommandId sender, void* data) override;
    void CreateHelperObject(const char* helperPlugin, PluginCommandId owner, int type,
                            const HelperObjectParams& params, EditorObject** object) override;
    std::string GetHelperTemplate() override { return folders.helpers; }
    void GetDataFilePath(std::string& path, const char* fileName) override;
    void AddListenerA(IPlugin* plugin) override { plugins.listenersA.Add(plugin); }
    void RemoveListenerA(IPlugin* plugin) override { plugins.listenersA.Remove(plugin); }
    void AddListenerB(IPlugin* plugin) override { plugins.listenersB.Add(plugin); }
    void RemoveListenerB(IPlugin* plugin) override { plugins.listenersB.Remove(plugin); }
    IClassDatabase* GetClassDatabase() override { return &classes; }
    const std::list<EditorClassDescriptor>& GetEditorClasses() override { return editorClasses; }
    void RefreshObjectTree(int zero) override;
    void RefreshObjectPanel(int zero) override;
    void AddShortcuts(const std::list<ShortcutRecord>& added) override;
    void SetObjectsHidden(const ObjectList& objects, bool hidden) override;

    ILevel* GetLevel() override { return &level; }
    const float* GetViewMatrix(int view) override;
    ObjectList* GetSelectedObjects() override { return &level.selection; }
    void GetAllObjects(ObjectList& objects, int one) override;
    void* GetGroupOf(EditorObject* object) override;
    void DrawLine(const float* from, const float* to, const float* color) override;

    // What the windows call.
    /// Loads a plug-in library; false and a report if it can't be loaded.
    bool LoadPlugin(const std::string& path);
    /// OnEditorReady and RegisterShortcuts of the plug-ins loaded so far, with the present level.
    void StartPlugins();
    /// What plug-ins hear before a level goes: their views are taken back, the film is left (event 19), all
    /// objects are about to be deleted (event 4), render resources go (event 15), and a new level starts
    /// (OnNew). The level's data still stand afterwards; the caller drops or replaces them.
    void LeaveLevel();
    /// Closes the level, takes leave of the plug-ins and unloads them. Must not run inside a plug-in's call.
    void Shutdown();
    /// The user's selection: event 2 goes out.
    void Select(const ObjectList& objects);
    /// Whether the level has this object, by address: safe for objects that are gone.
    bool Contains(const EditorObject* object) const;
    /// The user takes a view back from the plug-in that holds it.
    void TakeView(int view);
    /// The number of shown views; attached views that go are given back first.
    void SetViewCount(int count);
    /// Whether a plug-in says that the view follows it.
    bool FollowsPlugin(int view);
    /// A view that looks through a camera of the level takes that camera's place; if it has gone, the view is
    /// the user's own again. Before a view is drawn.
    void FollowCamera(int view);
    /// The plug-ins' lines for one view, made by their render calls.
    const std::vector<OverlayLine>& RenderPlugins(int view);
    void RunCommand(PluginCommandId command);
    void RunShortcut(const ShortcutRecord& shortcut);
    /// Text of a command by its plug-in, empty if it has none.
    std::string CommandText(PluginCommandId command);
    bool FillObjectMenu(CMenu* menu, EditorObject* object);
    bool FillViewMenu(CMenu* menu);
    /// The panel was closed by the user: its plug-in hears it as event 1.
    void PanelClosed();
    /// The selection while `call` runs is exactly these objects; no event, and the former selection of
    /// those objects that still exist comes back.
    void WithSelection(const ObjectList& objects, const std::function<void()>& call);
    /// Deletes objects that nobody refused: event 4, then the objects go.
    void DestroyObjects(const ObjectList& objects);

    /// Longer than the level, whose objects hold its meshes.
    mesh::GltfMeshLibrary meshes;
    engine::Level level;
    PluginRegistry plugins;
    StageViews views;
    engine::ClassDatabase classes;
    engine::PluginChunkClient chunkClient;
    IStageWindows& windows;
    const HostFolders folders;
    std::vector<ShortcutRecord> shortcuts;

private:
    void RequestDetach(int view, StageView& stageView);
    void MakeEditorClasses();

    std::list<EditorClassDescriptor> editorClasses;
    std::vector<CToolBar*> toolbars; ///< owned by their plug-ins
    std::vector<OverlayLine> lines;
    int drawingView = -1; ///< number of the view whose render calls run, -1 otherwise
};

} // namespace stage
