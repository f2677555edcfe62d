#include "tests/timeline/TrackCtrlFixture.h"

#include <limits>
#include <QCoreApplication>
#include <random>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;

namespace {

using Lines = std::vector<std::string>;

class TrackCtrlPaintTest : public TrackCtrlTest {};

} // namespace

TEST_F(TrackCtrlPaintTest, RootRowIsAFrameAGridAndAName) {
    CTrackCtrl& row = MakeRow(KeyKind::None);
    row.name = "Box";
    // The grid stands in the time area pulled in by 1: h = 18, axis at 18/2, from 151+1 to 649-1; the tic 0
    // is a big one from 18/4 to 54/4.
    EXPECT_THAT(Paint(row),
                ElementsAre("rect 0,0,650,20 pen FAFAFA brush FAFAFA",
                            "rect 0,0,650,20 pen 000000 brush FAFAFA", "line 152,9 648,9 pen 000000",
                            "line 151,4 151,13 pen 000000", "rect 0,0,150,20 pen 000000 brush FFFFFF",
                            "text 25,6 'Box:' 000000")); // 20/3 = 6
}

TEST_F(TrackCtrlPaintTest, KindRowIsIndentedBehindALine) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    row.name = "Position keys";
    EXPECT_THAT(Paint(row),
                ElementsAre("rect 0,0,650,20 pen FAFAFA brush FAFAFA", "line 0,0 0,20 pen 000000",
                            "rect 20,0,650,20 pen 000000 brush FAFAFA", "line 152,9 648,9 pen 000000",
                            "line 151,4 151,13 pen 000000", "rect 20,0,150,20 pen 000000 brush FFFFFF",
                            "text 45,6 'Position keys:' 000000"));
}

TEST_F(TrackCtrlPaintTest, NameNeedsAColumnOf110Pixels) {
    CTrackCtrl& row = MakeRow(KeyKind::None);
    row.name = "Box";
    timeline.leftWidth = 109;
    EXPECT_THAT(Only("text", Paint(row)), IsEmpty());
    timeline.leftWidth = 110;
    EXPECT_THAT(Only("text", Paint(row)), ElementsAre("text 25,6 'Box:' 000000"));
}

TEST_F(TrackCtrlPaintTest, ColumnNarrowerThanTheIndentTurnsTheNameCellRound) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    timeline.leftWidth = 10;
    EXPECT_THAT(Paint(row), Contains("rect 20,0,10,20 pen 000000 brush FFFFFF"));
}

TEST_F(TrackCtrlPaintTest, SelectedActorHasABlueName) {
    CTrackCtrl& row = MakeRow(KeyKind::None, boxTrack);
    row.name = "Box";
    EXPECT_THAT(Paint(row), Contains("text 25,6 'Box:' 000000"));
    editor.Select({box});
    EXPECT_THAT(Paint(row), Contains("text 25,6 'Box:' FF0000"));
}

TEST_F(TrackCtrlPaintTest, OnlyTheVisualizedCameraHasAGreenName) {
    CFilmTrack* first = AddCamera(film, "A");
    CTrackCtrl& rowA = MakeRow(KeyKind::None, first);
    CTrackCtrl& rowB = MakeRow(KeyKind::None, AddCamera(film, "B"));
    rowA.name = "A";
    rowB.name = "B";
    EXPECT_THAT(Paint(rowA), Contains("text 25,6 'A:' 000000"));
    plugin.trackVisualizer.SetRenderTrack(first);
    EXPECT_THAT(Paint(rowA), Contains("text 25,6 'A:' 008000"));
    EXPECT_THAT(Paint(rowB), Contains("text 25,6 'B:' 000000"));
}

TEST_F(TrackCtrlPaintTest, BarStandsAroundItsTimeWithASquareInIt) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    AddBar(row, 2.0f);
    // x = 2*50 + 150 = 250, top 20/2 - 15/2 = 3; the square around 3 + 15/2, one pixel short to the right.
    EXPECT_THAT(PaintKeys(row), ElementsAre("rect 247,3,253,18 pen none brush 808080",
                                            "rect 247,7,252,13 pen 000000 brush FFFFFF"));
    EXPECT_EQ(row.pixelsPerSecond, 50.0f);
}

TEST_F(TrackCtrlPaintTest, BoxReachesOverItsDuration) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    AddBox(row, 1.0f, 2.0f);
    // x = 200: from 199 to 200 + 100 - 1, one pixel in from top and bottom.
    EXPECT_THAT(PaintKeys(row), ElementsAre("rect 199,4,299,17 pen 000000 brush 808080"));
}

