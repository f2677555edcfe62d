#include "keys/views/TimedTrackKey.h"

#include "tests/keys/KeyFixture.h"
#include "tests/support/FakeKeyFactory.h"

#include <cmath>
#include <limits>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

class TimedTrackKeyTest : public KeyTest {
protected:
    /// A view from 2 to 7 seconds, 15 pixels high.
    TimedTrackKeyTest() {
        view.time = 2.0f;
        view.duration = 5.0f;
        view.context = &timeline;
    }
    ~TimedTrackKeyTest() override { view.record = nullptr; }

    CTimedTrackKey view;
    LoggingKey record;
};

TEST_F(TimedTrackKeyTest, StartsAsANormalKeyOfNoLength) {
    const CTimedTrackKey fresh;
    EXPECT_EQ(fresh.name, "");
    EXPECT_EQ(fresh.normalColor, 0x808080u);
    EXPECT_EQ(fresh.highlightColor, 0xC0C0C0u);
    EXPECT_EQ(fresh.rectHeight, 15);
    EXPECT_EQ(fresh.state, 0);
    EXPECT_EQ(fresh.savedTime, -1.0f);
    EXPECT_EQ(fresh.record, nullptr);
    EXPECT_FALSE(fresh.marked);
    EXPECT_FALSE(fresh.selected);
    EXPECT_EQ(fresh.duration, 0.0f);
    EXPECT_EQ(fresh.dragMode, 0);
}

// Drawing. The box of a key at pixel 100, top 20: from 99, 21 down to 20 + 15 - 1 = 34.

TEST_F(TimedTrackKeyTest, DrawsABoxFromItsStartToItsEnd) {
    // 10 * 5 = 50 pixels: right = 100 + 50 - 1.
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f), ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080"));
}

TEST_F(TimedTrackKeyTest, BoxIsOnePixelWiderFromMoreThanHalfAPixelOn) {
    view.duration = 2.25f; // 2 * 2.25 = 4.5: not above a half
    EXPECT_THAT(Drawn(view, 100, 20, 2.0f), ElementsAre("box 99,21,103,34 pen 0/2/000000 fill 808080"));
    view.duration = 2.375f; // 4.75
    EXPECT_THAT(Drawn(view, 100, 20, 2.0f), ElementsAre("box 99,21,104,34 pen 0/2/000000 fill 808080"));
}

TEST_F(TimedTrackKeyTest, KeyOfLessThanHalfAPixelIsABoxOfNoWidth) {
    view.duration = 0.4f;
    EXPECT_THAT(Drawn(view, 100, 20, 1.0f), ElementsAre("box 99,21,99,34 pen 0/2/000000 fill 808080"));
}

TEST_F(TimedTrackKeyTest, StateChoosesTheFill) {
    view.normalColor = 0x112233;
    view.highlightColor = 0x445566;
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f), ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 112233"));
    view.state = CTrackKey::kHighlighted;
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f), ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 445566"));
    view.state = 3;
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f), ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 000000"));
}

TEST_F(TimedTrackKeyTest, HiddenViewDrawsNothing) {
    view.state = CTrackKey::kHidden;
    view.selected = true;
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, nullptr, /*outline*/ true), IsEmpty());
}

TEST_F(TimedTrackKeyTest, DrawingWithoutASurfaceDoesNothing) {
    view.Draw(nullptr, 100, 20, 10.0f, nullptr, true);
    EXPECT_EQ(view.state, CTrackKey::kNormal);
}

TEST_F(TimedTrackKeyTest, BoxOfAnUnselectedKeyIsNotClipped) {
    const CRect clip(110, 0, 120, 25);
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &clip),
                ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080"));
}

TEST_F(TimedTrackKeyTest, SelectedKeyHasAWhiteGripAtEachEnd) {
    view.selected = true;
    // Side 34 - 21 = 13: left 99 - 3 - 13 = 83 to 96, right 149 + 3 = 152 to 165.
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f), ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080",
                                                         "box 83,21,96,34 pen 0/2/000000 fill FFFFFF",
                                                         "box 152,21,165,34 pen 0/2/000000 fill FFFFFF"));
}

