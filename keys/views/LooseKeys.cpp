#include "keys/views/LooseKeys.h"

#include "keys/views/KeyViewContext.h"
#include "keys/views/TrackKey.h"
#include "plugin/contract/FilmManager.h"

#include <utility>

namespace {

IKeyFactory* GetKeyFactory(const FilmSession& session) {
    const IFilmManager* manager = session.GetFilmManager();
    return manager != nullptr ? manager->keyFactory : nullptr;
}

} // namespace

IFilmKey* CopyOfRecord(const FilmSession& session, const IFilmKey& source) {
    IKeyFactory* factory = GetKeyFactory(session);
    IFilmKey* copy = factory != nullptr ? factory->CreateKey(source.kind) : nullptr;
    if (copy != nullptr) {
        copy->CopyFrom(source, 0);
    }
    return copy;
}

void ReturnRecord(const FilmSession& session, IFilmKey* record) {
    IKeyFactory* factory =
        GetKeyFactory(session); // first: without one the record is gone and not to be looked at
    if (factory != nullptr && record != nullptr && record->track == nullptr) {
        factory->DestroyKey(record);
    }
}

void DestroyLooseView(KeyViewContext* context, CTrackKey* view) {
    if (view == nullptr) {
        return;
    }
    if (context != nullptr) {
        context->ForgetView(view);
    }
    if (CurrentKey() == view) {
        CurrentKey() = nullptr;
    }
    // The view must not hold its record when it is told to drop it: it would destroy it a second time.
    if (IFilmKey* record = std::exchange(view->record, nullptr)) {
        if (context != nullptr) {
            ReturnRecord(context->session, record);
        }
        view->SetRecord(nullptr, /*takeTimes*/ false);
    }
    delete view;
}
