#include "framework/Pump.h"

#include "framework/QtBridge.h"
#include "framework/TestHooks.h"

#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QEventLoop>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <vector>

namespace {

// A host's window with a focused edit and a shortcut on the same key.
class PumpTest : public testing::Test {
protected:
    PumpTest()
        : edit(new QLineEdit(&host)), button(new QPushButton("Go", &host)),
          shortcut(QKeySequence(Qt::Key_Space), &host) {
        host.resize(200, 100);
        edit->setGeometry(0, 0, 100, 20);
        button->setGeometry(0, 40, 100, 20);
        QObject::connect(&shortcut, &QShortcut::activated, &host, [this] { ++shortcuts; });
        QObject::connect(button, &QPushButton::clicked, &host, [this] { ++clicks; });
        host.show();
        host.activateWindow();
        edit->setFocus();
    }
    void SetUp() override { ASSERT_TRUE(QTest::qWaitForWindowActive(&host)); }

    // Plays input while the pump looks for messages, as a user would.
    template <class F> static void During(F action) { QTimer::singleShot(0, action); }

    static std::vector<MSG> Pump(bool dispatch, WPARAM swallow = 0) {
        std::vector<MSG> all;
        for (MSG message; PeekMessage(&message, nullptr, 0, 0, PM_REMOVE);) {
            all.push_back(message);
            if (message.message == WM_KEYDOWN && message.wParam == swallow) {
                continue;
            }
            if (dispatch) {
                TranslateMessage(&message);
                DispatchMessage(&message);
            }
        }
        return all;
    }

    QWidget host;
    QLineEdit* edit;
    QPushButton* button;
    QShortcut shortcut;
    int shortcuts = 0;
    int clicks = 0;
};

TEST_F(PumpTest, SwallowedSpaceReachesNeitherEditNorShortcut) {
    During([this] { QTest::keyPress(host.windowHandle(), Qt::Key_Space); });
    const auto seen = Pump(/*dispatch*/ true, VK_SPACE);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].message, 256U);
    EXPECT_EQ(seen[0].wParam, 32U);
    EXPECT_EQ(edit->text(), "");
    EXPECT_EQ(shortcuts, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(edit->text(), "");
}

TEST_F(PumpTest, ShortcutWorksAgainAfterThePump) {
    button->setFocus();
    During([this] { QTest::keyClick(host.windowHandle(), Qt::Key_Space); });
    Pump(/*dispatch*/ false);
    EXPECT_EQ(shortcuts, 0);
    QTest::keyClick(host.windowHandle(), Qt::Key_Space);
    EXPECT_EQ(shortcuts, 1);
}

TEST_F(PumpTest, DispatchedKeysReachTheFocusedEditInOrder) {
    During([this] {
        QTest::keyClick(host.windowHandle(), Qt::Key_A);
        QTest::keyClick(host.windowHandle(), Qt::Key_B);
    });
    const auto seen = Pump(/*dispatch*/ true);
    ASSERT_EQ(seen.size(), 4U);
    EXPECT_EQ(seen[0].wParam, static_cast<WPARAM>('A'));
    EXPECT_EQ(seen[1].message, WM_KEYUP);
    EXPECT_EQ(edit->text(), "ab");
}

TEST_F(PumpTest, DispatchedClickPressesTheButton) {
    During(
        [this] { QTest::mouseClick(host.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 50)); });
    MSG message;
    ASSERT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(clicks, 0) << "nothing happens before the dispatch";
    DispatchMessage(&message);
    Pump(/*dispatch*/ true);
    EXPECT_EQ(clicks, 1);
}

TEST_F(PumpTest, PeekWithoutRemovingLeavesTheMessage) {
    During([this] { QTest::keyPress(host.windowHandle(), Qt::Key_A); });
    MSG message;
    EXPECT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_FALSE(PeekMessage(&message, nullptr, 0, 0, PM_REMOVE));
}

TEST_F(PumpTest, InputLeftInTheQueueReachesTheOrdinaryLoop) {
    During([this] {
        QTest::keyClick(host.windowHandle(), Qt::Key_A);
        QTest::keyClick(host.windowHandle(), Qt::Key_B);
    });
    MSG message;
    ASSERT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_REMOVE));
    DispatchMessage(&message);
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(edit->text(), "ab");
}

TEST_F(PumpTest, MessageIsDispatchedOnlyOnce) {
    During([this] { QTest::keyPress(host.windowHandle(), Qt::Key_A); });
    MSG message;
    ASSERT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_REMOVE));
    DispatchMessage(&message);
    DispatchMessage(&message);
    EXPECT_EQ(edit->text(), "a");
}

TEST_F(PumpTest, NestedLoopTakesItsInputNormally) {
    // Work inside the pump opens a loop of its own, as a menu or a modal dialog does.
    During([this] {
        QEventLoop nested;
        QTimer::singleShot(0, [this, &nested] {
            QTest::keyClick(host.windowHandle(), Qt::Key_X);
            QTest::mouseClick(host.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 50));
            nested.quit();
        });
        nested.exec();
    });
    EXPECT_TRUE(Pump(/*dispatch*/ false).empty());
    EXPECT_EQ(edit->text(), "x");
    EXPECT_EQ(clicks, 1);
}

