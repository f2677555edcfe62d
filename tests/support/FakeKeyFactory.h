#pragma once

#include "plugin/contract/FilmManager.h"

#include <functional>
#include <string>
#include <vector>

/// Stands in front of a manager's own key factory while it lives: it passes on what is asked, notes it as
/// "Create 10" and "Destroy 10", and refuses or spoils records as a test sets it.
class FakeKeyFactory final : public IKeyFactory {
public:
    explicit FakeKeyFactory(IFilmManager& filmManager) : manager(filmManager), real(filmManager.keyFactory) {
        manager.keyFactory = this;
    }
    ~FakeKeyFactory() override { manager.keyFactory = real; }
    FakeKeyFactory(const FakeKeyFactory&) = delete;
    FakeKeyFactory& operator=(const FakeKeyFactory&) = delete;

    IFilmKey* CreateKey(int kind) override;
    void DestroyKey(IFilmKey* key) override;

    std::vector<std::string> log;
    std::vector<IFilmKey*> destroyed;
    std::function<void()> onDestroy;
    std::function<void(IFilmKey&)> onCreate; ///< fills what a host may have filled otherwise
    int granted = -1;     ///< so many records are made from now on, then null is answered; -1: any number
    int refusedKind = -1; ///< no record of this kind is made
    int spoiledKind =
        KeyKind::None;     ///< records come with this kind instead of theirs, so that no track takes them
    int living = 0;        ///< made and not destroyed again
    bool ownsNone = false; ///< records that come back are noted and left alone: they are somebody's own

private:
    IFilmManager& manager;
    IKeyFactory* const real;
    int kindBeforeSpoiling = KeyKind::None;
};