TEST_F(TimedTrackKeyTest, GripsAreCutToTheClip) {
    view.selected = true;
    const CRect clip(90, 25, 160, 40);
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &clip),
                ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080",
                            "box 90,25,96,34 pen 0/2/000000 fill FFFFFF",
                            "box 152,25,160,34 pen 0/2/000000 fill FFFFFF"));
}

TEST_F(TimedTrackKeyTest, GripOutsideTheClipIsNotDrawn) {
    view.selected = true;
    const CRect clip(96, 0, 200, 40); // begins where the left grip ends
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &clip),
                ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080",
                            "box 152,21,165,34 pen 0/2/000000 fill FFFFFF"));
}

struct LabelRow {
    int kind;
    const char* label; ///< null for none
};

class KeyLabelTest : public KeyTest, public ::testing::WithParamInterface<LabelRow> {
protected:
    /// Writes a text into every field of the record that could be shown.
    static void Fill(IFilmKey& record) {
        switch (record.kind) {
        case KeyKind::Camera:
            static_cast<CFilmCameraKey&>(record).cameraName = "Eye";
            break;
        case KeyKind::Animation:
            static_cast<CFilmAnimationKey&>(record).animationName = "Walk";
            static_cast<CFilmAnimationKey&>(record).meshElement = "Body";
            break;
        case KeyKind::Speech:
            static_cast<CFilmSpeechKey&>(record).speechPath = "s/Hello.ogg";
            static_cast<CFilmSpeechKey&>(record).speechText = "Hello";
            break;
        case KeyKind::Sound:
            static_cast<CFilmSoundKey&>(record).wavPath = "s/Bang.wav";
            break;
        default:
            static_cast<CFilmFxKey&>(record).fxName = "Smoke";
        }
    }
};

TEST_P(KeyLabelTest, KindChoosesTheLabel) {
    CTimedTrackKey view;
    view.duration = 5.0f;
    view.record = NewRecord(GetParam().kind);
    Fill(*view.record);
    const std::string box = "box 99,21,149,34 pen 0/2/000000 fill 808080";
    if (GetParam().label == nullptr) {
        EXPECT_THAT(Drawn(view, 100, 20, 10.0f), ElementsAre(box));
        return;
    }
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f),
                ElementsAre(box, std::string("text '") + GetParam().label + "' in 99,21,149,34 format 4025"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, KeyLabelTest,
                         ::testing::Values(LabelRow{0, "Eye"}, LabelRow{1, "Walk"}, LabelRow{2, nullptr},
                                           LabelRow{3, nullptr}, LabelRow{4, nullptr}, LabelRow{5, nullptr},
                                           LabelRow{6, nullptr}, LabelRow{7, nullptr},
                                           LabelRow{8, "s/Hello.ogg"}, LabelRow{9, "s/Bang.wav"}));

class LabelledKeyTest : public TimedTrackKeyTest {
protected:
    LabelledKeyTest() {
        auto* camera = NewRecordOf<CFilmCameraKey>(KeyKind::Camera);
        camera->cameraName = "Eye";
        view.record = camera;
    }
};

TEST_F(LabelledKeyTest, LabelOfAnUnselectedKeyStandsInTheWholeBox) {
    const CRect clip(110, 0, 140, 40);
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &clip), ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080",
                                                                "text 'Eye' in 99,21,149,34 format 4025"));
}

TEST_F(LabelledKeyTest, LabelOfASelectedKeyStandsInTheClippedBox) {
    view.selected = true;
    const CRect clip(110, 0, 140, 40);
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &clip), ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080",
                                                                "text 'Eye' in 110,21,140,34 format 4025"));
}

TEST_F(LabelledKeyTest, SelectedKeyOutsideTheClipHasNeitherLabelNorOutline) {
    view.selected = true;
    const CRect clip(300, 0, 400, 40);
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &clip, /*outline*/ true),
                ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080"));
}

