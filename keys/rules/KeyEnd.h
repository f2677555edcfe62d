#pragma once

#include "plugin/contract/FilmKey.h"

/// When a key ends; seconds. A key without a duration ends where it stands, whatever its record's end says:
/// that is left behind when only the start is set, and a level needn't tell it.
inline float EndOf(const IFilmKey& record) {
    return (record.flags & KeyFlag::NoDuration) != 0 ? record.time : record.endTime;
}
