#include "host/stage/windows/browse/PlayBar.h"
#include "host/stage/windows/browse/ClipClock.h"

#include <gtest/gtest.h>
#include <limits>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <QToolButton>

using stage::ClipClock;
using stage::PlayBar;

TEST(ClipClockTest, GoesRoundAndRound) {
    ClipClock clock;
    clock.Start(2.0f);
    clock.Advance(1.5f);
    EXPECT_FLOAT_EQ(clock.Position(), 1.5f);
    clock.Advance(1.0f);
    EXPECT_FLOAT_EQ(clock.Position(), 0.5f);
    clock.Advance(7.0f);
    EXPECT_FLOAT_EQ(clock.Position(), 1.5f) << "three rounds and a half";
}

TEST(ClipClockTest, StandsStillWithoutALengthAndKeepsToIt) {
    ClipClock clock;
    for (const float length :
         {0.0f, -1.0f, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        clock.Start(length);
        clock.Advance(1.0f);
        EXPECT_EQ(clock.Position(), 0.0f) << length;
        EXPECT_EQ(clock.Duration(), 0.0f) << length;
    }
    clock.Start(2.0f);
    clock.SetPosition(3.0f);
    EXPECT_EQ(clock.Position(), 2.0f);
    clock.SetPosition(-1.0f);
    EXPECT_EQ(clock.Position(), 0.0f);
    clock.Advance(std::numeric_limits<float>::quiet_NaN());
    clock.Advance(-1.0f);
    EXPECT_EQ(clock.Position(), 0.0f);
}

TEST(PlayBarTest, TellsWhereItStandsWhilePlayingAndNotWhileHeld) {
    PlayBar bar(nullptr);
    bar.Start(2.0f);
    QSignalSpy moved(&bar, &PlayBar::Moved);
    bar.Advance(0.5f);
    ASSERT_EQ(moved.count(), 1);
    EXPECT_FLOAT_EQ(moved.front().front().toFloat(), 0.5f);
    EXPECT_EQ(bar.slider->value(), 500);
    bar.SetPlaying(false);
    bar.Advance(0.5f);
    EXPECT_EQ(moved.count(), 1);
    bar.SetPlaying(true);
    bar.slider->setSliderDown(true);
    bar.Advance(0.5f);
    EXPECT_EQ(moved.count(), 1) << "the slider is in the user's hand";
}

TEST(PlayBarTest, TheSliderGoesWhereItIsClicked) {
    PlayBar bar(nullptr);
    bar.resize(400, 30);
    bar.show();
    bar.Start(2.0f);
    bar.SetPlaying(false);
    QSignalSpy moved(&bar, &PlayBar::Moved);
    QTest::mouseClick(bar.slider, Qt::LeftButton, Qt::NoModifier, {bar.slider->width() / 2, 5});
    ASSERT_EQ(moved.count(), 1);
    EXPECT_NEAR(bar.Position(), 1.0f, 0.05f);
    QTest::mouseClick(bar.slider, Qt::LeftButton, Qt::NoModifier, {bar.slider->width() - 1, 5});
    EXPECT_FLOAT_EQ(bar.Position(), 2.0f);
    EXPECT_FALSE(bar.slider->isSliderDown());
}

TEST(PlayBarTest, TheTimerRunsOnlyWhilePlayingInSight) {
    PlayBar bar(nullptr);
    bar.Start(2.0f);
    EXPECT_FALSE(bar.IsTicking()) << "not shown yet";
    bar.show();
    EXPECT_TRUE(bar.IsTicking());
    bar.hide();
    EXPECT_FALSE(bar.IsTicking());
    bar.show();
    EXPECT_TRUE(bar.IsTicking());
    QTest::mouseClick(bar.button, Qt::LeftButton);
    EXPECT_FALSE(bar.IsTicking());
    QTest::mouseClick(bar.button, Qt::LeftButton);
    EXPECT_TRUE(bar.IsTicking());
    bar.Start(0.0f);
    EXPECT_FALSE(bar.IsTicking()) << "nothing to play";
}
