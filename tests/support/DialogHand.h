#pragma once

#include "framework/Wnd.h"

#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

/// A user's hand on any window that has controls, modal or not, of the framework or the toolkit's own (a box,
/// a file or colour dialog): it finds what can be reached through the windows themselves and works with
/// events of mouse and keyboard. Whatever it does may end the window, so that every call first looks whether
/// the window is still there, and does nothing without it.
class DialogHand {
public:
    explicit DialogHand(const CWnd& dialog);
    /// The dialog of the framework that the widget belongs to, or one of the toolkit.
    explicit DialogHand(QWidget& dialog);

    /// Exists and is shown.
    bool IsOpen() const { return handle != nullptr ? Window() != nullptr : IsShown(); }
    /// Null once the window is gone or hidden, and for a dialog of the toolkit.
    CWnd* Window() const;
    /// Null once the window is gone.
    QWidget* Widget() const { return widget; }
    /// Shown and enabled controls inside, also those inside each other, but for plain texts and frames. Of
    /// this moment: any other call may take them away.
    std::vector<CWnd*> Controls() const;

    // Places are in the control's client coordinates, pixels. A control that isn't shown is left alone.
    void Click(const CWnd& control, CPoint place, Qt::KeyboardModifiers keys = Qt::NoModifier);
    /// In the middle.
    void Click(const CWnd& control);
    void DoubleClick(const CWnd& control, CPoint place);
    /// Pressed at one place and let go at another.
    void Drag(const CWnd& control, CPoint from, CPoint to);
    /// `delta` in eighths of a degree: a notch is 120.
    void Wheel(const CWnd& control, int delta);
    /// Goes to what has the keyboard inside the window.
    void Key(int key, const std::string& text = {}, Qt::KeyboardModifiers keys = Qt::NoModifier);
    /// Clicks into the edit and replaces its text.
    void Type(const CWnd& edit, const std::string& text);

    enum class Ending { Default, Cancel, Enter, Escape, CloseBox };
    static constexpr int kEndings = 5;
    /// Tries one way to end the window: its default button, its button "Cancel" or "Close", a key or the box
    /// in its frame. A box with one button has that for both.
    void End(Ending ending);
    /// Clicks the control with the id.
    void Press(UINT button);

private:
    struct Aim {
        QPointer<QWidget> top;
        QPointF place; ///< in `top`
    };
    Aim AimAt(const CWnd& control, CPoint place) const;
    void Mouse(const Aim& aim, int type, bool held, Qt::KeyboardModifiers keys) const;
    bool IsShown() const { return widget != nullptr && widget->isVisible(); }
    void PressDefault();
    void PressCancel();
    void Click(const QWidget& button);

    HWND handle = nullptr;
    QPointer<QWidget> widget;
};
