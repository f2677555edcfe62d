#pragma once

class IFilmKey;

namespace engine {

/// The record whose description was asked for last, as by a window under whose mouse its key lies; null if
/// none was since the last call. It may be gone already: only for comparing.
const IFilmKey* TakeDescribedKey();

/// Called by the records.
void NoteDescribed(const IFilmKey& key);

} // namespace engine
