#include "framework/private/PumpQueue.h"

#include "framework/private/DyingWindows.h"
#include "framework/private/Input.h"
#include "framework/private/NativeWindow.h"
#include "framework/private/PickEscape.h"
#include "framework/Pump.h"
#include "processor/UpperHalves.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QThread>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

PumpQueue* instance = nullptr;

QEvent::Type WakeType() {
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

bool IsQueuedInput(QEvent::Type type) {
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
        return true;
    default:
        return false;
    }
}

QWidget* TopLevelOf(const QWindow* window) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->windowHandle() == window) {
            return widget;
        }
    }
    return nullptr;
}

QWidget* TargetOf(const QWindow* window, const QEvent& event) {
    QWidget* top = TopLevelOf(window);
    if (!top) {
        return nullptr;
    }
    if (event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease) {
        QWidget* focus = QApplication::focusWidget();
        return focus && focus->window() == top ? focus : top;
    }
    QWidget* child = top->childAt(static_cast<const QSinglePointEvent&>(event).position().toPoint());
    return child ? child : top;
}

void FillMouse(MSG& message, const QWidget* target, const QEvent& event) {
    const auto& point = static_cast<const QSinglePointEvent&>(event);
    const QPoint screen = point.globalPosition().toPoint();
    message.pt = {screen.x(), screen.y()};
    const UINT flags = input::MouseFlags(point.buttons(), point.modifiers());
    if (event.type() == QEvent::Wheel) {
        const int delta = static_cast<const QWheelEvent&>(event).angleDelta().y();
        // Of a turn to the side there is no message; the event itself goes on.
        message.message = delta != 0 ? WM_MOUSEWHEEL : 0;
        message.wParam = MAKEWPARAM(flags, static_cast<UINT>(delta));
        message.lParam = MAKELPARAM(screen.x(), screen.y());
        return;
    }
    const QPoint local = target ? target->mapFromGlobal(screen) : screen;
    message.message =
        event.type() == QEvent::MouseMove ? WM_MOUSEMOVE : input::ButtonMessage(event.type(), point.button());
    message.wParam = flags;
    message.lParam = MAKELPARAM(local.x(), local.y());
}

MSG MessageOf(const QWindow* window, const QEvent& event) {
    MSG message;
    QWidget* target = TargetOf(window, event);
    NativeWindow* native = NativeWindow::InWindowOf(target);
    message.hwnd = native;
    message.time = timeGetTime();
    if (event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease) {
        const auto& key = static_cast<const QKeyEvent&>(event);
        message.message = input::KeyMessage(key);
        message.wParam = static_cast<WPARAM>(input::VirtualKey(key));
        message.lParam = input::KeyData(key);
    } else {
        FillMouse(message, native ? native->Client() : target, event);
    }
    return message;
}

// Asks the window under the event and those around it. True when one of them swallowed the message.
bool PreTranslate(const QWindow* window, const QEvent& event) {
    // A moving mouse is not worth the walk; menus and drop-down lists have the keyboard to themselves.
    if (event.type() == QEvent::MouseMove || QApplication::activePopupWidget()) {
        return false;
    }
    MSG message = MessageOf(window, event);
    if (message.message == 0) {
        return false;
    }
    for (NativeWindow* native = message.hwnd; native && NativeWindow::Exists(native);) {
        NativeWindow* parent = native->IsTopLevel() ? nullptr : native->Parent();
        if (native->wnd && native->wnd->PreTranslateMessage(&message)) {
            return true;
        }
        native = parent;
    }
    return false;
}

} // namespace

PumpQueue* PumpQueue::Get() {
    if (!instance && QtAlive()) {
        instance = new PumpQueue;
        QCoreApplication::instance()->installEventFilter(instance);
        qAddPostRoutine([] {
            delete instance;
            instance = nullptr;
        });
    }
    return instance;
}

bool PumpQueue::Collecting() const {
    return collectingLevel >= 0 && QThread::currentThread()->loopLevel() == collectingLevel;
}

