#include "host/engine/FilmManager.h"

#include "host/engine/Film.h"
#include "host/engine/Level.h"
#include "host/engine/LevelData.h"
#include "host/engine/ObjectTrack.h"
#include "host/engine/References.h"
#include "host/engine/SoundDuration.h"
#include "plugin/contract/ClassIds.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace engine {

FilmManager::FilmManager(LevelData& levelData) : data(levelData), factory(*this) {
    keyFactory = &factory;
}

FilmManager::~FilmManager() {
    DropParked();
    for (IFilm* film : films) {
        delete film;
    }
}

bool FilmManager::IsA(int classId) const {
    return classId == ClassId::FilmManager;
}

Film* FilmManager::FilmAt(int index) const {
    return index >= 0 && index < kFilms ? static_cast<Film*>(films[index]) : nullptr;
}

IFilm* FilmManager::GetFilm(int index) const {
    return index >= 0 && index < kFilms ? films[index] : nullptr;
}

Film* FilmManager::FindFilm(const std::string& name) const {
    for (IFilm* film : films) {
        if (film != nullptr && name == film->name) {
            return static_cast<Film*>(film);
        }
    }
    return nullptr;
}

char* FilmManager::NewFilmName() const {
    std::string name;
    int number = 1;
    do {
        name = "Film " + std::to_string(number++);
    } while (FindFilm(name) != nullptr);
    char* copy = new char[name.size() + 1];
    std::memcpy(copy, name.c_str(), name.size() + 1);
    return copy;
}

Film& FilmManager::MakeFilm(int index) {
    Film* film = emptied[index] != nullptr ? emptied[index].release() : new Film(*this, index);
    films[index] = film;
    return *film;
}

void FilmManager::Empty() {
    currentFilm = nullptr;
    for (int i = 0; i < kFilms; ++i) {
        if (Film* film = FilmAt(i)) {
            film->Empty();
            films[i] = nullptr;
            emptied[i].reset(film);
        }
    }
}

void FilmManager::DropParked() {
    for (IFilmKey* key : std::exchange(parked, {})) {
        factory.DestroyKey(key);
    }
}

void FilmManager::DropEmptied() {
    for (auto& film : emptied) {
        film.reset();
    }
}

int FilmManager::AllocateFilm() {
    for (int i = 0; i < kFilms; ++i) {
        if (films[i] == nullptr) {
            MakeFilm(i);
            return i;
        }
    }
    return -1;
}

void FilmManager::DeleteFilm(int index) {
    Film* film = FilmAt(index);
    if (film == nullptr) {
        return;
    }
    if (currentFilm == film) {
        currentFilm = nullptr;
    }
    film->Deactivate();
    film->TellFreedLights();
    films[index] = nullptr;
    delete film;
}

void FilmManager::OnObjectsDeleted(const ObjectList& objects) {
    const DoomedObjects doomed(objects);
    for (IFilm* film : films) {
        if (film != nullptr) {
            static_cast<Film*>(film)->Forget(doomed);
        }
    }
}

void FilmManager::ReleaseVirtualObjects(const ObjectList& objects, int) {
    const DoomedObjects released(objects);
    for (IFilm* film : films) {
        for (TrackBase* base :
             film != nullptr ? static_cast<Film*>(film)->Tracks() : std::vector<TrackBase*>{}) {
            if (base->TrackClass() == ClassId::ObjectTrack) {
                auto* track = static_cast<ObjectTrack*>(base);
                track->actorIsVirtual = track->actorIsVirtual && !released.Has(track->actor);
                track->parentIsVirtual = track->parentIsVirtual && !released.Has(track->parentObject);
            }
        }
    }
}

float FilmManager::SoundSeconds(const std::string& path) const {
    const SoundDurationFunction function = data.Owner().SoundDuration();
    if (function != nullptr) {
        return function(path);
    }
    return SoundFileSeconds(ReferencePath(data.Owner().Folder(), path));
}

void FilmManager::OnStructureChanged() {
    for (IFilm* film : films) {
        if (film != nullptr) {
            static_cast<Film*>(film)->OnStructureChanged();
        }
    }
}

void FilmManager::Relink(std::vector<std::string>& messages) {
    for (IFilm* film : films) {
        if (film != nullptr) {
            static_cast<Film*>(film)->Relink(messages);
        }
    }
}

} // namespace engine
