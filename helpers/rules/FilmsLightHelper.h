#pragma once

#include "plugin/contract/EditorObject.h"
#include "plugin/contract/FilmTrack.h"

#include <cstdint>

class IFilm;

/// True for a GL light track that drives the level's sun; false for null.
bool IsSunTrack(CFilmTrack* track);
/// The film's first sun track, or null.
CFilmTrack* FindSunTrack(const IFilm& film);

/// Joins a light's helper object to the film track that drives it. Owned by CFilmsLightHelperMgr.
class CFilmsLightHelper {
public:
    static constexpr std::uint32_t kGLLight = 0;
    static constexpr std::uint32_t kDynLight = 1;
    /// Bytes in front of the object's own data in the file.
    static constexpr std::uint32_t kHeaderBytes = 5;

    virtual ~CFilmsLightHelper() = default;

    void Save(fs::file& file) const;
    /// Reads `size` bytes: the header, then the object through the reader, which enters it in the level.
    /// Without a reader nothing is read.
    void Load(fs::file& file, EditorObject* reader, std::uint32_t size);

    std::uint32_t lightKind = kGLLight;
    EditorObject* object = nullptr; ///< the helper object; owned by the level
    CFilmTrack* track = nullptr;    ///< null for the sun helper, which serves all films
    bool isSun = false;
};
