#pragma once

#include <vector>

class CFilmTrack;
class CTrackKey;
class IFilmKey;
class KeyViewList;
class TimeStretch;

// What becomes of the records of a row when film time is stretched, put in or taken out. The views keep their
// times of before: the film is shown anew afterwards.

/// Stretches the track's records of a kind; `views` are those of the kind's row. The answer are all records
/// of the kind.
std::vector<IFilmKey*> StretchRecords(const CFilmTrack& track, int kind, const KeyViewList& views,
                                      const TimeStretch& stretch);

/// The records of a row's views that move, and the views of those that fall out of the film, whose records
/// stay as they are.
struct ShiftedRow {
    std::vector<const IFilmKey*> moved;
    std::vector<CTrackKey*> fallen;
};

/// Moves the records of the kind's views that start at `time` or later by `delta` seconds.
ShiftedRow ShiftRecords(const KeyViewList& views, int kind, float time, float delta);
