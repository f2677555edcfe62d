#pragma once

#include "plugin/contract/FilmManager.h"
#include "plugin/contract/FilmTrack.h"

/// A key on its way from the host's factory into a track. What no track takes goes back to the factory.
class NewKey {
public:
    /// Without a factory, or when it makes none of the kind, there is no key.
    NewKey(IKeyFactory* keyFactory, int kind)
        : factory(keyFactory), key(keyFactory != nullptr ? keyFactory->CreateKey(kind) : nullptr) {}
    ~NewKey() {
        if (key != nullptr && !isTaken) {
            factory->DestroyKey(key);
        }
    }
    NewKey(const NewKey&) = delete;
    NewKey& operator=(const NewKey&) = delete;

    explicit operator bool() const { return key != nullptr; }
    IFilmKey* operator->() const { return key; }
    IFilmKey* Get() const { return key; }

    /// True if the track took the key, whose owner it is from now on.
    bool AddTo(CFilmTrack& track) {
        isTaken = track.AddKey(key);
        return isTaken;
    }

private:
    IKeyFactory* factory;
    IFilmKey* key;
    bool isTaken = false;
};
