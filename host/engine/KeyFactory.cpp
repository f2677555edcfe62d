#include "host/engine/KeyFactory.h"

#include "host/engine/FilmKeys.h"
#include "host/engine/FilmManager.h"

#include <new>

namespace engine {

template <class Record, class... Arguments> IFilmKey* KeyFactory::Make(const Arguments&... arguments) {
    ++count;
    static_assert(sizeof(Record) <= SlabPool::kLargest && alignof(Record) <= 8);
    return new (manager.Pool().Take(sizeof(Record))) Record(arguments...);
}

template <class Record> void KeyFactory::Unmake(IFilmKey* key) {
    --count;
    auto* record = static_cast<Record*>(key);
    record->~Record();
    manager.Pool().deallocate(record, sizeof(Record), alignof(Record));
}

IFilmKey* KeyFactory::CreateKey(int kind) {
    IFilmKey* key = nullptr;
    switch (kind) {
    case KeyKind::Camera:
        key = Make<CameraKey>();
        break;
    case KeyKind::Animation:
        key = Make<AnimationKey>();
        break;
    case KeyKind::Speech:
        key = Make<SpeechKey>(manager);
        break;
    case KeyKind::Sound:
        key = Make<SoundKey>(manager);
        break;
    case KeyKind::JavaMethod:
        key = Make<JavaKey>();
        break;
    case KeyKind::Flags:
        key = Make<FlagsKey>();
        break;
    case KeyKind::CameraPosition:
    case KeyKind::CameraTarget:
        key = Make<LinkedKey>();
        break;
    case KeyKind::Roll:
    case KeyKind::FieldOfView:
        key = Make<ScalarKey>();
        break;
    default:
        if (kind >= KeyKind::FxSequence && kind <= KeyKind::FxFlare) {
            key = Make<FxKey>();
        } else if (kind >= KeyKind::Position && kind <= KeyKind::Color) {
            key = Make<VectorKey>();
        } else {
            return nullptr;
        }
    }
    key->kind = kind;
    key->flags = kind >= KeyKind::Position ? KeyFlag::NoDuration : 0u;
    return key;
}

void KeyFactory::DestroyKey(IFilmKey* key) {
    if (key == nullptr) {
        return;
    }
    switch (key->kind) {
    case KeyKind::Camera:
        return Unmake<CameraKey>(key);
    case KeyKind::Animation:
        return Unmake<AnimationKey>(key);
    case KeyKind::Speech:
        return Unmake<SpeechKey>(key);
    case KeyKind::Sound:
        return Unmake<SoundKey>(key);
    case KeyKind::JavaMethod:
        return Unmake<JavaKey>(key);
    case KeyKind::Flags:
        return Unmake<FlagsKey>(key);
    case KeyKind::CameraPosition:
    case KeyKind::CameraTarget:
        return Unmake<LinkedKey>(key);
    case KeyKind::Roll:
    case KeyKind::FieldOfView:
        return Unmake<ScalarKey>(key);
    default:
        return key->kind < KeyKind::Position ? Unmake<FxKey>(key) : Unmake<VectorKey>(key);
    }
}

} // namespace engine
