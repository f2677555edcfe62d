#pragma once

class CFilmsMainCtrl;
class CTrackKey;
class FilmSession;
class IFilmKey;
class KeyViewContext;

// New keys from the menu of a row, at the time under the mouse. The control may be gone behind them.

void AddKey(CFilmsMainCtrl& control);
/// A new key with the attributes of the copied one.
void PasteKey(CFilmsMainCtrl& control);

/// A view that is in no row, with a new record of this kind; the caller owns both. Null for other kinds than
/// 0 to 19 and without a level.
CTrackKey* MakeNewKey(KeyViewContext& context, int kind);
/// The record whose attributes would be pasted; null without one, and while a clone is being dragged.
const IFilmKey* CopiedRecord(const CFilmsMainCtrl& control);
/// In the attributes window, behind a paste. A key that the window shows already is only read anew: taken in
/// once more, the window would first write its old values over what was changed.
void ShowPastedKey(const FilmSession& session, CTrackKey* view);
