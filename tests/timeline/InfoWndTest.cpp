#include "framework/DC.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/DrawRecorder.h"
#include "tests/support/FakeTimeline.h"
#include "tests/support/Golden.h"
#include "timeline/FilmsInfoWnd.h"
#include "timeline/FilmsKeyDescrWnd.h"

#include <QImage>

#include <limits>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class InfoWndTest : public PluginTest {
protected:
    InfoWndTest() {
        plugin.framesPerSecond = 30;
        main.Create(nullptr, "main", WS_POPUP | WS_CAPTION, {0, 0, 300, 200}, nullptr, 0);
        info.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 150, 30}, &main, 1);
    }

    std::string Time(float time) const {
        std::string text = "untouched";
        FormatTime(time, plugin.framesPerSecond, &text);
        return text;
    }
    /// Where the second line of the info window begins.
    int SecondLine() {
        CFont font;
        font.CreatePointFont(80, "Arial");
        CDC dc;
        dc.SelectObject(&font);
        return dc.GetTextExtent("Film").cy + 2;
    }

    FakeTimeline main{plugin};
    CFilmsInfoWnd info{plugin};
    DrawRecorder recorder;
};

class KeyDescrWndTest : public testing::Test {
protected:
    KeyDescrWndTest() {
        main.Create(nullptr, "main", WS_POPUP | WS_CAPTION, {0, 0, 300, 200}, nullptr, 0);
        popup.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 200, 150}, &main, 1);
    }

    IPluginImpl plugin;
    FakeTimeline main{plugin};
    CFilmsKeyDescrWnd popup;
    DrawRecorder recorder;
};

} // namespace

TEST_F(InfoWndTest, TimeIsHoursMinutesSecondsAndFrames) {
    EXPECT_EQ(Time(0.0f), "0:0:0:0F");
    EXPECT_EQ(Time(0.5f), "0:0:0:15F");
    EXPECT_EQ(Time(59.0f), "0:0:59:0F");
    EXPECT_EQ(Time(60.0f), "0:1:0:0F");
    EXPECT_EQ(Time(3599.5f), "0:59:59:15F");
    EXPECT_EQ(Time(3600.0f), "1:0:0:0F");
    EXPECT_EQ(Time(3661.5f), "1:1:1:15F");
}

// Required: frames are cut, not rounded. 31/30 as a float is a little below, so that its last frame is lost.
TEST_F(InfoWndTest, FramesAreCut) {
    EXPECT_EQ(Time(31.0f / 30.0f), "0:0:1:0F");
    EXPECT_EQ(Time(1.99f), "0:0:1:29F");
}

TEST_F(InfoWndTest, NegativeTimeHasNegativeParts) {
    EXPECT_EQ(Time(-0.5f), "0:0:0:-15F");
    EXPECT_EQ(Time(-1.5f), "0:0:-1:-15F");
    EXPECT_EQ(Time(-3661.5f), "-1:-1:-1:-15F");
}

TEST_F(InfoWndTest, RateOfTheFilmCounts) {
    plugin.framesPerSecond = 8;
    EXPECT_EQ(Time(1.625f), "0:0:1:5F");
    plugin.framesPerSecond = 1;
    EXPECT_EQ(Time(1.625f), "0:0:1:0F");
}

TEST_F(InfoWndTest, RateBelowOneOrNoBufferWritesNothing) {
    FormatTime(1.0f, plugin.framesPerSecond, nullptr);
    plugin.framesPerSecond = 0;
    EXPECT_EQ(Time(1.0f), "untouched");
    plugin.framesPerSecond = -30;
    EXPECT_EQ(Time(1.0f), "untouched");
}

TEST_F(InfoWndTest, TimesBeyondAnIntAreCutShort) {
    EXPECT_EQ(Time(std::numeric_limits<float>::quiet_NaN()), "0:0:0:0F");
    EXPECT_EQ(Time(std::numeric_limits<float>::infinity()).substr(0, 11), "2147483647:");
    EXPECT_EQ(Time(-std::numeric_limits<float>::max()).substr(0, 12), "-2147483648:");
}

TEST_F(InfoWndTest, ShowsTheCursorTheCameraAndTheMouse) {
    IFilm* film = OpenNewFilm();
    AddCut(film, "Front", 1.0f, 5.0f, 0);
    main.currentTime = 2.5f;
    main.mouseTime = 61.0f;
    EXPECT_THAT(recorder.Paint(info),
                ElementsAre("rect 0,0,150,30 pen 0/0/000000 brush FAFAFA",
                            "text 2,2 'Film: 0:0:2:15F(Front)'",
                            "text 2," + std::to_string(SecondLine()) + " 'Mouse: 0:1:1:0F'"));
}

TEST_F(InfoWndTest, NoCameraLeavesTheBracketsEmpty) {
    const std::vector<std::string> lines = recorder.Paint(info);
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_EQ(lines[1], "text 2,2 'Film: 0:0:0:0F()'");
}

TEST_F(InfoWndTest, TextStandsOnAWhiteBox) {
    const QImage picture = PictureOf(info);
    // The ground is 0xFAFAFA, a line's own box white: its first column left of the letters.
    EXPECT_EQ(picture.pixelColor(1, 2).blue(), 0xFA);
    EXPECT_EQ(picture.pixelColor(2, 2).blue(), 0xFF);
}

TEST_F(InfoWndTest, WithoutAMainControlNothingIsDrawn) {
    CWnd plain;
    plain.Create(nullptr, "", WS_POPUP | WS_CAPTION, {0, 0, 300, 100}, nullptr, 0);
    CFilmsInfoWnd alone(plugin);
    alone.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 100, 30}, &plain, 1);
    EXPECT_THAT(recorder.Paint(alone), IsEmpty());
}

TEST_F(InfoWndTest, PictureOfTheFrame) {
    ExpectGolden(PictureOf(info), "tests/timeline", "info", {{2, 2, 148, 28}});
}

TEST_F(KeyDescrWndTest, ShowsItsTextBrokenIntoLines) {
    popup.text = "Key of camera\nTime: 1.000";
    EXPECT_THAT(recorder.Paint(popup),
                ElementsAre("rect 0,0,200,150 pen 0/0/000000 brush C8FFFF",
                            "text 2,2,198,148 'Key of camera\nTime: 1.000' format 16"));
}

TEST_F(KeyDescrWndTest, TextBeyondTheFrameIsCutOff) {
    for (int i = 0; i < 50; ++i) {
        popup.text += "A line of a long description\n";
    }
    const QImage picture = PictureOf(popup);
    for (int x = 1; x < 199; ++x) {
        EXPECT_EQ(picture.pixelColor(x, 148), QColor(0xFF, 0xFF, 0xC8)) << x;
    }
}

TEST_F(KeyDescrWndTest, TextStandsOnTheYellowGround) {
    popup.text = "ll";
    const QImage picture = PictureOf(popup);
    for (int y = 2; y < 20; ++y) {
        EXPECT_NE(picture.pixelColor(2, y), QColor(Qt::white)) << y;
    }
}

TEST_F(KeyDescrWndTest, SmallPopupIsHarmless) {
    popup.text = "text";
    popup.MoveWindow(0, 0, 3, 3);
    EXPECT_THAT(recorder.Paint(popup), SizeIs(2));
}

TEST_F(KeyDescrWndTest, PictureOfTheFrame) {
    popup.text = "Text";
    ExpectGolden(PictureOf(popup), "tests/timeline", "popup", {{2, 2, 60, 24}});
}
