#include "timeline/LooseKey.h"

#include "keys/TrackKey.h"
#include "plugin/PluginImpl.h"
#include "timeline/TimelineContext.h"

#include <utility>

LooseKey::LooseKey(CTrackKey* newView) : view(newView), manager(GetPlugin().GetFilmManager()) {
}

LooseKey::~LooseKey() {
    if (view == nullptr) {
        return;
    }
    IPluginImpl& plugin = GetPlugin();
    if (TimelineContext* timeline = GetTimeline()) {
        timeline->ForgetView(view);
    }
    IKeyAttributesDlg* dialog = plugin.keyAttributesDlg.get();
    if (dialog != nullptr && dialog->GetKey() == view) {
        dialog->ForgetKey();
    }
    IFilmKey* record = std::exchange(view->record, nullptr);
    IFilmManager* present = plugin.GetFilmManager();
    if (record != nullptr && present != nullptr && present == manager) {
        present->keyFactory->DestroyKey(record);
    }
    delete view;
}
