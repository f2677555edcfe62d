#pragma once

#include <optional>
#include <string_view>

namespace stage {

/// What a typed number measures, and so which units may stand behind it.
enum class NumberKind {
    Plain,
    Length, ///< in units of the level; mm, cm, m, km, in and ft are understood
    Angle   ///< in degrees; deg, the degree sign, rad and turn are understood
};

/// The value of what a user types into a number field: numbers with a point or a comma, units, + - * / and
/// brackets, as "2m + 35*2". Empty if it can't be understood or is no finite number.
std::optional<double> EvaluateEntry(std::string_view text, NumberKind kind);

} // namespace stage
