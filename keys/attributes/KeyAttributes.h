#pragma once

#include "keys/attributes/AttrRows.h"
#include "plugin/contract/FilmKey.h"

#include <functional>

class FilmSession;

/// Whether the record under edit still exists. Asked after a question to the user, whose nested loop may have
/// deleted it; an empty function counts as yes.
using RecordAlive = std::function<bool()>;

/// What writing rows into a record asks of what is around it.
struct AttrScope {
    const FilmSession& session;
    RecordAlive alive;
};

/// What the attributes window does with keys of one kind.
struct KeyAttributes {
    /// Makes the rows from the record.
    void (*fill)(AttrRows& rows, IFilmKey& record);
    /// Reads the rows and writes the record; rows that don't exist are passed over. May ask the user: behind
    /// the question it touches the record only if `alive` says so, and the rows no more. The caller looks
    /// afterwards whether rows and record are still there.
    void (*apply)(const AttrRows& rows, IFilmKey& record, const AttrScope& scope);
};

/// Null for kinds that have no attributes.
const KeyAttributes* GetKeyAttributes(int kind);
