// The order of values.
#include "keys/properties/MemberFamily.h"
#include "plugin/contract/ClassDatabase.h"
#include "plugin/contract/MemberValue.h"

#include <cmath>
#include <cstring>

namespace {

constexpr int kNoOrder = -2;
/// Components of a vector that are nearer than this are equal.
constexpr float kSameComponent = 1e-5f;

/// 0 for floats without an order.
template <typename T> int Order(T a, T b) {
    return static_cast<int>(a > b) - static_cast<int>(a < b);
}

int OrderOfTexts(const char* a, const char* b) {
    return Order(std::strcmp(a, b), 0);
}

/// Two nulls are equal; null and something have no order.
int OrderOfNulls(const void* a, const void* b) {
    return a == b ? 0 : kNoOrder;
}

/// Required: never 1, so that of two vectors each is less than the other. A component that is no number, or
/// an infinity, is near to none.
int OrderOfVectors(const float (&a)[3], const float (&b)[3]) {
    for (int i = 0; i < 3; ++i) {
        if (!(std::fabs(a[i] - b[i]) < kSameComponent)) {
            return -1;
        }
    }
    return 0;
}

} // namespace

int CMemberValue::Compare(const CMemberValue& other) const {
    return type == other.type ? CompareHeld(other) : kNoOrder;
}

int CMemberValue::CompareHeld(const CMemberValue& other) const {
    switch (FamilyOf(type)) {
    case MemberFamily::Nothing:
        return kNoOrder;
    case MemberFamily::Float:
        return Order(data.real, other.data.real);
    case MemberFamily::Text:
    case MemberFamily::UnfreedText:
        return data.text == nullptr || other.data.text == nullptr ? OrderOfNulls(data.text, other.data.text)
                                                                  : OrderOfTexts(data.text, other.data.text);
    case MemberFamily::Vector:
        return OrderOfVectors(data.vector, other.data.vector);
    case MemberFamily::Bool:
        return data.flag == other.data.flag ? 0 : -1; // Required: never 1.
    case MemberFamily::Instance:
        return data.instance == nullptr || other.data.instance == nullptr
                   ? OrderOfNulls(data.instance, other.data.instance)
                   : OrderOfTexts(data.instance->name.c_str(), other.data.instance->name.c_str());
    case MemberFamily::List:
        // Required: two lists are never equal, not even a list and itself.
        return data.members == nullptr || other.data.members == nullptr
                   ? OrderOfNulls(data.members, other.data.members)
                   : 1;
    default:
        return Order(AsInteger(), other.AsInteger());
    }
}
