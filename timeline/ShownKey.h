#pragma once

class FilmSession;
class IFilm;
class IFilmKey;
class TimelineContext;

// The key in the attributes window across a rebuild of the rows.

/// The window lets go of a view that is about to be deleted. When the film stays, only what the user has
/// edited is written to its key, and the answer is the record to come back to. May ask the user.
IFilmKey* LeaveShownKey(const FilmSession& session, const IFilm* film);
/// The window shows the record's new view, if it has one. The window must exist unless the record is null.
void ReturnToKey(const TimelineContext& timeline, const IFilmKey* record);
