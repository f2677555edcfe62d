#pragma once

#include <cstdint>

/// The plug-in object's own commands, by the numbers that follow its place in the host's menus and toolbars.
namespace LocalCommand {
constexpr std::uint32_t Movies = 1;
constexpr std::uint32_t AnimateObject = 50;
constexpr std::uint32_t CreateCameraFrame = 51;
constexpr std::uint32_t ToVirtualObject = 52;
constexpr std::uint32_t ToNormalObject = 53;
constexpr std::uint32_t AttachMovie = 60;
constexpr std::uint32_t DetachMovie = 61;
constexpr std::uint32_t SetLinkObject = 62;
constexpr std::uint32_t AttachObject = 63;
constexpr std::uint32_t Last = 63;
} // namespace LocalCommand
