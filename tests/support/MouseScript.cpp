#include "tests/support/MouseScript.h"

#include "framework/QtBridge.h"
#include "framework/Wnd.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QTest>
#include <QWidget>
#include <QWindow>

MouseScript& MouseScript::Shift(bool held) {
    shift = held;
    return *this;
}

MouseScript& MouseScript::Press(int x, int y) {
    left = true;
    Send(QEvent::MouseButtonPress, Qt::LeftButton, x, y);
    return *this;
}

MouseScript& MouseScript::RightPress(int x, int y) {
    Send(QEvent::MouseButtonPress, Qt::RightButton, x, y);
    Send(QEvent::MouseButtonRelease, Qt::RightButton, x, y);
    return *this;
}

MouseScript& MouseScript::Move(int x, int y) {
    Send(QEvent::MouseMove, Qt::NoButton, x, y);
    return *this;
}

MouseScript& MouseScript::Release(int x, int y) {
    left = false;
    Send(QEvent::MouseButtonRelease, Qt::LeftButton, x, y);
    return *this;
}

void MouseScript::Send(int type, int button, int x, int y) {
    QWidget* widget = NativeWidget(target);
    QWidget* top = widget->window();
    const QPointF local = widget->mapTo(top, QPoint(x, y));
    Qt::MouseButtons held;
    held.setFlag(Qt::LeftButton, left);
    held.setFlag(Qt::RightButton, type == QEvent::MouseButtonPress && button == Qt::RightButton);
    QMouseEvent event(static_cast<QEvent::Type>(type), local, top->mapToGlobal(local),
                      static_cast<Qt::MouseButton>(button), held, shift ? Qt::ShiftModifier : Qt::NoModifier);
    QCoreApplication::sendEvent(top->windowHandle(), &event);
}

void ShowForMouse(CWnd& top) {
    top.ShowWindow(1);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(NativeWidget(top)));
    QCoreApplication::processEvents();
}
