#include "keys/KeyKinds.h"

#include "files/Log.h"
#include "resources/resource.h"

#include <array>
#include <cstddef>

namespace {

struct KindRow {
    const char* name;
    bool bezier;
};

constexpr std::array<KindRow, KeyKind::Count> kKinds = {{
    {"Camera keys", false},
    {"Animation keys", false},
    {"FX sequence keys", false},
    {"FX particle keys", false},
    {"FX trace keys", false},
    {"FX rain keys", false},
    {"FX blind keys", false},
    {"FX flare keys", false},
    {"Speech keys", false},
    {"Sound keys", false},
    {"Position keys", true},
    {"Rotation keys", true},
    {"Scale keys", true},
    {"Java method keys", false},
    {"Color keys", true},
    {"Flags keys", false},
    {"Camera position keys", true},
    {"Target position keys", true},
    {"Roll keys", true},
    {"FOV keys", true},
    {"", false},
    {"No keys", false},
}};

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

template <class Table> bool IsIn(const Table& table, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < table.size();
}

} // namespace

const char* GetKeyKindName(int kind) {
    return IsIn(kKinds, kind) ? kKinds[static_cast<std::size_t>(kind)].name : "";
}

bool IsBezierKind(int kind) {
    return IsIn(kKinds, kind) && kKinds[static_cast<std::size_t>(kind)].bezier;
}

int GetIDByMethod(int method, bool in) {
    if (!IsIn(kMethods, method)) {
        DebugPrint("[CTrackKey::GetIDByMethod] unknown method\n");
        return -1;
    }
    const MethodCommands& row = kMethods[static_cast<std::size_t>(method)];
    return in ? row.in : row.out;
}
