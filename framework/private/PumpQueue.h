#pragma once

#include "framework/Wnd.h"

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <deque>
#include <memory>

// The application's event filter and the queue of input and posted messages behind the pump.
class PumpQueue : public QObject {
public:
    // Null once the application is gone; made at first use.
    static PumpQueue* Get();

    bool Peek(MSG* message, bool remove);
    void Wait(MSG* message);
    LRESULT Dispatch(const MSG& message);
    void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    bool eventFilter(QObject* receiver, QEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Item {
        MSG message;
        std::unique_ptr<QEvent> input;
        QPointer<QWindow> window;
    };

    // True while this thread stands directly in a peek, not in a loop nested inside it.
    bool Collecting() const;
    void ProcessEvents(bool wait);
    void Keep(QWindow* window, QEvent* event);
    bool PopupTookKey();
    MSG TakeFront();
    void Wake();

    std::deque<Item> queue;
    // Taken from the queue and not dispatched yet, the newest last.
    std::deque<Item> taken;
    std::uint64_t lastTicket = 0;
    int collectingLevel = -1;
    bool wakePosted = false;
    const QEvent* resent = nullptr;
    // Open when the toolkit asked about shortcuts on the last key.
    QPointer<QWidget> popupBeforeKey;
};
