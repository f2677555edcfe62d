#pragma once

#include "host/stage/effects/Effect.h"

#include <stdexcept>

class QByteArray;

namespace stage {

/// An effect file could not be used; `what` names the file, the field and the reason.
class EffectFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads `NAME.fx.json`, one JSON object with the fields of a kind; a field that is left out has the value
/// that Effect.h gives it. Unknown fields, numbers out of range and values of another type are refused.
class EffectFile {
public:
    static constexpr const char* kEnding = ".fx.json";

    /// Throws EffectFileError.
    static Effect Read(EffectKind kind, const std::string& path);
    /// The same from the file's bytes; `name` is for errors.
    static Effect Parse(EffectKind kind, const QByteArray& bytes, const std::string& name);
};

} // namespace stage
