#include "host/engine/FilmManager.h"

#include "plugin/contract/ClassIds.h"

#include <cstring>
#include <string>

namespace engine {

FilmManager::FilmManager(LevelData& levelData) : data(levelData) {
}

FilmManager::~FilmManager() = default;

bool FilmManager::IsA(int classId) const {
    return classId == ClassId::FilmManager;
}

char* FilmManager::NewFilmName() const {
    char* name = new char[16];
    std::strcpy(name, "Film 1");
    return name;
}

int FilmManager::AllocateFilm() {
    return -1;
}

void FilmManager::DeleteFilm(int) {
}

IFilm* FilmManager::GetFilm(int) const {
    return nullptr;
}

void FilmManager::OnObjectsDeleted(const ObjectList&) {
}

void FilmManager::ReleaseVirtualObjects(const ObjectList&, int) {
}

} // namespace engine
