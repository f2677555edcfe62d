#include "host/stage/host/FreeLights.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/stage/host/EditorHost.h"

#include <unordered_set>

namespace stage {

namespace {

class KeptByPlugins : public IObjectCollection {
public:
    bool Contains(const EditorObject* object) const override { return objects.contains(object); }
    void Add(EditorObject* object) override { objects.insert(object); }

private:
    std::unordered_set<const EditorObject*> objects;
};

std::unordered_set<const EditorObject*> DrivenObjects(const engine::LevelData& data) {
    std::unordered_set<const EditorObject*> driven;
    for (int slot = 0; slot < IFilmManager::kFilms; ++slot) {
        const engine::Film* film = data.Films().FilmAt(slot);
        if (film == nullptr) {
            continue;
        }
        for (const engine::TrackBase* track : film->Tracks()) {
            driven.insert(track->Driven());
        }
    }
    return driven;
}

} // namespace

std::vector<std::string> LightsWithoutFilm(EditorHost& host) {
    std::vector<std::string> names;
    if (host.level.Data() == nullptr) {
        return names;
    }
    KeptByPlugins kept;
    host.chunkClient.CollectHiddenObjects(kept);
    const auto driven = DrivenObjects(*host.level.Data());
    for (const auto& object : host.level.Data()->Objects()) {
        if (object->IsLight() && !object->transient && kept.Contains(object.get()) &&
            !driven.contains(object.get())) {
            names.push_back(object->name);
        }
    }
    return names;
}

std::string FreedLightText(const std::string& name) {
    return "\"" + name + "\" is in no film any more and will not be saved";
}

} // namespace stage
