#include "framework/Button.h"
#include "framework/Constants.h"
#include "framework/PaintDC.h"
#include "framework/QtBridge.h"
#include "framework/TestHooks.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace {

// Draws anything anywhere, also far outside; the same for the same seed.
class Scribbler {
public:
    Scribbler(unsigned seed, CSize s) : random(seed), size(s) {}

    void Draw(CDC& dc, int calls) {
        dc.FillSolidRect(CRect(CPoint(), size), Color());
        for (int i = 0; i < calls; ++i) {
            Tools tools(*this, dc);
            Step(dc);
        }
        dc.ResetClip();
        for (int i = 0; i < calls; ++i) {
            Label(dc);
        }
    }

private:
    struct Tools {
        Tools(Scribbler& s, CDC& target)
            : dc(target), pen(s.Number(0, 4) == 3 ? PS_NULL : s.Number(0, 2), s.Number(0, 4), s.Color()),
              brush(s.Color()) {
            brush.hollow = s.Number(0, 3) == 0;
            dc.SelectObject(&pen);
            dc.SelectObject(&brush);
        }
        ~Tools() {
            dc.SelectStockObject(BLACK_PEN);
            dc.SelectStockObject(WHITE_BRUSH);
        }
        CDC& dc;
        CPen pen;
        CBrush brush;
    };

    int Number(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }
    COLORREF Color() { return static_cast<COLORREF>(Number(0, 0xFFFFFF)); }
    CPoint Point() { return {Number(-30, size.cx + 30), Number(-30, size.cy + 30)}; }
    CRect Rect() {
        const CPoint corner = Point();
        return {corner, CSize{Number(-5, size.cx / 2), Number(-5, size.cy / 2)}};
    }

    void Step(CDC& dc) {
        const CPoint points[] = {Point(), Point(), Point(), Point()};
        switch (Number(0, 9)) {
        case 0:
        case 1:
            dc.Rectangle(Rect());
            break;
        case 2:
            dc.FillSolidRect(Rect(), Color());
            break;
        case 3:
            dc.MoveTo(points[0]);
            dc.LineTo(points[1]);
            break;
        case 4:
            dc.MoveTo(points[0]);
            dc.LineTo(points[0].x, points[1].y);
            break;
        case 5:
            dc.Polygon(points, 4);
            break;
        case 6:
            dc.SetPixel(points[0].x, points[0].y, Color());
            break;
        case 7:
            dc.SetBkMode(Number(1, 2));
            dc.SetBkColor(Color());
            dc.TextOut(points[0].x, points[0].y, "Text");
            break;
        case 8:
            dc.IntersectClipRect({points[0].x, points[0].y, size.cx, size.cy});
            dc.FillSolidRect(Rect(), Color());
            dc.DrawText("path/name", Rect(), DT_SINGLELINE | DT_CENTER | DT_PATH_ELLIPSIS);
            break;
        default:
            dc.ResetClip();
            dc.Rectangle(Rect());
        }
    }

    // A label on a box of one colour, of few texts and colours so that most have been drawn before.
    void Label(CDC& dc) {
        static const std::string kTexts[] = {"Camera 1", "path/to/name", "jfgy&Open", "",
                                             "\n",       "a\nb",         "fff|W"};
        constexpr COLORREF kColors[] = {0xFFFFFF, 0x4080C0};
        constexpr UINT kFormats[] = {DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_PATH_ELLIPSIS,
                                     DT_SINGLELINE | DT_RIGHT | DT_END_ELLIPSIS, DT_SINGLELINE | DT_NOCLIP,
                                     DT_WORDBREAK | DT_NOPREFIX};
        CFont font;
        font.italic = Number(0, 1) == 1;
        dc.SelectObject(&font);
        dc.SetBkMode(Number(1, 2));
        dc.SetBkColor(kColors[1]);
        dc.SetTextColor(kColors[Number(0, 1)] ^ 0xFFFFFF);
        const CPoint corner = Point();
        const CRect box(corner, CSize{Number(0, 70), Number(5, 25)});
        dc.FillSolidRect(box, kColors[Number(0, 1)]);
        const std::string& text = kTexts[Number(0, 6)];
        if (Number(0, 4) == 0) {
            dc.TextOut(corner.x + Number(-2, 5), corner.y, text);
        } else {
            dc.DrawText(text, box, kFormats[Number(0, 3)]);
        }
        dc.SelectStockObject(SYSTEM_FONT);
    }

