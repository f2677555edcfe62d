#include "plugin/contract/Editor.h"
#include "plugin/contract/EditorView.h"
#include "plugin/contract/EventCodes.h"
#include "tests/support/PlainPlugin.h"

#include <cstdio>
#include <cstdlib>

/// Writes one line per call into the file named by TEST_PLUGIN_LOG, so that a test sees the order, even of
/// what happens while the library is unloaded.
namespace {
void Log(const char* line) {
    const char* path = std::getenv("TEST_PLUGIN_LOG");
    if (std::FILE* file = path != nullptr ? std::fopen(path, "a") : nullptr) {
        std::fprintf(file, "%s\n", line);
        std::fclose(file);
    }
}

class TestPlugin : public PlainPlugin {
public:
    TestPlugin() {
        kind = 9;
        Log("constructed");
    }
    ~TestPlugin() override { Log(editor == nullptr ? "destroyed" : "destroyed with an editor"); }

    void OnObjectDestroyed(EditorObject*) override { Log("OnObjectDestroyed"); }
    void RegisterShortcuts() override { Log("RegisterShortcuts"); }
    void GetCommandText(std::uint32_t, std::uint32_t, char* text) override {
        std::snprintf(text, 64, "Test command");
    }
    void OnEditorReady() override {
        Log("OnEditorReady");
        editor->AddListenerA(this);
        editor->AddListenerB(this);
    }
    void OnActivate(bool) override { Log("OnActivate"); }
    void OnEditorClosing() override {
        Log("OnEditorClosing");
        editor->RemoveListenerA(this);
        editor->RemoveListenerB(this);
    }
    void OnCommand(std::uint32_t, std::uint32_t localCommand) override {
        char line[32];
        std::snprintf(line, sizeof(line), "OnCommand %u", localCommand);
        Log(line);
    }
    void OnNew() override { Log("OnNew"); }
    void OnEvent(int code, void*) override {
        char line[32];
        std::snprintf(line, sizeof(line), "OnEvent %d", code);
        Log(line);
        if (code == EventCode::HostGoesAway) {
            editor = nullptr;
        }
    }

    IEditor* editor = nullptr;
};

TestPlugin plugin;
} // namespace

extern "C" __attribute__((visibility("default"))) IPlugin* InitializeMe(IEditor*, std::uintptr_t,
                                                                        IEditorView*);

extern "C" IPlugin* InitializeMe(IEditor* editor, std::uintptr_t number, IEditorView*) {
    Log("InitializeMe");
    plugin.editor = editor;
    plugin.id = PluginCommandId::FromPluginNumber(static_cast<std::uint32_t>(number));
    return &plugin;
}
