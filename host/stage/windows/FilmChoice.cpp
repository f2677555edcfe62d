#include "host/stage/windows/FilmChoice.h"

#include "framework/Constants.h"
#include "framework/QtBridge.h"
#include "framework/Wnd.h"

#include <QListWidget>

namespace stage {

namespace {

/// The line's number, -1 for none or several.
int LineOf(const QListWidget& list, const QString& text) {
    const auto found = list.findItems(text, Qt::MatchExactly);
    return found.size() == 1 ? list.row(found.front()) : -1;
}

void Choose(CWnd& window, int line) {
    CWnd* parent = window.GetParent();
    window.SendMessage(LB_SETCURSEL, static_cast<WPARAM>(line));
    if (parent != nullptr) {
        const auto id = static_cast<WPARAM>(window.GetDlgCtrlID());
        parent->SendMessage(WM_COMMAND, id | static_cast<WPARAM>(LBN_SELCHANGE) << 16,
                            reinterpret_cast<LPARAM>(window.GetSafeHwnd()));
    }
}

} // namespace

bool ChooseLine(CWnd& form, const QString& text) {
    for (int i = 0; CWnd* child = form.GetWindowChild(i); ++i) {
        const auto* list = qobject_cast<QListWidget*>(NativeWidget(*child));
        const int line = list != nullptr ? LineOf(*list, text) : -1;
        if (line >= 0) {
            const bool isOther = list->currentRow() != line || !list->item(line)->isSelected();
            if (isOther) {
                Choose(*child, line);
            }
            return isOther;
        }
        if (ChooseLine(*child, text)) {
            return true;
        }
    }
    return false;
}

} // namespace stage
