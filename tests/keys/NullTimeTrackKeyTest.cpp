#include "keys/views/NullTimeTrackKey.h"

#include "keys/views/TimedTrackKey.h"
#include "tests/keys/KeyFixture.h"
#include "timeline/rows/TrackCtrl.h"

#include <limits>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class NullTimeTrackKeyTest : public KeyTest {
protected:
    NullTimeTrackKeyTest() {
        view.time = 3.0f;
        view.context = &timeline;
    }

    /// A key of the colour kind; the channels run from 0 to 1.
    void SetColor(const Vector3& color) {
        auto* record = NewRecordOf<CFilmVectorKey>(KeyKind::Color);
        record->value = color;
        view.record = record;
    }
    COLORREF Fill(int state) {
        view.state = state;
        COLORREF fill = 0xFFFFFFFF;
        Hooks().drawing = [&fill](const DrawCall& call) {
            if (call.penStyle == PS_NULL) {
                fill = call.brushColor;
            }
        };
        CDC dc;
        view.Draw(&dc, 100, 20, 1.0f, nullptr, false);
        return fill;
    }

    CNullTimeTrackKey view;
};

TEST_F(NullTimeTrackKeyTest, StartsSixPixelsWideAndNotDragged) {
    EXPECT_EQ(view.width, 6);
    EXPECT_FALSE(view.dragging);
}

// A key at pixel 100, top 20, 15 high: a bar from 97 to 103 and 20 to 35. The square has half the bar's
// width, 3, around the middle 20 + 7: from 24 to 30, and ends a pixel before the bar: 97 to 102.
constexpr const char* kBar = "box 97,20,103,35 pen 5/0/000000 fill 808080";
constexpr const char* kSquare = "box 97,24,102,30 pen 0/0/000000 fill FFFFFF";

TEST_F(NullTimeTrackKeyTest, DrawsABarWithAWhiteSquare) {
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f), ElementsAre(kBar, kSquare));
}

TEST_F(NullTimeTrackKeyTest, BarHasItsWidthWhateverTheField) {
    view.width = 40;
    EXPECT_THAT(Drawn(view, 100, 20, 1000.0f), ElementsAre(kBar, kSquare));
}

TEST_F(NullTimeTrackKeyTest, MarkIsARedLineInTheMiddle) {
    view.marked = true;
    // 97 + 3 - 1 = 99.
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f), ElementsAre(kBar, kSquare, "line 99,20,99,35 pen 0/0/0000FF"));
}

TEST_F(NullTimeTrackKeyTest, OutlineIsABlackHollowFrameFivePixelsAround) {
    view.marked = true;
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, nullptr, /*outline*/ true),
                ElementsAre(kBar, kSquare, "line 99,20,99,35 pen 0/0/0000FF",
                            "box 92,15,108,40 pen 0/0/000000 hollow"));
}

TEST_F(NullTimeTrackKeyTest, OutlineIsCutToTheClip) {
    const CRect clip(95, 18, 300, 300);
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &clip, /*outline*/ true),
                ElementsAre(kBar, kSquare, "box 95,18,108,40 pen 0/0/000000 hollow"));
}

TEST_F(NullTimeTrackKeyTest, BarSquareAndMarkFollowTheClip) {
    view.marked = true;
    const CRect clip(99, 22, 300, 300);
    // 99 to 103 and 22 to 35: the middle is 13 / 2 = 6, the half of the width 4 / 2 = 2.
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &clip), ElementsAre("box 99,22,103,35 pen 5/0/000000 fill 808080",
                                                                "box 99,26,102,30 pen 0/0/000000 fill FFFFFF",
                                                                "line 100,22,100,35 pen 0/0/0000FF"));
}

TEST_F(NullTimeTrackKeyTest, BarOutsideTheClipIsNotDrawn) {
    view.marked = true;
    const CRect behind(103, 0, 300, 300);
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &behind, /*outline*/ true), IsEmpty());
    const CRect before(0, 0, 97, 300);
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &before), IsEmpty());
    const CRect below(0, 0, 300, 19);
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &below), IsEmpty());
}

TEST_F(NullTimeTrackKeyTest, FlatBarKeepsItsSquare) {
    view.rectHeight = 0;
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f), ElementsAre("box 97,20,103,20 pen 5/0/000000 fill 808080",
                                                         "box 97,17,102,23 pen 0/0/000000 fill FFFFFF"));
}

