#include "framework/ToolBar.h"

#include "framework/QtBridge.h"
#include "TestResources.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QHelpEvent>
#include <QIcon>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QToolTip>

#include <memory>
#include <vector>

namespace {

class Owner : public CWnd {
public:
    std::vector<UINT> commands;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        EXPECT_EQ(HIWORD(wParam), 0);
        EXPECT_EQ(lParam, 0);
        commands.push_back(LOWORD(wParam));
        return TRUE;
    }
};

class ToolBarTest : public testing::Test {
protected:
    ToolBarTest() : scope(TestResources()) { bar.LoadToolBar(1757); }

    ResourceScope scope;
    CToolBar bar;
};

TEST_F(ToolBarTest, LoadsButtonsSeparatorsAndImagesInOrder) {
    ASSERT_EQ(bar.GetButtonCount(), 4);
    EXPECT_EQ(bar.GetItemID(0), 36838U);
    EXPECT_EQ(bar.GetItemID(2), 0U);
    UINT id = 0;
    UINT style = 0;
    int image = 0;
    bar.GetButtonInfo(2, id, style, image);
    EXPECT_EQ(style, TBBS_SEPARATOR);
    bar.GetButtonInfo(3, id, style, image);
    EXPECT_EQ(id, 36820U);
    EXPECT_EQ(style, TBBS_BUTTON);
    EXPECT_EQ(image, 2);
    EXPECT_EQ(bar.GetImageSize(), (CSize{16, 16}));
    CToolBar missing;
    EXPECT_FALSE(missing.LoadToolBar(1));
}

TEST_F(ToolBarTest, RewritingAButtonKeepsItsPlace) {
    UINT id = 0;
    UINT style = 0;
    int image = 0;
    bar.GetButtonInfo(1, id, style, image);
    bar.SetButtonInfo(1, 0x1234, style, image);
    EXPECT_EQ(bar.CommandToIndex(0x1234), 1);
    EXPECT_EQ(bar.CommandToIndex(36839), -1);
    EXPECT_TRUE(bar.IsButtonEnabled(0x1234));
    bar.SetButtonInfo(9, 1, 0, 0);
    bar.GetButtonInfo(-1, id, style, image);
    EXPECT_EQ(id, 0U);
}

struct StateRow {
    UINT message;
    UINT bit;
};

class ToolBarStateTest : public ToolBarTest, public testing::WithParamInterface<StateRow> {};

TEST_P(ToolBarStateTest, MessageSetsAndClearsItsBitAlone) {
    const StateRow row = GetParam();
    EXPECT_EQ(bar.SendMessage(row.message, 36820, 1), 1);
    EXPECT_EQ(bar.SendMessage(TB_GETSTATE, 36820), static_cast<LRESULT>(TBSTATE_ENABLED | row.bit));
    EXPECT_EQ(bar.SendMessage(row.message, 36820, 0), 1);
    EXPECT_EQ(bar.SendMessage(TB_GETSTATE, 36820), static_cast<LRESULT>(TBSTATE_ENABLED & ~row.bit));
    EXPECT_EQ(bar.SendMessage(row.message, 999, 1), 0);
    EXPECT_EQ(bar.SendMessage(TB_GETSTATE, 999), -1);
}

INSTANTIATE_TEST_SUITE_P(All, ToolBarStateTest,
                         testing::Values(StateRow{1025, TBSTATE_ENABLED}, StateRow{1026, TBSTATE_CHECKED},
                                         StateRow{1027, TBSTATE_PRESSED},
                                         StateRow{1029, TBSTATE_INDETERMINATE}));

