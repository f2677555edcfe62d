#pragma once

class QObject;
class QWidget;

// Widgets of windows that have been destroyed. None is deleted while an event or message of it, or of
// anything inside it, is on the stack. The toolkit deletes the others once control is back in the loop that
// runs outside the handler; a loop of the caller's own, which pumps inside one handler for minutes, would
// keep all of them, so the pump deletes them itself.
namespace dying_windows {

// Stands on the stack while an event is delivered to the receiver.
class Delivery {
public:
    explicit Delivery(const QObject* receiver);
    ~Delivery();
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;

private:
    bool counts; // an event of another thread is no window's
};

// Deletes the widget later.
void Add(QWidget* widget);
// An event or message has been handled: what waited for it need not any more.
void Release();
// Deletes the unused ones that handlers of this loop level and further in have destroyed.
void DeleteUnused();

} // namespace dying_windows
