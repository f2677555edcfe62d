#pragma once

#include <QImage>

#include <cstddef>
#include <optional>
#include <span>

// Reads an uncompressed device-independent bitmap without its file header. Nothing for a damaged or
// compressed one. 32-bit pixels keep their alpha when any of them has some; other depths are opaque.
std::optional<QImage> ReadBitmap(std::span<const std::byte> bytes, bool* hasAlpha = nullptr);