TEST_F(LabelledKeyTest, LabelIsDrawnInEightPointArialWithoutBackground) {
    CFont mine;
    mine.CreatePointFont(200, "Courier");
    CDC dc;
    dc.SelectObject(&mine);
    dc.SetBkMode(OPAQUE);
    std::vector<int> modes;
    std::vector<CSize> sizes;
    CFont expected;
    expected.CreatePointFont(80, "Arial");
    CDC measure;
    measure.SelectObject(&expected);
    Hooks().drawing = [&](const DrawCall& call) {
        if (call.kind == DrawKind::Text) {
            modes.push_back(dc.GetBkMode());
            sizes.push_back(dc.GetTextExtent("Eye"));
        }
    };
    view.Draw(&dc, 100, 20, 10.0f, nullptr, false);
    EXPECT_THAT(modes, ElementsAre(TRANSPARENT));
    ASSERT_EQ(sizes.size(), 1u);
    EXPECT_EQ(sizes[0].cx, measure.GetTextExtent("Eye").cx);
    EXPECT_EQ(sizes[0].cy, measure.GetTextExtent("Eye").cy);
    EXPECT_EQ(dc.GetBkMode(), OPAQUE);
}

TEST_F(LabelledKeyTest, PensBrushesAndFontsArePutBack) {
    view.selected = true;
    CPen pen(PS_SOLID, 7, 0x010203);
    CBrush brush(0x040506);
    CFont font;
    font.CreatePointFont(120, "Courier");
    CDC dc;
    dc.SelectObject(&pen);
    dc.SelectObject(&brush);
    dc.SelectObject(&font);
    view.Draw(&dc, 100, 20, 10.0f, nullptr, /*outline*/ true);
    EXPECT_EQ(dc.SelectObject(&pen), &pen);
    EXPECT_EQ(dc.SelectObject(&brush), &brush);
    EXPECT_EQ(dc.SelectObject(&font), &font);
}

