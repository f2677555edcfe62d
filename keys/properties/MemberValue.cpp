#include "plugin/contract/MemberValue.h"
#include "keys/properties/InstanceCopies.h"
#include "keys/properties/MemberFamily.h"
#include "keys/properties/NestedMembers.h"
#include "plugin/contract/ClassDatabase.h"

#include <bit>
#include <cstring>
#include <utility>

namespace {

const IClassDatabase* classDatabase = nullptr;

char* Duplicate(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    return static_cast<char*>(std::memcpy(new char[size], text, size));
}

// Required: the strings of the tags 19, 20 and 21 are never freed. A function of its own that allocates
// itself, so that a leak check can name it.
[[gnu::noinline]] char* DuplicateUnfreed(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    return static_cast<char*>(std::memcpy(new char[size], text, size));
}

/// Deletes all members with the list.
void DestroyList(std::list<CMember*>* members) {
    if (members != nullptr) {
        DestroyMembers(*members);
        delete members;
    }
}

struct ListDeleter {
    void operator()(std::list<CMember*>* members) const { DestroyList(members); }
};
using OwnedList = std::unique_ptr<std::list<CMember*>, ListDeleter>;

OwnedList CopyList(const std::list<CMember*>& source) {
    OwnedList copy(new std::list<CMember*>);
    for (const CMember* member : source) {
        AddCopy(*copy, *member);
    }
    return copy;
}

} // namespace

static_assert(sizeof(CMemberValue) == 32, "virtual table, 16 bytes of payload, tag");

CMemberValue::~CMemberValue() {
    Release();
}

void CMemberValue::Release() {
    switch (FamilyOf(type)) {
    case MemberFamily::Text:
        delete[] data.text;
        break;
    case MemberFamily::Instance:
        delete data.instance;
        break;
    case MemberFamily::List:
        DestroyList(data.members);
        break;
    default:
        break;
    }
    StandAtZero(type);
}

void CMemberValue::StandAtZero(std::uint32_t tag) {
    type = tag;
    switch (FamilyOf(tag)) {
    case MemberFamily::Char:
        data = {.character = 0};
        break;
    case MemberFamily::Byte:
        data = {.byte = 0};
        break;
    case MemberFamily::Float:
        data = {.real = 0.0f};
        break;
    case MemberFamily::Int64:
        data = {.number64 = 0};
        break;
    case MemberFamily::Short:
        data = {.number16 = 0};
        break;
    case MemberFamily::Text:
    case MemberFamily::UnfreedText:
        data = {.text = nullptr};
        break;
    case MemberFamily::Vector:
        data = {.vector = {}};
        break;
    case MemberFamily::Bool:
        data = {.flag = false};
        break;
    case MemberFamily::Instance:
        data = {.instance = nullptr};
        break;
    case MemberFamily::List:
        data = {.members = nullptr};
        break;
    case MemberFamily::Int:
    case MemberFamily::Nothing:
        data = {.number = 0};
        break;
    }
}

void CMemberValue::ChangeTag(std::uint32_t tag) {
    if (tag != type) {
        Release();
        StandAtZero(tag);
    }
}

bool CMemberValue::HoldsClassOf(const CMemberValue& other) const {
    const CClassDefinition* own = AsInstance();
    const CClassDefinition* others = other.AsInstance();
    return own != nullptr && others != nullptr && own->name == others->name;
}

void CMemberValue::Assign(const CMemberValue& other) {
    if (this == &other) {
        return;
    }
    // What is held goes only when the copy stands, since the other value may be a part of it.
    CMemberValue copy;
    if (HoldsClassOf(other)) {
        {
            const CopyInstancesAsTheyAre asTheyAre;
            copy.CopyPayload(other);
        }
        if (copy.data.instance != nullptr) {
            UpdateInstance(*data.instance, *copy.data.instance);
        }
        return;
    }
    if (copy.CopyPayload(other) || type != other.type) {
        std::swap(data, copy.data);
        std::swap(type, copy.type);
    }
}

