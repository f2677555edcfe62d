#include "tests/support/DialogHand.h"

#include "framework/Button.h"
#include "framework/Dialog.h"
#include "framework/QtBridge.h"

#include <algorithm>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

namespace {

CPoint MiddleOf(const CWnd& control) {
    CRect client;
    control.GetClientRect(&client);
    return {(client.left + client.right) / 2, (client.top + client.bottom) / 2};
}

bool IsPlain(const CWnd& control) {
    const QWidget* widget = NativeWidget(control);
    return qobject_cast<const QLabel*>(widget) != nullptr ||
           qobject_cast<const QGroupBox*>(widget) != nullptr;
}

void Collect(const CWnd& parent, std::vector<CWnd*>& found) {
    for (int i = 0; CWnd* child = parent.GetWindowChild(i); ++i) {
        if (NativeWidget(*child) == nullptr || NativeWidget(*child)->isWindow() ||
            !NativeWidget(*child)->isVisible()) {
            continue;
        }
        if (child->IsWindowEnabled() && !IsPlain(*child)) {
            found.push_back(child);
        }
        Collect(*child, found);
    }
}

} // namespace

DialogHand::DialogHand(const CWnd& dialog) : handle(dialog.GetSafeHwnd()), widget(NativeWidget(dialog)) {
}

DialogHand::DialogHand(QWidget& dialog) : widget(&dialog) {
    // A dialog of the toolkit has no window of the framework around its buttons, and must get none.
    if (qobject_cast<const QDialog*>(&dialog) == nullptr) {
        handle = WrapWidget(&dialog)->GetSafeHwnd();
    }
}

/// While the widget lives, so does the handle, which is a part of it.
CWnd* DialogHand::Window() const {
    CWnd* window = handle != nullptr && IsShown() ? CWnd::FromHandle(handle) : nullptr;
    return window != nullptr && window->GetSafeHwnd() != nullptr ? window : nullptr;
}

std::vector<CWnd*> DialogHand::Controls() const {
    std::vector<CWnd*> found;
    if (const CWnd* window = Window()) {
        Collect(*window, found);
    }
    return found;
}

DialogHand::Aim DialogHand::AimAt(const CWnd& control, CPoint place) const {
    QWidget* aimed = NativeWidget(control);
    if (!IsOpen() || aimed == nullptr || !aimed->isVisible()) {
        return {};
    }
    return {aimed->window(), aimed->mapTo(aimed->window(), QPoint(place.x, place.y))};
}

void DialogHand::Mouse(const Aim& aim, int type, bool held, Qt::KeyboardModifiers keys) const {
    if (aim.top == nullptr || !aim.top->isVisible() || aim.top->windowHandle() == nullptr) {
        return;
    }
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(static_cast<QEvent::Type>(type), aim.place, aim.top->mapToGlobal(aim.place),
                      isMove ? Qt::NoButton : Qt::LeftButton, held ? Qt::LeftButton : Qt::NoButton, keys);
    QCoreApplication::sendEvent(aim.top->windowHandle(), &event);
}

void DialogHand::Click(const CWnd& control, CPoint place, Qt::KeyboardModifiers keys) {
    const Aim aim = AimAt(control, place);
    Mouse(aim, QEvent::MouseButtonPress, true, keys);
    Mouse(aim, QEvent::MouseButtonRelease, false, keys);
}

void DialogHand::Click(const CWnd& control) {
    Click(control, MiddleOf(control));
}

void DialogHand::DoubleClick(const CWnd& control, CPoint place) {
    const Aim aim = AimAt(control, place);
    Mouse(aim, QEvent::MouseButtonPress, true, Qt::NoModifier);
    Mouse(aim, QEvent::MouseButtonRelease, false, Qt::NoModifier);
    Mouse(aim, QEvent::MouseButtonDblClick, true, Qt::NoModifier);
    Mouse(aim, QEvent::MouseButtonRelease, false, Qt::NoModifier);
}

