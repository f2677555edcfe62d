#pragma once

#include "plugin/contract/MemberValue.h"

#include <cstdint>

class CMember;

/// When a member is shown: a comparison of another member's value with a constant.
class CCondition {
public:
    static constexpr std::uint32_t kEqual = 0;
    static constexpr std::uint32_t kNotEqual = 1;
    static constexpr std::uint32_t kLess = 2;
    static constexpr std::uint32_t kLessOrEqual = 3;
    static constexpr std::uint32_t kGreater = 4;
    static constexpr std::uint32_t kGreaterOrEqual = 5;
    static constexpr std::uint32_t kBetween = 6; ///< strictly

    /// The operands are read from memory as what the controlling member's tag says: an int32 for a number, a
    /// terminated string for a text. Null operands, a null member, or no upper bound of `between` give an
    /// invalid condition.
    CCondition(CMember* controlling, std::uint32_t operation, const void* operand, const void* upper);
    virtual ~CCondition() = default;
    CCondition(const CCondition&) = delete;
    CCondition& operator=(const CCondition&) = delete;

    /// 1 true, 0 false, -1 invalid.
    int Evaluate() const;

    CMember* member = nullptr; ///< the controlling one, not owned; null in an invalid condition
    CMemberValue value[2];     ///< the operand, and the upper bound or the operand again
    std::uint32_t op = kEqual;
};