bool CMemberValue::CopyPayload(const CMemberValue& other) {
    ChangeTag(other.type);
    switch (FamilyOf(type)) {
    case MemberFamily::Text:
    case MemberFamily::UnfreedText:
        SetText(other.data.text);
        return true;
    case MemberFamily::Instance:
        return SetByValue(other.data.instance);
    case MemberFamily::List:
        return SetByValue(other.data.members);
    default:
        data = other.data;
        return true;
    }
}

bool CMemberValue::SetFromPointer(const void* pointer) {
    if (pointer == nullptr) {
        return SetByValue(static_cast<const CClassDefinition*>(nullptr));
    }
    switch (FamilyOf(type)) {
    case MemberFamily::Nothing:
        return false;
    case MemberFamily::Char:
        std::memcpy(&data.character, pointer, sizeof data.character);
        return true;
    case MemberFamily::Byte:
        std::memcpy(&data.byte, pointer, sizeof data.byte);
        return true;
    case MemberFamily::Int:
        std::memcpy(&data.number, pointer, sizeof data.number);
        return true;
    case MemberFamily::Float:
        std::memcpy(&data.real, pointer, sizeof data.real);
        return true;
    case MemberFamily::Int64:
        std::memcpy(&data.number64, pointer, sizeof data.number64);
        return true;
    case MemberFamily::Short:
        std::memcpy(&data.number16, pointer, sizeof data.number16);
        return true;
    case MemberFamily::Vector:
        std::memcpy(data.vector, pointer, sizeof data.vector);
        return true;
    case MemberFamily::Bool:
        data.flag = *static_cast<const std::uint8_t*>(pointer) != 0;
        return true;
    case MemberFamily::Text:
    case MemberFamily::UnfreedText:
        SetText(static_cast<const char*>(pointer));
        return true;
    case MemberFamily::Instance:
        return SetByValue(static_cast<const CClassDefinition*>(pointer));
    case MemberFamily::List:
        return SetByValue(static_cast<const std::list<CMember*>*>(pointer));
    }
    return false;
}

bool CMemberValue::StoreInteger(std::int64_t number) {
    switch (FamilyOf(type)) {
    case MemberFamily::Char:
        data.character = static_cast<std::int8_t>(number);
        return true;
    case MemberFamily::Byte:
        data.byte = static_cast<std::uint8_t>(number);
        return true;
    case MemberFamily::Int:
        data.number = static_cast<std::int32_t>(number);
        return true;
    case MemberFamily::Int64:
        data.number64 = number;
        return true;
    case MemberFamily::Short:
        data.number16 = static_cast<std::int16_t>(number);
        return true;
    case MemberFamily::Float:
        data.real = static_cast<float>(number);
        return true;
    case MemberFamily::Bool:
        data.flag = number != 0;
        return true;
    default:
        return false;
    }
}

bool CMemberValue::SetByValue(std::int32_t number) {
    return StoreInteger(number);
}

bool CMemberValue::SetByValue(std::int64_t number) {
    return StoreInteger(number);
}

bool CMemberValue::SetByValue(float number) {
    if (FamilyOf(type) != MemberFamily::Float) {
        return false;
    }
    data.real = number;
    return true;
}

bool CMemberValue::SetByValue(bool flag) {
    return StoreInteger(flag ? 1 : 0);
}

bool CMemberValue::SetByValue(float x, float y, float z) {
    if (FamilyOf(type) != MemberFamily::Vector) {
        return false;
    }
    data.vector[0] = x;
    data.vector[1] = y;
    data.vector[2] = z;
    return true;
}

bool CMemberValue::SetByValue(const char* text) {
    const MemberFamily family = FamilyOf(type);
    if (family != MemberFamily::Text && family != MemberFamily::UnfreedText) {
        return false;
    }
    SetText(text);
    return true;
}

void CMemberValue::SetText(const char* text) {
    char* copy = nullptr;
    if (text != nullptr) {
        copy = FamilyOf(type) == MemberFamily::UnfreedText ? DuplicateUnfreed(text) : Duplicate(text);
    }
    Release();
    data.text = copy;
}

