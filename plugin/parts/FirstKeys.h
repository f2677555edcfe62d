#pragma once

class CFilmTrack;
class FilmSession;
class IFilmKey;

// The keys that a track begins with.

/// A key with the value given (none for null; see IFilmKey::SetValue), or null if the host makes none.
IFilmKey* AddFirstKey(const FilmSession& session, CFilmTrack& track, int kind, float time, const void* value);

/// Keys at the film's start for where an object with this world matrix stands: position, and unless
/// `positionOnly` rotation and scale.
void AddFirstTransform(const FilmSession& session, CFilmTrack& track, const float* matrix, bool positionOnly);
