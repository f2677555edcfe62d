#include "host/engine/FilmAtRest.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "plugin/contract/ObjectFlags.h"
#include "plugin/contract/TrackObjects.h"

namespace engine {

namespace {

void Darken(const Film& film) {
    for (CFilmTrack* track : film.tracks) {
        if (EditorObject* light = LightOf(track)) {
            light->visible = 0;
            light->SetFlags(light->GetFlags() | ObjectFlag::LeftOut);
        }
    }
}

} // namespace

FilmAtRest::FilmAtRest(Level& level, ClosedFilms closedFilms) : data(level.Data()) {
    for (int slot = 0; data != nullptr && slot < IFilmManager::kFilms; ++slot) {
        const Film* film = data->Films().FilmAt(slot);
        if (film == nullptr || (!film->IsActive() && closedFilms == ClosedFilms::AsTheyAre)) {
            continue;
        }
        KeepStandings();
        if (film->IsActive()) {
            for (const TrackBase* track : film->UpperFirst()) {
                track->ShowAtRest();
            }
        }
        Darken(*film);
    }
}

void FilmAtRest::KeepStandings() {
    if (!before.empty() || sunBefore) {
        return;
    }
    before.reserve(data->Objects().size());
    for (const auto& object : data->Objects()) {
        before.emplace_back(object.get(), object->TakeStanding());
    }
    if (data->Sun() != nullptr) {
        sunBefore = *data->Sun();
    }
}

FilmAtRest::~FilmAtRest() {
    for (const auto& [object, standing] : before) {
        object->PutStanding(standing);
    }
    if (sunBefore && data->Sun() != nullptr) {
        *data->Sun() = *sunBefore;
    }
}

} // namespace engine
