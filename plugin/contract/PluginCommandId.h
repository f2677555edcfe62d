#pragma once

#include <cstdint>

/// One command of one plug-in: bits 0-7 the local command, 8-13 the plug-in number, bit 22 constant.
/// With local command 0 it names the plug-in itself.
struct PluginCommandId {
    static constexpr std::uint32_t kDefault = 0x00400000;

    std::uint32_t word = kDefault;

    static constexpr PluginCommandId FromPluginNumber(std::uint32_t number) {
        return {(kDefault & ~0x3F00u & ~0xFFu) | ((number & 63u) << 8)};
    }
    constexpr std::uint32_t PluginNumber() const { return (word >> 8) & 63u; }
    constexpr std::uint32_t LocalCommand() const { return word & 0xFFu; }
    constexpr PluginCommandId WithLocal(std::uint32_t local) const {
        return {(word & ~0xFFu) | (local & 0xFFu)};
    }
    bool operator==(const PluginCommandId&) const = default;
};
