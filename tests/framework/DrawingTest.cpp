#include "framework/DC.h"

#include "framework/Constants.h"
#include "framework/TestHooks.h"
#include "tests/support/Paths.h"

#include <gtest/gtest.h>
#include <QImage>

#include <fstream>
#include <sstream>
#include <vector>

namespace {

constexpr int kSide = 200;

// A white memory surface of 200 by 200 pixels.
struct Canvas {
    Canvas() {
        dc.CreateCompatibleDC(nullptr);
        bitmap.CreateCompatibleBitmap(nullptr, kSide, kSide);
        dc.SelectObject(&bitmap);
        dc.FillSolidRect({0, 0, kSide, kSide}, 0xFFFFFF);
    }

    // How many pixels of the column or row are not white.
    int Ink(const CRect& area) const {
        int count = 0;
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) {
                count += dc.GetPixel(x, y) != 0xFFFFFF ? 1 : 0;
            }
        }
        return count;
    }

    CBitmap bitmap;
    CDC dc;
};

struct Script {
    Canvas canvas;
    CPen pen;
    CBrush brush;

    void Run(const std::string& path) {
        std::ifstream file(path);
        ASSERT_TRUE(file) << path;
        for (std::string line; std::getline(file, line);) {
            std::istringstream in(line);
            Step(in);
        }
    }

    void Step(std::istringstream& in) {
        std::string word;
        in >> word;
        CDC& dc = canvas.dc;
        int a = 0, b = 0, c = 0, d = 0;
        if (word == "pen") {
            in >> std::dec >> a >> b >> std::hex >> c;
            pen.CreatePen(a, b, static_cast<COLORREF>(c));
            dc.SelectObject(&pen);
        } else if (word == "brush") {
            in >> std::hex >> a;
            brush.CreateSolidBrush(static_cast<COLORREF>(a));
            dc.SelectObject(&brush);
        } else if (word == "stock" && in >> a) {
            dc.SelectStockObject(a);
        } else if (word == "bkmode" && in >> a) {
            dc.SetBkMode(a);
        } else if (word == "rectangle" && in >> a >> b >> c >> d) {
            dc.Rectangle(a, b, c, d);
        } else if (word == "moveto" && in >> a >> b) {
            dc.MoveTo(a, b);
        } else if (word == "lineto" && in >> a >> b) {
            dc.LineTo(a, b);
        } else if (word == "polygon") {
            std::vector<CPoint> points;
            for (char comma = 0; in >> a >> comma >> b;) {
                points.emplace_back(a, b);
            }
            dc.Polygon(points.data(), static_cast<int>(points.size()));
        } else {
            FAIL() << "unknown command " << word;
        }
    }
};

std::vector<CPoint> Differences(const CDC& dc, const QImage& expected) {
    std::vector<CPoint> all;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const QRgb p = expected.pixel(x, y);
            if (dc.GetPixel(x, y) != RGB(qRed(p), qGreen(p), qBlue(p))) {
                all.emplace_back(x, y);
            }
        }
    }
    return all;
}

class ReferencePictureTest : public testing::TestWithParam<const char*> {};

TEST_P(ReferencePictureTest, EveryPixelMatches) {
    const std::string base = SourceFolder() + "/tests/framework/drawing/" + GetParam();
    Script script;
    script.Run(base + ".txt");
    const QImage expected(QString::fromStdString(base + ".png"));
    ASSERT_EQ(expected.size(), QSize(kSide, kSide));
    std::vector<CPoint> different = Differences(script.canvas.dc, expected);
    if (std::string(GetParam()) == "rects") {
        // The pen of width 3 rounds its corners in the reference; nothing draws with one.
        std::erase_if(different,
                      [](CPoint p) { return (p.x == 99 || p.x == 130) && (p.y == 59 || p.y == 80); });
    }
    if (!different.empty()) {
        script.canvas.bitmap.SavePng(std::string(GetParam()) + "_out.png");
    }
    EXPECT_EQ(different.size(), 0U) << "first at " << (different.empty() ? 0 : different.front().x) << ','
                                    << (different.empty() ? 0 : different.front().y);
}

INSTANTIATE_TEST_SUITE_P(All, ReferencePictureTest, testing::Values("lines", "polys", "dots", "rects"),
                         [](const auto& p) { return std::string(p.param); });

