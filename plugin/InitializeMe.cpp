#include "plugin/PluginImpl.h"

namespace {

/// The one object of the library: made when it is loaded, destroyed when it is unloaded.
IPluginImpl thePlugin;

} // namespace

extern "C" __attribute__((visibility("default"))) IPlugin*
InitializeMe(IEditor* editor, std::uintptr_t pluginNumber, IEditorView* view) {
    thePlugin.Initialize(editor, static_cast<std::uint32_t>(pluginNumber), view);
    return &thePlugin;
}
