#include "framework/PickMode.h"

#include "framework/Dialog.h"
#include "framework/Pump.h"
#include "framework/QtBridge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Writes down what it is asked to show.
class ShowingHost final : public IPickModeHost {
public:
    ShowingHost() { SetPickModeHost(this); }
    ~ShowingHost() override { SetPickModeHost(nullptr); }
    void ShowPickMode(const PickMode* mode) override {
        shown.push_back(mode == nullptr
                            ? "-"
                            : (mode->ChosenBy() == PickMode::By::Menu ? "menu " : "click ") + mode->Text());
    }
    bool NeedsEscape() const override { return dragging; }

    std::vector<std::string> shown;
    bool dragging = false;
};

/// A window of a host with a focused edit.
class PickModeTest : public ::testing::Test {
protected:
    PickModeTest() : edit(new QLineEdit(&window)) {
        window.show();
        window.activateWindow();
        edit->setFocus();
    }
    void SetUp() override { ASSERT_TRUE(QTest::qWaitForWindowActive(&window)); }

    void Begin(PickMode& mode, const std::string& text) {
        mode.Begin(text, PickMode::By::Click, [this, text] { givenUp.push_back(text); });
    }
    void Escape() { QTest::keyClick(window.windowHandle(), Qt::Key_Escape); }

    QMainWindow window;
    QLineEdit* edit;
    std::vector<std::string> givenUp;
};

TEST_F(PickModeTest, IsOnFromItsBeginToItsEnd) {
    PickMode mode;
    EXPECT_FALSE(mode.IsOn());
    EXPECT_EQ(PickMode::Present(), nullptr);
    Begin(mode, "Click the door");
    EXPECT_TRUE(mode.IsOn());
    EXPECT_EQ(PickMode::Present(), &mode);
    mode.End();
    EXPECT_FALSE(mode.IsOn());
    EXPECT_EQ(PickMode::Present(), nullptr);
    mode.End();
    EXPECT_THAT(givenUp, IsEmpty()); // an end is no giving up
}

TEST_F(PickModeTest, EndsWithItsObject) {
    auto mode = std::make_unique<PickMode>();
    Begin(*mode, "Click the door");
    mode.reset();
    EXPECT_EQ(PickMode::Present(), nullptr);
    EXPECT_FALSE(PickMode::GiveUp());
}

TEST_F(PickModeTest, TheHostIsShownThePresentOne) {
    PickMode door;
    PickMode key;
    Begin(door, "door");
    ShowingHost host; // a host that comes later
    key.Begin("key", PickMode::By::Menu, {});
    Begin(door, "gate"); // goes on with another text, and is the last one now
    door.End();
    key.End();
    EXPECT_THAT(host.shown, ElementsAre("click door", "menu key", "click gate", "menu key", "-"));
}

TEST_F(PickModeTest, EscapeGivesUpTheOneThatBeganLast) {
    PickMode door;
    PickMode key;
    Begin(door, "door");
    Begin(key, "key");
    Escape();
    EXPECT_THAT(givenUp, ElementsAre("key"));
    EXPECT_EQ(PickMode::Present(), &door);
    Escape();
    EXPECT_THAT(givenUp, ElementsAre("key", "door"));
    Escape();
    EXPECT_EQ(givenUp.size(), 2u);
}

TEST_F(PickModeTest, OtherKeysGoWhereTheyBelong) {
    PickMode mode;
    Begin(mode, "door");
    QTest::keyClick(window.windowHandle(), Qt::Key_A);
    EXPECT_EQ(edit->text(), "a");
    EXPECT_TRUE(mode.IsOn());
}

TEST_F(PickModeTest, EscapeInAPumpGivesUpToo) {
    PickMode mode;
    Begin(mode, "door");
    QTimer::singleShot(0, [this] { Escape(); });
    bool onWhenTaken = false;
    for (MSG message; PeekMessage(&message, nullptr, 0, 0, PM_REMOVE);) {
        onWhenTaken = onWhenTaken || (message.wParam == VK_ESCAPE && mode.IsOn());
        DispatchMessage(&message);
    }
    EXPECT_TRUE(onWhenTaken); // it waits until the loop hands it out
    EXPECT_THAT(givenUp, ElementsAre("door"));
}

TEST_F(PickModeTest, ADragOfTheHostEndsFirst) {
    PickMode mode;
    Begin(mode, "door");
    ShowingHost host;
    host.dragging = true;
    Escape();
    EXPECT_TRUE(mode.IsOn());
    host.dragging = false;
    Escape();
    EXPECT_FALSE(mode.IsOn());
}

TEST_F(PickModeTest, AnOpenMenuClosesFirst) {
    PickMode mode;
    Begin(mode, "door");
    QMenu menu(&window);
    menu.addAction("Entry");
    menu.popup(window.mapToGlobal(QPoint(5, 5)));
    QTest::keyClick(menu.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(menu.isVisible());
    EXPECT_TRUE(mode.IsOn());
}

TEST_F(PickModeTest, ADragInAWindowOfTheFrameworkEndsFirst) {
    PickMode mode;
    Begin(mode, "door");
    CWnd dragging;
    dragging.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), WrapWidget(&window), 1);
    dragging.SetCapture();
    Escape();
    EXPECT_TRUE(mode.IsOn());
    ReleaseCapture();
    Escape();
    EXPECT_FALSE(mode.IsOn());
}

TEST_F(PickModeTest, GivingUpMayDeleteTheMode) {
    auto mode = std::make_unique<PickMode>();
    mode->Begin("door", PickMode::By::Click, [&mode] { mode.reset(); });
    EXPECT_TRUE(PickMode::GiveUp());
    EXPECT_EQ(mode, nullptr);
    EXPECT_EQ(PickMode::Present(), nullptr);
}

TEST_F(PickModeTest, GivingUpMayBeginAnother) {
    PickMode door;
    PickMode key;
    door.Begin("door", PickMode::By::Click, [&] { Begin(key, "key"); });
    Escape();
    EXPECT_FALSE(door.IsOn());
    EXPECT_EQ(PickMode::Present(), &key);
}

} // namespace
