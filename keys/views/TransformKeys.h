#pragma once

#include "plugin/contract/FilmKey.h"

class CFilmTrack;

// Which keys of position, rotation and scale a move of an object writes at a time.

/// One kind of value of a moved object, in the space of its track's keys.
struct TransformChange {
    int kind;
    Vector3 newValue;
    Vector3 oldValue;
};

/// In what the rows of the open film and a film that isn't shown differ. Required.
struct TransformRules {
    bool onlyFinite;      ///< a value that isn't a number is passed over
    bool skipsSmallMoves; ///< a move of under one unit between the same whole numbers makes no position key
    bool writesOnlyOutHandle; ///< of a position, and twice; its in handle never
    bool addsStep; ///< handles go by the difference of the values: in float32 not the same as in turn
};
inline constexpr TransformRules kOpenFilmRules{true, true, true, true};
inline constexpr TransformRules kOtherFilmRules{false, false, false, false};

/// The keys of the object at the time of the move.
class TransformSink {
public:
    virtual ~TransformSink() = default;
    /// False where keys of a kind have no place, or none any more.
    virtual bool Takes(int kind) = 0;
    /// Null for none at the time.
    virtual CFilmVectorKey* FindKey(int kind) = 0;
    /// The key has new values.
    virtual void TellMoved(const CFilmVectorKey& key) = 0;
    /// A new key with the new value and both handles there.
    virtual void AddKey(const TransformChange& change) = 0;
};

/// The rotation keys about a time; null for none.
struct RotationsAbout {
    const CFilmVectorKey* at;     ///< within the time that makes it the same moment
    const CFilmVectorKey* before; ///< the nearest
    const CFilmVectorKey* after;  ///< likewise
};

/// The rotation from which new angles are to differ little; degrees.
Vector3 ReferenceRotation(const RotationsAbout& keys, const CFilmTrack& track, float time);

/// Both matrices in the space of the track's keys; `reference` are the angles of ReferenceRotation.
void RecordTransform(TransformSink& sink, const TransformRules& rules, const Vector3& reference,
                     const float* newMatrix, const float* oldMatrix);
