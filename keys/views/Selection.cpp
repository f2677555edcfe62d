#include "keys/views/Selection.h"

namespace {

template <class T, class Gone> void LetGo(T*& held, const Gone* gone) {
    if (held == gone) {
        held = nullptr;
    }
}

} // namespace

CTrackKey*& CurrentKey() {
    static CTrackKey* current = nullptr;
    return current;
}

void Selection::Forget(const CTrackKey* view) {
    std::erase(selectedKeys, view);
    LetGo(CurrentKey(), view);
    LetGo(activeKey, view);
    LetGo(hoverKey, view);
    LetGo(menuKey, view);
}

void Selection::Forget(const CTrackCtrl* row) {
    LetGo(menuRow, row);
    LetGo(adjustRow, row);
}

void Selection::ForgetAll() {
    *this = {};
    CurrentKey() = nullptr;
}
