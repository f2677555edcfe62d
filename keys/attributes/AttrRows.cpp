#include "keys/attributes/AttrRows.h"

#include <algorithm>

std::string GetRowText(const CMember& member) {
    std::string text;
    if (member.mode == CMember::kEnumerated) {
        member.GetEnumText(text);
    } else {
        member.value[0].ToText(text);
    }
    return text;
}

std::unique_ptr<AttrRow> AttrRows::Make(const char* name, std::uint32_t type, const void* initial,
                                        const char* description, std::uint32_t flags, AttrBrowse browse) {
    auto row = std::make_unique<AttrRow>();
    row->member = std::make_unique<CMember>(name, type, initial, description, flags);
    row->browse = browse;
    return row;
}

CMember& AttrRows::Append(std::unique_ptr<AttrRow> row) {
    CMember& member = *row->member;
    rows.push_back(row.get());
    static_cast<void>(row.release()); // the list owns it now
    return member;
}

CMember* AttrRows::FindMember(const char* name, const char* category) const {
    if (name == nullptr || category == nullptr) {
        return nullptr;
    }
    const auto found = std::ranges::find_if(rows, [name, category](const AttrRow* row) {
        return row->member->name == name && row->member->category == category;
    });
    return found == rows.end() ? nullptr : (*found)->member.get();
}

AttrRow* AttrRows::FindObjectIdRow() const {
    const auto found = std::ranges::find_if(
        rows, [](const AttrRow* row) { return row->member->value[0].GetType() == MemberType::ObjectId; });
    return found == rows.end() ? nullptr : *found;
}

void AttrRows::DeleteAll() {
    std::list<AttrRow*> leaving;
    leaving.swap(rows);
    for (const AttrRow* row : leaving) {
        delete row;
    }
}
