#include "keys/properties/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <limits>
#include <locale.h>
#include <strings.h>

namespace {

static_assert(std::numeric_limits<float>::is_iec559, "a double beyond the floats becomes an infinity");

/// Lives as long as the process; the C library has it ready and allocates nothing for it.
locale_t PlainLocale() {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    return plain;
}

} // namespace

std::string FixedText(float value, std::size_t width, int decimals) {
    // Sign, 39 digits of the largest float, point, decimals.
    std::array<char, 64> digits;
    const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                                   std::chars_format::fixed, decimals);
    std::string text(digits.data(), end.ptr);
    text.insert(0, width - std::min(width, text.size()), ' ');
    return text;
}

std::int32_t IntFromText(const char* text) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(Int64FromText(text), Limits::min(), Limits::max()));
}

std::int64_t Int64FromText(const char* text) {
    return strtoll_l(text, nullptr, 10, PlainLocale());
}

float FloatFromText(const char* text) {
    return static_cast<float>(strtod_l(text, nullptr, PlainLocale()));
}

bool EqualsIgnoringCase(const char* a, const char* b) {
    return strcasecmp_l(a, b, PlainLocale()) == 0;
}
