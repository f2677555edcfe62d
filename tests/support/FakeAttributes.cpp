#include "tests/support/FakeAttributes.h"

#include "keys/views/TrackKey.h"
#include "plugin/PluginImpl.h"

#include <memory>
#include <utility>

namespace {

FakeAttributes& Give(IPluginImpl& plugin, std::unique_ptr<FakeAttributes> made) {
    FakeAttributes& dialog = *made;
    plugin.keyAttributesDlg = std::move(made);
    return dialog;
}

} // namespace

bool FakeAttributes::GetLinkObjectText(const EditorObject* object, std::string& text) const {
    text = "Set object here";
    return taken != nullptr && object == taken;
}

void FakeAttributes::Hide() {
    log.push_back("Hide");
    visible = false;
}

void FakeAttributes::Show(int command) {
    log.push_back("Show " + std::to_string(command));
    visible = true;
}

void FakeAttributes::SetKey(CTrackKey* newKey, bool refresh) {
    if (refresh) {
        log.push_back("Refresh");
    } else {
        log.push_back(newKey != nullptr ? "SetKey key" : "SetKey null");
        key = newKey;
        record = newKey != nullptr ? newKey->record : nullptr;
    }
    if (onSetKey) {
        onSetKey();
    }
}

void FakeAttributes::Reset() {
    log.push_back("Reset");
    key = nullptr;
    record = nullptr;
}

FakeAttributes& OpenFakeAttributes(IPluginImpl& plugin) {
    return Give(plugin, std::make_unique<FakeAttributes>());
}

FakeAttributes& OpenFakeAttributes(IPluginImpl& plugin, std::vector<std::string>& calls) {
    return Give(plugin, std::make_unique<FakeAttributes>(calls));
}
