#pragma once

#include "plugin/contract/FilmManager.h"

#include <memory_resource>

namespace engine {

class FilmManager;

/// Makes key records in the manager's pool. Part of the manager.
class KeyFactory : public IKeyFactory {
public:
    explicit KeyFactory(FilmManager& filmManager) : manager(filmManager) {}
    /// Null for kinds 20, 21 and anything outside 0 to 19.
    IFilmKey* CreateKey(int kind) override;
    /// Null is let pass. A key that stands in a track must be taken out first.
    void DestroyKey(IFilmKey* key) override;
    /// Records that exist now.
    std::size_t Count() const { return count; }

private:
    template <class Record> IFilmKey* Make();
    template <class Record> void Unmake(IFilmKey* key);

    FilmManager& manager;
    std::size_t count = 0;
};

} // namespace engine
