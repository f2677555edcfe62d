#include "keys/rules/TicLayout.h"

#include "keys/rules/Pixels.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <numeric>

namespace {

// Tic numbers are doubles: whole up to 2^53, which is 1e15, and without overflow beyond.
class TicWalk {
public:
    TicWalk(const TicAxis& walked, int leftPixel, int rightPixel)
        : axis(walked), left(leftPixel), inverse(1.0 / walked.ticDistance),
          pixelsPerSecond(static_cast<double>(rightPixel - leftPixel) / (walked.viewEnd - walked.viewStart)),
          first(std::ceil((walked.viewStart - walked.rangeStart) * inverse)),
          last(std::trunc((walked.viewEnd - walked.rangeStart) * inverse)) {
        if (axis.labelDistance > 0) {
            labelStep = static_cast<double>(
                std::lcm(std::int64_t{std::max(axis.bigTics, 1)}, std::int64_t{axis.labelDistance}));
        }
    }

    std::vector<Tic> Run(int columns) const {
        std::vector<Tic> tics;
        const double count = last - first + 1.0;
        if (!std::isfinite(count) || count < 1.0) {
            return tics;
        }
        if (count <= columns) {
            tics.reserve(static_cast<std::size_t>(count));
            for (int i = 0; i < static_cast<int>(count); ++i) {
                Add(tics, XOf(first + i), first + i, first + i);
            }
        } else {
            AddColumns(tics);
        }
        return tics;
    }

private:
    // Numbers count from the start of the range and positions from time 0: the two agree for a range that
    // starts at 0. Required.
    int XOf(double number) const {
        return CutToPixel((number * axis.ticDistance - axis.viewStart) * pixelsPerSecond + left);
    }

    double NumberAt(double x) const { return ((x - left) / pixelsPerSecond + axis.viewStart) * inverse; }

    void AddColumns(std::vector<Tic>& tics) const {
        for (int x = XOf(first); x <= XOf(last); ++x) {
            const double from = std::max(first, std::ceil(NumberAt(x)));
            const double to = std::min(last, std::ceil(NumberAt(x + 1.0)) - 1.0);
            if (from <= to) {
                Add(tics, x, from, to);
            }
        }
    }

    // The multiple of the step among the numbers, or NaN.
    static double MultipleIn(double from, double to, double step) {
        const double multiple = std::ceil(from / step) * step;
        return multiple <= to ? multiple : std::nan("");
    }

    // One tic for all the numbers that fall on one column.
    void Add(std::vector<Tic>& tics, int x, double from, double to) const {
        Tic tic;
        tic.x = x;
        tic.big = !std::isnan(MultipleIn(from, to, std::max(axis.bigTics, 1)));
        const double labelled = labelStep > 0.0 ? MultipleIn(from, to, labelStep) : std::nan("");
        if (!std::isnan(labelled)) {
            tic.label = TicLabel(labelled * axis.ticDistance);
        }
        tics.push_back(std::move(tic));
    }

    const TicAxis& axis;
    int left;
    double inverse;
    double pixelsPerSecond;
    double first;
    double last;
    double labelStep = 0.0;
};

} // namespace

std::vector<Tic> LayOutTics(const TicAxis& axis, int left, int right) {
    if (!(axis.ticDistance > 0.0) || !(axis.viewEnd > axis.viewStart) || right <= left) {
        return {};
    }
    return TicWalk(axis, left, right).Run(right - left + 1);
}

TicRows TicRowsOf(int alignment, int top, int bottom) {
    const int h = bottom - top;
    switch (alignment) {
    case 0:
        // Required: only the start counts from the top of the rect; in a low window a small tic runs upwards.
        return {top + 1, top + 1, h / 2, top + 1, h / 4};
    case 1:
        return {h / 2, h / 4, (3 * h) / 4, (3 * h) / 8, (5 * h) / 8};
    case 2:
        return {bottom - 1, h / 2, bottom - 1, (3 * h) / 4, bottom - 1};
    default:
        return {};
    }
}

std::string TicLabel(double seconds) {
    // The longest double has 309 digits before the point.
    std::array<char, 320> digits{};
    const std::to_chars_result result =
        std::to_chars(digits.data(), digits.data() + digits.size(), seconds, std::chars_format::fixed, 2);
    return {digits.data(), result.ptr};
}
