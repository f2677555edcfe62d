#include "tests/support/FakeKeyFactory.h"

IFilmKey* FakeKeyFactory::CreateKey(int kind) {
    if (granted == 0 || kind == refusedKind) {
        return nullptr;
    }
    granted -= granted > 0 ? 1 : 0;
    log.push_back("Create " + std::to_string(kind));
    IFilmKey* key = real->CreateKey(kind);
    if (key == nullptr) {
        return nullptr;
    }
    ++living;
    if (onCreate) {
        onCreate(*key);
    }
    if (spoiledKind != KeyKind::None) {
        kindBeforeSpoiling = kind;
        key->kind = spoiledKind;
    }
    return key;
}

void FakeKeyFactory::DestroyKey(IFilmKey* key) {
    log.push_back("Destroy " + std::to_string(key->kind));
    destroyed.push_back(key);
    if (onDestroy) {
        onDestroy();
    }
    if (ownsNone) {
        return;
    }
    --living;
    if (spoiledKind != KeyKind::None && key->kind == spoiledKind) {
        key->kind = kindBeforeSpoiling; // the pool of its kind takes it back
    }
    real->DestroyKey(key);
}
