#include "helpers/rules/FilmsLightHelper.h"

#include "plugin/contract/Film.h"

#include <algorithm>

bool IsSunTrack(CFilmTrack* track) {
    const auto* gl = AsGLLightTrack(track);
    return gl != nullptr && gl->isSun != 0;
}

CFilmTrack* FindSunTrack(const IFilm& film) {
    const auto found = std::ranges::find_if(film.tracks, IsSunTrack);
    return found == film.tracks.end() ? nullptr : *found;
}

void CFilmsLightHelper::Save(fs::file& file) const {
    const std::uint8_t sun = isSun ? 1 : 0;
    file.Write(&lightKind, sizeof(lightKind));
    file.Write(&sun, sizeof(sun));
    if (object != nullptr) {
        object->Save(file);
    }
}

void CFilmsLightHelper::Load(fs::file& file, EditorObject* reader, std::uint32_t size) {
    if (reader == nullptr || size < kHeaderBytes) {
        return;
    }
    std::uint8_t sun = 0;
    file.Read(&lightKind, sizeof(lightKind));
    file.Read(&sun, sizeof(sun));
    isSun = sun != 0;
    object = reader->LoadObject(file, size - kHeaderBytes, ClassId::EditorObject, reader);
}