TEST_F(TrackCtrlPaintTest, EveryKindDrawsItsClassOfView) {
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        CTrackCtrl& row = MakeRow(kind);
        row.name = "Animation keys";
        row.subIndex = 0;
        if (kind <= KeyKind::Sound) {
            AddBox(row, 1.0f, 2.0f);
            EXPECT_THAT(PaintKeys(row), ElementsAre("rect 199,4,299,17 pen 000000 brush 808080")) << kind;
        } else {
            AddBar(row, 2.0f);
            EXPECT_EQ(PaintKeys(row).size(), 2U) << kind;
        }
    }
}

TEST_F(TrackCtrlPaintTest, KeysStandWhereTheAlignmentPutsThem) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    const CTrackKey* key = AddBar(row, 2.0f);
    const CRect rect(0, 100, 50, 130);
    row.SetAlignment(0);
    EXPECT_EQ(row.GetKeyTop(key, rect), 102);
    row.SetAlignment(1);
    EXPECT_EQ(row.GetKeyTop(key, rect), 8); // 30/2 - 15/2, without the rect's top
    row.SetAlignment(2);
    EXPECT_EQ(row.GetKeyTop(key, rect), 114);
    row.SetAlignment(3);
    EXPECT_EQ(row.GetKeyTop(key, rect), -1);
    EXPECT_EQ(row.GetKeyTop(nullptr, rect), -1);
}

TEST_F(TrackCtrlPaintTest, KeysOutOfTheViewAreNotDrawn) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    row.SetView(10.0f, 20.0f);
    AddBox(row, 5.0f, 5.0f);  // ends where the view starts
    AddBox(row, 4.0f, 5.9f);  // before
    AddBox(row, 20.0f, 1.0f); // starts where the view ends
    AddBox(row, 20.1f, 1.0f); // behind
    // x = (5-10)*50 + 150 = -100 and w = 250; x = 650 and w = 50. The long one is drawn first.
    EXPECT_THAT(PaintKeys(row), ElementsAre("rect -101,4,149,17 pen 000000 brush 808080",
                                            "rect 649,4,699,17 pen 000000 brush 808080"));
}

TEST_F(TrackCtrlPaintTest, PlaceIsCutTowardZeroLeftOfTheRow) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    row.SetView(10.0f, 20.0f);
    AddBox(row, 6.99f, 5.0f); // (6.99-10)*50 + 150 = -0.5
    EXPECT_THAT(PaintKeys(row), ElementsAre("rect -1,4,249,17 pen 000000 brush 808080"));
}

TEST_F(TrackCtrlPaintTest, NameCellCoversKeysThatReachIntoIt) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    row.SetView(10.0f, 20.0f);
    AddBox(row, 9.0f, 2.0f);
    const Lines lines = Paint(row);
    const auto key = std::ranges::find(lines, "rect 99,4,199,17 pen 000000 brush 808080");
    const auto cell = std::ranges::find(lines, "rect 20,0,150,20 pen 000000 brush FFFFFF");
    ASSERT_NE(key, lines.end());
    EXPECT_LT(key, cell);
    EXPECT_NE(cell, lines.end());
}

TEST_F(TrackCtrlPaintTest, SelectedKeyLiesOnTop) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTrackKey* first = AddBox(row, 1.0f, 2.0f);
    AddBox(row, 2.0f, 1.0f);
    timeline.SelectOnly(first);
    // Box 199..299 with grips of its drawn height 13 at a distance of 3.
    EXPECT_THAT(PaintKeys(row), ElementsAre("rect 249,4,299,17 pen 000000 brush 808080",
                                            "rect 199,4,299,17 pen 000000 brush C0C0C0",
                                            "rect 183,4,196,17 pen 000000 brush FFFFFF",
                                            "rect 302,4,315,17 pen 000000 brush FFFFFF"));
}

TEST_F(TrackCtrlPaintTest, OfSeveralSelectedKeysOnlyTheLastIsDrawn) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    AddBar(row, 1.0f)->SetSelected(true);
    AddBar(row, 2.0f)->SetSelected(true);
    EXPECT_THAT(PaintKeys(row), ElementsAre("rect 247,3,253,18 pen none brush C0C0C0",
                                            "rect 247,7,252,13 pen 000000 brush FFFFFF"));
}

TEST_F(TrackCtrlPaintTest, SelectedKeyOutOfTheViewTakesNoPlaceOnTop) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    AddBar(row, 1.0f)->SetSelected(true);
    AddBar(row, 20.0f)->SetSelected(true);
    EXPECT_THAT(PaintKeys(row), Contains("rect 197,3,203,18 pen none brush C0C0C0"));
}

TEST_F(TrackCtrlPaintTest, HiddenKeysDrawNothing) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    AddBar(row, 1.0f)->state = CTrackKey::kHidden;
    EXPECT_THAT(PaintKeys(row), IsEmpty());
}

