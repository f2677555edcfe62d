#include "keys/attributes/FillAndApply.h"
#include "keys/attributes/HandleRows.h"

namespace {

constexpr float kWidestView = 360.0f; // degrees

struct ScalarRow {
    const char* name;
    const char* category;
};
constexpr ScalarRow kRoll{"Roll", "ROLL"}; // degrees
constexpr ScalarRow kView{"FOV", "FOV"};   // degrees

const ScalarRow& ValueRow(int kind) {
    return kind == KeyKind::FieldOfView ? kView : kRoll;
}

} // namespace

void FillScalar(AttrRows& rows, CFilmScalarKey& record) {
    const ScalarRow& row = ValueRow(record.kind);
    AddFloat(rows, row.name, row.category, record.value);
    AddHandle(rows, kInGroup, record.inMethod, record.inValue);
    AddHandle(rows, kOutGroup, record.outMethod, record.outValue);
}

void ApplyScalar(const AttrRows& rows, CFilmScalarKey& record) {
    const ScalarRow& row = ValueRow(record.kind);
    float value = 0.0f;
    if (ReadFloat(rows, row.name, row.category, value)) {
        // Required: a view has no lower limit, a roll none at all.
        value = record.kind == KeyKind::FieldOfView && value > kWidestView ? kWidestView : value;
        record.SetValue(&value);
    }
    ApplyHandle(
        rows, kInGroup, record.inValue, [&record](int method) { record.SetInMethod(method); },
        [&record](float handle) { record.SetInHandle(&handle); });
    ApplyHandle(
        rows, kOutGroup, record.outValue, [&record](int method) { record.SetOutMethod(method); },
        [&record](float handle) { record.SetOutHandle(&handle); });
}
