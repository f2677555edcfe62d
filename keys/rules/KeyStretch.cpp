#include "keys/rules/KeyStretch.h"

#include "keys/rules/KeyEnd.h"

#include <cmath>

namespace {

void SetTime(IFilmKey& record, float time) {
    if (std::isfinite(time)) {
        record.SetTime(time);
    }
}

void SetEndTime(IFilmKey& record, float time) {
    if (std::isfinite(time)) {
        record.SetEndTime(time);
    }
}

} // namespace

TimeStretch::TimeStretch(float newStart, float newFrom, float newTo)
    : start(newStart), from(newFrom), to(newTo), factor(from != 0.0f ? to / from : NAN), end(start + from) {
}

bool TimeStretch::IsFinite() const {
    return std::isfinite(start) && std::isfinite(from) && std::isfinite(to);
}

/// A record that starts before the interval and ends in it or behind it.
void TimeStretch::ApplyBefore(IFilmKey& record) const {
    const float oldEnd = EndOf(record);
    if (oldEnd > start && oldEnd < end) {
        SetEndTime(record, Stretched(oldEnd));
    }
    if (oldEnd > end) {
        SetEndTime(record, Pushed(oldEnd));
    }
}

void TimeStretch::ApplyInside(IFilmKey& record, bool scale) const {
    const float length = EndOf(record) - record.time;
    const float newTime = Stretched(record.time);
    SetTime(record, newTime);
    SetEndTime(record, newTime + (scale ? length * factor : length));
}

void TimeStretch::ApplyAcrossEnd(IFilmKey& record, bool scale) const {
    const float oldEnd = EndOf(record);
    const float length = oldEnd - record.time;
    const float newWay = (record.time - start) * factor;
    SetTime(record, newWay + start);
    SetEndTime(record, scale ? Pushed(oldEnd) : newWay + length + start);
}

bool TimeStretch::ApplyToSpan(IFilmKey& record, bool scale) const {
    const float oldTime = record.time;
    const float oldEnd = EndOf(record);
    if (oldTime < start) {
        if (oldEnd < start) {
            return false;
        }
        if (scale) {
            ApplyBefore(record);
        }
    }
    // Required: one that starts or ends exactly at a limit of the interval is neither inside nor outside, and
    // one behind the interval is set twice.
    if (oldTime > start && oldEnd < end) {
        ApplyInside(record, scale);
    }
    if (oldTime > start && oldEnd > end && std::isfinite(factor)) {
        ApplyAcrossEnd(record, scale);
    }
    if (oldTime > end) {
        SetTime(record, Pushed(oldTime));
        SetEndTime(record, Pushed(oldEnd));
    }
    return true;
}

void TimeStretch::ApplyToMoment(IFilmKey& record) const {
    const float oldTime = record.time;
    if (oldTime > start && oldTime < end) {
        SetTime(record, Stretched(oldTime));
    }
    if (!(oldTime < end)) {
        SetTime(record, Pushed(oldTime));
    }
}