TEST_F(ToolBarTest, DockedBarFollowsTheDataAndReportsPresses) {
    std::vector<UINT> pressed;
    QWidget parent;
    QToolBar* native = CreateNativeToolBar(bar, &parent, [&pressed](UINT id) { pressed.push_back(id); });
    bar.SetWindowText("Films");
    EXPECT_EQ(native->windowTitle(), "Films");
    ASSERT_EQ(native->actions().size(), 4);
    EXPECT_TRUE(native->actions()[2]->isSeparator());
    native->actions()[0]->trigger();
    EXPECT_EQ(pressed, std::vector<UINT>{36838});
    bar.PressButton(36838);
    EXPECT_TRUE(native->actions()[0]->isChecked());
    native->actions()[0]->trigger();
    EXPECT_TRUE(native->actions()[0]->isChecked()) << "only the program releases a pressed button";
    bar.PressButton(36838, FALSE);
    EXPECT_FALSE(native->actions()[0]->isChecked());
    bar.EnableButton(36838, FALSE);
    EXPECT_FALSE(native->actions()[0]->isEnabled());
    bar.SetButtonInfo(0, 77, TBBS_BUTTON, 0);
    native->actions()[0]->trigger();
    EXPECT_EQ(pressed.back(), 77U);
}

TEST_F(ToolBarTest, TipsComeFromTheStringTable) {
    EXPECT_EQ(bar.TipText(36838), "Undo");
    EXPECT_EQ(bar.TipText(36839), "Redo");
    QWidget parent;
    const ResourceScope none(nullptr);
    QToolBar* native = CreateNativeToolBar(bar, &parent, [](UINT) {});
    EXPECT_EQ(native->actions()[3]->toolTip(), "Play movie")
        << "the bar remembers the module it was loaded from";
}

TEST_F(ToolBarTest, BarAndItsDataMayGoInEitherOrder) {
    auto data = std::make_unique<CToolBar>();
    data->LoadToolBar(1757);
    QWidget parent;
    std::vector<UINT> pressed;
    QToolBar* native = CreateNativeToolBar(*data, &parent, [&pressed](UINT id) { pressed.push_back(id); });
    data.reset();
    native->actions()[0]->trigger();
    EXPECT_TRUE(pressed.empty());
    delete CreateNativeToolBar(bar, &parent, [](UINT) {});
    bar.PressButton(36838);
    EXPECT_TRUE(bar.IsButtonPressed(36838));
}

TEST_F(ToolBarTest, IconsAreCutFromTheStripWithTheirTransparency) {
    const QImage second = ToolBarIcon(bar, 1).pixmap(QSize(16, 16)).toImage();
    ASSERT_EQ(second.size(), QSize(16, 16));
    EXPECT_EQ(second.pixelColor(8, 8), QColor(0, 255, 0));
    EXPECT_EQ(second.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(ToolBarIcon(bar, 2).pixmap(QSize(16, 16)).toImage().pixelColor(8, 8), QColor(0, 0, 255));
    EXPECT_TRUE(ToolBarIcon(bar, -1).isNull());
}

class TipOwner : public Owner {
protected:
    BOOL OnToolTipText(UINT id, NMHDR* header, LRESULT* result) {
        if (id == 36838) {
            return FALSE;
        }
        reinterpret_cast<TOOLTIPTEXT*>(header)->lpszText = "from the owner";
        *result = 0;
        return TRUE;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TipOwner, Owner)
ON_NOTIFY_EX_RANGE(TTN_NEEDTEXT, 0, 0xFFFF, &TipOwner::OnToolTipText)
END_MESSAGE_MAP()

TEST_F(ToolBarTest, OwnerMayWordTheTipsOfItsBar) {
    TipOwner owner;
    owner.Create(nullptr, "", WS_POPUP | WS_CAPTION | WS_VISIBLE, {0, 0, 400, 200}, nullptr, 0);
    ASSERT_TRUE(bar.Create(&owner));
    owner.RepositionBars(AFX_IDW_CONTROLBAR_FIRST, AFX_IDW_CONTROLBAR_LAST, 0);
    auto* native = qobject_cast<QToolBar*>(NativeWidget(bar));
    const auto tipOf = [native](int index) {
        QWidget* button = native->widgetForAction(native->actions()[index]);
        QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), button->mapToGlobal(QPoint(2, 2)));
        QCoreApplication::sendEvent(button, &help);
        QString text = QToolTip::text();
        QToolTip::hideText();
        return text;
    };
    EXPECT_EQ(tipOf(1), "from the owner");
    EXPECT_EQ(tipOf(0), "Undo");
    owner.DestroyWindow();
}

