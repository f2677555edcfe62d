#pragma once

#include "tests/support/TempFolder.h"

/// Number texts of the C library with a comma for the point, as on a German desktop, while it lives. Makes
/// the locale itself, since a machine needn't have one.
class CommaLocale {
public:
    CommaLocale();
    ~CommaLocale();
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    /// False where the C library didn't take the locale.
    bool IsInForce() const;

private:
    TempFolder folder;
    std::string formerNumbers;
};
