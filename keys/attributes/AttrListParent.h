#pragma once

#include "keys/attributes/AttrRows.h"
#include "plugin/contract/FilmKey.h"

class FilmSession;

/// What the property list asks of the window around it.
class AttrListParent {
public:
    virtual ~AttrListParent() = default;
    /// What is open; outlives the list.
    virtual FilmSession& GetSession() const = 0;
    /// The record that the rows are of; may be null.
    virtual IFilmKey* GetRecord() const = 0;
    virtual AttrRow* FindObjectIdRow() const = 0;
    /// Conditions anew, then the list.
    virtual void UpdateRows() = 0;
    /// Writes the rows into the record. May ask the user.
    virtual void ApplyChanges() = 0;
    /// Makes the rows anew from the record.
    virtual void Refresh() = 0;
    /// A member holds what the record doesn't.
    virtual void RowEdited() = 0;
    /// Before a browser opens: edits that wait are written, since what it does may make the rows anew. May
    /// ask the user.
    virtual void ApplyPending() = 0;
    /// What a browser writes is written to the current key.
    virtual void MakeKeyCurrent() = 0;
    /// The 3D views show what the record holds now.
    virtual void PoseFilm() = 0;
};
