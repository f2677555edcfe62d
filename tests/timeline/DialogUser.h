#pragma once

#include "framework/Dialog.h"

#include <functional>
#include <QPoint>
#include <Qt>

/// A user's mouse and keys in a modal dialog. Points are in the client coordinates of the window named.
class DialogUser {
public:
    explicit DialogUser(CDialog& worked) : dialog(worked) {}

    /// Opens the dialog; the user works in its own loop once it is active, and it is ended where he doesn't.
    int Run(const std::function<void()>& user);
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Type(const char* text);
    void Click(int id);
    void ClickAt(const CWnd& window, CPoint point, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void DoubleClickAt(const CWnd& window, CPoint point);
    /// A notch of the wheel; negative is down.
    void Wheel(const CWnd& window, CPoint point, int delta);
    static void Settle();
    /// Every control stands inside the dialog, apart from the others, and no text is cut.
    void ExpectTidy(std::size_t controls);

private:
    QPoint InDialog(const CWnd& window, CPoint point) const;

    CDialog& dialog;
};
