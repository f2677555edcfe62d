#include "keys/rules/KeyKinds.h"

#include "files/base/Log.h"
#include "resources/resource.h"

#include <array>
#include <cstddef>

namespace {

struct MethodCommands {
    int in;
    int out;
};

// By method. Inverse came to the menus last and lies outside the runs.
constexpr std::array<MethodCommands, 6> kMethods = {{
    {IDC_IN_SMOOTH, IDC_OUT_SMOOTH},
    {IDC_IN_LINEAR, IDC_OUT_LINEAR},
    {IDC_IN_SLOWDOWN, IDC_OUT_SLOWDOWN},
    {IDC_IN_SPEEDUP, IDC_OUT_SPEEDUP},
    {IDC_IN_USER, IDC_OUT_USER},
    {IDC_IN_INVERSE, IDC_OUT_INVERSE},
}};

} // namespace

const char* GetKeyKindName(int kind) {
    if (kind == KeyKind::None) {
        return "No keys";
    }
    const KeyKindInfo* info = FindKeyKind(kind);
    return info != nullptr ? info->rowName : "";
}

int GetIDByMethod(int method, bool in) {
    if (method < 0 || static_cast<std::size_t>(method) >= kMethods.size()) {
        DebugPrint("[CTrackKey::GetIDByMethod] unknown method\n");
        return -1;
    }
    const MethodCommands& row = kMethods[static_cast<std::size_t>(method)];
    return in ? row.in : row.out;
}
