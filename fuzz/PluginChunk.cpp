// Feeds one of the plug-in's chunks (FUZZ_CHUNK) with arbitrary data: the chunk is read into an empty level,
// the level counts as loaded, everything is saved again, and the level goes.
#include "host/engine/FileHandles.h"
#include "host/engine/LevelRoot.h"
#include "plugin/PluginImpl.h"
#include "tests/support/TestEditor.h"

#include <cstddef>
#include <cstdint>

namespace {

/// A level with a film, an actor and two lights, so that what is read has something to be paired with.
struct Host {
    Host() {
        editor.level.New("");
        plugin.Initialize(&editor, 1, &editor);
        editor.plugin = &plugin;
        plugin.OnEditorReady();
        plugin.OnNew();
        plugin.OnEvent(EventCode::LevelLoaded, nullptr);
        plugin.SelectFilmByIndex(plugin.CreateFilm());
        plugin.AddActors({editor.Create("Actor")});
        editor.CreateOfClass("GLLightEditorObject", "Lamp");
        editor.CreateOfClass("FilmsDynLightEditorObject", "Torch");
    }
    ~Host() {
        plugin.OnEditorClosing();
        editor.level.Close();
        plugin.OnEvent(EventCode::HostGoesAway, nullptr);
    }

    TestEditor editor;
    IPluginImpl plugin;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Host host;
    engine::LevelRoot& root = host.editor.level.Data()->Root();
    root.name = "/nonexistent/"; // the report of a save must not litter
    IHostObject* owner = &root;
    if (FUZZ_CHUNK == 5781 || FUZZ_CHUNK == 5784) {
        owner = host.editor.level.Data()->Objects().front().get();
    }
    fs::file input;
    input.handle = engine::OpenMemoryForReading({reinterpret_cast<const char*>(data), size});
    host.plugin.LoadChunk(owner, input, FUZZ_CHUNK, static_cast<std::uint32_t>(size));
    input.Close();
    host.plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    host.plugin.SelectFilmByIndex(0);
    host.plugin.SetTime(1.0f, false);
    fs::file output;
    output.handle = engine::OpenMemoryForWriting();
    host.plugin.SaveChunks(output, &root);
    host.plugin.SaveChunks(output, owner);
    output.Close();
    return 0;
}
