#include "framework/Button.h"
#include "framework/Constants.h"
#include "framework/Pump.h"
#include "framework/QtBridge.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QEventLoop>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

constexpr UINT kDo = WM_USER + 1;

/// A window that does what the test says at a message or at a press of its left button.
class DoingWnd : public CWnd {
public:
    std::function<void()> action;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if ((message == kDo || message == WM_LBUTTONDOWN || message == WM_COMMAND) && action) {
            std::exchange(action, nullptr)();
            return 0;
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

/// As a playing film does.
void Pump() {
    for (int i = 0; i < 5; ++i) {
        MSG message;
        while (PeekMessage(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessage(&message);
        }
    }
}

/// Runs inside an event of the ordinary loop.
template <class Action> void InLoop(Action action) {
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        action();
        loop.quit();
    });
    loop.exec();
}

class DyingWindowsTest : public testing::Test {
protected:
    DyingWindowsTest() {
        top.Create(nullptr, "", WS_POPUP | WS_CAPTION | WS_VISIBLE, {0, 0, 200, 100}, nullptr, 0);
        wnd.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 50, 50}, &top, 1);
        widget = NativeWidget(wnd);
    }
    void Press() const {
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &press);
    }
    void ExpectGoneAfterwards() const {
        InLoop([] {});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(widget.isNull());
    }

    CWnd top;
    DoingWnd wnd;
    QPointer<QWidget> widget;
};

TEST_F(DyingWindowsTest, WindowDestroyedByWhoPumpsIsDeletedThere) {
    InLoop([this] {
        wnd.DestroyWindow();
        EXPECT_FALSE(widget.isNull());
        Pump();
        EXPECT_TRUE(widget.isNull());
    });
}

TEST_F(DyingWindowsTest, WindowDestroyedByAPostedMessageIsDeletedInThePump) {
    DoingWnd other;
    other.Create(nullptr, nullptr, WS_CHILD, {0, 0, 5, 5}, &top, 2);
    other.action = [this] { wnd.DestroyWindow(); };
    other.PostMessage(kDo);
    InLoop([this] {
        Pump();
        EXPECT_TRUE(widget.isNull());
    });
}

TEST_F(DyingWindowsTest, WindowThatDestroysItselfAndPumpsLivesUntilItsEventIsOver) {
    wnd.action = [this] {
        wnd.DestroyWindow();
        Pump();
        EXPECT_FALSE(widget.isNull());
    };
    InLoop([this] { Press(); });
    EXPECT_FALSE(wnd.action);
    ExpectGoneAfterwards();
}

TEST_F(DyingWindowsTest, WindowThatDestroysItselfInASentMessageLivesUntilItIsOver) {
    wnd.action = [this] {
        wnd.DestroyWindow();
        Pump();
        EXPECT_FALSE(widget.isNull());
    };
    InLoop([this] {
        wnd.SendMessage(kDo);
        Pump();
        EXPECT_TRUE(widget.isNull());
    });
}

TEST_F(DyingWindowsTest, WindowThatPumpsLivesThoughAnEventInsideDestroysIt) {
    // The inner event's deletion is due at once in the loop of the outer one.
    wnd.action = [this] {
        QTimer::singleShot(0, [this] { wnd.DestroyWindow(); });
        Pump();
        EXPECT_EQ(wnd.GetSafeHwnd(), nullptr);
        EXPECT_FALSE(widget.isNull());
    };
    InLoop([this] { Press(); });
    EXPECT_FALSE(wnd.action);
    ExpectGoneAfterwards();
}

TEST_F(DyingWindowsTest, WindowAroundAButtonLivesUntilItsClickIsOver) {
    CButton button;
    button.Create("+", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, {0, 0, 20, 20}, &wnd, 3);
    const QPointer<QWidget> inner = NativeWidget(button);
    wnd.action = [&] {
        wnd.DestroyWindow();
        Pump();
        EXPECT_FALSE(inner.isNull());
        EXPECT_FALSE(widget.isNull());
    };
    InLoop([&inner] { QTest::mouseClick(inner, Qt::LeftButton); });
    EXPECT_FALSE(wnd.action);
    ExpectGoneAfterwards();
    EXPECT_TRUE(inner.isNull());
}

TEST_F(DyingWindowsTest, WindowOfAnOuterLoopWaitsForIt) {
    // Whoever runs further out may have the window in its hands without an event of it.
    InLoop([this] {
        wnd.DestroyWindow();
        InLoop([this] {
            Pump();
            EXPECT_FALSE(widget.isNull());
        });
        Pump();
        EXPECT_TRUE(widget.isNull());
    });
}

TEST_F(DyingWindowsTest, WhatTheHostDeletesLaterIsNoneOfThePumpsBusiness) {
    const QPointer<QWidget> host = new QWidget;
    InLoop([&host] {
        host->deleteLater();
        Pump();
        EXPECT_FALSE(host.isNull());
    });
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(host.isNull());
}

} // namespace