    std::mt19937 random;
    CSize size;
};

class ScribbledWindow : public CWnd {
public:
    unsigned seed = 0;

protected:
    void OnPaint() {
        CPaintDC dc(this);
        CRect all;
        GetClientRect(&all);
        Scribbler(seed, all.Size()).Draw(dc, 60);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ScribbledWindow, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

// Windows that hide parts of each other and reach out of the one around them.
class Scene {
public:
    explicit Scene(unsigned first) : seed(first) {
        Add(nullptr, {40, 40, 360, 280});
        ScribbledWindow* left = Add(&Top(), {10, 10, 160, 130});
        ScribbledWindow* above = Add(&Top(), {90, 60, 260, 190});
        Add(above, {-25, -15, 60, 50});    // starts outside its parent
        Add(&Top(), {240, 150, 400, 300}); // ends outside the window
        button.Create("Button", WS_CHILD | WS_VISIBLE, {5, 5, 60, 30}, left, 1);
        ScribbledWindow* riddled = Add(&Top(), {10, 140, 85, 230});
        for (int i = 0; i < 12; ++i) {
            Add(riddled, {5 + i % 4 * 18, 5 + i / 4 * 28, 15 + i % 4 * 18, 20 + i / 4 * 28});
        }
        Top().ShowWindow(SW_SHOW);
        shown = QTest::qWaitForWindowExposed(NativeWidget(Top()));
        QCoreApplication::processEvents();
    }

    CWnd& Top() { return *windows[0]; }
    CWnd& Window(std::size_t i) { return *windows[i]; }
    std::size_t Count() const { return windows.size(); }

    // What stands on the screen.
    QImage Picture() {
        QCoreApplication::processEvents();
        const QWindow* window = NativeWidget(Top())->windowHandle();
        return window->screen()->grabWindow(window->winId()).toImage().convertToFormat(QImage::Format_RGB32);
    }

    bool shown = false;

private:
    ScribbledWindow* Add(CWnd* parent, const CRect& place) {
        windows.push_back(std::make_unique<ScribbledWindow>());
        windows.back()->seed = seed++;
        windows.back()->Create(nullptr, nullptr, parent ? WS_CHILD | WS_VISIBLE : WS_POPUP | WS_CAPTION,
                               place, parent, 5);
        return windows.back().get();
    }

    unsigned seed;
    std::vector<std::unique_ptr<ScribbledWindow>> windows;
    CButton button;
};

// Scenes in one run; the second time everything goes through the toolkit.
template <class Act> std::vector<QImage> BothRoutes(unsigned seed, Act act) {
    std::vector<QImage> pictures;
    for (const bool paintersOnly : {false, true}) {
        const HookScope scope;
        Hooks().paintersOnly = paintersOnly;
        Scene scene(seed);
        EXPECT_TRUE(scene.shown);
        act(scene);
        pictures.push_back(scene.Picture());
    }
    return pictures;
}

void ExpectSame(const std::vector<QImage>& pictures) {
    ASSERT_EQ(pictures[0].size(), pictures[1].size());
    ASSERT_GT(pictures[0].width(), 0);
    int different = 0;
    for (int y = 0; y < pictures[0].height(); ++y) {
        for (int x = 0; x < pictures[0].width(); ++x) {
            different += pictures[0].pixel(x, y) != pictures[1].pixel(x, y) ? 1 : 0;
        }
    }
    EXPECT_EQ(different, 0);
    if (different != 0) {
        pictures[0].save("routes_direct.png");
        pictures[1].save("routes_painter.png");
    }
}

class DrawingRoutesTest : public testing::TestWithParam<unsigned> {};

TEST_P(DrawingRoutesTest, WindowsOverEachOtherLookTheSame) {
    ExpectSame(BothRoutes(GetParam(), [](Scene& /*scene*/) {}));
}

TEST_P(DrawingRoutesTest, RepaintingOfPartsStaysInsideThem) {
    ExpectSame(BothRoutes(GetParam(), [](Scene& scene) {
        scene.Picture();
        const CRect part(20, 15, 70, 60);
        for (std::size_t i = 0; i < scene.Count(); ++i) {
            scene.Window(i).InvalidateRect(&part, FALSE);
            scene.Window(i).UpdateWindow();
        }
    }));
}

TEST_P(DrawingRoutesTest, MovedAndRaisedWindowsLookTheSame) {
    ExpectSame(BothRoutes(GetParam(), [](Scene& scene) {
        scene.Picture();
        scene.Window(1).BringWindowToTop();
        scene.Window(2).MoveWindow(-40, 100, 170, 130);
        scene.Window(3).MoveWindow(100, 100, 85, 65);
        scene.Window(4).ShowWindow(SW_HIDE);
    }));
}

TEST_P(DrawingRoutesTest, PictureOfAWindowIsTheSame) {
    std::vector<QImage> pictures;
    BothRoutes(GetParam(), [&pictures](Scene& scene) {
        pictures.push_back(NativeWidget(scene.Top())->grab().toImage());
    });
    ExpectSame(pictures);
}

TEST_P(DrawingRoutesTest, BitmapsAreTheSame) {
    std::vector<QImage> pictures;
    for (const bool paintersOnly : {false, true}) {
        const HookScope scope;
        Hooks().paintersOnly = paintersOnly;
        CDC dc;
        CBitmap bitmap;
        dc.CreateCompatibleDC(nullptr);
        bitmap.CreateCompatibleBitmap(nullptr, 150, 90);
        dc.SelectObject(&bitmap);
        Scribbler(GetParam(), {150, 90}).Draw(dc, 200);
        QImage picture(150, 90, QImage::Format_RGB32);
        for (int y = 0; y < 90; ++y) {
            for (int x = 0; x < 150; ++x) {
                const COLORREF c = dc.GetPixel(x, y);
                picture.setPixel(x, y, qRgb(GetRValue(c), GetGValue(c), GetBValue(c)));
            }
        }
        pictures.push_back(picture);
    }
    ExpectSame(pictures);
}

INSTANTIATE_TEST_SUITE_P(All, DrawingRoutesTest, testing::Values(1U, 100U, 200U, 300U, 400U));

// The scale is fixed when an application starts, so that another one has to look.
constexpr const char* kDenseScreen = "FILMS_DENSE_SCREEN";
class DenseScreenTest : public testing::TestWithParam<const char*> {};

TEST_P(DenseScreenTest, RoutesLookTheSameAtThisScale) {
    if (qEnvironmentVariableIsSet(kDenseScreen)) {
        // This is the other application.
        EXPECT_NE(qApp->devicePixelRatio(), 1.0);
        return;
    }
    QProcess other;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", GetParam());
    environment.insert(kDenseScreen, "1");
    for (const char* runner : {"GTEST_OUTPUT", "GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX", "GTEST_SHUFFLE"}) {
        environment.remove(runner);
    }
    other.setProcessEnvironment(environment);
    other.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=All/DrawingRoutesTest.*:All/DenseScreenTest.*"});
    ASSERT_TRUE(other.waitForFinished(120000));
    const QByteArray report = other.readAllStandardOutput();
    EXPECT_EQ(other.exitCode(), 0) << report.toStdString();
    EXPECT_TRUE(report.contains("[  PASSED  ] 27 tests")) << report.toStdString();
}

INSTANTIATE_TEST_SUITE_P(All, DenseScreenTest, testing::Values("2", "1.5"));

} // namespace
