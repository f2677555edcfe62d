#pragma once

#include "plugin/contract/FilmTrack.h"
#include "plugin/rules/PluginFilmsParams.h"

#include <string>

class FilmSession;

/// Where the fold state and the key filter of a track are kept.
struct TrackStore {
    CPluginFilmsParams* params =
        nullptr;       ///< owned by the plug-in object; null for an object without a record
    std::string entry; ///< the name within the store
};

/// An object and a camera that have no store yet get an empty one.
TrackStore FindTrackStore(FilmSession& session, CFilmTrack* track, const std::string& filmName);
