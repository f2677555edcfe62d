#pragma once

#include "framework/Types.h"

#include <QEvent>

class QInputEvent;
class QKeyEvent;

namespace input {

// The MK_ flags of an event.
UINT MouseFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
// The virtual key; 0 for one without a number.
int VirtualKey(const QKeyEvent& event);
// Repeat count 1, and bit 30 set for an automatic repeat.
LPARAM KeyData(const QKeyEvent& event);
// WM_KEYDOWN and its kin.
UINT KeyMessage(const QKeyEvent& event);
// WM_LBUTTONDOWN and its kin; 0 for a button without messages.
UINT ButtonMessage(QEvent::Type type, Qt::MouseButton button);
// Follows presses and releases so that single keys can be asked for.
void Track(const QKeyEvent& event);
// Releases that happen while another program has the keyboard are never told.
void ForgetKeys();
bool IsDown(int key, Qt::KeyboardModifiers modifiers, Qt::MouseButtons buttons);

} // namespace input