TEST_F(ToolBarTest, DenseScreensGetTheBitmapOfTwiceTheSize) {
    // One 1x button of red and its 2x picture of blue, 24 bits a pixel, rows padded to 4 bytes.
    const auto solid = [](int side, int blue, int red) {
        std::vector<std::byte> bitmap;
        const auto put = [&bitmap](std::uint32_t value, int size) {
            for (int i = 0; i < size; ++i) {
                bitmap.push_back(static_cast<std::byte>(value >> (8 * i)));
            }
        };
        for (const std::uint32_t word :
             {40U, static_cast<std::uint32_t>(side), static_cast<std::uint32_t>(side)}) {
            put(word, 4);
        }
        put(1, 2);
        put(24, 2);
        for (int i = 0; i < 6; ++i) {
            put(0, 4);
        }
        for (int i = 0; i < side * side; ++i) {
            put(static_cast<std::uint32_t>(blue | red << 16), 3);
        }
        return bitmap;
    };
    std::vector<std::byte> file;
    const auto record = [&file](UINT type, UINT id, const std::vector<std::byte>& data) {
        const std::uint32_t words[] = {
            static_cast<std::uint32_t>(data.size()), 32, 0xFFFF | type << 16, 0xFFFF | id << 16, 0, 0, 0, 0};
        for (const std::uint32_t word : words) {
            for (int i = 0; i < 4; ++i) {
                file.push_back(static_cast<std::byte>(word >> (8 * i)));
            }
        }
        file.insert(file.end(), data.begin(), data.end());
    };
    record(RT_BITMAP, 5, solid(4, 0, 255));
    record(RT_BITMAP, 10005, solid(8, 255, 0));
    const ResourceModule module(file);
    const ResourceScope dense(&module);
    CToolBar icons;
    icons.SetSizes({12, 12}, {4, 4});
    ASSERT_TRUE(icons.LoadBitmap(5));
    const QIcon icon = ToolBarIcon(icons, 0);
    EXPECT_EQ(icon.pixmap(QSize(4, 4), 1.0).toImage().pixelColor(1, 1), QColor(255, 0, 0));
    const QImage large = icon.pixmap(QSize(4, 4), 2.0).toImage();
    EXPECT_EQ(large.size(), QSize(8, 8));
    EXPECT_EQ(large.pixelColor(1, 1), QColor(0, 0, 255));
}

TEST_F(ToolBarTest, OwnWindowSendsCommandsToItsParentAndTakesTheTopStrip) {
    Owner owner;
    owner.Create(nullptr, "", WS_POPUP | WS_CAPTION, {0, 0, 400, 200}, nullptr, 0);
    ASSERT_TRUE(bar.Create(&owner));
    EXPECT_EQ(owner.GetDlgItem(AFX_IDW_TOOLBAR), &bar);
    CRect free;
    owner.RepositionBars(AFX_IDW_CONTROLBAR_FIRST, AFX_IDW_CONTROLBAR_LAST, 0);
    owner.RepositionBars(AFX_IDW_CONTROLBAR_FIRST, AFX_IDW_CONTROLBAR_LAST, 0, CWnd::reposQuery, &free);
    CRect strip;
    bar.GetClientRect(&strip);
    EXPECT_EQ(strip.Width(), 400);
    EXPECT_GT(strip.Height(), 16);
    EXPECT_EQ(free, CRect(0, strip.Height(), 400, 200));
    owner.ShowWindow(SW_SHOW);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(NativeWidget(owner)));
    auto* native = qobject_cast<QToolBar*>(NativeWidget(bar));
    ASSERT_NE(native, nullptr);
    QWidget* button = native->widgetForAction(native->actions()[3]);
    QTest::mouseClick(NativeWidget(owner)->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      button->mapTo(NativeWidget(owner), button->rect().center()));
    EXPECT_EQ(owner.commands, std::vector<UINT>{36820});
    owner.DestroyWindow();
    EXPECT_TRUE(bar.PressButton(36820)) << "the data outlives the window";
}

} // namespace