TEST(DrawingTest, LineLeavesOutItsEndPoint) {
    Canvas c;
    c.dc.MoveTo(10, 10);
    c.dc.LineTo(20, 10);
    EXPECT_EQ(c.dc.GetPixel(10, 10), 0U);
    EXPECT_EQ(c.dc.GetPixel(19, 10), 0U);
    EXPECT_EQ(c.dc.GetPixel(20, 10), 0xFFFFFFU);
}

TEST(DrawingTest, NullPenRectangleFillsAllButRightAndBottom) {
    Canvas c;
    CPen none(PS_NULL, 0, 0);
    CBrush red(0x0000FF);
    c.dc.SelectObject(&none);
    c.dc.SelectObject(&red);
    c.dc.Rectangle(97, 10, 103, 20);
    EXPECT_EQ(c.Ink({0, 0, kSide, kSide}), 6 * 10);
    EXPECT_EQ(c.dc.GetPixel(97, 10), 0x0000FFU);
    EXPECT_EQ(c.dc.GetPixel(102, 19), 0x0000FFU);
}

TEST(DrawingTest, RectangleWithoutExtentDrawsNothingAndInvertedOneTurnsRound) {
    Canvas c;
    c.dc.Rectangle(50, 5, 50, 20);
    c.dc.Rectangle(60, 5, 90, 5);
    EXPECT_EQ(c.Ink({0, 0, kSide, kSide}), 0);
    c.dc.Rectangle(20, 10, 10, 5);
    EXPECT_EQ(c.dc.GetPixel(10, 5), 0U);
    EXPECT_EQ(c.dc.GetPixel(19, 9), 0U);
    EXPECT_EQ(c.dc.GetPixel(20, 10), 0xFFFFFFU);
}

TEST(DrawingTest, FarOffCoordinatesAreCutWithoutLosingTheVisiblePart) {
    Canvas c;
    c.dc.MoveTo(-2000000000, 100);
    c.dc.LineTo(2000000000, 100);
    EXPECT_EQ(c.Ink({0, 100, kSide, 101}), kSide);
    c.dc.MoveTo(-2000000000, -2000000000);
    c.dc.LineTo(2000000000, 2000000000);
    EXPECT_EQ(c.dc.GetPixel(50, 50), 0U);
    const CPoint triangle[] = {{-1000000000, -1000000000}, {1000000000, -1000000000}, {0, 1000000000}};
    c.dc.Polygon(triangle, 3);
    c.dc.Rectangle(-2000000000, -2000000000, 2000000000, 2000000000);
    EXPECT_EQ(c.Ink({0, 0, kSide, kSide}), 0);
}

TEST(DrawingTest, DotsShowTheBackgroundColourOnlyInOpaqueMode) {
    Canvas c;
    CPen dots(PS_DOT, 0, 0x0000FF);
    c.dc.SelectObject(&dots);
    c.dc.SetBkColor(0x00FF00);
    c.dc.SetBkMode(TRANSPARENT);
    c.dc.MoveTo(0, 0);
    c.dc.LineTo(0, 12);
    EXPECT_EQ(c.dc.GetPixel(0, 2), 0x0000FFU);
    EXPECT_EQ(c.dc.GetPixel(0, 3), 0xFFFFFFU);
    EXPECT_EQ(c.dc.GetPixel(0, 6), 0x0000FFU);
    c.dc.SetBkMode(OPAQUE);
    c.dc.MoveTo(5, 0);
    c.dc.LineTo(5, 12);
    EXPECT_EQ(c.dc.GetPixel(5, 3), 0x00FF00U);
}

TEST(DrawingTest, SelectObjectReturnsWhatWasSelectedBefore) {
    Canvas c;
    CPen first(PS_SOLID, 0, 1);
    CPen second(PS_SOLID, 0, 2);
    EXPECT_EQ(c.dc.SelectObject(&first), StockObject(BLACK_PEN));
    EXPECT_EQ(c.dc.SelectObject(&second), &first);
    EXPECT_EQ(c.dc.SelectStockObject(NULL_BRUSH), StockObject(WHITE_BRUSH));
    EXPECT_EQ(c.dc.SelectStockObject(99), nullptr);
}

TEST(DrawingTest, ClipBoxHoldsTheIntersectionAndCutsDrawing) {
    Canvas c;
    c.dc.IntersectClipRect({10, 10, 300, 20});
    CRect box;
    c.dc.GetClipBox(&box);
    EXPECT_EQ(box, CRect(10, 10, 200, 20));
    c.dc.FillSolidRect({0, 0, kSide, kSide}, 0);
    c.dc.ResetClip();
    EXPECT_EQ(c.Ink({0, 0, kSide, kSide}), 190 * 10);
}

