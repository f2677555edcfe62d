#include "undo/LooseKeys.h"

#include "keys/TrackKey.h"
#include "plugin/contract/FilmManager.h"
#include "plugin/PluginImpl.h"
#include "timeline/TimelineContext.h"
#include "timeline/TrackCtrl.h"

#include <utility>

namespace {

IKeyFactory* GetKeyFactory() {
    const IFilmManager* manager = GetPlugin().GetFilmManager();
    return manager != nullptr ? manager->keyFactory : nullptr;
}

} // namespace

IFilmKey* CopyOfRecord(const IFilmKey& source) {
    IKeyFactory* factory = GetKeyFactory();
    IFilmKey* copy = factory != nullptr ? factory->CreateKey(source.kind) : nullptr;
    if (copy != nullptr) {
        copy->CopyFrom(source, 0);
    }
    return copy;
}

void ReturnRecord(IFilmKey* record) {
    IKeyFactory* factory = GetKeyFactory(); // first: without one the record is gone and not to be looked at
    if (factory != nullptr && record != nullptr && record->track == nullptr) {
        factory->DestroyKey(record);
    }
}

void DestroyLooseView(CTrackKey* view) {
    if (view == nullptr) {
        return;
    }
    if (TimelineContext* timeline = GetTimeline()) {
        timeline->ForgetView(view);
    }
    if (CurrentKey() == view) {
        CurrentKey() = nullptr;
    }
    // The view must not hold its record when it is told to drop it: it would destroy it a second time.
    if (IFilmKey* record = std::exchange(view->record, nullptr)) {
        ReturnRecord(record);
        view->SetRecord(nullptr, /*takeTimes*/ false);
    }
    delete view;
}
