#include "keys/attributes/FillAndApply.h"
#include "keys/attributes/RowAccess.h"

namespace {

constexpr const char* kCategory = "JAVA METHOD";
constexpr const char* kName = "Name";
constexpr const char* kAfterStop = "Call after stop movie";

} // namespace

void FillJavaMethod(AttrRows& rows, CFilmJavaKey& record) {
    AddText(rows, kName, kCategory, record.methodName);
    AddBool(rows, kAfterStop, kCategory, record.callAfterStop != 0);
}

void ApplyJavaMethod(const AttrRows& rows, CFilmJavaKey& record) {
    ReadText(rows, kName, kCategory, record.methodName);
    ReadBool(rows, kAfterStop, kCategory, record.callAfterStop);
}
