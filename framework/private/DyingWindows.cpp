#include "framework/private/DyingWindows.h"

#include "framework/private/NativeWindow.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>

#include <algorithm>
#include <utility>
#include <vector>

namespace dying_windows {
namespace {

using Widgets = std::vector<QPointer<QWidget>>;

struct State {
    // Of the events being delivered, the innermost last. Some may be gone: their addresses alone count.
    std::vector<const QObject*> receivers;
    Widgets waiting; // told to delete themselves later
    Widgets held;    // not told yet, since they are in use
};

// Never destroyed, as windows may die after the statics of this library. The thread of the windows alone
// comes here.
State& Now() {
    static auto* state = new State;
    return *state;
}

bool IsInUse(const QObject* object) {
    const auto& receivers = Now().receivers;
    if (std::find(receivers.begin(), receivers.end(), object) != receivers.end()) {
        return true;
    }
    if (object->isWidgetType()) {
        const NativeWindow* native = NativeWindow::Of(static_cast<const QWidget*>(object));
        if (native && messages::IsHandling(native)) {
            return true;
        }
    }
    return std::any_of(object->children().begin(), object->children().end(), IsInUse);
}

void DropGone(Widgets& widgets) {
    std::erase_if(widgets, [](const QPointer<QWidget>& widget) { return widget.isNull(); });
}

} // namespace

Delivery::Delivery(const QObject* receiver)
    : counts(QThread::currentThread() == QCoreApplication::instance()->thread()) {
    if (counts) {
        Now().receivers.push_back(receiver);
    }
}
Delivery::~Delivery() {
    if (counts) {
        Now().receivers.pop_back();
        Release();
    }
}

namespace {

void DeleteLater(QWidget* widget) {
    widget->deleteLater();
    // The ordinary loop deletes without a word to this list.
    constexpr std::size_t kFew = 256;
    static std::size_t most = kFew;
    Widgets& widgets = Now().waiting;
    if (widgets.size() >= most) {
        DropGone(widgets);
        most = std::max(kFew, 2 * widgets.size());
    }
    widgets.push_back(widget);
}

} // namespace

void Add(QWidget* widget) {
    if (IsInUse(widget)) {
        Now().held.push_back(widget);
    } else {
        DeleteLater(widget);
    }
}

void Release() {
    if (Now().held.empty()) {
        return;
    }
    std::erase_if(Now().held, [](const QPointer<QWidget>& widget) {
        const bool over = widget.isNull() || !IsInUse(widget);
        if (over && !widget.isNull()) {
            DeleteLater(widget);
        }
        return over;
    });
}

void DeleteUnused() {
    // What the deletions destroy in turn goes into the list anew.
    Widgets widgets = std::exchange(Now().waiting, {});
    for (const QPointer<QWidget>& widget : widgets) {
        if (!widget.isNull() && !IsInUse(widget)) {
            // By the event that waits for it: one of a handler further out stays where it is.
            QCoreApplication::sendPostedEvents(widget, QEvent::DeferredDelete);
        }
    }
    DropGone(widgets);
    Now().waiting.insert(Now().waiting.end(), widgets.begin(), widgets.end());
}

} // namespace dying_windows
