#pragma once

#include <string>

class CDataExchange;

/// A float32 in a text field of a dialog. The field shows six digits; text that the user leaves alone gives
/// back the number itself, and none but finite numbers are taken.
class KeptNumber {
public:
    /// As DDX_Text, in both directions.
    void Exchange(CDataExchange* exchange, int id, float& value);

private:
    std::string shown; ///< as the field first read
};
