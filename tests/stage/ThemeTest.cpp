#include "host/stage/windows/Theme.h"
#include "host/stage/windows/Icons.h"
#include "host/stage/windows/ScreenFit.h"
#include "tests/stage/WindowFixture.h"

#include <algorithm>
#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QMenu>
#include <QPalette>
#include <QScreen>
#include <QSettings>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

using stage::ContrastOf;
using stage::ThemeColors;

namespace {

class ThemeContrastTest : public ::testing::TestWithParam<bool> {
protected:
    const ThemeColors& colors = GetParam() ? stage::DarkColors() : stage::LightColors();
};

class ThemeWindowTest : public WindowFixture {};

/// The program in the light or the dark theme.
class ThemePictureTest : public ::testing::TestWithParam<bool> {
protected:
    ThemePictureTest() { Apply(GetParam() ? stage::ThemeChoice::Dark : stage::ThemeChoice::Light); }
    ~ThemePictureTest() override { Apply(stage::ThemeChoice::Light); }
    static void Apply(stage::ThemeChoice choice) {
        stage::ChooseTheme(choice);
        stage::ApplyTheme(*qApp);
    }
    /// The highest contrast that a pixel in a part of the picture has to a ground.
    static double Strongest(const QImage& picture, const QRect& part, QRgb ground) {
        double strongest = 1.0;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                strongest = std::max(strongest, ContrastOf(picture.pixel(x, y) | 0xff000000, ground));
            }
        }
        return strongest;
    }
};

} // namespace

TEST(ContrastTest, IsAsTheGuidelinesDefineIt) {
    EXPECT_NEAR(ContrastOf(0xff000000, 0xffffffff), 21.0, 1e-9);
    EXPECT_NEAR(ContrastOf(0xff123456, 0xff123456), 1.0, 1e-9);
    // Red has 0.2126 of the luminance of white: (1 + 0.05) / (0.2126 + 0.05).
    EXPECT_NEAR(ContrastOf(0xffff0000, 0xffffffff), 1.05 / 0.2626, 1e-9);
    EXPECT_EQ(ContrastOf(0xff777777, 0xffffffff), ContrastOf(0xffffffff, 0xff777777));
}

INSTANTIATE_TEST_SUITE_P(Themes, ThemeContrastTest, ::testing::Bool(),
                         [](const auto& entry) { return entry.param ? "Dark" : "Light"; });

TEST_P(ThemeContrastTest, TextsAreReadableOnAllThatTheyStandOn) {
    constexpr double kText = 4.5; // what the guidelines ask of texts
    for (const QRgb ground : {colors.window, colors.base, colors.alternateBase, colors.button, colors.bar,
                              colors.title, colors.menu, colors.hover, colors.pressed, colors.chosen}) {
        EXPECT_GE(ContrastOf(colors.text, ground), kText) << std::hex << ground;
    }
    for (const QRgb ground : {colors.window, colors.base, colors.bar, colors.title}) {
        EXPECT_GE(ContrastOf(colors.muted, ground), kText) << std::hex << ground;
    }
    EXPECT_GE(ContrastOf(colors.highlightText, colors.highlight), kText);
    EXPECT_GE(ContrastOf(colors.tipText, colors.tip), kText);
    EXPECT_GE(ContrastOf(colors.placeholder, colors.base), kText);
    EXPECT_GE(ContrastOf(colors.link, colors.base), kText);
}

TEST_P(ThemeContrastTest, IconsAndStatesCanBeTold) {
    constexpr double kShape = 3.0; // what they ask of icons and of parts of controls
    for (const QRgb ground : {colors.bar, colors.hover, colors.chosen}) {
        for (const QRgb ink : {colors.icon, colors.accent, colors.film, colors.danger}) {
            EXPECT_GE(ContrastOf(ink, ground), kShape) << std::hex << ink << " on " << ground;
        }
    }
    EXPECT_GE(ContrastOf(colors.icon, colors.title), kShape) << "buttons of docks";
    for (const QRgb ground : {colors.pictureBar, colors.pictureHover}) {
        EXPECT_GE(ContrastOf(stage::LightColors().icon, ground), kShape) << std::hex << ground;
    }
    EXPECT_GE(ContrastOf(colors.disabled, colors.window), kShape);
    EXPECT_GE(ContrastOf(colors.disabled, colors.base), kShape);
    EXPECT_GE(ContrastOf(colors.disabled, colors.menu), kShape);
}

INSTANTIATE_TEST_SUITE_P(Themes, ThemePictureTest, ::testing::Bool(),
                         [](const auto& entry) { return entry.param ? "Dark" : "Light"; });

TEST_P(ThemePictureTest, AnIconCanBeToldInAHighlightedRowOfAMenu) {
    QMenu menu;
    QAction* action = menu.addAction(stage::MakeIcon(stage::IconId::Move), "Move");
    menu.popup(QPoint(50, 50));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
    menu.setActiveAction(action);
    const QImage picture = menu.grab().toImage();
    const QRect row = menu.actionGeometry(action);
    // Inside the border and its round corners; the icon has room before the text's 21 pixels and their edge.
    const QRgb ground = picture.pixel(row.right() - 8, row.center().y());
    EXPECT_NE(ground, stage::PresentColors().menu) << "the row is highlighted";
    const QRect icon(row.left() + 3, row.top() + 3, 19, row.height() - 6);
    EXPECT_GE(Strongest(picture, icon, ground), 3.0);
    const QRect text(row.left() + 24, row.top() + 3, row.width() - 34, row.height() - 6);
    EXPECT_GE(Strongest(picture, text, ground), 4.5);
}

