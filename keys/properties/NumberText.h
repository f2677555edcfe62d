#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Numbers and their texts as the C locale has them, whatever locale the process is in.

/// As printf's "%<width>.<decimals>f".
std::string FixedText(float value, std::size_t width, int decimals);

/// The number that a text begins with, behind blanks; 0 where it begins with none. What is too large becomes
/// the largest number of the type.
std::int32_t IntFromText(const char* text);
std::int64_t Int64FromText(const char* text);
/// The same; decimal, hexadecimal, "inf" and "nan". Too large for the type is an infinity.
float FloatFromText(const char* text);

/// Whether two texts are equal but for the case of the letters A to Z.
bool EqualsIgnoringCase(const char* a, const char* b);