TEST_F(NullTimeTrackKeyTest, HiddenViewDrawsNothing) {
    view.state = CTrackKey::kHidden;
    view.marked = true;
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, nullptr, /*outline*/ true), IsEmpty());
}

TEST_F(NullTimeTrackKeyTest, DrawingWithoutASurfaceDoesNothing) {
    view.Draw(nullptr, 100, 20, 10.0f, nullptr, true);
    EXPECT_EQ(view.state, CTrackKey::kNormal);
}

TEST_F(NullTimeTrackKeyTest, HugePlacesAndHeightsStayInRange) {
    view.rectHeight = std::numeric_limits<int>::max();
    view.marked = true;
    const auto drawn =
        Drawn(view, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 1.0f, nullptr, true);
    EXPECT_EQ(drawn.size(), 4u);
}

TEST_F(NullTimeTrackKeyTest, PensAndBrushesArePutBack) {
    view.marked = true;
    CPen pen(PS_SOLID, 7, 0x010203);
    CBrush brush(0x040506);
    CDC dc;
    dc.SelectObject(&pen);
    dc.SelectObject(&brush);
    view.Draw(&dc, 100, 20, 10.0f, nullptr, /*outline*/ true);
    EXPECT_EQ(dc.SelectObject(&pen), &pen);
    EXPECT_EQ(dc.SelectObject(&brush), &brush);
}

TEST_F(NullTimeTrackKeyTest, BarIsSixPixelsOnTheSurface) {
    CBitmap bitmap;
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    bitmap.CreateCompatibleBitmap(nullptr, 200, 60);
    dc.SelectObject(&bitmap);
    dc.FillSolidRect({0, 0, 200, 60}, 0xFFFFFF);
    view.Draw(&dc, 100, 20, 10.0f, nullptr, false);
    EXPECT_EQ(dc.GetPixel(96, 21), 0xFFFFFFu);
    EXPECT_EQ(dc.GetPixel(97, 20), 0x808080u);
    EXPECT_EQ(dc.GetPixel(102, 34), 0x808080u);
    EXPECT_EQ(dc.GetPixel(103, 21), 0xFFFFFFu);
    EXPECT_EQ(dc.GetPixel(102, 35), 0xFFFFFFu);
    EXPECT_EQ(dc.GetPixel(99, 27), 0xFFFFFFu);  // inside the square
    EXPECT_EQ(dc.GetPixel(97, 24), 0x000000u);  // its frame
    EXPECT_EQ(dc.GetPixel(102, 27), 0x808080u); // and beside it
}

// Colours.

TEST_F(NullTimeTrackKeyTest, StateChoosesTheFill) {
    view.normalColor = 0x112233;
    view.highlightColor = 0x445566;
    EXPECT_EQ(Fill(CTrackKey::kNormal), 0x112233u);
    EXPECT_EQ(Fill(CTrackKey::kHighlighted), 0x445566u);
    EXPECT_EQ(Fill(3), 0u);
}

TEST_F(NullTimeTrackKeyTest, OtherKindsHaveTheColourOfTheKind) {
    auto* record = NewRecordOf<CFilmVectorKey>(KeyKind::Position);
    record->value = {1.0f, 0.0f, 0.0f};
    view.record = record;
    EXPECT_EQ(Fill(CTrackKey::kNormal), 0x808080u);
}

TEST_F(NullTimeTrackKeyTest, ColourKeyHasItsOwnColour) {
    SetColor({0.5f, 0.25f, 1.0f}); // 127.5, 63.75, 255 are cut to 7F, 3F, FF
    EXPECT_EQ(Fill(CTrackKey::kNormal), 0xFF3F7Fu);
}

TEST_F(NullTimeTrackKeyTest, SelectedColourKeyIsThirtyStepsBrighter) {
    SetColor({0.5f, 0.25f, 0.0f}); // 127 + 30 = 9D, 63 + 30 = 5D, 30 = 1E
    EXPECT_EQ(Fill(CTrackKey::kHighlighted), 0x1E5D9Du);
}

