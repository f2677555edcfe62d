#include "keys/attributes/HandleRows.h"

#include "plugin/contract/Condition.h"

#include <iterator>

const HandleGroup kInGroup{"In type", {{"In X", "In Y", "In Z"}, "IN CONTROL POINT"}, "In value"};
const HandleGroup kOutGroup{"Out type", {{"Out X", "Out Y", "Out Z"}, "OUT CONTROL POINT"}, "Out value"};

namespace {

/// By method.
constexpr const char* kMethods[] = {"Smooth", "Linear", "Slowdown", "Speedup", "User", "Inverse"};
constexpr int kMethodCount = static_cast<int>(std::size(kMethods));

CMember& AddMethod(AttrRows& rows, const HandleGroup& group, std::int32_t method) {
    auto row = std::make_unique<AttrRow>();
    row->member = std::make_unique<CMember>(group.method, group.vector.category, /*memberFlags*/ 0);
    CMember& member = *row->member;
    member.mode = CMember::kEnumerated;
    member.SetItemCount(kMethodCount);
    for (int i = 0; i < kMethodCount; ++i) {
        member.SetItem(i, kMethods[i]);
    }
    const bool known = method >= 0 && method < kMethodCount;
    member.value[0].ChangeTag(MemberType::Int);
    member.value[0].SetByValue(std::int32_t{known ? method : -1});
    return rows.Append(std::move(row));
}

void ShowWithUser(CMember& row, CMember& method) {
    const std::int32_t user = BezierMethod::User;
    row.AddCondition(&method, CCondition::kEqual, &user, /*upper*/ nullptr);
}

} // namespace

void AddHandle(AttrRows& rows, const HandleGroup& group, std::int32_t method, const Vector3& handle) {
    CMember& methodRow = AddMethod(rows, group, method);
    for (int i = 0; i < 3; ++i) {
        ShowWithUser(AddFloat(rows, group.vector.names[i], group.vector.category, handle.Data()[i]),
                     methodRow);
    }
}

void AddHandle(AttrRows& rows, const HandleGroup& group, std::int32_t method, float handle) {
    CMember& methodRow = AddMethod(rows, group, method);
    ShowWithUser(AddFloat(rows, group.number, group.vector.category, handle), methodRow);
}

std::optional<int> ReadMethod(const AttrRows& rows, const HandleGroup& group) {
    const CMember* row = rows.FindMember(group.method, group.vector.category);
    if (row == nullptr || row->mode != CMember::kEnumerated) {
        return std::nullopt;
    }
    const std::int64_t index = row->value[0].AsInteger();
    // Required: a row without a choice, as for a method that has no name, gives "User".
    return index >= 0 && index < kMethodCount ? static_cast<int>(index) : BezierMethod::User;
}

bool ReadHandle(const AttrRows& rows, const HandleGroup& group, Vector3& handle) {
    return ReadVector(rows, group.vector, handle);
}

bool ReadHandle(const AttrRows& rows, const HandleGroup& group, float& handle) {
    return ReadFloat(rows, group.number, group.vector.category, handle);
}
