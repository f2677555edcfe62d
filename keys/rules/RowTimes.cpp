#include "keys/rules/RowTimes.h"

#include <algorithm>
#include <cmath>

RowTimes::RowTimes(std::span<const RowKey> keys) : row(keys) {
    starts.reserve(row.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (!std::isnan(row[i].span.start)) {
            starts.push_back({row[i].span.start, static_cast<Place>(i)});
        }
    }
    std::ranges::stable_sort(starts, {}, &Moment::time);
}

std::optional<std::size_t> RowTimes::KeyAt(float time) const {
    std::optional<std::size_t> first;
    auto moment = std::ranges::lower_bound(starts, time - kSameMomentSeconds, {}, &Moment::time);
    for (; moment != starts.end() && moment->time <= time + kSameMomentSeconds; ++moment) {
        if (IsSameMoment(moment->time, time) && (!first || moment->place < *first)) {
            first = moment->place;
        }
    }
    return first;
}

std::optional<std::size_t> RowTimes::NearestBefore(float time) const {
    const auto distanceTo = [time](const Moment& moment) { return static_cast<double>(time) - moment.time; };
    const auto behind = std::ranges::partition_point(
        starts, [&](const Moment& moment) { return distanceTo(moment) > kPassedOverSeconds; });
    if (behind == starts.begin() || !(distanceTo(*std::prev(behind)) < kFarthestSeconds)) {
        return std::nullopt;
    }
    return std::ranges::lower_bound(starts, std::prev(behind)->time, {}, &Moment::time)->place;
}

void RowTimes::LastTwo::Take(Place place) {
    if (!last || place > *last) {
        secondLast = last;
        last = place;
    } else if (!secondLast || place > *secondLast) {
        secondLast = place;
    }
}

std::optional<RowTimes::Place> RowTimes::LastTwo::Except(Place own) const {
    return last == own ? secondLast : last;
}

std::vector<RowTimes::LastTwo> RowTimes::LastPlaces(std::span<const Moment> moments, bool fromBack) {
    std::vector<LastTwo> places(moments.size() + 1);
    for (std::size_t i = 0; i < moments.size(); ++i) {
        places[i + 1] = places[i];
        places[i + 1].Take(moments[fromBack ? moments.size() - 1 - i : i].place);
    }
    return places;
}

const RowTimes::Kind& RowTimes::KindOf(int kind) {
    const auto [entry, isNew] = kinds.try_emplace(kind);
    Kind& made = entry->second;
    if (!isNew) {
        return made;
    }
    for (const Moment& start : starts) {
        if (row[start.place].kind == kind) {
            made.starts.push_back(start);
        }
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (row[i].kind == kind && !std::isnan(row[i].span.End())) {
            made.ends.push_back({row[i].span.End(), static_cast<Place>(i)});
        }
    }
    std::ranges::sort(made.ends, {}, &Moment::time);
    made.lastStarted = LastPlaces(made.starts, /*fromBack*/ false);
    made.lastEnding = LastPlaces(made.ends, /*fromBack*/ true);
    return made;
}

float RowTimes::UpperLimit(const Kind& kind, Place own, const TimeAxis& axis) const {
    const float end = row[own].span.End();
    auto next = std::ranges::lower_bound(kind.starts, end, {}, &Moment::time);
    const auto started = static_cast<std::size_t>(next - kind.starts.begin());
    if (row[own].span.duration != 0.0f) {
        if (const std::optional<Place> last = kind.lastStarted[started].Except(own)) {
            return row[*last].span.start;
        }
    }
    if (next != kind.starts.end() && next->place == own) {
        ++next;
    }
    return next != kind.starts.end() && next->time <= axis.end ? next->time : axis.end;
}

float RowTimes::LowerLimit(const Kind& kind, Place own, const TimeAxis& axis) const {
    const float start = row[own].span.start;
    auto behind = std::ranges::upper_bound(kind.ends, start, {}, &Moment::time);
    const auto ending = static_cast<std::size_t>(kind.ends.end() - behind);
    if (row[own].span.duration != 0.0f) {
        if (const std::optional<Place> last = kind.lastEnding[ending].Except(own)) {
            return row[*last].span.End();
        }
    }
    if (behind != kind.ends.begin() && std::prev(behind)->place == own) {
        --behind;
    }
    return behind != kind.ends.begin() && std::prev(behind)->time >= axis.start ? std::prev(behind)->time
                                                                                : axis.start;
}

KeyLimits RowTimes::LimitsOf(std::size_t place, const TimeAxis& axis) {
    const Kind& kind = KindOf(row[place].kind);
    const auto own = static_cast<Place>(place);
    KeyLimits limits{axis.start, axis.end};
    if (!std::isnan(row[place].span.start)) {
        limits.lo = LowerLimit(kind, own, axis);
    }
    if (!std::isnan(row[place].span.End())) {
        limits.hi = UpperLimit(kind, own, axis);
    }
    return limits;
}

float StepOverKeys(std::span<const RowKey> row, KeyLimits limits, float tic, bool forward,
                   const TimeAxis& axis) {
    std::optional<RowTimes> times; // most steps meet no key
    while (limits.Ahead(forward) == tic) {
        const float next = forward ? tic + axis.tic : tic - axis.tic;
        if (next == tic || std::isnan(next)) {
            break;
        }
        if (!times) {
            times.emplace(row);
        }
        const std::optional<std::size_t> key = times->KeyAt(tic);
        tic = next;
        if (key && row[*key].bounded) {
            limits = times->LimitsOf(*key, axis);
        }
    }
    return tic;
}
