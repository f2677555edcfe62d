#include "keys/attributes/FillAndApply.h"
#include "keys/attributes/RowAccess.h"

namespace {

constexpr const char* kCategory = "FLAGS";
constexpr int kBits = 32;

std::uint32_t BitOf(int index) {
    return 1u << (index % kBits);
}

} // namespace

void FillFlags(AttrRows& rows, CFilmFlagsKey& record) {
    for (int i = 0; i < record.GetFlagCount(); ++i) {
        AddBool(rows, record.GetFlagName(i), kCategory, (record.keyFlags & BitOf(i)) != 0);
    }
}

void ApplyFlags(const AttrRows& rows, CFilmFlagsKey& record) {
    for (int i = 0; i < record.GetFlagCount(); ++i) {
        std::uint8_t flag = 0;
        if (!ReadBool(rows, record.GetFlagName(i), kCategory, flag)) {
            return; // Required: the flags behind the first name without a row stay.
        }
        record.keyFlags = flag != 0 ? record.keyFlags | BitOf(i) : record.keyFlags & ~BitOf(i);
    }
}
