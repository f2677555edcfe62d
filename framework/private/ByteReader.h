#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

// Little-endian reading that never leaves its bytes: past the end it yields zeros and Ok() turns false for
// good.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::byte> source) : bytes(source) {}

    bool Ok() const { return ok; }
    bool AtEnd() const { return position >= bytes.size(); }
    std::size_t Position() const { return position; }
    std::size_t Left() const { return bytes.size() - position; }

    std::span<const std::byte> Take(std::size_t count) {
        if (!ok || count > Left()) {
            ok = false;
            return {};
        }
        const auto part = bytes.subspan(position, count);
        position += count;
        return part;
    }
    void Skip(std::size_t count) { Take(count); }
    void Align(std::size_t unit) {
        if (position % unit != 0) {
            // The last record of a file may lack its padding.
            Skip(std::min(unit - position % unit, Left()));
        }
    }
    std::uint16_t U16() { return static_cast<std::uint16_t>(Number(2)); }
    std::uint32_t U32() { return Number(4); }
    std::int16_t I16() { return static_cast<std::int16_t>(U16()); }
    // UTF-16 up to its terminator.
    std::u16string Text() {
        std::u16string text;
        for (char16_t c = U16(); ok && c != 0; c = U16()) {
            text.push_back(c);
        }
        return text;
    }

private:
    std::uint32_t Number(std::size_t count) {
        const auto part = Take(count);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < part.size(); ++i) {
            value |= std::to_integer<std::uint32_t>(part[i]) << (8 * i);
        }
        return value;
    }

    std::span<const std::byte> bytes;
    std::size_t position = 0;
    bool ok = true;
};
