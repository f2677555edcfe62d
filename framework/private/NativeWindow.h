#pragma once

#include "framework/Wnd.h"

#include <QEvent>
#include <QInputEvent>
#include <QPointer>
#include <QRegion>
#include <QWidget>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class CFont;
class IWindowFrame;

// The window behind a CWnd: a widget that turns each of its events into a message. It outlives its CWnd (the
// widget is deleted late) and the CWnd outlives it (the host may delete widgets); each forgets the other.
class NativeWindow {
public:
    explicit NativeWindow(QWidget* w);
    virtual ~NativeWindow();
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;

    static NativeWindow* Of(const QWidget* widget);
    // The nearest one at or above the widget.
    static NativeWindow* Around(const QWidget* widget);
    // The same, but not beyond the widget's own top-level window: a box has its own keys, whoever owns it. A
    // drop-down list belongs to the window that opened it.
    static NativeWindow* InWindowOf(const QWidget* widget);
    static bool Exists(const NativeWindow* native);

    // Where children stand and painting happens; a scrolling control has a viewport.
    virtual QWidget* Client() const { return widget; }
    // The toolkit's own handling of an event.
    virtual bool BaseEvent(QEvent* event) = 0;
    virtual void SetText(const QString& text);
    virtual QString Text() const;
    // Standard messages of the kind of control. Nothing when it is not one of them.
    virtual std::optional<LRESULT> ControlMessage(UINT message, WPARAM wParam, LPARAM lParam);
    // True for a control that is drawn by the toolkit.
    virtual bool IsControl() const { return true; }

    // The place a control really takes of the rect it is given.
    virtual CRect Fit(const CRect& rect) { return rect; }
    virtual void FontChanged() {}

    bool HandleEvent(QEvent* event);
    // Offers a message to the control's own object before anyone else.
    bool Reflect(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    // Sends a message to the CWnd; `event` is what Default() hands to the toolkit.
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam, QEvent* event = nullptr);
    // WM_COMMAND with this control's number and a notification code.
    void NotifyParent(UINT code);
    LRESULT NotifyParent(NMHDR& header);
    // One of the two codes for an event of the focus that is no loan to a menu or drop-down list.
    void NotifyFocus(const QEvent& event, UINT gained, UINT lost);
    static bool IsFocusChange(const QEvent& event) {
        return event.type() == QEvent::FocusIn || event.type() == QEvent::FocusOut;
    }
    // Whether the focus goes to a menu or to the window's own open list, or comes back from there.
    bool LendsKeyboard(const QEvent& focusEvent) const;
    NativeWindow* Parent() const;
    // Those inside this window.
    std::vector<NativeWindow*> Children() const;
    // And with them the windows of their own that go with it.
    std::vector<NativeWindow*> Owned() const;

    void Attach(CWnd* object);
    // Cuts the tie without messages.
    void Detach();
    virtual void DeleteNow();
    virtual void DeleteLater();
    // The messages at the end of a window's life, for it and its children.
    void AnnounceEnd();

    void SetGeometry(const CRect& rect, bool sendSize);
    CRect Geometry() const;
    CSize ClientSize() const;
    void SetShown(bool shown, bool activate);
    bool IsShown() const;
    // Made without a parent's client area around it, whatever the toolkit has around it now.
    bool IsTopLevel() const { return frame || widget->isWindow(); }
    void Raise(bool activate);
    // What the window makes of a rect that the user drags it to; screen coordinates.
    CRect AskSizing(const QRect& before, const QRect& now);
    void SendSizeIfChanged();
    void PlaceWidget(const CRect& r);
    void Invalidate(const QRegion& region, bool erase);

    // Null is the application's font.
    void SetFont(const CFont* newFont);
    // Its own, else that of the nearest window around it, up to the top-level one; null when none has one.
    CFont* FontInForce() const;

    CWnd* wnd = nullptr;
    CFont* font = nullptr; // one of the kept ones
    bool ownsWnd = false;  // made for a dialog's control, until someone subclasses it
    QWidget* widget;
    IWindowFrame* frame = nullptr; // the host's; it outlives this or sets null
    UINT id = 0;
    DWORD windowStyle = 0;
    DWORD exStyle = 0;
    WNDPROC classProc = nullptr;
    QRegion updateRegion;
    bool eraseAsked = false;
    std::map<UINT_PTR, int> timers;

protected:
    // True when the control showed a tip of its own.
    virtual bool HandleToolTip(QEvent* event);

    QString caption;

private:
    bool LeaveToParent(QEvent* event);
    bool HandleMouse(QEvent* event);
    bool HandleWheel(QEvent* event);
    bool HandleKey(QEvent* event);
    bool HandleFocus(QEvent* event);
    bool HandlePaint(QEvent* event);
    bool HandleGeometry(QEvent* event);
    bool HandleTimer(QEvent* event);
    NativeWindow* RepaintedWith() const;
    bool MayAskWhilePainting(const QRegion& region) const;
    void SchedulePending();
    void ApplyPending();

    CSize lastSize{-1, -1};
    QSize lastLaidOut;
    QRect lastGeometry;
    bool ending = false;
    std::optional<CRect> pendingGeometry;
    std::optional<bool> pendingShown;
    bool pendingScheduled = false;
    // What the windows on this one asked for while it painted, and whether it paints for that alone.
    QRegion echoes;
    bool echoing = false;
};

// The message being handled and the event behind it.
struct MessageFrame {
    NativeWindow* native = nullptr;
    CWnd* wnd = nullptr;
    MSG message;
    QEvent* event = nullptr;
    bool baseDone = false;
};

namespace messages {

MessageFrame* Top();
// The innermost frame of this object.
MessageFrame* Of(const CWnd* wnd);
// Called when an object dies inside its own message.
void Forget(const CWnd* wnd);
bool InPaint();
bool IsPainting(const NativeWindow* native);
// Whether a message of the window's is on the stack.
bool IsHandling(const NativeWindow* native);
// The mouse or key event behind the innermost message that has one.
QInputEvent* CurrentInput();
// Sends to a CWnd with or without a window.
LRESULT Send(CWnd& wnd, UINT message, WPARAM wParam, LPARAM lParam, QEvent* event = nullptr);

} // namespace messages

// True while widgets may be made and used.
bool QtAlive();
