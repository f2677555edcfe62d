#pragma once

#include "plugin/contract/MemberValue.h"

#include <array>
#include <cstdint>

/// What a value holds: the tags that share a member of its union and the rules for it.
enum class MemberFamily : std::uint8_t {
    Nothing,
    Char,
    Byte,
    Int,
    Float,
    Int64,
    Short,
    Text,
    UnfreedText,
    Vector,
    Bool,
    Instance,
    List
};

constexpr MemberFamily FamilyOf(std::uint32_t tag) {
    using enum MemberFamily;
    constexpr std::array<MemberFamily, MemberType::Last + 1> families{
        Char,    Byte, Int,  Float, Int64,    Short, Text, Nothing, Vector,      Bool,        Nothing,
        Nothing, Int,  Text, Text,  Instance, List,  Text, Int,     UnfreedText, UnfreedText, UnfreedText};
    return tag < families.size() ? families[tag] : Nothing;
}