TEST_F(TrackCtrlPaintTest, MarksAreDottedLinesToBothEndsOfTheView) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    ruler.SetTimeRange(0.0f, 100.0f);
    ruler.AddMark(0.0f);
    ruler.dragMark = ruler.AddMark(4.0f);
    ruler.AddMark(10.0f);
    ruler.AddMark(10.1f);
    EXPECT_THAT(Only("line", Paint(row)),
                IsSupersetOf(Lines{"line 150,0 150,20 pen FF0000 dots", "line 350,0 350,20 pen 00FF00 dots",
                                   "line 650,0 650,20 pen FF0000 dots"}));
    EXPECT_EQ(Paint(row).back(), "line 650,0 650,20 pen FF0000 dots");
    ruler.dragMark = nullptr;
}

TEST_F(TrackCtrlPaintTest, CursorIsDottedAndStrictlyInsideTheView) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    timeline.currentTime = 4.0f;
    EXPECT_EQ(Paint(row).back(), "line 350,0 350,20 pen 0000FF dots");
    for (const float edge : {0.0f, 10.0f}) {
        timeline.currentTime = edge;
        EXPECT_THAT(Paint(row).back(), ::testing::StartsWith("text")) << edge;
    }
}

TEST_F(TrackCtrlPaintTest, ViewOfNoLengthHasNeitherNameNorMarksNorButton) {
    CTrackCtrl& row = MakeRow(KeyKind::None);
    ruler.SetTimeRange(0.0f, 100.0f);
    ruler.AddMark(5.0f);
    row.SetView(5.0f, 5.0f);
    EXPECT_THAT(Paint(row), ElementsAre("rect 0,0,650,20 pen FAFAFA brush FAFAFA",
                                        "rect 0,0,650,20 pen 000000 brush FAFAFA"));
    EXPECT_FALSE(row.expandButton.IsWindowVisible());
}

TEST_F(TrackCtrlPaintTest, ButtonStandsAtTheLeftOfARootRow) {
    CTrackCtrl& row = MakeRow(KeyKind::None);
    EXPECT_FALSE(row.expandButton.IsWindowVisible());
    Paint(row);
    QCoreApplication::processEvents();
    EXPECT_TRUE(row.expandButton.IsWindowVisible());
    CRect place;
    row.expandButton.GetWindowRect(&place);
    row.ScreenToClient(&place);
    EXPECT_EQ(place, CRect(1, 1, 21, 19));
    EXPECT_EQ(row.expandButton.GetWindowText(), "+");
    row.expanded = true;
    Paint(row);
    EXPECT_EQ(row.expandButton.GetWindowText(), "-");
}

TEST_F(TrackCtrlPaintTest, ButtonIsHiddenOnAKindRow) {
    CTrackCtrl& row = MakeRow(KeyKind::None);
    Paint(row);
    row.kind = KeyKind::Position;
    Paint(row);
    EXPECT_FALSE(row.expandButton.IsWindowVisible());
}

TEST_F(TrackCtrlPaintTest, ButtonFollowsTheRowsHeight) {
    CTrackCtrl& row = MakeRow(KeyKind::None);
    Paint(row);
    row.MoveWindow(0, 0, 650, 40);
    Paint(row);
    CRect place;
    row.expandButton.GetWindowRect(&place);
    EXPECT_EQ(place.Height(), 38);
}

TEST_F(TrackCtrlPaintTest, WithoutARulerTheButtonIsLeftAlone) {
    CTrackCtrl& row = MakeRow(KeyKind::None);
    timeline.grid = nullptr;
    Paint(row);
    EXPECT_FALSE(row.expandButton.IsWindowVisible());
}

TEST_F(TrackCtrlPaintTest, SecondPaintDrawsTheSameAndAsksForNoThird) {
    CTrackCtrl& row = MakeRow(KeyKind::None);
    const Lines first = Paint(row);
    EXPECT_EQ(Paint(row), first);
    QCoreApplication::processEvents();
    EXPECT_FALSE(WantsPaint(row));
    EXPECT_FALSE(WantsPaint(row));
}

TEST_F(TrackCtrlPaintTest, RowNarrowerThanItsNameColumnIsPainted) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    AddBox(row, 1.0f, 2.0f);
    for (const int width : {151, 150, 149, 1}) {
        row.MoveWindow(0, 0, width, 20);
        Paint(row);
        EXPECT_EQ(row.pixelsPerSecond, static_cast<float>(width - 150) / 10.0f);
    }
}

