// The texts of values.
#include "keys/properties/MemberFamily.h"
#include "keys/properties/NumberText.h"
#include "plugin/contract/ClassDatabase.h"
#include "plugin/contract/MemberValue.h"

#include <array>
#include <cstring>
#include <string_view>

namespace {

/// So many bytes of the text of a vector or a bool are looked at.
constexpr std::size_t kMaxParsed = 255;
constexpr std::string_view kSeparator = " , ";
constexpr const char* kNull = "null";

std::string VectorText(const float (&vector)[3]) {
    std::string text;
    for (const float component : vector) {
        text.append(text.empty() ? "" : kSeparator).append(FixedText(component, 5, 4));
    }
    return text;
}

} // namespace

void CMemberValue::ToText(std::string& text) const {
    switch (FamilyOf(type)) {
    case MemberFamily::Nothing:
    case MemberFamily::Int64: // Required: its format "%I64" names no conversion, so that nothing comes of it.
        text.clear();
        break;
    case MemberFamily::Char:
        text.assign(data.character == 0 ? 0 : 1, static_cast<char>(data.character));
        break;
    case MemberFamily::Byte:
    case MemberFamily::Int:
    case MemberFamily::Short:
        text = std::to_string(AsInteger());
        break;
    case MemberFamily::Float:
        text = FixedText(data.real, 5, 5);
        break;
    case MemberFamily::Text:
    case MemberFamily::UnfreedText:
        text = data.text == nullptr ? kNull : data.text;
        break;
    case MemberFamily::Vector:
        text = VectorText(data.vector);
        break;
    case MemberFamily::Bool:
        text = data.flag ? "true" : "false";
        break;
    case MemberFamily::Instance:
        text = data.instance == nullptr ? kNull : data.instance->name;
        break;
    case MemberFamily::List:
        text = data.members == nullptr ? kNull : std::to_string(data.members->size()) + " items";
        break;
    }
}

void CMemberValue::Parse(const char* text) {
    if (text == nullptr) {
        return;
    }
    switch (FamilyOf(type)) {
    case MemberFamily::Nothing:
        break;
    case MemberFamily::Char:
        data.character = static_cast<std::int8_t>(*text);
        break;
    case MemberFamily::Byte:
    case MemberFamily::Int:
    case MemberFamily::Short:
        StoreInteger(IntFromText(text));
        break;
    case MemberFamily::Int64:
        data.number64 = Int64FromText(text);
        break;
    case MemberFamily::Float:
        data.real = FloatFromText(text);
        break;
    case MemberFamily::Text:
    case MemberFamily::UnfreedText:
        SetText(text);
        break;
    case MemberFamily::Vector:
        ParseVector(text);
        break;
    case MemberFamily::Bool:
        data.flag = EqualsIgnoringCase(text, "true");
        break;
    case MemberFamily::Instance:
        ParseInstance(text);
        break;
    case MemberFamily::List:
        if (std::strcmp(text, kNull) == 0) {
            Release();
        }
        break;
    }
}

void CMemberValue::ParseVector(const char* text) {
    const std::string whole(text, strnlen(text, kMaxParsed));
    std::size_t start = 0;
    for (float& component : data.vector) {
        const std::size_t end = whole.find(kSeparator, start);
        component = FloatFromText(whole.substr(start, end - start).c_str());
        // Required: without a separator the next component reads the same piece again.
        start = end == std::string::npos ? start : end + kSeparator.size();
    }
}
