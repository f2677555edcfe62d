#include "plugin/parts/FilmValidation.h"

#include "plugin/session/FilmSession.h"

#include <cstdio>

bool ValidateFilm(IFilm* film) {
    if (film == nullptr) {
        return false;
    }
    film->validated = 1;
    return true;
}

void WriteValidationFile(const FilmSession& session, const EditorObject& root) {
    const std::string path = root.name + "FilmsValidation.txt";
    FILE* report = std::fopen(path.c_str(), "wt");
    if (const IFilmManager* manager = session.GetFilmManager()) {
        for (IFilm* film : manager->films) {
            ValidateFilm(film);
        }
    }
    if (report != nullptr) {
        std::fclose(report);
    }
}
