#include "host/stage/host/PluginRegistry.h"

#include "plugin/contract/EventCodes.h"

#include <dlfcn.h>
#include <filesystem>

namespace stage {

namespace {
std::string LastLoaderError() {
    const char* text = dlerror();
    return text != nullptr ? text : "unknown loader error";
}
} // namespace

PluginRegistry::PluginRegistry(Reporter reporter) : report(std::move(reporter)) {
}

PluginRegistry::~PluginRegistry() {
    Shutdown({});
}

bool PluginRegistry::Guarded(const char* operation, const std::function<void()>& call) {
    try {
        call();
        return true;
    } catch (const std::exception& failure) {
        report(std::string("A plug-in failed in ") + operation + ": " + failure.what());
    } catch (...) {
        report(std::string("A plug-in failed in ") + operation + ".");
    }
    return false;
}

unsigned PluginRegistry::FreeNumber() const {
    for (unsigned number = 1; number <= kMaxPlugins; ++number) {
        const bool taken = std::any_of(entries.begin(), entries.end(),
                                       [number](const auto& entry) { return entry->number == number; });
        if (!taken) {
            return number;
        }
    }
    return 0;
}

PluginEntry* PluginRegistry::Enter(PluginEntry entry) {
    entries.push_back(std::make_unique<PluginEntry>(std::move(entry)));
    return entries.back().get();
}

PluginEntry* PluginRegistry::Add(const std::string& name, IPlugin* plugin) {
    const unsigned number = FreeNumber();
    if (plugin == nullptr || number == 0) {
        return nullptr;
    }
    PluginEntry entry;
    entry.name = name;
    entry.number = number;
    entry.plugin = plugin;
    return Enter(std::move(entry));
}

PluginEntry* PluginRegistry::Load(const std::string& path, IEditor* editor, IEditorView* view,
                                  std::string& error) {
    PluginEntry entry;
    entry.name = std::filesystem::path(path).stem().string();
    entry.number = FreeNumber();
    if (entry.number == 0) {
        error = path + ": too many plug-ins";
        return nullptr;
    }
    entry.library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (entry.library == nullptr) {
        error = LastLoaderError();
        return nullptr;
    }
    auto initialize = reinterpret_cast<InitializeMeFunction>(dlsym(entry.library, kInitializeMe));
    if (initialize == nullptr) {
        error = path + ": no plug-in of this editor (" + kInitializeMe + " is missing)";
    } else {
        Guarded(kInitializeMe, [&] { entry.plugin = initialize(editor, entry.number, view); });
        error = entry.plugin == nullptr ? path + ": the plug-in could not be initialized" : std::string();
    }
    if (entry.plugin == nullptr) {
        dlclose(entry.library);
        return nullptr;
    }
    return Enter(std::move(entry));
}

void PluginRegistry::Start() {
    for (PluginEntry* entry : Entries()) {
        if (!entry->ready) {
            entry->ready = true;
            Guarded("OnEditorReady", [&] { entry->plugin->OnEditorReady(); });
            Guarded("RegisterShortcuts", [&] { entry->plugin->RegisterShortcuts(); });
        }
    }
}

void PluginRegistry::Shutdown(const std::function<void()>& beforeUnload) {
    std::vector<PluginEntry*> last = Entries();
    std::reverse(last.begin(), last.end());
    for (PluginEntry* entry : last) {
        if (entry->ready) {
            entry->ready = false;
            Guarded("OnEditorClosing", [&] { entry->plugin->OnEditorClosing(); });
        }
    }
    for (PluginEntry* entry : last) {
        Guarded("OnEvent", [&] { entry->plugin->OnEvent(EventCode::HostGoesAway, nullptr); });
        listenersA.Remove(entry->plugin);
        listenersB.Remove(entry->plugin);
    }
    if (beforeUnload) {
        beforeUnload();
    }
    while (!entries.empty()) {
        void* library = entries.back()->library;
        entries.pop_back();
        if (library != nullptr) {
            dlclose(library);
        }
    }
}

void PluginRegistry::Each(const std::function<void(IPlugin&)>& call) {
    for (PluginEntry* entry : Entries()) {
        Guarded("a call of the editor", [&] { call(*entry->plugin); });
    }
}

void PluginRegistry::SendEvent(int code, void* data, unsigned exceptNumber) {
    const PluginEntry* sender = exceptNumber != 0 ? Find(exceptNumber) : nullptr;
    listenersA.Deliver([&](IPlugin* plugin) {
        if (sender == nullptr || sender->plugin != plugin) {
            Guarded("OnEvent", [&] { plugin->OnEvent(code, data); });
        }
    });
}

void PluginRegistry::Render() {
    listenersB.Deliver([&](IPlugin* plugin) { Guarded("OnRender", [&] { plugin->OnRender(); }); });
}

PluginEntry* PluginRegistry::Find(unsigned number) {
    for (const auto& entry : entries) {
        if (entry->number == number) {
            return entry.get();
        }
    }
    return nullptr;
}

PluginEntry* PluginRegistry::Find(const IPlugin* plugin) {
    for (const auto& entry : entries) {
        if (entry->plugin == plugin) {
            return entry.get();
        }
    }
    return nullptr;
}

std::vector<PluginEntry*> PluginRegistry::Entries() const {
    std::vector<PluginEntry*> present;
    for (const auto& entry : entries) {
        present.push_back(entry.get());
    }
    return present;
}

} // namespace stage
