#pragma once

class CTrackKey;
class IFilmKey;

// Records in no track and views in no row: what undo actions and the key duplicator hold.

/// A new record of the same kind and content, in no track; the caller owns it. Null without a level.
IFilmKey* CopyOfRecord(const IFilmKey& source);

/// Gives a record back to the factory. One that stands in a track again is the track's and stays; without a
/// level it went with the level. Null is let pass.
void ReturnRecord(IFilmKey* record);

/// Deletes a view, with its record, after every holder has let go of it. Null is let pass.
void DestroyLooseView(CTrackKey* view);