TEST_F(TimedTrackKeyTest, OutlineIsAHollowFrameFivePixelsAround) {
    EXPECT_THAT(
        Drawn(view, 100, 20, 10.0f, nullptr, /*outline*/ true),
        ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080", "box 94,16,154,39 pen 0/2/000000 hollow"));
}

TEST_F(TimedTrackKeyTest, OutlineIsCutToTheClip) {
    const CRect clip(97, 18, 300, 300);
    EXPECT_THAT(
        Drawn(view, 100, 20, 10.0f, &clip, /*outline*/ true),
        ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080", "box 97,18,154,39 pen 0/2/000000 hollow"));
}

TEST_F(TimedTrackKeyTest, OutlineOfASelectedKeyGoesAroundTheClippedBox) {
    view.selected = true;
    const CRect clip(110, 0, 140, 40);
    // The box is cut to 110 to 140 and grown to 105 to 145, which is cut again.
    EXPECT_THAT(Drawn(view, 100, 20, 10.0f, &clip, /*outline*/ true),
                ElementsAre("box 99,21,149,34 pen 0/2/000000 fill 808080",
                            "box 110,16,140,39 pen 0/2/000000 hollow"));
}

TEST_F(TimedTrackKeyTest, EndlessAndUnknownWidthsAreCut) {
    // Widths are cut to 2^24 = 16777216 pixels; what is left over counts as a pixel more.
    EXPECT_THAT(Drawn(view, 100, 20, kInfinity),
                ElementsAre("box 99,21,16777316,34 pen 0/2/000000 fill 808080"));
    EXPECT_THAT(Drawn(view, 100, 20, kNaN), ElementsAre("box 99,21,99,34 pen 0/2/000000 fill 808080"));
    view.duration = 1e9f;
    EXPECT_THAT(Drawn(view, -100, 20, 1e9f),
                ElementsAre("box -101,21,16777116,34 pen 0/2/000000 fill 808080"));
}

TEST_F(TimedTrackKeyTest, HugePlacesAndHeightsStayInRange) {
    view.selected = true;
    view.rectHeight = std::numeric_limits<int>::max();
    const auto drawn = Drawn(view, std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 1e30f,
                             nullptr, /*outline*/ true);
    EXPECT_EQ(drawn.size(), 4u);
    EXPECT_FALSE(view.HitGrip(-10, std::numeric_limits<int>::max(), 1e30f));
}

TEST_F(TimedTrackKeyTest, DrawsOntoRealPixels) {
    CBitmap bitmap;
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    bitmap.CreateCompatibleBitmap(nullptr, 200, 60);
    dc.SelectObject(&bitmap);
    dc.FillSolidRect({0, 0, 200, 60}, 0xFFFFFF);
    view.normalColor = 0x40C0F0;
    view.Draw(&dc, 100, 20, 10.0f, nullptr, false);
    EXPECT_EQ(dc.GetPixel(120, 28), 0x40C0F0u);
    EXPECT_EQ(dc.GetPixel(120, 33), 0x000000u); // the frame's last line
    EXPECT_EQ(dc.GetPixel(120, 34), 0xFFFFFFu); // the bottom is excluded
    EXPECT_EQ(dc.GetPixel(149, 28), 0xFFFFFFu); // and so is the right
}

// Hit tests.

TEST_F(TimedTrackKeyTest, IsHitFromItsStartToItsEndInclusive) {
    EXPECT_FALSE(view.HitTime(1.999f, 1.0f));
    EXPECT_TRUE(view.HitTime(2.0f, 1.0f));
    EXPECT_TRUE(view.HitTime(7.0f, 1.0f));
    EXPECT_FALSE(view.HitTime(7.001f, 1.0f));
}

TEST_F(TimedTrackKeyTest, GripsAreHitAtTheFullHeightEndsIncluded) {
    // Start 100, end 100 + 50: 100 - 15 - 3 = 82 to 97 and 153 to 168.
    EXPECT_FALSE(view.HitGrip(81, 100, 10.0f));
    EXPECT_TRUE(view.HitGrip(82, 100, 10.0f));
    EXPECT_TRUE(view.HitGrip(97, 100, 10.0f));
    EXPECT_FALSE(view.HitGrip(98, 100, 10.0f));
    EXPECT_FALSE(view.HitGrip(152, 100, 10.0f));
    EXPECT_TRUE(view.HitGrip(153, 100, 10.0f));
    EXPECT_TRUE(view.HitGrip(168, 100, 10.0f));
    EXPECT_FALSE(view.HitGrip(169, 100, 10.0f));
}

TEST_F(TimedTrackKeyTest, GripsOfAHiddenUnselectedKeyAreHitToo) {
    view.state = CTrackKey::kHidden;
    EXPECT_TRUE(view.HitGrip(90, 100, 10.0f));
}

TEST_F(TimedTrackKeyTest, GripEndIsCutTowardZero) {
    view.duration = 5.09f; // 50.9 pixels: the end stays at 150
    EXPECT_TRUE(view.HitGrip(153, 100, 10.0f));
    EXPECT_FALSE(view.HitGrip(169, 100, 10.0f));
}

TEST_F(TimedTrackKeyTest, GripsOfAnUnknownScaleStandAtTheStart) {
    EXPECT_TRUE(view.HitGrip(103, 100, kNaN));
    EXPECT_FALSE(view.HitGrip(150, 100, kInfinity));
}

// Times.

TEST_F(TimedTrackKeyTest, DurationGoesToTheRecordAsItsEnd) {
    view.record = &record;
    view.SetDuration(3.0f, /*viewOnly*/ false);
    EXPECT_EQ(view.duration, 3.0f);
    EXPECT_THAT(record.log, ElementsAre("SetEndTime 5"));
}

TEST_F(TimedTrackKeyTest, DurationOfTheViewAloneLeavesTheRecord) {
    view.record = &record;
    view.SetDuration(3.0f, /*viewOnly*/ true);
    EXPECT_EQ(view.duration, 3.0f);
    EXPECT_THAT(record.log, IsEmpty());
}

TEST_F(TimedTrackKeyTest, DurationOfAThousandthOrLessIsIgnoredWhole) {
    view.record = &record;
    for (const float duration : {0.001f, 0.0f, -1.0f, kNaN}) {
        view.SetDuration(duration, /*viewOnly*/ false);
        EXPECT_EQ(view.duration, 5.0f) << duration;
    }
    EXPECT_THAT(record.log, IsEmpty());
    view.SetDuration(0.0011f, /*viewOnly*/ false);
    EXPECT_EQ(view.duration, 0.0011f);
}

TEST_F(TimedTrackKeyTest, DurationWithoutARecordChangesTheView) {
    view.SetDuration(3.0f, /*viewOnly*/ false);
    EXPECT_EQ(view.GetDuration(), 3.0f);
}

TEST_F(TimedTrackKeyTest, MoveCarriesTheEndAlong) {
    view.record = &record;
    view.SetPosition(4.0f, /*viewOnly*/ false);
    EXPECT_THAT(record.log, ElementsAre("SetTime 4", "SetEndTime 9"));
}

TEST_F(TimedTrackKeyTest, RestoredTimeCarriesTheEndAlong) {
    view.record = &record;
    view.SaveTime();
    view.SetPosition(4.0f, /*viewOnly*/ true);
    view.RestoreTime(/*keep*/ false);
    EXPECT_EQ(view.time, 2.0f);
    EXPECT_EQ(view.savedTime, -1.0f);
    EXPECT_THAT(record.log, ElementsAre("SetTime 2", "SetEndTime 7"));
}

TEST_F(TimedTrackKeyTest, RecordGivesItsTimesWhenAsked) {
    record.time = 1.5f;
    record.endTime = 4.0f;
    view.SetRecord(&record, /*takeTimes*/ true);
    EXPECT_EQ(view.record, &record);
    EXPECT_EQ(view.time, 1.5f);
    EXPECT_EQ(view.duration, 2.5f);
}

TEST_F(TimedTrackKeyTest, RecordWithoutItsTimesLeavesTheView) {
    record.time = 1.5f;
    record.endTime = 4.0f;
    view.SetRecord(&record, /*takeTimes*/ false);
    EXPECT_EQ(view.time, 2.0f);
    EXPECT_EQ(view.duration, 5.0f);
    EXPECT_THAT(record.log, IsEmpty());
}

TEST_F(TimedTrackKeyTest, NewViewIsFiveSecondsLongWhileItsRecordIsNot) {
    CTimedTrackKey fresh;
    fresh.SetDuration(5.0f, /*viewOnly*/ false);
    IFilmKey* made = NewRecord(KeyKind::Sound);
    const float madeEnd = made->endTime;
    fresh.SetRecord(made, /*takeTimes*/ false);
    EXPECT_EQ(fresh.duration, 5.0f);
    EXPECT_EQ(made->endTime, madeEnd);
    fresh.SetPosition(2.0f, /*viewOnly*/ false);
    EXPECT_EQ(fresh.record->time, 2.0f);
    EXPECT_EQ(fresh.record->endTime, 7.0f);
}

TEST_F(TimedTrackKeyTest, RecordInATrackIsDeletedThroughItsTrackByTheNext) {
    IFilm* film = NewFilm();
    IFilmKey* old = AddKey(film->mainTrack, KeyKind::Sound, 1.0f);
    view.SetRecord(old, /*takeTimes*/ false);
    view.SetRecord(&record, /*takeTimes*/ false);
    EXPECT_THAT(KeysOf(*film->mainTrack, KeyKind::Sound), IsEmpty());
    EXPECT_EQ(view.record, &record);
}

TEST_F(TimedTrackKeyTest, RecordInATrackIsDeletedByNone) {
    IFilm* film = NewFilm();
    view.SetRecord(AddKey(film->mainTrack, KeyKind::Sound, 1.0f), /*takeTimes*/ false);
    view.SetRecord(nullptr, /*takeTimes*/ true);
    EXPECT_THAT(KeysOf(*film->mainTrack, KeyKind::Sound), IsEmpty());
    EXPECT_EQ(view.record, nullptr);
}

TEST_F(TimedTrackKeyTest, RecordInNoTrackGoesBackToTheFactory) {
    FakeKeyFactory factory(Films());
    factory.ownsNone = true;
    LoggingKey old;
    view.SetRecord(&old, /*takeTimes*/ false);
    view.SetRecord(&record, /*takeTimes*/ false);
    EXPECT_THAT(factory.destroyed, ElementsAre(&old));
}

TEST_F(TimedTrackKeyTest, SameRecordAgainIsNotDeleted) {
    IFilm* film = NewFilm();
    IFilmKey* key = AddKey(film->mainTrack, KeyKind::Sound, 1.0f);
    view.SetRecord(key, /*takeTimes*/ false);
    view.SetRecord(key, /*takeTimes*/ true);
    EXPECT_THAT(KeysOf(*film->mainTrack, KeyKind::Sound), ElementsAre(key));
    EXPECT_EQ(view.time, 1.0f);
}

TEST_F(TimedTrackKeyTest, AttributesWindowLetsGoOfADeletedRecord) {
    IFilm* film = NewFilm();
    FakeAttributes& dialog = OpenAttributes();
    IFilmKey* old = AddKey(film->mainTrack, KeyKind::Sound, 1.0f);
    dialog.record = old;
    view.SetRecord(old, /*takeTimes*/ false);
    EXPECT_THAT(calls, IsEmpty());
    view.SetRecord(nullptr, /*takeTimes*/ false);
    EXPECT_THAT(calls, ElementsAre("Reset"));
}

TEST_F(TimedTrackKeyTest, DyingViewLeavesItsRecordAlone) {
    IFilm* film = NewFilm();
    IFilmKey* key = AddKey(film->mainTrack, KeyKind::Sound, 1.0f);
    {
        CTimedTrackKey passing;
        passing.SetRecord(key, /*takeTimes*/ true);
    }
    EXPECT_THAT(KeysOf(*film->mainTrack, KeyKind::Sound), ElementsAre(key));
}

// Copies and comparison.

TEST_F(TimedTrackKeyTest, CopyTakesTheDurationAndEndsTheRecord) {
    CTimedTrackKey other;
    other.time = 10.0f;
    other.duration = 3.0f;
    view.record = &record;
    EXPECT_TRUE(view.CopyFrom(&other, /*copyTime*/ false));
    EXPECT_EQ(view.time, 2.0f);
    EXPECT_EQ(view.duration, 3.0f);
    EXPECT_THAT(record.log, ElementsAre("SetEndTime 5"));
}

TEST_F(TimedTrackKeyTest, CopiedTimeWritesTheOldDurationFirst) {
    CTimedTrackKey other;
    other.time = 10.0f;
    other.duration = 3.0f;
    view.record = &record;
    EXPECT_TRUE(view.CopyFrom(&other, /*copyTime*/ true));
    EXPECT_THAT(record.log, ElementsAre("SetTime 10", "SetEndTime 15", "SetEndTime 13"));
}

TEST_F(TimedTrackKeyTest, CopyOfARecordWithoutDurationKeepsTheOwn) {
    LoggingKey source;
    source.flags = KeyFlag::NoDuration;
    CTimedTrackKey other;
    other.duration = 3.0f;
    other.record = &source;
    EXPECT_TRUE(view.CopyFrom(&other, /*copyTime*/ false));
    EXPECT_EQ(view.duration, 5.0f);
}

TEST_F(TimedTrackKeyTest, CopyOfTooShortADurationKeepsTheOwn) {
    CTimedTrackKey other;
    other.duration = 0.001f;
    EXPECT_TRUE(view.CopyFrom(&other, /*copyTime*/ false));
    EXPECT_EQ(view.duration, 5.0f);
}

TEST_F(TimedTrackKeyTest, CopyOfNothingIsRefused) {
    EXPECT_FALSE(view.CopyFrom(nullptr, /*copyTime*/ true));
    EXPECT_EQ(view.time, 2.0f);
}

TEST_F(TimedTrackKeyTest, EqualDurationsDifferByLessThanAMillionth) {
    CTimedTrackKey other;
    other.time = 2.0f;
    other.duration = 5.0f;
    EXPECT_TRUE(view.Equals(&other, true));
    view.duration = 0.5f;
    other.duration = 0.5000005f;
    EXPECT_TRUE(view.Equals(&other, true));
    other.duration = 0.500002f;
    EXPECT_FALSE(view.Equals(&other, true));
}

TEST_F(TimedTrackKeyTest, DragModeEndsWithTheButton) {
    view.dragMode = CTimedTrackKey::kDragLeft;
    view.OnLButtonUp();
    EXPECT_EQ(view.dragMode, CTimedTrackKey::kDragNone);
}

} // namespace
