#pragma once

#include <cstdint>

/// Bits of the flag word of an object (`EditorObject::GetFlags`). Others are the host's own.
namespace ObjectFlag {

/// The engine leaves the object out, as it does a light whose film is closed.
constexpr std::uint32_t LeftOut = 4;

} // namespace ObjectFlag