TEST_F(PumpTest, DispatchMayOpenALoopThatTakesTheRest) {
    QObject::connect(button, &QPushButton::clicked, &host, [this] {
        edit->setFocus();
        QEventLoop nested;
        QTimer::singleShot(20, &nested, &QEventLoop::quit);
        nested.exec();
    });
    During([this] {
        QTest::mouseClick(host.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 50));
        QTest::keyClick(host.windowHandle(), Qt::Key_Y);
    });
    Pump(/*dispatch*/ true);
    EXPECT_EQ(edit->text(), "y");
}

TEST_F(PumpTest, WindowDestroyedBeforeItsInputIsDispatched) {
    auto* other = new QLineEdit;
    other->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(other));
    During([other] { QTest::keyPress(other->windowHandle(), Qt::Key_A); });
    MSG message;
    ASSERT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_REMOVE));
    delete other;
    EXPECT_EQ(DispatchMessage(&message), 0);
}

TEST_F(PumpTest, TimersAndPaintingGoOnWhilePeeking) {
    int ticks = 0;
    During([&ticks] { ++ticks; });
    EXPECT_TRUE(Pump(/*dispatch*/ true).empty());
    EXPECT_EQ(ticks, 1);
}

TEST_F(PumpTest, ClockHookReplacesTheTime) {
    const HookScope scope;
    Hooks().clock = [] { return 0xFFFFFFF0U; };
    EXPECT_EQ(timeGetTime(), 0xFFFFFFF0U);
}

class Listener : public CWnd {
public:
    std::vector<UINT> translated;
    std::vector<UINT> keys;
    bool swallow = false;

    BOOL PreTranslateMessage(MSG* message) override {
        translated.push_back(message->message);
        return swallow;
    }

protected:
    void OnKeyDown(UINT key, UINT repeat, UINT flags) {
        keys.push_back(key);
        CWnd::OnKeyDown(key, repeat, flags);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Listener, CWnd)
ON_WM_KEYDOWN()
END_MESSAGE_MAP()

class PreTranslateTest : public testing::Test {
protected:
    PreTranslateTest() {
        top.Create(nullptr, "", WS_POPUP | WS_CAPTION | WS_VISIBLE, {0, 0, 200, 100}, nullptr, 0);
        inner.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 50, 50}, &top, 1);
    }
    void SetUp() override {
        ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(top)));
        inner.SetFocus();
        top.translated.clear();
        inner.translated.clear();
    }

    Listener top;
    Listener inner;
};

TEST_F(PreTranslateTest, KeysPassTheWindowsAroundTheFocusBeforeTheyArrive) {
    QTest::keyPress(NativeWidget(top)->windowHandle(), Qt::Key_Space);
    EXPECT_EQ(inner.translated, std::vector<UINT>{WM_KEYDOWN});
    EXPECT_EQ(top.translated, std::vector<UINT>{WM_KEYDOWN});
    EXPECT_EQ(inner.keys, std::vector<UINT>{32});
}

TEST_F(PreTranslateTest, SwallowedKeyDoesNotArrive) {
    top.swallow = true;
    QTest::keyPress(NativeWidget(top)->windowHandle(), Qt::Key_Space);
    EXPECT_TRUE(inner.keys.empty());
}

TEST_F(PreTranslateTest, PumpOfTheCallerSkipsPreTranslation) {
    QTimer::singleShot(0, [this] { QTest::keyPress(NativeWidget(top)->windowHandle(), Qt::Key_A); });
    MSG message;
    ASSERT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.hwnd, inner.GetSafeHwnd());
    DispatchMessage(&message);
    EXPECT_TRUE(top.translated.empty());
    EXPECT_EQ(inner.keys, std::vector<UINT>{65});
}

TEST_F(PreTranslateTest, EscapeOutOfACallersLoopEndsADrag) {
    inner.SetCapture();
    QTimer::singleShot(0, [this] { QTest::keyPress(NativeWidget(top)->windowHandle(), Qt::Key_Escape); });
    MSG message;
    ASSERT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_REMOVE));
    DispatchMessage(&message);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_TRUE(inner.keys.empty());
}

TEST_F(PumpTest, OpenListTakesItsKeysOutOfACallersLoop) {
    QComboBox list(&host);
    list.addItems({"a", "b"});
    list.show();
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        list.showPopup();
        During([this, key] {
            QTest::keyClick(host.windowHandle(), Qt::Key_Down);
            QTest::keyClick(host.windowHandle(), key);
        });
        Pump(/*dispatch*/ true);
        EXPECT_FALSE(list.view()->isVisible());
        EXPECT_EQ(list.currentIndex(), key == Qt::Key_Return ? 1 : 0);
    }
}

TEST_F(PreTranslateTest, PostedMessageComesOutOfThePump) {
    top.PostMessage(WM_USER + 3, 1, 2);
    MSG message;
    ASSERT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, WM_USER + 3);
    EXPECT_EQ(message.hwnd, top.GetSafeHwnd());
}

} // namespace
