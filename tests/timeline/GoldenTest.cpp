#include "tests/support/Golden.h"

#include "framework/Constants.h"
#include "framework/DC.h"
#include "tests/support/DrawRecorder.h"

#include <gtest/gtest.h>
#include <QImage>

namespace {

QImage White(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(Qt::white);
    return picture;
}

} // namespace

TEST(GoldenTest, EqualPicturesHaveNoDifference) {
    QImage diff;
    EXPECT_EQ(CountDifferences(White(6, 4), White(6, 4), &diff), 0);
}

TEST(GoldenTest, DifferentPixelsAreCountedAndPaintedRed) {
    QImage picture = White(6, 4);
    picture.setPixel(2, 1, qRgb(255, 255, 254));
    picture.setPixel(5, 3, qRgb(0, 0, 0));
    QImage diff;
    EXPECT_EQ(CountDifferences(picture, White(6, 4), &diff), 2);
    EXPECT_EQ(diff.pixelColor(2, 1), QColor(Qt::red));
    EXPECT_EQ(diff.pixelColor(5, 3), QColor(Qt::red));
    EXPECT_EQ(diff.pixelColor(0, 0), QColor(Qt::white));
}

TEST(GoldenTest, OtherSizeDiffersEverywhere) {
    QImage diff;
    EXPECT_EQ(CountDifferences(White(6, 4), White(4, 6), &diff), 24);
}

TEST(DrawRecorderTest, LinesTellPenBrushAndPlace) {
    DrawRecorder recorder;
    CDC dc;
    CPen pen(PS_DOT, 2, 0x0000FF);
    CBrush brush(0x00FF00);
    dc.SelectObject(&pen);
    dc.SelectObject(&brush);
    dc.MoveTo(1, 2);
    dc.LineTo(3, 4);
    dc.Rectangle(0, 1, 2, 3);
    dc.SelectStockObject(NULL_BRUSH);
    const CPoint points[] = {{0, 0}, {4, 0}, {0, 4}};
    dc.Polygon(points, 3);
    dc.TextOut(5, 6, "words");
    EXPECT_EQ(recorder.Lines(), (std::vector<std::string>{
                                    "line 1,2 3,4 pen 2/2/0000FF", "rect 0,1,2,3 pen 2/2/0000FF brush 00FF00",
                                    "poly 0,0 4,0 0,4 pen 2/2/0000FF brush none", "text 5,6 'words'"}));
}

TEST(DrawRecorderTest, EndsWithItsScope) {
    { const DrawRecorder recorder; }
    EXPECT_FALSE(Hooks().drawing);
}