void DialogHand::Drag(const CWnd& control, CPoint from, CPoint to) {
    const Aim begin = AimAt(control, from);
    const Aim end = AimAt(control, to);
    Mouse(begin, QEvent::MouseButtonPress, true, Qt::NoModifier);
    Mouse(end, QEvent::MouseMove, true, Qt::NoModifier);
    Mouse(end, QEvent::MouseButtonRelease, false, Qt::NoModifier);
}

void DialogHand::Wheel(const CWnd& control, int delta) {
    const Aim aim = AimAt(control, MiddleOf(control));
    if (aim.top == nullptr || aim.top->windowHandle() == nullptr) {
        return;
    }
    QWheelEvent event(aim.place, aim.top->mapToGlobal(aim.place), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event); // as the user's
    QCoreApplication::sendEvent(aim.top->windowHandle(), &event);
}

void DialogHand::Key(int key, const std::string& text, Qt::KeyboardModifiers keys) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QWindow* native = IsOpen() ? widget->window()->windowHandle() : nullptr;
        if (native == nullptr) {
            return;
        }
        QKeyEvent event(type, key, keys, QString::fromStdString(text));
        QSpontaneKeyEvent::setSpontaneous(&event);
        QCoreApplication::sendEvent(native, &event);
    }
}

void DialogHand::Type(const CWnd& edit, const std::string& text) {
    Click(edit);
    Key(Qt::Key_A, {}, Qt::ControlModifier);
    if (text.empty()) {
        Key(Qt::Key_Delete);
    } else {
        Key(Qt::Key_A, text);
    }
}

void DialogHand::Press(UINT button) {
    const CWnd* window = Window();
    const CWnd* control = window != nullptr ? window->GetDlgItem(static_cast<int>(button)) : nullptr;
    if (control != nullptr) {
        Click(*control);
    }
}

void DialogHand::Click(const QWidget& button) {
    const Aim aim{button.window(), button.mapTo(button.window(), button.rect().center())};
    Mouse(aim, QEvent::MouseButtonPress, true, Qt::NoModifier);
    Mouse(aim, QEvent::MouseButtonRelease, false, Qt::NoModifier);
}

void DialogHand::PressDefault() {
    if (handle != nullptr) {
        const auto* dialog = dynamic_cast<const CDialog*>(Window());
        Press(dialog != nullptr ? dialog->GetDefID() : static_cast<UINT>(IDOK));
        return;
    }
    const QList<QPushButton*> buttons = widget->findChildren<QPushButton*>();
    const auto found = std::ranges::find_if(buttons, &QPushButton::isDefault);
    if (found != buttons.end()) {
        Click(**found);
    }
}

void DialogHand::PressCancel() {
    if (handle != nullptr) {
        Press(IDCANCEL);
        return;
    }
    const auto* box = widget->findChild<QDialogButtonBox*>();
    const QList<QAbstractButton*> buttons = box != nullptr ? box->buttons() : QList<QAbstractButton*>();
    const auto refuses = [box](QAbstractButton* button) {
        const QDialogButtonBox::ButtonRole role = box->buttonRole(button);
        return role == QDialogButtonBox::RejectRole || role == QDialogButtonBox::NoRole;
    };
    const auto found = std::ranges::find_if(buttons, refuses);
    if (found != buttons.end()) {
        Click(**found);
    } else if (buttons.size() == 1) {
        Click(*buttons.front());
    }
}

void DialogHand::End(Ending ending) {
    if (!IsOpen()) {
        return;
    }
    switch (ending) {
    case Ending::Default:
        PressDefault();
        break;
    case Ending::Cancel:
        PressCancel();
        break;
    case Ending::Enter:
        Key(Qt::Key_Return);
        break;
    case Ending::Escape:
        Key(Qt::Key_Escape);
        break;
    default:
        widget->close();
        break;
    }
}
