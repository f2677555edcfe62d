#include "plugin/contract/Member.h"
#include "keys/properties/InstanceCopies.h"
#include "keys/properties/NestedMembers.h"

#include <algorithm>
#include <memory>
#include <string_view>

CMember::CMember() {
    value[0].ChangeTag(MemberType::String);
    value[1].ChangeTag(MemberType::String);
}

CMember::CMember(const char* memberName, const char* description, std::uint32_t memberFlags)
    : CMember(memberName, MemberType::String, nullptr, description, memberFlags) {
    typeName = "String";
}

CMember::CMember(const char* memberName, std::uint32_t type, const void* initial, const char* description,
                 std::uint32_t memberFlags)
    : typeName("?"), flags(memberFlags) {
    if (memberName != nullptr) {
        name = memberName;
    }
    value[0].ChangeTag(type);
    value[1].ChangeTag(type);
    if (initial != nullptr) {
        value[0].SetFromPointer(initial);
    }
    SetDescription(description);
}

CMember::~CMember() {
    for (const CCondition* condition : conditions) {
        delete condition;
    }
}

void CMember::SetDescription(const char* text) {
    if (text == nullptr) {
        category = "<no category>";
        return;
    }
    const std::string whole(text); // a copy: the text may be this category
    std::string_view rest(whole);
    if (rest.starts_with('\\')) {
        rest.remove_prefix(1);
        categoryMarked = true; // Required: never taken back.
    }
    const std::size_t end = rest.find(';');
    category = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    comment = rest.substr(0, rest.find(';'));
}

void CMember::SetItemCount(int count) {
    items.clear();
    items.resize(static_cast<std::size_t>(std::max(count, 0)));
}

bool CMember::SetItem(int index, const char* text) {
    if (!HasItem(index)) {
        return false;
    }
    items[static_cast<std::size_t>(index)] = std::string(text == nullptr ? "" : text);
    return true;
}

bool CMember::GetItem(int index, std::string& text) const {
    const bool found = HasItem(index);
    text = found ? items[static_cast<std::size_t>(index)] : std::string();
    return found;
}

bool CMember::SetEnumIndex(int index) {
    if (mode != kEnumerated || !HasItem(index)) {
        return false;
    }
    value[0].ChangeTag(MemberType::Int);
    return value[0].SetByValue(std::int32_t{index});
}

bool CMember::GetEnumText(std::string& text) const {
    return GetItem(mode == kEnumerated ? value[0].FirstWord() : -1, text);
}

bool CMember::CopyFrom(const CMember& other) {
    if (this == &other) {
        return true;
    }
    if (IsHeldBy(other, *this)) {
        // The new tags would take the other member away.
        CMember copy;
        bool whole = false;
        {
            const CopyInstancesAsTheyAre asTheyAre;
            whole = copy.CopyFrom(other);
        }
        return CopyFrom(copy) && whole;
    }
    name = other.name;
    category = other.category;
    value[0].ChangeTag(other.value[0].GetType());
    value[1].ChangeTag(other.value[0].GetType());
    typeName = other.typeName;
    categoryMarked = other.categoryMarked;
    comment = other.comment;
    mode = other.mode;
    if (mode == kEnumerated) {
        items = other.items;
        SetEnumIndex(other.value[0].FirstWord());
    }
    flags = other.flags;
    classValue = other.classValue;
    // Required: an enumerated member whose tag isn't 2 is copied as its index alone.
    if (value[0].GetType() != other.value[0].GetType()) {
        return false;
    }
    value[0].Assign(other.value[0]);
    value[1].Assign(other.value[1]);
    return true;
}

void CMember::UpdateVisibility() {
    // Required: a condition that can't be told hides.
    const bool shown = std::ranges::all_of(
        conditions, [](const CCondition* condition) { return condition->Evaluate() == 1; });
    flags = shown ? flags & ~kHidden : flags | kHidden;
}

CCondition* CMember::AddCondition(CMember* controlling, std::uint32_t op, const void* operand,
                                  const void* upper) {
    auto condition = std::make_unique<CCondition>(controlling, op, operand, upper);
    if (condition->member == nullptr) {
        return nullptr;
    }
    RemoveCondition(controlling);
    conditions.push_back(condition.get());
    return condition.release();
}

void CMember::RemoveCondition(const CMember* controlling) {
    if (controlling == nullptr) {
        return;
    }
    const auto found = std::ranges::find(conditions, controlling, &CCondition::member);
    if (found != conditions.end()) {
        delete *found;
        conditions.erase(found);
    }
}
