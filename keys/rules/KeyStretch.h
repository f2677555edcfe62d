#pragma once

class IFilmKey;

/// An interval that becomes longer or shorter; seconds. The setters of the records get no time that isn't
/// finite: an interval of no length only pushes what lies behind it.
class TimeStretch {
public:
    /// `from` seconds from `start` on become `to` seconds.
    TimeStretch(float start, float from, float to);

    bool IsFinite() const;
    /// Moves a record's start and end, with `scale` its duration too. False if it lies before the interval
    /// and no rule concerns it.
    bool ApplyToSpan(IFilmKey& record, bool scale) const;
    /// Moves a record that has no duration: only its start is set.
    void ApplyToMoment(IFilmKey& record) const;

private:
    float Stretched(float time) const { return (time - start) * factor + start; }
    float Pushed(float time) const { return time + to - from; }
    void ApplyBefore(IFilmKey& record) const;
    void ApplyInside(IFilmKey& record, bool scale) const;
    void ApplyAcrossEnd(IFilmKey& record, bool scale) const;

    float start;
    float from;
    float to;
    float factor;
    float end;
};
