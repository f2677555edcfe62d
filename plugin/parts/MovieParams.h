#pragma once

class CPluginFilmsParams;
class FilmSession;
class IFilm;

// The stores of what the timeline remembers of films' tracks: the level's, the cameras', and one on each
// actor.

/// Copies a camera's store unless its first record is known already; the argument stays the caller's.
void AddCameraParams(FilmSession& session, const CPluginFilmsParams& params);

/// Nothing of the film is remembered any more.
void DeleteMovieParams(FilmSession& session, const IFilm* film);