bool PumpQueue::eventFilter(QObject* receiver, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && Collecting()) {
        // Accepted, so that no shortcut of the host fires.
        event->accept();
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride && receiver->isWindowType()) {
        popupBeforeKey = QApplication::activePopupWidget();
    }
    if (event->type() == QEvent::ApplicationDeactivate) {
        input::ForgetKeys();
    }
    if (event == resent) {
        return pick_mode::TakesEscape(*event);
    }
    if (!receiver->isWindowType() || !IsQueuedInput(event->type())) {
        return false;
    }
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
        input::Track(*static_cast<QKeyEvent*>(event));
    }
    auto* window = static_cast<QWindow*>(receiver);
    if (Collecting()) {
        const bool isRepeatedRelease =
            event->type() == QEvent::KeyRelease && static_cast<QKeyEvent*>(event)->isAutoRepeat();
        if (!isRepeatedRelease) {
            Keep(window, event);
        }
        event->accept();
        return true;
    }
    const bool isTaken = event->type() == QEvent::KeyPress && PopupTookKey();
    if (isTaken || pick_mode::TakesEscape(*event) || PreTranslate(window, *event)) {
        event->accept();
        return true;
    }
    return false;
}

// An open list takes Enter and Escape when it is asked about shortcuts, and is gone when the key itself
// comes.
bool PumpQueue::PopupTookKey() {
    const QPointer<QWidget> popup = std::exchange(popupBeforeKey, nullptr);
    return popup && QApplication::activePopupWidget() != popup;
}

void PumpQueue::Keep(QWindow* window, QEvent* event) {
    Item item{MessageOf(window, *event), std::unique_ptr<QEvent>(event->clone()), window};
    item.message.ticket = ++lastTicket;
    queue.push_back(std::move(item));
}

void PumpQueue::ProcessEvents(bool wait) {
    const int outer = std::exchange(collectingLevel, QThread::currentThread()->loopLevel());
    QCoreApplication::processEvents(wait ? QEventLoop::WaitForMoreEvents : QEventLoop::AllEvents);
    collectingLevel = outer;
    processor::ClearUpperHalves();
}

bool PumpQueue::Peek(MSG* message, bool remove) {
    dying_windows::DeleteUnused();
    if (queue.empty()) {
        ProcessEvents(/*wait*/ false);
    }
    if (queue.empty()) {
        return false;
    }
    if (!remove) {
        *message = queue.front().message;
        return true;
    }
    *message = TakeFront();
    return true;
}

void PumpQueue::Wait(MSG* message) {
    dying_windows::DeleteUnused();
    while (queue.empty()) {
        ProcessEvents(/*wait*/ true);
    }
    *message = TakeFront();
}

MSG PumpQueue::TakeFront() {
    // A caller that never dispatches what it takes must not fill the memory.
    constexpr std::size_t kMostTaken = 64;
    const MSG message = queue.front().message;
    taken.push_back(std::move(queue.front()));
    queue.pop_front();
    if (taken.size() > kMostTaken) {
        taken.pop_front();
    }
    Wake();
    return message;
}

LRESULT PumpQueue::Dispatch(const MSG& message) {
    const auto found = std::find_if(taken.begin(), taken.end(),
                                    [&message](const Item& i) { return i.message.ticket == message.ticket; });
    if (found == taken.end()) {
        return 0;
    }
    const Item item = std::move(*found);
    taken.erase(found);
    if (!item.input) {
        NativeWindow* native = item.message.hwnd;
        return NativeWindow::Exists(native) && native->wnd
                   ? native->wnd->SendMessage(item.message.message, item.message.wParam, item.message.lParam)
                   : 0;
    }
    if (item.window) {
        const QEvent* outer = std::exchange(resent, item.input.get());
        QCoreApplication::sendEvent(item.window, item.input.get());
        resent = outer;
    }
    return 0;
}

void PumpQueue::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Item item;
    item.message.hwnd = window;
    item.message.message = message;
    item.message.wParam = wParam;
    item.message.lParam = lParam;
    item.message.time = timeGetTime();
    item.message.ticket = ++lastTicket;
    queue.push_back(std::move(item));
    Wake();
}

// Lets whatever loop runs next take what waits in the queue.
void PumpQueue::Wake() {
    if (!wakePosted && !queue.empty()) {
        wakePosted = true;
        QCoreApplication::postEvent(this, new QEvent(WakeType()));
    }
}

bool PumpQueue::event(QEvent* event) {
    if (event->type() != WakeType()) {
        return QObject::event(event);
    }
    wakePosted = false;
    if (!Collecting() && !queue.empty()) {
        // One at a time: dispatching may open a loop of its own, which then takes the rest.
        Dispatch(TakeFront());
    }
    return true;
}