TEST_F(NullTimeTrackKeyTest, WhiteColourKeyStaysWhiteWhenSelected) {
    SetColor({1.0f, 1.0f, 1.0f});
    EXPECT_EQ(Fill(CTrackKey::kNormal), 0xFFFFFFu);
    EXPECT_EQ(Fill(CTrackKey::kHighlighted), 0xFFFFFFu); // 285 is capped
}

TEST_F(NullTimeTrackKeyTest, ChannelsOutsideTheRangeWrapAtEightBits) {
    // 257.55 is cut to 257, 1 in 8 bits; -127.5 to -127, 129; 510 is 254.
    SetColor({1.01f, -0.5f, 2.0f});
    EXPECT_EQ(Fill(CTrackKey::kNormal), 0xFE8101u);
    // 287 and 540 are capped; 30 - 127 = -97 is 159.
    EXPECT_EQ(Fill(CTrackKey::kHighlighted), 0xFF9FFFu);
}

TEST_F(NullTimeTrackKeyTest, ColourThatIsNoNumberDraws) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    SetColor({nan, infinity, -infinity});
    // 0; cut to 7FFFFFFF, so FF; cut to -80000000, so 00.
    EXPECT_EQ(Fill(CTrackKey::kNormal), 0x00FF00u);
    // 30; capped; 30 - 7FFFFFFF ends in 1F.
    EXPECT_EQ(Fill(CTrackKey::kHighlighted), 0x1FFF1Eu);
}

// Hit test.

TEST_F(NullTimeTrackKeyTest, IsHitHalfItsWidthToBothSidesInclusive) {
    // 6 / 2 pixels of an eighth of a second: from 2.625 to 3.375.
    EXPECT_FALSE(view.HitTime(2.6249f, 0.125f));
    EXPECT_TRUE(view.HitTime(2.625f, 0.125f));
    EXPECT_TRUE(view.HitTime(3.375f, 0.125f));
    EXPECT_FALSE(view.HitTime(3.3751f, 0.125f));
}

TEST_F(NullTimeTrackKeyTest, HalfTheWidthIsAWholeNumberOfPixels) {
    view.width = 5; // 2 pixels
    EXPECT_TRUE(view.HitTime(3.25f, 0.125f));
    EXPECT_FALSE(view.HitTime(3.2501f, 0.125f));
}

TEST_F(NullTimeTrackKeyTest, WidthOfOneIsAPoint) {
    view.width = 1;
    EXPECT_TRUE(view.HitTime(3.0f, 10.0f));
    EXPECT_FALSE(view.HitTime(3.0001f, 10.0f));
}

// The record, copies and comparison.

TEST_F(NullTimeTrackKeyTest, RecordGivesItsTimeWhenAsked) {
    LoggingKey record;
    record.time = 1.5f;
    view.SetRecord(&record, /*takeTimes*/ false);
    EXPECT_EQ(view.record, &record);
    EXPECT_EQ(view.time, 3.0f);
    view.SetRecord(&record, /*takeTimes*/ true);
    EXPECT_EQ(view.time, 1.5f);
    EXPECT_THAT(record.log, IsEmpty());
}

TEST_F(NullTimeTrackKeyTest, OldRecordStaysInItsTrack) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* film = OpenFilmWith({crate});
    CFilmTrack* track = film->FindObjectTrack(crate);
    IFilmKey* key = AddKey(track, KeyKind::JavaMethod, 1.0f);
    view.SetRecord(key, /*takeTimes*/ true);
    view.SetRecord(nullptr, /*takeTimes*/ true);
    EXPECT_EQ(view.record, nullptr);
    EXPECT_EQ(view.time, 1.0f);
    EXPECT_THAT(KeysOf(*track, KeyKind::JavaMethod), ElementsAre(key));
}

class NullTimeCopyTest : public NullTimeTrackKeyTest {
protected:
    NullTimeCopyTest() {
        other.name = "Name";
        other.time = 7.0f;
        other.width = 9;
        otherRecord.flags = KeyFlag::NoDuration;
    }

    CNullTimeTrackKey other;
    LoggingKey otherRecord;
};

TEST_F(NullTimeCopyTest, CopyTakesTheWidth) {
    other.record = &otherRecord;
    EXPECT_TRUE(view.CopyFrom(&other, /*copyTime*/ false));
    EXPECT_EQ(view.width, 9);
}

