#pragma once

#include <stdexcept>

namespace headless {

/// The output could not be made; `what` is one sentence with the file's name.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace headless
