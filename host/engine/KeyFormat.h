#pragma once

#include "plugin/contract/FilmKey.h"
#include "plugin/contract/FilmTrack.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace engine {

class FilmManager;

// Keys in files: a 32-bit count, then each key as a byte of marks, its time and its kind's fields. End time
// and flags stand there only where they differ from the kind's own, so that a vector key takes 43 bytes.

/// Appends the keys, which are all of this kind.
void WriteKeys(std::span<IFilmKey* const> keys, int kind, std::string& bytes);
/// The bytes of each key of what WriteKeys wrote; none if they are damaged.
std::vector<std::string_view> KeyPieces(std::string_view bytes, int kind);
/// Gives a record, which has this kind, what its piece says. Links are known by their ids only.
bool ReadKeyPiece(std::string_view piece, IFilmKey& key);
/// Makes the keys in `bytes`, which must hold nothing else, for the track, and appends them to its list too
/// if `listed`. Linked objects are known by their ids only. On false no key is left, in the list neither.
bool ReadKeys(std::string_view bytes, int kind, FilmManager& manager, CFilmTrack& track, bool listed,
              std::vector<IFilmKey*>& keys);

} // namespace engine
