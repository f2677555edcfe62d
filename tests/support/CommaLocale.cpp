#include "tests/support/CommaLocale.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>

namespace {

/// The C library's compiled form: a mark, the count of items, where each stands in the file, and the items.
std::string CompiledNumbers() {
    constexpr unsigned kMark = 0x20031115 ^ LC_NUMERIC;
    constexpr unsigned kItems = 6;
    constexpr unsigned kBehindHead = 4 * (2 + kItems);
    Bytes file;
    file.U32(kMark).U32(kItems);
    for (const unsigned place : {0, 2, 4, 8, 12, 16}) {
        file.U32(kBehindHead + place);
    }
    file.U8(',').U8(0);           // decimal point
    file.U8('.').U8(0);           // between thousands
    file.U8(3).U8(3).U8(0).U8(0); // digits in a group
    file.U32(',').U32('.');       // both as wide characters
    for (const char letter : {'U', 'T', 'F', '-', '8', '\0'}) {
        file.U8(static_cast<unsigned char>(letter));
    }
    return file.Str();
}

} // namespace

CommaLocale::CommaLocale() : formerNumbers(std::setlocale(LC_NUMERIC, nullptr)) {
    std::filesystem::create_directory(folder.File("comma"));
    WriteWholeFile(folder.File("comma/LC_NUMERIC"), CompiledNumbers());
    setenv("LOCPATH", folder.Path().c_str(), /*overwrite*/ 1);
    std::setlocale(LC_NUMERIC, "comma");
    unsetenv("LOCPATH");
}

CommaLocale::~CommaLocale() {
    std::setlocale(LC_NUMERIC, formerNumbers.c_str());
}

bool CommaLocale::IsInForce() const {
    return std::localeconv()->decimal_point == std::string(",");
}
