#include "plugin/contract/Condition.h"
#include "plugin/contract/Member.h"

CCondition::CCondition(CMember* controlling, std::uint32_t operation, const void* operand,
                       const void* upper) {
    if (controlling == nullptr || operand == nullptr || (operation == kBetween && upper == nullptr)) {
        return;
    }
    member = controlling;
    op = operation;
    for (CMemberValue& bound : value) {
        bound.ChangeTag(controlling->value[0].GetType());
    }
    value[0].SetFromPointer(operand);
    value[1].SetFromPointer(op == kBetween ? upper : operand);
}

int CCondition::Evaluate() const {
    if (member == nullptr || op > kBetween) {
        return -1;
    }
    const CMemberValue& present = member->value[0];
    if (value[0].GetType() != present.GetType() ||
        (op == kBetween && value[1].GetType() != present.GetType())) {
        return -1;
    }
    const int order = present.Compare(value[0]);
    switch (op) {
    case kEqual:
        return order == 0;
    case kNotEqual:
        return order != 0; // Required: a null string differs from any other.
    case kLess:
        return order == -1;
    case kLessOrEqual:
        return order == -1 || order == 0;
    case kGreater:
        return order == 1;
    case kGreaterOrEqual:
        return order == 0 || order == 1;
    default:
        return order == 1 && present.Compare(value[1]) == -1;
    }
}
