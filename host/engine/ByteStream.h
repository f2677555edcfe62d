#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace engine {

/// Appends little-endian values to a string.
class ByteWriter {
public:
    explicit ByteWriter(std::string& target) : bytes(target) {}
    void U8(std::uint8_t value) { bytes.push_back(static_cast<char>(value)); }
    void U16(std::uint16_t value) { Raw(&value, sizeof value); }
    void U32(std::uint32_t value) { Raw(&value, sizeof value); }
    void I32(std::int32_t value) { Raw(&value, sizeof value); }
    void F32(float value) { Raw(&value, sizeof value); }
    void Floats(const float* values, std::size_t count) { Raw(values, count * sizeof(float)); }
    /// 32-bit length and the bytes.
    void Text(std::string_view text) {
        U32(static_cast<std::uint32_t>(text.size()));
        bytes.append(text);
    }
    void Raw(const void* source, std::size_t size) { bytes.append(static_cast<const char*>(source), size); }

    std::string& bytes;
};
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "files are little-endian, as are the targets");

/// Reads little-endian values. Beyond the end everything reads as 0 and `Good` is false from then on.
class ByteReader {
public:
    explicit ByteReader(std::string_view source) : bytes(source) {}
    std::uint8_t U8() { return Value<std::uint8_t>(); }
    std::uint16_t U16() { return Value<std::uint16_t>(); }
    std::uint32_t U32() { return Value<std::uint32_t>(); }
    std::int32_t I32() { return Value<std::int32_t>(); }
    float F32() { return Value<float>(); }
    void Floats(float* values, std::size_t count) { Raw(values, count * sizeof(float)); }
    std::string Text() { return std::string(Bytes(U32())); }
    /// The next bytes; empty if there are not so many.
    std::string_view Bytes(std::size_t size) {
        if (size > Left()) {
            good = false;
            return {};
        }
        const std::string_view found = bytes.substr(at, size);
        at += size;
        return found;
    }
    /// The next bytes, as many of them as there are, without going on.
    std::string_view Ahead(std::size_t size) const { return bytes.substr(at, size); }
    void Raw(void* target, std::size_t size) {
        const std::string_view found = Bytes(size);
        if (found.size() == size && size > 0) {
            std::memcpy(target, found.data(), size);
        } else if (size > 0) {
            std::memset(target, 0, size);
        }
    }
    std::size_t Left() const { return bytes.size() - at; }
    std::size_t Position() const { return at; }
    bool Good() const { return good; }

private:
    template <class T> T Value() {
        T value{};
        Raw(&value, sizeof value);
        return value;
    }

    std::string_view bytes;
    std::size_t at = 0;
    bool good = true;
};

} // namespace engine
