#include "keys/attributes/RowAccess.h"

namespace {

constexpr const char* kObjectId = "Object ID";

CMember& Add(AttrRows& rows, const char* name, const char* category, std::uint32_t type, const void* initial,
             AttrBrowse browse = nullptr) {
    return rows.Append(AttrRows::Make(name, type, initial, category, /*flags*/ 0, browse));
}

const CMemberValue* ValueOf(const AttrRows& rows, const char* name, const char* category) {
    const CMember* member = rows.FindMember(name, category);
    return member != nullptr ? &member->value[0] : nullptr;
}

} // namespace

CMember& AddText(AttrRows& rows, const char* name, const char* category, const std::string& text,
                 AttrBrowse browse) {
    return Add(rows, name, category, MemberType::String, text.c_str(), browse);
}

CMember& AddFloat(AttrRows& rows, const char* name, const char* category, float number) {
    return Add(rows, name, category, MemberType::Float, &number);
}

CMember& AddInt(AttrRows& rows, const char* name, const char* category, std::int32_t number) {
    return Add(rows, name, category, MemberType::Int, &number);
}

CMember& AddObjectId(AttrRows& rows, const char* category, std::int32_t id) {
    return Add(rows, kObjectId, category, MemberType::ObjectId, &id);
}

CMember& AddBool(AttrRows& rows, const char* name, const char* category, bool flag) {
    return Add(rows, name, category, MemberType::Bool, &flag);
}

CMember& AddColor(AttrRows& rows, const char* name, const char* category, const Vector3& color,
                  AttrBrowse browse) {
    return Add(rows, name, category, MemberType::Vector, color.Data(), browse);
}

void AddVector(AttrRows& rows, const VectorRowNames& names, const Vector3& vector) {
    for (int i = 0; i < 3; ++i) {
        AddFloat(rows, names.names[i], names.category, vector.Data()[i]);
    }
}

bool ReadText(const AttrRows& rows, const char* name, const char* category, std::string& text) {
    const CMemberValue* value = ValueOf(rows, name, category);
    if (value != nullptr) {
        const char* held = value->AsString();
        text = held != nullptr ? held : "";
    }
    return value != nullptr;
}

bool ReadFloat(const AttrRows& rows, const char* name, const char* category, float& number) {
    const CMemberValue* value = ValueOf(rows, name, category);
    number = value != nullptr ? value->AsFloat() : number;
    return value != nullptr;
}

bool ReadInt(const AttrRows& rows, const char* name, const char* category, std::int32_t& number) {
    const CMemberValue* value = ValueOf(rows, name, category);
    number = value != nullptr ? static_cast<std::int32_t>(value->AsInteger()) : number;
    return value != nullptr;
}

bool ReadObjectId(const AttrRows& rows, const char* category, std::int32_t& id) {
    return ReadInt(rows, kObjectId, category, id);
}

bool ReadBool(const AttrRows& rows, const char* name, const char* category, std::uint8_t& flag) {
    const CMemberValue* value = ValueOf(rows, name, category);
    flag = value != nullptr ? static_cast<std::uint8_t>(value->AsBool()) : flag;
    return value != nullptr;
}

bool ReadColor(const AttrRows& rows, const char* name, const char* category, Vector3& color) {
    const CMemberValue* value = ValueOf(rows, name, category);
    color = value != nullptr ? value->AsVector() : color;
    return value != nullptr;
}

bool ReadVector(const AttrRows& rows, const VectorRowNames& names, Vector3& vector) {
    bool found = false;
    for (int i = 0; i < 3; ++i) {
        found = ReadFloat(rows, names.names[i], names.category, vector.Data()[i]) || found;
    }
    return found;
}
