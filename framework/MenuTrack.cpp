#include "framework/Menu.h"
#include "framework/private/Capture.h"
#include "framework/private/NativeWindow.h"
#include "framework/QtBridge.h"
#include "framework/TestHooks.h"

#include <QMenu>

#include <memory>

namespace {

UINT Choose(const CMenu& menu, int x, int y, CWnd* owner) {
    if (Hooks().popupMenu) {
        return Hooks().popupMenu(menu, {x, y});
    }
    if (!QtAlive()) {
        return 0;
    }
    UINT chosen = 0;
    QWidget* parent = owner ? NativeWidget(*owner) : nullptr;
    // The owner may be destroyed while the menu is open, and the menu with it.
    const QPointer<QMenu> popup = BuildQMenu(menu, parent, [&chosen](UINT id) { chosen = id; });
    popup->exec(QPoint(x, y));
    delete popup;
    return chosen;
}

} // namespace

BOOL CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, const void* /*rect*/) {
    if (!data) {
        return FALSE;
    }
    capture::Cancel();
    const HWND handle = owner ? owner->GetSafeHwnd() : nullptr;
    const UINT chosen = Choose(*this, x, y, owner);
    if (flags & TPM_RETURNCMD) {
        return static_cast<BOOL>(chosen);
    }
    CWnd* living = CWnd::FromHandle(handle);
    if (chosen != 0 && living && !(flags & TPM_NONOTIFY)) {
        living->PostMessage(WM_COMMAND, MAKEWPARAM(chosen, 0), 0);
    }
    return TRUE;
}
