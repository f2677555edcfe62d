#pragma once

#include "plugin/contract/FilmTrack.h"

#include <string>
#include <vector>

class FilmSession;

/// Level, sun, cameras by name, actors by name, then the other lights by name. Names compare by bytes.
void SortTracks(const FilmSession& session, std::vector<CFilmTrack*>& tracks);

/// The name in a track's root row.
std::string RootRowName(const FilmSession& session, CFilmTrack* track);
