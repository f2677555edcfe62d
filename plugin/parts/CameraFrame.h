#pragma once

class CFilmTrack;
class FilmSession;

/// Keys at a time, in seconds, for the eye and the target of a camera as a 3D view looks at the level now.
/// They replace those that stand there. Nothing for -1 as the view, or a time outside the open film.
void CreateCameraFrame(const FilmSession& session, CFilmTrack* track, float time, int viewNumber);
