#pragma once

#include "keys/AttrRows.h"
#include "plugin/contract/FilmKey.h"

/// What the attributes window does with keys of one kind.
struct KeyAttributes {
    /// Makes the rows from the record.
    void (*fill)(AttrRows& rows, IFilmKey& record);
    /// Reads the rows and writes the record. May ask the user, whose answer lets anything in: the caller
    /// looks afterwards whether rows and record are still there.
    void (*apply)(const AttrRows& rows, IFilmKey& record);
};

/// Null for kinds that have no attributes.
const KeyAttributes* GetKeyAttributes(int kind);
