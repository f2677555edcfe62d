#include "tests/editing/Texts.h"

#include <cstddef>
#include <iterator>

namespace editing {

namespace {

const std::string& OddText(std::size_t number) {
    static const std::string texts[] = {"1.5",
                                        "-2",
                                        "0",
                                        "0.25",
                                        "720",
                                        "1e39",
                                        "-1e39",
                                        "nan",
                                        "inf",
                                        "0x10",
                                        "4 , 5",
                                        "",
                                        " ",
                                        "arm",
                                        "Lift",
                                        "Cam0",
                                        "&&",
                                        "%s%n%d",
                                        "100%",
                                        "99999999999999999999",
                                        "-99999999999999999999",
                                        "2147483648",
                                        "-1",
                                        "\xD0\xAF\xD7\x9E\xE2\x82\xAC", // Cyrillic, Hebrew and a euro sign
                                        std::string(300, '7'),
                                        std::string(300, 'w')};
    return texts[number % std::size(texts)];
}

} // namespace

/// Every other text is a number that fits most fields: -1.00 to 14.98.
std::string TypedText(int number) {
    if (number % 2 == 0) {
        return OddText(static_cast<std::size_t>(number / 2));
    }
    const int hundredths = number % 1600 - 100;
    const std::string sign = hundredths < 0 ? "-" : "";
    const int size = hundredths < 0 ? -hundredths : hundredths;
    return sign + std::to_string(size / 100) + "." + std::to_string(size / 10 % 10) +
           std::to_string(size % 10);
}

} // namespace editing
