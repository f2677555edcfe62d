#include "keys/attributes/KeyAttributesDlg.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsView.h"
#include "timeline/ScenarioDlg.h"

#include <memory>
#include <utility>

namespace {

/// The one object of the library: made when it is loaded, destroyed when it is unloaded.
IPluginImpl thePlugin;

/// Null where no window can be made, as in a host without a screen.
IScenarioWindow* MakeScenarioWindow(IPluginImpl& plugin) {
    auto* window = new CScenarioDlg(plugin);
    if (window->GetSafeHwnd() == nullptr) {
        delete window;
        return nullptr;
    }
    return window;
}

/// Null where no window can be made.
std::unique_ptr<IKeyAttributesDlg> MakeKeyAttributesDlg(IPluginImpl& plugin) {
    auto window = std::make_unique<CFilmKeyAttributesDlg>(plugin);
    return window->GetSafeHwnd() != nullptr ? std::move(window) : nullptr;
}

/// The host's main window, and with it the scenario window, may outlive the library's code.
struct ScenarioWindowEnd {
    ~ScenarioWindowEnd() { delete thePlugin.scenarioDlg; }
};
const ScenarioWindowEnd theEnd;

} // namespace

extern "C" __attribute__((visibility("default"))) IPlugin*
InitializeMe(IEditor* editor, std::uintptr_t pluginNumber, IEditorView* view) {
    thePlugin.makeScenarioWindow = &MakeScenarioWindow;
    thePlugin.makeKeyAttributesDlg = &MakeKeyAttributesDlg;
    CFilmsView::OfferTo(thePlugin);
    thePlugin.Initialize(editor, static_cast<std::uint32_t>(pluginNumber), view);
    return &thePlugin;
}
