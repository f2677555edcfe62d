// The attributes window under the user's hands, and what its browsers answer.
#include "framework/QtBridge.h"
#include "keys/views/TrackKey.h"
#include "resources/resource.h"
#include "tests/editing/Texts.h"
#include "tests/editing/World.h"
#include "tests/support/MouseScript.h"

#include <algorithm>
#include <iterator>
#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

namespace editing {

namespace {

constexpr int kInRow = 10; ///< pixels from a row's left and top

void SendKey(QWidget* target, int key, const QString& text = QString()) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QSpontaneKeyEvent::setSpontaneous(&press); // as the user's
    QCoreApplication::sendEvent(target->window()->windowHandle(), &press);
}

} // namespace

CFilmKeyAttributesDlg* World::Attributes() const {
    return dynamic_cast<CFilmKeyAttributesDlg*>(plugin.keyAttributesDlg.get());
}

/// Null while the user sees none.
CFilmKeyAttributesDlg* World::OpenAttributes() const {
    CFilmKeyAttributesDlg* dialog = Attributes();
    return dialog != nullptr && dialog->IsVisible() ? dialog : nullptr;
}

/// As a press into the window does it: the keyboard leaves the other one.
void World::Activate(const CWnd* top) {
    QWidget* widget = top != nullptr && top->GetSafeHwnd() != nullptr ? NativeWidget(*top) : nullptr;
    if (widget != nullptr && widget->isVisible() && QApplication::activeWindow() != widget) {
        QApplication::setActiveWindow(widget);
    }
}

void World::ActivateTimeline() {
    if (Control() != nullptr) {
        Activate(window);
    }
}

void World::AttributesOpen(const Step& step) {
    DoubleClick(step);
    if (CFilmKeyAttributesDlg* dialog = OpenAttributes()) {
        Activate(dialog);
    }
}

/// Opens the window first where there is nothing in it.
void World::AttributesRow(const Step& step) {
    CFilmKeyAttributesDlg* dialog = OpenAttributes();
    if (dialog == nullptr || dialog->record == nullptr) {
        AttributesOpen(step);
        dialog = OpenAttributes();
    }
    if (dialog == nullptr || dialog->list.GetCount() == 0) {
        return;
    }
    Activate(dialog); // the keyboard leaves the timeline, which asks nobody
    const int row = step.numbers[0] % std::max(dialog->list.GetCount(), 1);
    CRect rect;
    CRect client;
    dialog->list.GetClientRect(&client);
    if (dialog->list.GetItemRect(row, &rect) == LB_ERR || rect.top < 0 || rect.bottom > client.bottom) {
        dialog->list.SetTopIndex(row);
        dialog->list.GetItemRect(row, &rect);
    }
    // Sometimes below the last one, sometimes where an editor lies.
    const int y = step.numbers[1] % 12 == 0 ? client.bottom - 2 : static_cast<int>(rect.top) + kInRow;
    const int x = step.numbers[2] % 6 == 0 ? client.right - kInRow : kInRow;
    MouseScript(dialog->list).Press(x, y);
    dialog = OpenAttributes();
    if (dialog != nullptr) {
        MouseScript(dialog->list).Release(x, y);
    }
}

void World::AttributesType(const Step& step) {
    CFilmKeyAttributesDlg* dialog = OpenAttributes();
    if (dialog == nullptr || dialog->list.activeEditor == nullptr) {
        return;
    }
    Activate(dialog);
    QWidget* focus = QApplication::focusWidget();
    if (OpenAttributes() == nullptr || focus == nullptr || focus->window() != NativeWidget(*dialog)) {
        return;
    }
    ++typed;
    SendKey(focus, Qt::Key_A, QString::fromStdString(TypedText(step.numbers[0])));
    if (step.numbers[1] % 3 == 0) {
        ActivateTimeline(); // away from the editor
    }
}