TEST(DrawingTest, BitBltCopiesAndSurvivesOverlap) {
    Canvas c;
    c.dc.SetPixel(0, 0, 0x0000FF);
    c.dc.SetPixel(1, 0, 0x00FF00);
    c.dc.BitBlt(1, 0, 2, 1, &c.dc, 0, 0, SRCCOPY);
    EXPECT_EQ(c.dc.GetPixel(1, 0), 0x0000FFU);
    EXPECT_EQ(c.dc.GetPixel(2, 0), 0x00FF00U);
    EXPECT_FALSE(c.dc.BitBlt(0, 0, 5, 5, nullptr, 0, 0, SRCCOPY));
}

TEST(DrawingTest, BitmapWithoutExtentIsAllowedAndHoldsNothing) {
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(nullptr, 0, 7));
    BITMAP info;
    ASSERT_NE(bitmap.GetBitmap(&info), 0);
    EXPECT_EQ(info.bmWidth, 0);
    EXPECT_EQ(info.bmHeight, 7);
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    dc.SelectObject(&bitmap);
    dc.Rectangle(0, 0, 10, 10);
    EXPECT_EQ(dc.GetPixel(0, 0), 0xFFFFFFFFU);
    EXPECT_FALSE(bitmap.CreateCompatibleBitmap(nullptr, 100000, 100000));
}

TEST(DrawingTest, TextStandsBelowItsAnchorAndMeasuresAsDrawn) {
    Canvas c;
    CFont font;
    font.CreatePointFont(80, "Arial");
    c.dc.SelectObject(&font);
    c.dc.SetBkMode(TRANSPARENT);
    const CSize size = c.dc.GetTextExtent("Hxg");
    EXPECT_GT(size.cx, 0);
    c.dc.TextOut(50, 60, "Hxg");
    EXPECT_GT(c.Ink({50, 60, 50 + size.cx, 60 + size.cy}), 0);
    EXPECT_EQ(c.Ink({0, 0, kSide, 60}), 0);
    EXPECT_EQ(c.Ink({0, 60 + size.cy, kSide, kSide}), 0);
}

TEST(DrawingTest, OpaqueTextFillsItsBox) {
    Canvas c;
    c.dc.SetBkColor(0x00FFFF);
    const CSize size = c.dc.GetTextExtent("a");
    c.dc.TextOut(10, 10, "a");
    EXPECT_EQ(c.Ink({0, 0, kSide, kSide}), size.cx * size.cy);
}

TEST(DrawingTest, DrawTextWrapsAndCutsAtTheRect) {
    Canvas c;
    c.dc.SetBkMode(TRANSPARENT);
    const int lineHeight = c.dc.GetTextExtent("x").cy;
    CRect measured(0, 0, c.dc.GetTextExtent("one two").cx, 1000);
    EXPECT_EQ(c.dc.DrawText("one two one two", &measured, DT_WORDBREAK | DT_CALCRECT), 2 * lineHeight);
    c.dc.DrawText("one two three four", CRect(20, 20, 40, 25), DT_WORDBREAK);
    EXPECT_EQ(c.Ink({0, 25, kSide, kSide}), 0);
    EXPECT_EQ(c.Ink({0, 0, 20, kSide}), 0);
}

TEST(DrawingTest, NarrowLabelShowsDotsCutAtItsBox) {
    constexpr UINT kFormat = DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_PATH_ELLIPSIS;
    Canvas label;
    Canvas dots;
    for (Canvas* c : {&label, &dots}) {
        c->dc.SetBkMode(TRANSPARENT);
    }
    // A centred text that is wider than its box loses as much on the left as on the right.
    const int wide = dots.dc.GetTextExtent("...").cx;
    ASSERT_GT(wide, 4);
    label.dc.DrawText("Camera", CRect(50, 40, 54, 60), kFormat);
    dots.dc.DrawText("...", CRect(50, 40, 54, 60), DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            ASSERT_EQ(label.dc.GetPixel(x, y), dots.dc.GetPixel(x, y)) << x << ',' << y;
        }
    }
    EXPECT_EQ(label.Ink({0, 0, 50, kSide}) + label.Ink({54, 0, kSide, kSide}), 0);
}

