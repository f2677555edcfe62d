#pragma once

#include <string>

// Unpaired surrogates become U+FFFD.
std::string ToUtf8(const std::u16string& text);
