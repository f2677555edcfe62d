#pragma once

#include "plugin/contract/ClassDatabase.h"

#include <gtest/gtest.h>
#include <string>

/// A value with a tag, and with what its text says.
class TaggedValue : public CMemberValue {
public:
    explicit TaggedValue(std::uint32_t tag, const char* text = nullptr) {
        ChangeTag(tag);
        Parse(text);
    }
};

inline std::string TextOf(const CMemberValue& value) {
    std::string text = "not written";
    value.ToText(text);
    return text;
}

/// A database of the test's own, which values make their instances from as long as it lives.
class OwnDatabase : public IClassDatabase {
public:
    OwnDatabase() { CMemberValue::SetClassDatabase(this); }
    ~OwnDatabase() override {
        CMemberValue::SetClassDatabase(nullptr);
        for (const CClassDefinition* definition : classes) {
            delete definition;
        }
    }
    OwnDatabase(const OwnDatabase&) = delete;
    OwnDatabase& operator=(const OwnDatabase&) = delete;

    CClassDefinition& Add(const char* name) {
        classes.push_back(new CClassDefinition);
        classes.back()->name = name;
        return *classes.back();
    }
};

/// A member with an int32.
class IntMember : public CMember {
public:
    explicit IntMember(const char* memberName, std::int32_t number)
        : CMember(memberName, MemberType::Int, &number, "NUMBERS", 0) {}
};

inline std::int64_t NumberOf(const CMember* member) {
    return member->value[0].AsInteger();
}