TEST_F(TrackCtrlPaintTest, FarAndUnendingTimesArePainted) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    row.SetTimeRange(0.0f, 1e9f);
    AddBox(row, 0.0f, 1e9f);
    AddBox(row, 1.0f, std::numeric_limits<float>::infinity());
    row.SetView(0.0f, 1e-6f);
    EXPECT_FALSE(Paint(row).empty());
    row.SetView(0.0f, 1e9f);
    EXPECT_FALSE(Paint(row).empty());
}

namespace {

/// What a row of many keys shows, pixel by pixel.
class TrackCtrlManyKeysTest : public TrackCtrlTest {
protected:
    /// Paints the row's rects into a picture of its own. Earlier calls lie below later ones.
    static std::vector<COLORREF> Picture(const std::vector<DrawCall>& calls) {
        CBitmap bitmap;
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        bitmap.CreateCompatibleBitmap(nullptr, kWidth, kHeight);
        dc.SelectObject(&bitmap);
        for (const DrawCall& call : calls) {
            CPen pen(call.penStyle, call.penWidth, call.penColor);
            CBrush brush(call.brushColor);
            dc.SelectObject(&pen);
            dc.SelectObject(&brush);
            if (call.kind == DrawKind::Rectangle) {
                dc.Rectangle(call.rect);
            } else if (call.kind == DrawKind::Line) {
                dc.MoveTo(call.rect.TopLeft());
                dc.LineTo(call.rect.BottomRight());
            }
            dc.SelectStockObject(BLACK_PEN);
            dc.SelectStockObject(WHITE_BRUSH);
        }
        std::vector<COLORREF> pixels;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                pixels.push_back(dc.GetPixel(x, y));
            }
        }
        return pixels;
    }
    std::vector<DrawCall> Calls(CTrackCtrl& row) {
        std::vector<DrawCall> calls;
        const HookScope scope;
        Hooks().drawing = [&calls](const DrawCall& call) { calls.push_back(call); };
        RenderRow(row);
        return calls;
    }
    /// The picture of a row with the same axis that draws key by key in list order.
    std::vector<DrawCall> CallsKeyByKey(CTrackCtrl& row) {
        CTrackCtrl& empty = MakeRow(row.kind);
        std::vector<DrawCall> calls = Calls(empty);
        calls.pop_back(); // the name and its cell come behind the keys
        const DrawCall cell = calls.back();
        calls.pop_back();
        const HookScope scope;
        Hooks().drawing = [&calls](const DrawCall& call) { calls.push_back(call); };
        CBitmap bitmap;
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        bitmap.CreateCompatibleBitmap(nullptr, kWidth, kHeight);
        dc.SelectObject(&bitmap);
        const CRect area(150, 0, kWidth, kHeight);
        for (CTrackKey* key : row.keys) {
            const double x = static_cast<double>(key->time) * 50.0 + 150.0;
            key->Draw(&dc, static_cast<int>(x), row.GetKeyTop(key, area), 50.0f, &area, false);
        }
        calls.push_back(cell);
        dc.SelectStockObject(BLACK_PEN);
        return calls;
    }
};

} // namespace

TEST_F(TrackCtrlManyKeysTest, ManyBarsLookLikeAllOfThemDrawn) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    std::mt19937 random(5);
    row.keys.BeginFill();
    for (int i = 0; i < 20000; ++i) {
        CNullTimeTrackKey* key = AddBar(row, std::uniform_real_distribution<float>(0.0f, 10.0f)(random));
        key->rectHeight = 9 + static_cast<int>(random() % 8);
        key->normalColor = random() & 0xFFFFFF;
        key->marked = random() % 5 == 0;
        key->state = random() % 7 == 0 ? CTrackKey::kHidden : CTrackKey::kNormal;
    }
    row.keys.EndFill();
    const std::vector<DrawCall> calls = Calls(row);
    // 506 columns can begin a bar, in 8 heights, with at most 3 calls each.
    EXPECT_LT(calls.size(), 506U * 8 * 3 + 10);
    EXPECT_EQ(Picture(calls), Picture(CallsKeyByKey(row)));
}

TEST_F(TrackCtrlManyKeysTest, ManyBoxesLookLikeAllOfThemDrawn) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    std::mt19937 random(6);
    row.keys.BeginFill();
    for (int i = 0; i < 20000; ++i) {
        CTimedTrackKey* key = AddBox(row, std::uniform_real_distribution<float>(0.0f, 10.0f)(random),
                                     static_cast<float>(random() % 20) * 0.01f);
        key->normalColor = random() & 0xFFFFFF;
        key->state = random() % 7 == 0 ? CTrackKey::kHidden : CTrackKey::kNormal;
    }
    row.keys.EndFill();
    const std::vector<DrawCall> calls = Calls(row);
    EXPECT_LT(calls.size(), 501U * 20 + 10);
    EXPECT_EQ(Picture(calls), Picture(CallsKeyByKey(row)));
}
