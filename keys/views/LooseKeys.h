#pragma once

class CTrackKey;
class FilmSession;
class IFilmKey;
class KeyViewContext;

// Records in no track and views in no row: what undo actions and the key duplicator hold.

/// A new record of the same kind and content, in no track; the caller owns it. Null without a level.
IFilmKey* CopyOfRecord(const FilmSession& session, const IFilmKey& source);

/// Gives a record back to the factory. One that stands in a track again is the track's and stays; without a
/// level it went with the level. Null is let pass.
void ReturnRecord(const FilmSession& session, IFilmKey* record);

/// Deletes a view, with its record, after every holder has let go of it. A null view is let pass; without a
/// context nobody is told, and the record is let be.
void DestroyLooseView(KeyViewContext* context, CTrackKey* view);
