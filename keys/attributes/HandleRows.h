#pragma once

#include "keys/attributes/RowAccess.h"
#include "plugin/contract/KeyKind.h"

#include <cstdint>
#include <optional>

/// The rows of one handle of a Bezier key: its method, and the handle itself, which shows while the method is
/// "User".
struct HandleGroup {
    const char* method;
    VectorRowNames vector;
    const char* number; ///< in keys of one float
};

/// Both groups, in the order in which rows are made and records written.
extern const HandleGroup kInGroup;
extern const HandleGroup kOutGroup;

void AddHandle(AttrRows& rows, const HandleGroup& group, std::int32_t method, const Vector3& handle);
void AddHandle(AttrRows& rows, const HandleGroup& group, std::int32_t method, float handle);

/// The method that the group's row says; none where there is no such row or it has no choice of methods.
std::optional<int> ReadMethod(const AttrRows& rows, const HandleGroup& group);

// The handle that the group's rows say, where they exist; false where none does.
bool ReadHandle(const AttrRows& rows, const HandleGroup& group, Vector3& handle);
bool ReadHandle(const AttrRows& rows, const HandleGroup& group, float& handle);

/// Writes a side of a record: the method first, then, where that is "User", the handle. `handle` is the
/// present one; what is stored instead goes through the two functions.
template <class Handle, class StoreMethod, class StoreHandle>
void ApplyHandle(const AttrRows& rows, const HandleGroup& group, Handle handle, StoreMethod storeMethod,
                 StoreHandle storeHandle) {
    const std::optional<int> method = ReadMethod(rows, group);
    if (!method) {
        return;
    }
    storeMethod(*method);
    if (*method == BezierMethod::User && ReadHandle(rows, group, handle)) {
        storeHandle(handle);
    }
}
