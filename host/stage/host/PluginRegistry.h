#pragma once

#include "host/stage/host/ListenerList.h"
#include "plugin/contract/Plugin.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class IEditor;
class IEditorView;

namespace stage {

/// A plug-in that the host drives.
struct PluginEntry {
    std::string name; ///< file name of the library without folder and ending
    unsigned number = 0;
    IPlugin* plugin = nullptr; ///< owned by its library
    void* library = nullptr;   ///< null for a plug-in that lives in the program itself
    bool ready = false;        ///< OnEditorReady was called, OnEditorClosing not yet
};

/// The plug-ins, from loading to unloading, and the two registration lists. List A gets the events,
/// list B the render calls. Every call into a plug-in is made by `Guarded`, so that no exception leaves it.
class PluginRegistry {
public:
    static constexpr unsigned kMaxPlugins = 63; ///< a plug-in number has 6 bits; 0 is nobody's

    using Reporter = std::function<void(const std::string&)>;

    explicit PluginRegistry(Reporter reporter);
    ~PluginRegistry();
    PluginRegistry(const PluginRegistry&) = delete;
    PluginRegistry& operator=(const PluginRegistry&) = delete;

    /// Loads a library and calls its InitializeMe. Null and a reason on failure; then nothing stays loaded.
    PluginEntry* Load(const std::string& path, IEditor* editor, IEditorView* view, std::string& error);
    /// Enters a plug-in of the program itself; its number is the next free one.
    PluginEntry* Add(const std::string& name, IPlugin* plugin);
    /// OnEditorReady, then RegisterShortcuts, of those not yet ready.
    void Start();
    /// OnEditorClosing of all, then event 11 to all, then the libraries go, each step in reverse order of
    /// entry. `beforeUnload` runs between the last event and the unloading.
    void Shutdown(const std::function<void()>& beforeUnload);

    void Each(const std::function<void(IPlugin&)>& call);
    /// Event to the members of list A, save the plug-in of number `exceptNumber` (0 excepts nobody).
    void SendEvent(int code, void* data, unsigned exceptNumber = 0);
    void Render();
    PluginEntry* Find(unsigned number);
    PluginEntry* Find(const IPlugin* plugin);
    std::vector<PluginEntry*> Entries() const;

    /// Calls into a plug-in; an exception is reported with the operation's name. False if there was one.
    bool Guarded(const char* operation, const std::function<void()>& call);

    ListenerList<IPlugin> listenersA;
    ListenerList<IPlugin> listenersB;

private:
    unsigned FreeNumber() const;
    PluginEntry* Enter(PluginEntry entry);

    std::vector<std::unique_ptr<PluginEntry>> entries;
    Reporter report;
};

} // namespace stage
