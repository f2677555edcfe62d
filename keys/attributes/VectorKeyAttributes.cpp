#include "keys/attributes/FillAndApply.h"
#include "keys/attributes/HandleRows.h"

namespace {

constexpr VectorRowNames kPosition{{"Pos X", "Pos Y", "Pos Z"}, "POSITION"};                       // units
constexpr VectorRowNames kRotation{{"Rotation X", "Rotation Y", "Rotation Z"}, "ROTATION ANGLES"}; // degrees
constexpr VectorRowNames kScale{{"X", "Y", "Z"}, "SCALE"};

const VectorRowNames& ValueRows(int kind) {
    return kind == KeyKind::Position ? kPosition : kind == KeyKind::Rotation ? kRotation : kScale;
}

/// Rotation and scale are written only as a whole.
bool CanApply(const AttrRows& rows, int kind) {
    const VectorRowNames& names = ValueRows(kind);
    return kind == KeyKind::Position || rows.FindMember(names.names[0], names.category) != nullptr;
}

} // namespace

void FillVector(AttrRows& rows, CFilmVectorKey& record) {
    AddVector(rows, ValueRows(record.kind), record.value);
    AddHandle(rows, kInGroup, record.inMethod, record.inHandle);
    Vector3 out = record.outHandle;
    if (record.kind == KeyKind::Rotation) {
        out.x = out.y; // Required: "Out X" shows y, and an apply of a "User" handle loses x by it.
    }
    AddHandle(rows, kOutGroup, record.outMethod, out);
}

void ApplyVector(const AttrRows& rows, CFilmVectorKey& record) {
    if (!CanApply(rows, record.kind)) {
        return;
    }
    Vector3 value = record.value;
    if (ReadVector(rows, ValueRows(record.kind), value)) {
        record.SetValue(value.Data());
    }
    ApplyHandle(
        rows, kInGroup, record.inHandle, [&record](int method) { record.SetInMethod(method); },
        [&record](const Vector3& handle) { record.SetInHandle(handle.Data()); });
    ApplyHandle(
        rows, kOutGroup, record.outHandle, [&record](int method) { record.SetOutMethod(method); },
        [&record](const Vector3& handle) { record.SetOutHandle(handle.Data()); });
}
