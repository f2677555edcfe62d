#include "host/stage/host/NumberEntry.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace stage {

namespace {

constexpr int kDeepest = 32; ///< brackets and signs in each other

struct Unit {
    NumberKind kind;
    std::string_view name;
    double factor;
};

// Longer names in front of those that they begin with.
constexpr std::array kUnits = {
    Unit{NumberKind::Length, "mm", 0.1},
    Unit{NumberKind::Length, "cm", 1.0},
    Unit{NumberKind::Length, "km", 100000.0},
    Unit{NumberKind::Length, "m", 100.0},
    Unit{NumberKind::Length, "in", 2.54},
    Unit{NumberKind::Length, "ft", 30.48},
    Unit{NumberKind::Angle, "deg", 1.0},
    Unit{NumberKind::Angle, "\u00b0", 1.0},
    Unit{NumberKind::Angle, "rad", 57.29577951308232},
    Unit{NumberKind::Angle, "turn", 360.0},
};

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Reads a text from left to right. What it can't understand ends it: `good` is false from then on.
class Reader {
public:
    Reader(std::string_view typed, NumberKind numberKind) : text(typed), kind(numberKind) {}

    double Sum() {
        double sum = Product();
        for (char sign = Next(); sign == '+' || sign == '-'; sign = Next()) {
            Take();
            const double part = Product();
            sum += sign == '+' ? part : -part;
        }
        return sum;
    }
    bool IsWhole() {
        SkipSpaces();
        return good && at == text.size();
    }

private:
    void SkipSpaces() {
        while (at < text.size() && text[at] == ' ') {
            ++at;
        }
    }
    /// The next sign behind spaces, 0 at the end.
    char Next() {
        SkipSpaces();
        return at < text.size() ? text[at] : '\0';
    }
    void Take() { ++at; }

    double Product() {
        double product = Factor();
        for (char sign = Next(); sign == '*' || sign == '/'; sign = Next()) {
            Take();
            const double part = Factor();
            product = sign == '*' ? product * part : product / part;
        }
        return product;
    }

    double Factor() {
        if (++depth > kDeepest) {
            good = false;
            return 0.0;
        }
        const char sign = Next();
        double value = 0.0;
        if (sign == '-' || sign == '+') {
            Take();
            value = sign == '-' ? -Factor() : Factor();
        } else if (sign == '(') {
            Take();
            value = Sum();
            good = good && Next() == ')';
            Take();
        } else {
            value = Number();
        }
        --depth;
        return value;
    }

    double Number() {
        std::string digits;
        while (at < text.size() &&
               ((text[at] >= '0' && text[at] <= '9') || text[at] == '.' || text[at] == ',')) {
            digits += text[at] == ',' ? '.' : text[at];
            ++at;
        }
        double value = 0.0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        good = good && !digits.empty() && error == std::errc() && end == digits.data() + digits.size();
        return value * UnitFactor();
    }

    double UnitFactor() {
        SkipSpaces();
        for (const Unit& unit : kUnits) {
            const std::size_t behind = at + unit.name.size();
            const bool ends = behind >= text.size() || !IsLetter(text[behind]);
            if (unit.kind == kind && text.substr(std::min(at, text.size()), unit.name.size()) == unit.name &&
                ends) {
                at = behind;
                return unit.factor;
            }
        }
        return 1.0;
    }

    std::string_view text;
    NumberKind kind;
    std::size_t at = 0;
    int depth = 0;
    bool good = true;
};

} // namespace

std::optional<double> EvaluateEntry(std::string_view text, NumberKind kind) {
    Reader reader(text, kind);
    const double value = reader.Sum();
    return reader.IsWhole() && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

} // namespace stage
