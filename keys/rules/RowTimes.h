#pragma once

#include "keys/rules/KeyTimeRules.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

/// A key at its place in a row.
struct RowKey {
    /// The kind of a key without a record.
    static constexpr int kForeign = -1;

    KeySpan span;
    int kind = kForeign;
    bool bounded = false; ///< its neighbours limit it: it has a record, which mustn't overlap others
};

/// The keys of one row, in draw order, for many questions at once: each is answered without a walk over all
/// keys. Looks at the keys as long as it lives.
class RowTimes {
public:
    explicit RowTimes(std::span<const RowKey> keys);

    /// Place of the first key that starts at the time, by draw order.
    std::optional<std::size_t> KeyAt(float time) const;
    /// Place of the key that starts nearest before the time; the first of several. One that starts at the
    /// time is passed over.
    std::optional<std::size_t> NearestBefore(float time) const;
    /// The same as FindKeyLimits for the key at a place and the others of its kind.
    KeyLimits LimitsOf(std::size_t place, const TimeAxis& axis);

private:
    using Place = std::uint32_t;

    struct Moment {
        float time;
        Place place;
    };

    /// The two last places of a run of moments.
    struct LastTwo {
        void Take(Place place);
        /// The last one that isn't `own`.
        std::optional<Place> Except(Place own) const;

        std::optional<Place> last;
        std::optional<Place> secondLast;
    };

    /// The keys of one kind.
    struct Kind {
        std::vector<Moment> starts;       ///< by time
        std::vector<Moment> ends;         ///< by time
        std::vector<LastTwo> lastStarted; ///< of so many of `starts` from the front
        std::vector<LastTwo> lastEnding;  ///< of so many of `ends` from the back
    };

    const Kind& KindOf(int kind);
    float UpperLimit(const Kind& kind, Place own, const TimeAxis& axis) const;
    float LowerLimit(const Kind& kind, Place own, const TimeAxis& axis) const;
    static std::vector<LastTwo> LastPlaces(std::span<const Moment> moments, bool fromBack);

    std::span<const RowKey> row;
    std::vector<Moment> starts; ///< of all kinds, by time, then by place
    std::map<int, Kind> kinds;  ///< made when first asked for
};

/// Takes an edge at `tic` on to the next tic as long as a key stands exactly there. `limits` are those of the
/// key that is dragged. Not clamped.
float StepOverKeys(std::span<const RowKey> row, KeyLimits limits, float tic, bool forward,
                   const TimeAxis& axis);