TEST_F(NullTimeCopyTest, CopyOfANegativeWidthIsNone) {
    other.record = &otherRecord;
    other.width = -4;
    EXPECT_TRUE(view.CopyFrom(&other, /*copyTime*/ false));
    EXPECT_EQ(view.width, 0);
}

TEST_F(NullTimeCopyTest, CopyWithoutARecordAnswersFalseAndHasCopied) {
    EXPECT_FALSE(view.CopyFrom(&other, /*copyTime*/ true));
    EXPECT_EQ(view.name, "Name");
    EXPECT_EQ(view.time, 7.0f);
    EXPECT_EQ(view.width, 6);
}

TEST_F(NullTimeCopyTest, CopyOfARecordWithDurationAnswersFalse) {
    other.record = &otherRecord;
    otherRecord.flags = KeyFlag::MayOverlap;
    EXPECT_FALSE(view.CopyFrom(&other, /*copyTime*/ false));
    EXPECT_EQ(view.name, "Name");
    EXPECT_EQ(view.width, 6);
}

TEST_F(NullTimeCopyTest, CopyOfNothingIsRefused) {
    EXPECT_FALSE(view.CopyFrom(nullptr, /*copyTime*/ true));
    EXPECT_EQ(view.time, 3.0f);
}

TEST_F(NullTimeTrackKeyTest, EqualKeysHaveOneWidth) {
    CNullTimeTrackKey other;
    other.time = 3.0f;
    EXPECT_TRUE(view.Equals(&other, true));
    other.width = 7;
    EXPECT_FALSE(view.Equals(&other, true));
}

// Marks.

/// Two rows of one track with a key each, and a row of another track.
class ClearMarksTest : public NullTimeTrackKeyTest {
protected:
    ClearMarksTest() {
        for (CTrackCtrl* row : {&first, &second}) {
            row->parent = &root;
            root.children.push_back(row);
        }
        stranger.parent = &otherRoot;
        otherRoot.children.push_back(&stranger);
        Add(first, view);
        Add(first, beside);
        Add(second, timed);
        Add(stranger, foreign);
    }
    ~ClearMarksTest() override {
        for (CTrackCtrl* row : {&first, &second, &stranger}) {
            row->keys.Clear(); // the views are the test's own
        }
        for (CTrackCtrl* row : {&root, &otherRoot}) {
            row->children.clear();
        }
    }
    static void Add(CTrackCtrl& row, CTrackKey& key) {
        row.keys.Insert(&key);
        key.marked = true;
    }

    CNullTimeTrackKey beside;
    CTimedTrackKey timed;
    CNullTimeTrackKey foreign;
    CTrackCtrl root;
    CTrackCtrl otherRoot;
    CTrackCtrl first;
    CTrackCtrl second;
    CTrackCtrl stranger;
};

TEST_F(ClearMarksTest, AllRowsOfTheTrackLoseTheirMarks) {
    view.ClearMarks(&first);
    EXPECT_FALSE(view.marked);
    EXPECT_FALSE(beside.marked);
    EXPECT_FALSE(timed.marked);
    EXPECT_TRUE(foreign.marked);
    EXPECT_THAT(timeline.log, ElementsAre("InvalidateControl false"));
}

TEST_F(ClearMarksTest, KeyWithoutAMarkClearsNone) {
    view.marked = false;
    view.ClearMarks(&first);
    EXPECT_TRUE(beside.marked);
    EXPECT_THAT(timeline.log, IsEmpty());
}

TEST_F(ClearMarksTest, RowWithoutAParentClearsNone) {
    view.ClearMarks(&root);
    view.ClearMarks(nullptr);
    EXPECT_TRUE(view.marked);
    EXPECT_TRUE(beside.marked);
    EXPECT_THAT(timeline.log, IsEmpty());
}

TEST_F(ClearMarksTest, TimedKeyClearsNone) {
    timed.ClearMarks(&second);
    EXPECT_TRUE(timed.marked);
    EXPECT_TRUE(view.marked);
}

TEST_F(NullTimeTrackKeyTest, DraggingEndsWithTheButton) {
    view.dragging = true;
    view.OnLButtonUp();
    EXPECT_FALSE(view.dragging);
}

} // namespace
