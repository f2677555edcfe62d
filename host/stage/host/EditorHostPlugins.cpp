#include "host/stage/host/EditorHost.h"
#include "plugin/contract/EventCodes.h"

namespace stage {

namespace {
constexpr std::size_t kCommandTextBytes = 256;
}

bool EditorHost::LoadPlugin(const std::string& path) {
    std::string error;
    PluginEntry* entry = plugins.Load(path, this, this, error);
    if (entry == nullptr) {
        windows.ReportError("The plug-in can't be used: " + error);
        return false;
    }
    chunkClient.plugins.push_back(entry->plugin);
    return true;
}

void EditorHost::StartPlugins() {
    chunkClient.plugins.clear();
    for (const PluginEntry* entry : plugins.Entries()) {
        chunkClient.plugins.push_back(entry->plugin);
    }
    plugins.Start();
}

void EditorHost::LeaveLevel() {
    for (int view = 0; view < views.Count(); ++view) {
        TakeView(view); // first, while the plug-in still knows that it holds the view
    }
    if (level.Data() != nullptr) {
        plugins.SendEvent(EventCode::Suspend, nullptr);
        ObjectList all;
        level.CollectObjects(all);
        level.SetSelection(all);
        plugins.SendEvent(EventCode::ObjectsDeleting, nullptr);
        level.ClearSelection();
        plugins.SendEvent(EventCode::ReleaseRenderResources, nullptr);
    }
    plugins.Each([](IPlugin& plugin) { plugin.OnNew(); });
}

void EditorHost::Shutdown() {
    if (plugins.Entries().empty() && level.Data() == nullptr) {
        return; // the windows may have gone already
    }
    if (level.Data() != nullptr) {
        LeaveLevel();
        level.Close();
    }
    for (int view = 0; view < views.Count(); ++view) {
        views.At(view)->attachedTo = 0;
    }
    windows.HidePanel();
    plugins.Shutdown([this] {
        windows.DestroyToolWindows();
        for (CToolBar* toolbar : toolbars) {
            windows.RemoveToolbar(toolbar);
        }
        toolbars.clear();
        shortcuts.clear();
        chunkClient.plugins.clear();
    });
}

void EditorHost::RunCommand(PluginCommandId command) {
    if (PluginEntry* entry = plugins.Find(command.PluginNumber())) {
        plugins.Guarded("OnCommand",
                        [&] { entry->plugin->OnCommand(entry->number, command.LocalCommand()); });
    }
}

void EditorHost::RunShortcut(const ShortcutRecord& shortcut) {
    const ShortcutRecord present = shortcut; // the call may end in unloading the table
    plugins.Each([&present](IPlugin& plugin) {
        if (plugin.GetPluginKind() == present.pluginKind) {
            plugin.OnShortcut(0, present.number, 0);
        }
    });
}

std::string EditorHost::CommandText(PluginCommandId command) {
    char text[kCommandTextBytes] = {};
    if (PluginEntry* entry = plugins.Find(command.PluginNumber())) {
        plugins.Guarded("GetCommandText",
                        [&] { entry->plugin->GetCommandText(entry->number, command.LocalCommand(), text); });
    }
    text[kCommandTextBytes - 1] = '\0';
    return text;
}

bool EditorHost::FillObjectMenu(CMenu* menu, EditorObject* object) {
    bool added = false;
    plugins.Each([&](IPlugin& plugin) { added = plugin.OnObjectMenu(menu, 0, 0, object) || added; });
    return added;
}

bool EditorHost::FillViewMenu(CMenu* menu) {
    bool added = false;
    plugins.Each([&](IPlugin& plugin) { added = plugin.OnViewMenu(menu) || added; });
    return added;
}

} // namespace stage