TEST_P(ThemePictureTest, IconsOfAnyColourCanBeToldInAHighlightedRowOfAList) {
    constexpr int kSide = 64;
    QListWidget list;
    list.setIconSize(QSize(kSide, kSide));
    for (const auto id : {stage::IconId::Move, stage::IconId::Delete, stage::IconId::DynamicLight}) {
        auto* row = new QListWidgetItem(stage::MakeIcon(id), QString(), &list);
        list.setCurrentItem(row);
        list.resize(200, 400);
        list.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
        list.setFocus();
        const QImage picture = list.viewport()->grab().toImage();
        const QRect place = list.visualItemRect(row);
        const QRgb ground = picture.pixel(place.right() - 20, place.center().y());
        const QRect icon(place.left() + 8, place.center().y() - kSide / 2 + 4, kSide - 8, kSide - 8);
        EXPECT_GE(Strongest(picture, icon, ground), 3.0) << static_cast<int>(id);
    }
}

TEST(ThemeChoiceTest, FollowsTheDesktopUnlessTheUserChooses) {
    QPalette bright;
    bright.setColor(QPalette::Window, Qt::white);
    bright.setColor(QPalette::WindowText, Qt::black);
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    EXPECT_FALSE(stage::IsDesktopDark(bright, ""));
    EXPECT_TRUE(stage::IsDesktopDark(dark, ""));
    EXPECT_TRUE(stage::IsDesktopDark(bright, "Adwaita:dark"));
    EXPECT_TRUE(stage::IsDesktopDark(bright, "Adwaita-dark"));
    EXPECT_FALSE(stage::IsDesktopDark(bright, "Adwaita"));
    EXPECT_EQ(stage::ChosenTheme(), stage::ThemeChoice::Desktop);
    for (const auto choice :
         {stage::ThemeChoice::Dark, stage::ThemeChoice::Light, stage::ThemeChoice::Desktop}) {
        stage::ChooseTheme(choice);
        EXPECT_EQ(stage::ChosenTheme(), choice);
    }
    QSettings().setValue("looks/theme", "pink"); // of another version
    EXPECT_EQ(stage::ChosenTheme(), stage::ThemeChoice::Desktop);
}

TEST(ScreenFitTest, MovesAndShrinksIntoTheScreen) {
    const QRect screen(0, 0, 1280, 720);
    const QSize frame(4, 40);
    EXPECT_EQ(stage::FitInto({100, 50, 800, 600}, screen, frame), QRect(100, 50, 800, 600));
    EXPECT_EQ(stage::FitInto({100, 50, 1360, 860}, screen, frame), QRect(4, 40, 1276, 680));
    EXPECT_EQ(stage::FitInto({-300, -20, 800, 600}, screen, frame), QRect(0, 0, 800, 600));
    EXPECT_EQ(stage::FitInto({5000, 5000, 800, 600}, screen, frame), QRect(480, 120, 800, 600));
    EXPECT_EQ(stage::FitInto({0, 0, 800, 600}, {1920, 0, 1280, 720}, frame), QRect(1920, 0, 800, 600));
}

TEST_F(ThemeWindowTest, WindowIsNoLargerThanTheScreenThatItOpensOn) {
    window.resize(9000, 7000);
    window.StayOnScreen();
    EXPECT_TRUE(window.screen()->availableGeometry().contains(window.geometry()));
}

TEST_F(ThemeWindowTest, WindowFitsTheSmallestScreen) {
    EXPECT_LE(window.minimumSizeHint().width(), 1276);
    EXPECT_LE(window.minimumSizeHint().height(), 680);
}

TEST_F(ThemeWindowTest, ButtonsOfDocksHaveTheColourOfIconsAtAnySize) {
    int seen = 0;
    for (const auto* close : window.findChildren<QAbstractButton*>("qt_dockwidget_closebutton")) {
        for (const int side : {16, 64}) {
            const QImage picture = close->icon().pixmap(side, side).toImage();
            ASSERT_EQ(picture.width(), side);
            // The middle, where its two strokes cross; mixing in the edges loses a shade.
            const QColor ink = picture.pixelColor(side / 2, side / 2);
            const QColor icon = QColor::fromRgb(stage::PresentColors().icon);
            EXPECT_NEAR(ink.red(), icon.red(), 2);
            EXPECT_NEAR(ink.green(), icon.green(), 2);
            EXPECT_NEAR(ink.blue(), icon.blue(), 2);
            ++seen;
        }
    }
    EXPECT_GE(seen, 4) << "of the lists at both sides";
}

TEST_F(ThemeWindowTest, ToolbarWithoutRoomHasAnArrowThatCanBeHit) {
    auto* bar = window.findChild<QToolBar*>("ToolsBar");
    ASSERT_NE(bar, nullptr);
    auto* more = bar->findChild<QToolButton*>("qt_toolbar_ext_button");
    ASSERT_NE(more, nullptr);
    window.resize(1200, 700);
    Settle();
    EXPECT_FALSE(more->isVisible());
    window.resize(window.minimumSizeHint().width(), 700);
    bar->setFixedWidth(200);
    Settle();
    EXPECT_TRUE(more->isVisible());
    EXPECT_GE(more->width(), 22);
    EXPECT_FALSE(more->icon().isNull());
}
