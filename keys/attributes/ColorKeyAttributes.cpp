#include "keys/attributes/AttrBrowsers.h"
#include "keys/attributes/FillAndApply.h"
#include "keys/attributes/RowAccess.h"

namespace {

constexpr const char* kCategory = "COLOR";
constexpr const char* kColor = "Color"; // r, g, b in 0 to 1

} // namespace

void FillColor(AttrRows& rows, CFilmVectorKey& record) {
    AddColor(rows, kColor, kCategory, record.value, &BrowseColor);
}

void ApplyColor(const AttrRows& rows, CFilmVectorKey& record) {
    Vector3 color;
    if (ReadColor(rows, kColor, kCategory, color)) {
        record.SetValue(color.Data());
    }
}
