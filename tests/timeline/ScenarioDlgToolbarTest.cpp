#include "tests/timeline/ScenarioDlgFixture.h"

#include "framework/QtBridge.h"
#include "resources/resource.h"

#include <QAction>
#include <QHelpEvent>
#include <QIcon>
#include <QImage>
#include <QTest>
#include <QToolBar>
#include <QToolTip>

using ::testing::ElementsAre;

namespace {

/// 0 is a rule.
struct ButtonRow {
    UINT id;
    const char* tip;
};

constexpr ButtonRow kButtons[] = {
    {36838, "Undo"},
    {36839, "Redo"},
    {0, ""},
    {36833, "Move to begin of the movie"},
    {36840, "Frame back"},
    {36851, "Key frame back"},
    {0, ""},
    {36852, "Key frame forward"},
    {0, ""},
    {36841, "Frame forward"},
    {36834, "Move to end of the movie"},
    {0, ""},
    {36820, "Play movie"},
    {36821, "Stop movie"},
    {0, ""},
    {36822, "Validate movie"},
    {36823, "Animate object"},
    {36846, "Create camera frame"},
    {36847, "Convert to virtual object"},
    {36864, "Deselect keys"},
    {36865, "Select key"},
    {0, ""},
    {36824, "Attach movie"},
};

constexpr int kImages = 17;

class ScenarioToolbarTest : public ScenarioDlgTest {
protected:
    QToolBar* Bar() { return qobject_cast<QToolBar*>(NativeWidget(window->toolbar)); }
    QImage Picture(int image, int scale) {
        return ToolBarIcon(window->toolbar, image)
            .pixmap(QSize(16, 16), static_cast<double>(scale))
            .toImage()
            .convertToFormat(QImage::Format_ARGB32);
    }
};

/// Pixels that are drawn at least half.
int Drawn(const QImage& picture) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            count += qAlpha(picture.pixel(x, y)) >= 128 ? 1 : 0;
        }
    }
    return count;
}

} // namespace

TEST_F(ScenarioToolbarTest, ButtonsStandInTheirOrder) {
    ASSERT_EQ(window->toolbar.GetButtonCount(), static_cast<int>(std::size(kButtons)));
    int image = 0;
    for (int i = 0; i < window->toolbar.GetButtonCount(); ++i) {
        UINT id = 0;
        UINT style = 0;
        int itsImage = 0;
        window->toolbar.GetButtonInfo(i, id, style, itsImage);
        EXPECT_EQ(id, kButtons[i].id) << "place " << i;
        EXPECT_EQ(style, id == 0 ? TBBS_SEPARATOR : TBBS_BUTTON);
        if (id != 0) {
            EXPECT_EQ(itsImage, image++);
        }
    }
    EXPECT_EQ(image, kImages);
    EXPECT_EQ(window->toolbar.GetImageSize(), (CSize{16, 16}));
    EXPECT_EQ(window->toolbar.GetBarStyle(), 12288U);
}

TEST_F(ScenarioToolbarTest, TipsTellWhatTheButtonsDo) {
    window->Show();
    for (int i = 0; i < Bar()->actions().size(); ++i) {
        if (kButtons[i].id == 0) {
            EXPECT_TRUE(Bar()->actions()[i]->isSeparator());
            continue;
        }
        QWidget* button = Bar()->widgetForAction(Bar()->actions()[i]);
        QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), button->mapToGlobal(QPoint(2, 2)));
        QCoreApplication::sendEvent(button, &help);
        EXPECT_EQ(QToolTip::text().toStdString(), kButtons[i].tip);
        QToolTip::hideText();
    }
}

TEST_F(ScenarioToolbarTest, EveryButtonIsReachableAtTheLeastWidth) {
    window->SetWindowPos(nullptr, 0, 0, CScenarioDlg::kMinWidth, CScenarioDlg::kMinHeight, SWP_NOMOVE);
    window->Show();
    Settle();
    for (QAction* action : Bar()->actions()) {
        EXPECT_TRUE(Bar()->widgetForAction(action)->isVisible()) << action->toolTip().toStdString();
    }
}

TEST_F(ScenarioToolbarTest, PicturesAreAllThereAndAllDifferent) {
    for (const int scale : {1, 2}) {
        std::vector<QImage> pictures;
        for (int image = 0; image < kImages; ++image) {
            const QImage picture = Picture(image, scale);
            ASSERT_EQ(picture.size(), QSize(16, 16) * scale);
            const int area = picture.width() * picture.height();
            EXPECT_GT(Drawn(picture), area / 10) << "image " << image << " at " << scale;
            EXPECT_LT(Drawn(picture), area * 9 / 10) << "image " << image << " at " << scale;
            for (const QImage& other : pictures) {
                EXPECT_NE(picture, other) << "image " << image << " at " << scale;
            }
            pictures.push_back(picture);
        }
    }
}

TEST_F(ScenarioToolbarTest, PicturesForDenseScreensAreNoEnlargements) {
    for (int image = 0; image < kImages; ++image) {
        EXPECT_NE(Picture(image, 2), Picture(image, 1).scaled(32, 32)) << "image " << image;
    }
}

TEST_F(ScenarioToolbarTest, ClickSendsTheCommand) {
    OpenNewFilm();
    GoTo(1.5f);
    window->Show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(NativeWidget(*window)));
    QWidget* button = Bar()->widgetForAction(Bar()->actions()[4]);
    QTest::mouseClick(Native(), Qt::LeftButton, {},
                      button->mapTo(NativeWidget(*window), button->rect().center()));
    EXPECT_FLOAT_EQ(plugin.currentTime, 1.4666667f);
}

TEST_F(ScenarioToolbarTest, PressedButtonStaysPushedIn) {
    const auto isDown = [this] { return Bar()->actions()[20]->isChecked(); };
    window->PressButton(36865, true);
    EXPECT_TRUE(isDown());
    Bar()->actions()[20]->trigger(); // with no key selected the command changes nothing
    EXPECT_TRUE(isDown());
    window->PressButton(36865, false);
    EXPECT_FALSE(isDown());
    window->PressButton(4711, true);
}

TEST_F(ScenarioToolbarTest, ReadsTheSystemFontAtItsBirth) {
    EXPECT_GT(window->toolbar.fontSize.cx, 0);
    EXPECT_GT(window->toolbar.fontSize.cy, window->toolbar.fontSize.cx);
    EXPECT_EQ(window->toolbar.imageMargin, 13);
}
