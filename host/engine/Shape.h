#pragma once

#include "plugin/contract/Types.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace engine {

enum class ShapeKind : std::uint8_t { Box, Plane, Sphere, Cylinder, Cone, Capsule };

constexpr std::array<const char*, 6> kShapeNames = {"box", "plane", "sphere", "cylinder", "cone", "capsule"};

/// A body that is made from its size instead of read from a file. It stands on its place: the origin is the
/// middle of its base.
struct Shape {
    ShapeKind kind = ShapeKind::Box;
    Vector3 size{100.0f, 100.0f,
                 100.0f};              ///< of the box around it, units along x, y, z; planes have no height
    std::uint32_t color = kPlainColor; ///< 0xrrggbb as on the screen

    static constexpr float kLeastSize = 0.1f;
    static constexpr float kLargestSize = 1000000.0f;
    static constexpr std::uint32_t kPlainColor = 0xb4b4b4;

    bool operator==(const Shape& other) const {
        return kind == other.kind && size.x == other.size.x && size.y == other.size.y &&
               size.z == other.size.z && color == other.color;
    }
};

// Shapes stand in levels as the mesh name of their object, as "shape:box 100 50 100 #b4b4b4", so that all who
// keep mesh names keep shapes.

constexpr std::string_view kShapePrefix = "shape:";

namespace shape_text {

/// The next word; the text goes on behind it.
inline std::string_view Word(std::string_view& text) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return word;
}

inline bool Number(std::string_view word, float& number) {
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size();
}

inline bool Color(std::string_view word, std::uint32_t& color) {
    if (word.size() != 7 || word.front() != '#') {
        return false;
    }
    const auto [end, error] = std::from_chars(word.data() + 1, word.data() + word.size(), color, 16);
    return error == std::errc() && end == word.data() + word.size();
}

inline void AppendNumber(std::string& text, float number) {
    char digits[32];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
    text += ' ';
    text.append(digits, error == std::errc() ? end : digits);
}

} // namespace shape_text

/// The mesh name of a shape; the same in any locale.
inline std::string ShapeName(const Shape& shape) {
    std::string name(kShapePrefix);
    name += kShapeNames[static_cast<std::size_t>(shape.kind)];
    for (const float side : {shape.size.x, shape.size.y, shape.size.z}) {
        shape_text::AppendNumber(name, side);
    }
    constexpr const char* kDigits = "0123456789abcdef";
    name += " #";
    for (int shift = 20; shift >= 0; shift -= 4) {
        name += kDigits[shape.color >> shift & 0xFu];
    }
    return name;
}

/// The shape behind a mesh name. Empty unless the whole name is that of a shape of a possible size: a file
/// may be called anything else.
inline std::optional<Shape> ShapeOf(std::string_view name) {
    if (!name.starts_with(kShapePrefix) || name.ends_with(' ')) {
        return std::nullopt;
    }
    name.remove_prefix(kShapePrefix.size());
    const auto kind = std::find(kShapeNames.begin(), kShapeNames.end(), shape_text::Word(name));
    if (kind == kShapeNames.end()) {
        return std::nullopt;
    }
    Shape shape;
    shape.kind = static_cast<ShapeKind>(kind - kShapeNames.begin());
    for (float* side : {&shape.size.x, &shape.size.y, &shape.size.z}) {
        if (!shape_text::Number(shape_text::Word(name), *side) ||
            !(*side >= Shape::kLeastSize && *side <= Shape::kLargestSize)) {
            return std::nullopt;
        }
    }
    const bool isWhole = shape_text::Color(shape_text::Word(name), shape.color) && name.empty();
    return isWhole ? std::optional(shape) : std::nullopt;
}

} // namespace engine