TEST(DrawingTest, LabelWithoutABoxDrawsNothing) {
    constexpr UINT kFormat = DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_PATH_ELLIPSIS;
    Canvas c;
    EXPECT_GT(c.dc.DrawText("Camera", CRect(50, 40, 50, 60), kFormat), 0);
    c.dc.DrawText("Camera", CRect(60, 40, 50, 60), kFormat);
    c.dc.DrawText("Camera", CRect(50, 60, 90, 40), kFormat);
    EXPECT_EQ(c.Ink({0, 0, kSide, kSide}), 0);
}

TEST(DrawingTest, LabelInABoxOfAnySizeStaysInside) {
    constexpr UINT kFormat = DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_PATH_ELLIPSIS;
    Canvas c;
    c.dc.SetBkMode(TRANSPARENT);
    c.dc.DrawText("Camera", CRect(-2147483647, 40, 2147483647, 60), kFormat);
    c.dc.TextOut(2147483647, 2147483647, "Camera");
    c.dc.TextOut(-2147483647, -2147483647, "Camera");
    EXPECT_EQ(c.Ink({0, 0, kSide, 40}) + c.Ink({0, 60, kSide, kSide}), 0);
    EXPECT_GT(c.Ink({0, 40, 10, 60}), 0) << "its middle is the surface's left edge";
}

TEST(DrawingTest, VeryLongLabelIsShortenedLikeItsStart) {
    constexpr UINT kFormat = DT_SINGLELINE | DT_PATH_ELLIPSIS;
    Canvas longer;
    Canvas shorter;
    longer.dc.DrawText(std::string(200000, 'i'), CRect(10, 10, 90, 30), kFormat);
    shorter.dc.DrawText(std::string(200, 'i'), CRect(10, 10, 90, 30), kFormat);
    EXPECT_EQ(longer.Ink({0, 0, kSide, kSide}), shorter.Ink({0, 0, kSide, kSide}));
    EXPECT_GT(longer.Ink({0, 0, kSide, kSide}), 0);
}

TEST(DrawingTest, MoreTextsThanAreKeptAreStillDrawn) {
    Canvas c;
    c.dc.SetBkMode(TRANSPARENT);
    for (int i = 0; i < 40000; ++i) {
        c.dc.DrawText("key " + std::to_string(i), CRect(0, 0, 60, 20), DT_SINGLELINE | DT_PATH_ELLIPSIS);
    }
    c.dc.FillSolidRect({0, 0, kSide, kSide}, 0xFFFFFF);
    Canvas fresh;
    fresh.dc.SetBkMode(TRANSPARENT);
    for (Canvas* each : {&c, &fresh}) {
        each->dc.DrawText("key 0", CRect(0, 0, 60, 20), DT_SINGLELINE | DT_PATH_ELLIPSIS);
    }
    EXPECT_EQ(c.Ink({0, 0, 60, 20}), fresh.Ink({0, 0, 60, 20}));
    EXPECT_GT(c.Ink({0, 0, 60, 20}), 0);
}

TEST(DrawingTest, BitmapMayGoBeforeTheSurfaceItIsSelectedInto) {
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    {
        CBitmap bitmap;
        bitmap.CreateCompatibleBitmap(nullptr, 10, 10);
        dc.SelectObject(&bitmap);
    }
    dc.FillSolidRect({0, 0, 10, 10}, 0x0000FF);
    EXPECT_EQ(dc.GetPixel(3, 3), 0x0000FFU);
}

TEST(DrawingTest, HookSeesCallsInOrderWithTheirPenAndBrush) {
    HookScope scope;
    std::vector<DrawCall> calls;
    Hooks().drawing = [&calls](const DrawCall& call) { calls.push_back(call); };
    CDC dc;
    CPen pen(PS_DOT, 2, 0x123456);
    CBrush brush(0xABCDEF);
    dc.SelectObject(&pen);
    dc.SelectObject(&brush);
    dc.Rectangle(1, 2, 3, 4);
    dc.MoveTo(5, 6);
    dc.LineTo(7, 8);
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0].kind, DrawKind::Rectangle);
    EXPECT_EQ(calls[0].rect, CRect(1, 2, 3, 4));
    EXPECT_EQ(calls[0].brushColor, 0xABCDEFU);
    EXPECT_EQ(calls[1].kind, DrawKind::Line);
    EXPECT_EQ(calls[1].rect, CRect(5, 6, 7, 8));
    EXPECT_EQ(calls[1].penStyle, PS_DOT);
    EXPECT_EQ(calls[1].penWidth, 2);
    EXPECT_EQ(calls[1].penColor, 0x123456U);
}

} // namespace
