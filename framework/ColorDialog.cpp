#include "framework/ColorDialog.h"

#include "framework/private/NativeWindow.h"
#include "framework/private/OwnedDialog.h"
#include "framework/private/Surface.h"
#include "framework/QtBridge.h"
#include "framework/TestHooks.h"

#include <QColorDialog>

IMPLEMENT_DYNAMIC(CColorDialog, CWnd)

CColorDialog::CColorDialog(COLORREF initial, DWORD /*flags*/, CWnd* parentWindow)
    : color(initial & 0xFFFFFF), owner(parentWindow) {
}

int CColorDialog::DoModal() {
    const COLORREF before = color;
    if (Hooks().colorDialog) {
        const int result = Hooks().colorDialog(*this);
        color = result == IDOK ? color : before;
        return result;
    }
    if (!QtAlive()) {
        return IDCANCEL;
    }
    const OwnedDialog<QColorDialog> window(surface::ColorOf(color), owner ? NativeWidget(*owner) : nullptr);
    window->setOption(QColorDialog::DontUseNativeDialog);
    if (window->exec() != QDialog::Accepted || !window.Lives()) {
        return IDCANCEL;
    }
    const QColor chosen = window->currentColor();
    color = RGB(chosen.red(), chosen.green(), chosen.blue());
    return IDOK;
}
