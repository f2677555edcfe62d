#pragma once

#include "plugin/contract/Condition.h"
#include "plugin/contract/MemberValue.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <vector>

/// A named property with its value. The members that a member's conditions look at must live as long as it.
class CMember {
public:
    /// Bits of `flags`; the others are free.
    static constexpr std::uint32_t kHidden = 1u << 6; ///< by a condition

    /// Values of `mode`.
    static constexpr std::int32_t kPlain = 0;
    static constexpr std::int32_t kEnumerated = 1; ///< the value is an index into the items

    /// A string without a name.
    CMember();
    /// A string. A null name is "<unnamed>"; the description as for SetDescription.
    CMember(const char* memberName, const char* description, std::uint32_t memberFlags);
    /// A value of this tag, read from memory in the tag's width where `initial` isn't null.
    CMember(const char* memberName, std::uint32_t type, const void* initial, const char* description,
            std::uint32_t memberFlags);
    virtual ~CMember();
    CMember(const CMember&) = delete;
    CMember& operator=(const CMember&) = delete;

    /// "category;comment", with a backslash before it for a marked category. Null takes the category away.
    void SetDescription(const char* text);

    // Items of an enumerated member; an index is good from 0 to the count less one.
    void SetItemCount(int count);
    bool SetItem(int index, const char* text);
    /// False, with an empty text, for a wrong index.
    bool GetItem(int index, std::string& text) const;
    bool SetEnumIndex(int index);
    /// The text of the chosen item; false and empty where none is chosen.
    bool GetEnumText(std::string& text) const;

    /// Everything but the conditions. False where a value could not take the other's tag.
    bool CopyFrom(const CMember& other);
    /// Hides the member by the first condition that isn't true.
    void UpdateVisibility();
    bool IsHidden() const { return (flags & kHidden) != 0; }
    /// Replaces the condition on the same controlling member. Null, and nothing changes, for operands that
    /// CCondition refuses. Owned by this member.
    CCondition* AddCondition(CMember* controlling, std::uint32_t op, const void* operand, const void* upper);
    void RemoveCondition(const CMember* controlling);

    CMemberValue value[2]; ///< the value, and a second one that nothing reads
    std::string name = "<unnamed>";
    std::string category = "<no category>";
    std::string typeName;
    std::uint32_t flags = 0;
    std::vector<std::string> items;
    bool categoryMarked = false; ///< the description began with a backslash
    bool classValue = false;
    std::string comment;
    std::int32_t mode = kPlain;
    std::list<CCondition*> conditions; ///< owned; shown only while all are true

private:
    bool HasItem(int index) const { return index >= 0 && static_cast<std::size_t>(index) < items.size(); }
};
