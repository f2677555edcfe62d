#include "framework/ListBox.h"
#include "framework/QtBridge.h"

#include <gtest/gtest.h>
#include <QTest>
#include <QWheelEvent>

#include <string>
#include <utility>

namespace {

// Writes down the wheel messages, and what PreTranslateMessage is asked about.
class WheelProbe : public CWnd {
public:
    std::string log;
    int asked = 0;

    std::string Log() { return std::exchange(log, {}); }

    BOOL PreTranslateMessage(MSG* message) override {
        asked += message->message == WM_MOUSEWHEEL ? 1 : 0;
        return CWnd::PreTranslateMessage(message);
    }

protected:
    BOOL OnMouseWheel(UINT /*flags*/, short delta, CPoint /*screenPoint*/) {
        log += std::to_string(delta) + " ";
        return TRUE;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(WheelProbe, CWnd)
ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

class WheelTest : public testing::Test {
protected:
    WheelTest() {
        top.Create(nullptr, "top", WS_POPUP | WS_CAPTION, {100, 100, 300, 250}, nullptr, 0);
        left.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 100, 100}, &top, 1);
        right.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {100, 0, 200, 100}, &top, 2);
        top.ShowWindow(SW_SHOW);
        EXPECT_TRUE(QTest::qWaitForWindowActive(NativeWidget(top)));
        Turn(Over(left), QPoint(0, 120)); // whatever the test before has turned
        left.Log();
        top.asked = 0;
    }

    static QPointF Over(const CWnd& child) {
        const QRect place = NativeWidget(child)->geometry();
        return QRectF(place).center();
    }
    void Turn(QPointF at, QPoint angle, Qt::ScrollPhase phase = Qt::NoScrollPhase) {
        QWheelEvent wheel(at, NativeWidget(top)->mapToGlobal(at), QPoint(), angle, Qt::NoButton,
                          Qt::NoModifier, phase, false);
        QCoreApplication::sendEvent(NativeWidget(top)->windowHandle(), &wheel);
    }
    void Turn(const CWnd& over, int delta) { Turn(Over(over), QPoint(0, delta)); }

    WheelProbe top;
    WheelProbe left;
    WheelProbe right;
};

TEST_F(WheelTest, PiecesAreGatheredToNotches) {
    for (const int piece : {50, 50, 19}) {
        Turn(left, piece);
    }
    EXPECT_EQ(left.Log(), "");
    Turn(left, 1);
    EXPECT_EQ(left.Log(), "120 ");
    Turn(left, 100);
    Turn(left, 100);
    EXPECT_EQ(left.Log(), "120 ") << "80 are left";
    Turn(left, 40);
    EXPECT_EQ(left.Log(), "120 ");
    Turn(left, -119);
    EXPECT_EQ(left.Log(), "");
    Turn(left, -1);
    EXPECT_EQ(left.Log(), "-120 ");
}

TEST_F(WheelTest, LongTurnIsOneMessageOfWholeNotches) {
    Turn(left, 120);
    Turn(left, -360);
    EXPECT_EQ(left.Log(), "120 -360 ");
    Turn(left, 250);
    EXPECT_EQ(left.Log(), "240 ");
    Turn(left, 110);
    EXPECT_EQ(left.Log(), "120 ") << "10 and 110";
}

TEST_F(WheelTest, ChangeOfDirectionDropsWhatWasGathered) {
    Turn(left, 100);
    Turn(left, -60);
    Turn(left, -59);
    EXPECT_EQ(left.Log(), "");
    Turn(left, -1);
    EXPECT_EQ(left.Log(), "-120 ");
}

TEST_F(WheelTest, AnotherWindowBeginsAnew) {
    Turn(left, 100);
    Turn(right, 100);
    Turn(left, 100);
    EXPECT_EQ(left.Log() + right.Log(), "");
    Turn(left, 20);
    EXPECT_EQ(left.Log(), "120 ");
}

TEST_F(WheelTest, NewGestureBeginsAnew) {
    Turn(Over(left), QPoint(0, 100), Qt::ScrollUpdate);
    Turn(Over(left), QPoint(0, 60), Qt::ScrollBegin);
    EXPECT_EQ(left.Log(), "");
    Turn(Over(left), QPoint(0, 60), Qt::ScrollUpdate);
    EXPECT_EQ(left.Log(), "120 ");
    Turn(Over(left), QPoint(0, 0), Qt::ScrollEnd);
}

TEST_F(WheelTest, TurnToTheSideIsNoMessage) {
    Turn(Over(left), QPoint(120, 0));
    Turn(Over(left), QPoint(-120, 0));
    EXPECT_EQ(left.Log() + top.Log(), "");
    EXPECT_EQ(top.asked, 0);
    Turn(Over(left), QPoint(120, 120));
    EXPECT_EQ(left.Log(), "120 ");
    EXPECT_EQ(top.asked, 1);
}

TEST_F(WheelTest, ListScrollsByGatheredNotchesAsByWholeOnes) {
    CListBox list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE, {0, 100, 100, 150}, &top, 3));
    for (int i = 0; i < 100; ++i) {
        list.AddString("row");
    }
    Turn(list, -120);
    const int step = list.GetTopIndex();
    ASSERT_GT(step, 0);
    for (int i = 0; i < 4; ++i) {
        Turn(list, -30);
    }
    EXPECT_EQ(list.GetTopIndex(), 2 * step);
}

} // namespace