bool CMemberValue::SetByValue(const CClassDefinition* instance) {
    if (type != MemberType::Instance || (instance != nullptr && IsNestedTooDeep(*instance))) {
        return false;
    }
    std::unique_ptr<CClassDefinition> copy;
    if (instance != nullptr) {
        copy = CopyInstance(classDatabase, *instance);
        if (copy == nullptr) {
            return false;
        }
    }
    SetInstance(std::move(copy));
    return true;
}

void CMemberValue::SetInstance(std::unique_ptr<CClassDefinition> instance) {
    const std::unique_ptr<CClassDefinition> old(std::exchange(data.instance, instance.release()));
}

bool CMemberValue::SetByValue(const std::list<CMember*>* members) {
    if (type != MemberType::MemberList || (members != nullptr && IsNestedTooDeep(*members))) {
        return false;
    }
    OwnedList copy;
    if (members != nullptr) {
        copy = CopyList(*members);
    }
    DestroyList(std::exchange(data.members, copy.release()));
    return true;
}

std::int64_t CMemberValue::AsInteger() const {
    switch (FamilyOf(type)) {
    case MemberFamily::Char:
        return data.character;
    case MemberFamily::Byte:
        return data.byte;
    case MemberFamily::Int:
        return data.number;
    case MemberFamily::Int64:
        return data.number64;
    case MemberFamily::Short:
        return data.number16;
    default:
        return 0;
    }
}

float CMemberValue::AsFloat() const {
    return FamilyOf(type) == MemberFamily::Float ? data.real : 0.0f;
}

Vector3 CMemberValue::AsVector() const {
    if (FamilyOf(type) != MemberFamily::Vector) {
        return {};
    }
    return {data.vector[0], data.vector[1], data.vector[2]};
}

bool CMemberValue::AsBool() const {
    return FamilyOf(type) == MemberFamily::Bool && data.flag;
}

const char* CMemberValue::AsString() const {
    const MemberFamily family = FamilyOf(type);
    return family == MemberFamily::Text || family == MemberFamily::UnfreedText ? data.text : nullptr;
}

CClassDefinition* CMemberValue::AsInstance() const {
    return type == MemberType::Instance ? data.instance : nullptr;
}

const std::list<CMember*>* CMemberValue::AsList() const {
    return type == MemberType::MemberList ? data.members : nullptr;
}

std::int32_t CMemberValue::FirstWord() const {
    switch (FamilyOf(type)) {
    case MemberFamily::Char:
        return static_cast<std::uint8_t>(data.character);
    case MemberFamily::Short:
        return static_cast<std::uint16_t>(data.number16);
    case MemberFamily::Float:
        return std::bit_cast<std::int32_t>(data.real);
    case MemberFamily::Vector:
        return std::bit_cast<std::int32_t>(data.vector[0]);
    case MemberFamily::Bool:
        return data.flag ? 1 : 0;
    case MemberFamily::Text:
    case MemberFamily::UnfreedText:
        return data.text == nullptr ? 0 : -1;
    case MemberFamily::Instance:
        return data.instance == nullptr ? 0 : -1;
    case MemberFamily::List:
        return data.members == nullptr ? 0 : -1;
    default:
        return static_cast<std::int32_t>(AsInteger());
    }
}

void CMemberValue::GiveMembersTo(std::list<CMember*>& members) {
    if (type == MemberType::MemberList && data.members != nullptr) {
        members.splice(members.end(), *data.members);
        delete std::exchange(data.members, nullptr);
    }
    if (type == MemberType::Instance && data.instance != nullptr) {
        members.splice(members.end(), data.instance->members);
        members.splice(members.end(), data.instance->members2);
        members.splice(members.end(), data.instance->members3);
        delete std::exchange(data.instance, nullptr);
    }
}

void CMemberValue::ParseInstance(const char* text) {
    if (std::strcmp(text, "null") == 0) {
        SetInstance(nullptr);
        return;
    }
    if (std::unique_ptr<CClassDefinition> made{CreateInstance(classDatabase, text)}) {
        SetInstance(std::move(made));
    }
}

void CMemberValue::SetClassDatabase(const IClassDatabase* database) {
    classDatabase = database;
}
