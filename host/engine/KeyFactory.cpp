#include "host/engine/KeyFactory.h"

#include "host/engine/FilmKeys.h"
#include "host/engine/FilmManager.h"

#include <new>
#include <type_traits>

namespace engine {

namespace {

template <class Record> constexpr bool kNeedsManager = std::is_constructible_v<Record, const FilmManager&>;

} // namespace

template <class Record> IFilmKey* KeyFactory::Make() {
    ++count;
    static_assert(sizeof(Record) <= SlabPool::kLargest && alignof(Record) <= 8);
    void* place = manager.Pool().Take(sizeof(Record));
    if constexpr (kNeedsManager<Record>) {
        return new (place) Record(manager);
    } else {
        return new (place) Record();
    }
}

template <class Record> void KeyFactory::Unmake(IFilmKey* key) {
    --count;
    auto* record = static_cast<Record*>(key);
    record->~Record();
    manager.Pool().deallocate(record, sizeof(Record), alignof(Record));
}

IFilmKey* KeyFactory::CreateKey(int kind) {
    IFilmKey* key = nullptr;
    WithKeyRecord(kind, [&]<class Base>(std::type_identity<Base>) { key = Make<EngineKey<Base>>(); });
    if (key != nullptr) {
        key->kind = kind;
        key->flags = OwnKeyFlags(kind);
    }
    return key;
}

void KeyFactory::DestroyKey(IFilmKey* key) {
    if (key != nullptr) {
        WithKeyRecord(key->kind, [&]<class Base>(std::type_identity<Base>) { Unmake<EngineKey<Base>>(key); });
    }
}

} // namespace engine
