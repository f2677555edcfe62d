#pragma once

#include "plugin/contract/FilmTrack.h"
#include "plugin/PluginFilmsParams.h"

#include <string>

/// Where the fold state and the key filter of a track are kept.
struct TrackStore {
    CPluginFilmsParams* params = nullptr; ///< owned by the plug-in object or the level object; may be null
    std::string entry;                    ///< the name within the store
};

/// A camera that has no store yet in this film gets an empty one.
TrackStore FindTrackStore(CFilmTrack* track, const std::string& filmName);