void World::AttributesWheel(const Step& step) {
    CFilmKeyAttributesDlg* dialog = OpenAttributes();
    if (dialog == nullptr) {
        return;
    }
    static constexpr int deltas[] = {120, -120, 360, -1200, 30, -30};
    CWnd& target = dialog->list.inPlaceEdit.IsWindowVisible() ? static_cast<CWnd&>(dialog->list.inPlaceEdit)
                                                              : static_cast<CWnd&>(dialog->list);
    QWidget* widget = NativeWidget(target);
    const QPointF place = widget->mapTo(widget->window(), widget->rect().center());
    QWheelEvent wheel(place, widget->window()->mapToGlobal(place), QPoint(),
                      QPoint(0, deltas[step.numbers[0] % 6]), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QSpontaneKeyEvent::setSpontaneous(&wheel); // as the user's
    QCoreApplication::sendEvent(widget->window()->windowHandle(), &wheel);
}

void World::AttributesChoice(const Step& step) {
    CFilmKeyAttributesDlg* dialog = OpenAttributes();
    if (dialog != nullptr && dialog->list.inPlaceCombo.IsWindowVisible()) {
        dialog->list.inPlaceCombo.SetCurSel(step.numbers[0] % (dialog->list.inPlaceCombo.GetCount() + 1) - 1);
        if (step.numbers[1] % 2 == 0) {
            ActivateTimeline();
        }
    }
}

void World::AttributesNext(const Step& step) {
    CFilmKeyAttributesDlg* dialog = OpenAttributes();
    if (dialog == nullptr) {
        return;
    }
    const UINT id = step.numbers[0] % 2 == 0 ? IDC_ATTR_NEXT : IDC_ATTR_PREV;
    if (step.numbers[1] % 3 == 0) { // as from a queue, when the button can't be pressed any more
        dialog->SendMessage(WM_COMMAND, MAKEWPARAM(id, BN_CLICKED));
        return;
    }
    MouseScript(*dialog->GetDlgItem(static_cast<int>(id))).Press(5, 5);
    if (OpenAttributes() != nullptr) {
        MouseScript(*OpenAttributes()->GetDlgItem(static_cast<int>(id))).Release(5, 5);
    }
}

/// Enter, Escape, the tab and arrow keys.
void World::AttributesKey(const Step& step) {
    static constexpr int keys[] = {Qt::Key_Return, Qt::Key_Return, Qt::Key_Escape,
                                   Qt::Key_Tab,    Qt::Key_Down,   Qt::Key_Up};
    if (CFilmKeyAttributesDlg* dialog = OpenAttributes()) {
        Activate(dialog);
        if (OpenAttributes() != nullptr) {
            SendKey(NativeWidget(*dialog), keys[step.numbers[0] % 6]);
        }
    }
}

void World::AttributesClose(const Step& /*step*/) {
    if (CFilmKeyAttributesDlg* dialog = OpenAttributes()) {
        dialog->SendMessage(WM_CLOSE);
    }
}

/// Chooses a row with a browser first, where there is one.
void World::AttributesBrowse(const Step& step) {
    CFilmKeyAttributesDlg* dialog = OpenAttributes();
    if (dialog == nullptr) {
        return;
    }
    const int count = dialog->list.GetCount();
    for (int i = 0; i < count && !dialog->list.inPlaceButton.IsWindowVisible(); ++i) {
        const int row = (step.numbers[0] + i) % count;
        if (static_cast<const AttrRow*>(dialog->list.GetItemDataPtr(row))->browse != nullptr) {
            AttributesRow(Step{step.operation, {row, 1, 1}, step.luck});
            dialog = OpenAttributes();
            break;
        }
    }
    if (dialog == nullptr || !dialog->list.inPlaceButton.IsWindowVisible()) {
        return;
    }
    ++browsed;
    MouseScript(dialog->list.inPlaceButton).Press(5, 5);
    dialog = OpenAttributes();
    if (dialog != nullptr) {
        MouseScript(dialog->list.inPlaceButton).Release(5, 5);
    }
}

/// "Link camera to object" of an object's menu, also one that is long gone.
void World::AttributesLink(const Step& step) {
    CFilmKeyAttributesDlg* dialog = Attributes();
    engine::SceneObject* object = ObjectOf(step.numbers[0]);
    if (dialog == nullptr || object == nullptr) {
        return;
    }
    std::string text;
    const bool isOffered = dialog->GetLinkObjectText(object, text);
    if (isOffered || step.numbers[1] % 4 == 0) {
        constexpr std::uint32_t kSetLinkObject = 62;
        CMenu menu;
        menu.CreatePopupMenu();
        plugin.OnObjectMenu(&menu, 0, 0, object);
        tried[kSetLinkObject] += isOffered ? 1 : 0;
        plugin.OnCommand(plugin.pluginId.PluginNumber(), kSetLinkObject);
    }
}

/// Into the window and out of it.
void World::AttributesLeave(const Step& step) {
    if (step.numbers[0] % 2 == 0) {
        ActivateTimeline();
    } else if (CFilmKeyAttributesDlg* dialog = OpenAttributes()) {
        Activate(dialog);
    }
}

/// The same name, none, one that is too long, or a real one.
std::string World::AnswerName(const std::string& present) {
    static const std::string names[] = {"arm",  "hand", "hip",        "Bip01 Hand",
                                        "Lift", "Turn", "fx/fire.fx", "tail"};
    Disturb();
    switch (luck.Below(6)) {
    case 0:
        return present;
    case 1:
        return {};
    case 2:
        return std::string(300, 'n');
    default:
        return names[luck.Below(static_cast<int>(std::size(names)))];
    }
}

} // namespace editing
