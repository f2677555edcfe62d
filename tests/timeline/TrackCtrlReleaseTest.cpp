// The end of a drag, its question, and what a double click does to a drag and to a copied key.
#include "tests/timeline/GestureFixture.h"

#include <functional>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class TrackCtrlReleaseTest : public GestureTest {
protected:
    TrackCtrlReleaseTest() {
        Hooks().messageBox = [this](const std::string& text, UINT type) {
            questions.push_back(text);
            questionType = type;
            if (meanwhile) {
                meanwhile();
            }
            return answer;
        };
    }
    /// A box from 1 to 3 seconds that is moved and shut while it is held.
    CTimedTrackKey* HoldShutBox() {
        CTimedTrackKey* key = PutBox(1.0f, 2.0f);
        PressAt(sounds, 2.0f);
        key->duration = 0.0f;
        key->SetPosition(4.0f, /*viewOnly*/ false);
        StartWatching();
        return key;
    }

    std::vector<std::string> questions;
    UINT questionType = 0;
    int answer = IDNO;
    std::function<void()> meanwhile;
};

} // namespace

TEST_F(TrackCtrlReleaseTest, ClickWithoutAMoveIsNoEdit) {
    PutBar(bars, 4.0f);
    PressAt(bars, 4.0f);
    ReleaseAt(bars, 4.0f);
    EXPECT_THAT(Edits(), IsEmpty());
}

TEST_F(TrackCtrlReleaseTest, MoveIsAnEditThatHoldsTheOldPlace) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    PressAt(sounds, 2.0f);
    DragTo(sounds, 3.5f);
    ReleaseAt(sounds, 3.5f);
    ExpectBox(*key, 2.0f, 2.0f);
    const CFUAChangeSize* change = TheChange();
    ASSERT_NE(change, nullptr);
    EXPECT_EQ(change->key, key);
    EXPECT_EQ(change->trackCtrl, &sounds);
    EXPECT_EQ(change->start, 1.0f);
    EXPECT_EQ(change->end, 3.0f);
}

TEST_F(TrackCtrlReleaseTest, MoveBackToTheOldPlaceIsNoEdit) {
    CTrackKey* key = PutBar(bars, 4.0f);
    PressAt(bars, 4.0f);
    DragTo(bars, 5.5f);
    DragTo(bars, 4.5f);
    ReleaseAt(bars, 4.5f);
    EXPECT_EQ(key->time, 4.0f);
    EXPECT_THAT(Edits(), IsEmpty());
}

TEST_F(TrackCtrlReleaseTest, MillionthOfASecondIsNoEdit) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    PressAt(sounds, 2.0f);
    key->SetPosition(1.0000005f, /*viewOnly*/ false);
    ReleaseAt(sounds, 2.0f);
    EXPECT_THAT(Edits(), IsEmpty());
    PressAt(sounds, 2.0f);
    key->SetPosition(1.000003f, /*viewOnly*/ false);
    ReleaseAt(sounds, 2.0f);
    EXPECT_NE(TheChange(), nullptr);
}

TEST_F(TrackCtrlReleaseTest, ShutKeyAsksWhetherItMayGo) {
    HoldShutBox();
    ReleaseAt(sounds, 2.0f);
    EXPECT_THAT(questions, ElementsAre("Do You want to delete this key?"));
    EXPECT_EQ(questionType & 0xF, UINT{MB_YESNO});
}

TEST_F(TrackCtrlReleaseTest, NoPutsLengthAndPlaceBack) {
    const CTimedTrackKey* key = HoldShutBox();
    ReleaseAt(sounds, 2.0f);
    ExpectBox(*key, 1.0f, 2.0f);
    EXPECT_TRUE(key->selected);
    EXPECT_THAT(Edits(), IsEmpty());
    EXPECT_TRUE(WantsPaint(sounds));
}

TEST_F(TrackCtrlReleaseTest, YesTakesTheKeyOutWithAnEdit) {
    answer = IDYES;
    CTimedTrackKey* key = HoldShutBox();
    IFilmKey* record = key->record;
    ReleaseAt(sounds, 2.0f);
    EXPECT_THAT(sounds.keys, IsEmpty());
    EXPECT_EQ(record->track, nullptr);
    EXPECT_THAT(timeline.selectedKeys, IsEmpty());
    ASSERT_EQ(Edits().size(), 1U);
    const auto* removal = dynamic_cast<CFUADeleteKey*>(Edits().front());
    ASSERT_NE(removal, nullptr);
    EXPECT_EQ(removal->key, key); // it lives on there, with its record
    EXPECT_EQ(removal->trackCtrl, &sounds);
    EXPECT_TRUE(WantsPaint(sounds));
    EXPECT_EQ(sounds.dragKey, nullptr);
}

TEST_F(TrackCtrlReleaseTest, YesInAnotherRowTakesTheKeyOutOfItsOwn) {
    answer = IDYES;
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    IFilmKey* record = key->record;
    CurrentKey() = key;
    Press(turns, 310, kMiddle);
    key->duration = 0.0f;
    Release(turns, 310, kMiddle);
    EXPECT_THAT(sounds.keys, IsEmpty());
    EXPECT_EQ(record->track, nullptr);
}

TEST_F(TrackCtrlReleaseTest, MouseIsFreeBeforeTheQuestion) {
    HoldShutBox();
    meanwhile = [this] {
        EXPECT_EQ(CWnd::GetCapture(), nullptr);
        EXPECT_EQ(sounds.dragKey, nullptr);
    };
    ReleaseAt(sounds, 2.0f);
    EXPECT_EQ(questions.size(), 1U);
}

TEST_F(TrackCtrlReleaseTest, MouseUnderTheQuestionDragsNothing) {
    const CTimedTrackKey* key = HoldShutBox();
    meanwhile = [this] {
        DragTo(sounds, 8.0f);
        ReleaseAt(sounds, 8.0f);
    };
    ReleaseAt(sounds, 2.0f);
    ExpectBox(*key, 1.0f, 2.0f);
    EXPECT_EQ(questions.size(), 1U);
}

TEST_F(TrackCtrlReleaseTest, KeyThatGoesUnderTheQuestionEndsIt) {
    for (const int given : {IDYES, IDNO}) {
        answer = given;
        CTimedTrackKey* key = HoldShutBox();
        meanwhile = [this, key] { sounds.RemoveKey(key, /*destroy*/ true, false, /*noUndo*/ true); };
        ReleaseAt(sounds, 2.0f);
        EXPECT_THAT(sounds.keys, IsEmpty());
        EXPECT_THAT(Edits(), IsEmpty());
    }
}

TEST_F(TrackCtrlReleaseTest, RowsThatGoUnderTheQuestionEndIt) {
    for (const int given : {IDYES, IDNO}) {
        answer = given;
        CTrackCtrl& row = MakeRow(KeyKind::FxRain);
        CTimedTrackKey* key = AddBox(row, 1.0f, 2.0f);
        CurrentKey() = nullptr;
        PressAt(row, 2.0f);
        key->duration = 0.0f;
        meanwhile = [this] { timeline.rows.pop_back(); };
        ReleaseAt(row, 2.0f);
        EXPECT_EQ(timeline.rows.size(), 4U);
        EXPECT_THAT(Edits(), IsEmpty());
    }
}

// A key whose record never had a length.
TEST_F(TrackCtrlReleaseTest, KeyThatWasShutBeforeIsNotAskedAbout) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    key->duration = 0.0f;
    PressAt(sounds, 1.0f);
    ASSERT_EQ(sounds.dragKey, key);
    ReleaseAt(sounds, 1.0f);
    EXPECT_THAT(questions, IsEmpty());
    EXPECT_THAT(Edits(), IsEmpty());
}

TEST_F(TrackCtrlReleaseTest, LengthThatIsNoNumberIsAskedAbout) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    PressAt(sounds, 2.0f);
    key->duration = std::numeric_limits<float>::quiet_NaN();
    ReleaseAt(sounds, 2.0f);
    EXPECT_EQ(questions.size(), 1U);
    ExpectBox(*key, 1.0f, 2.0f);
}

TEST_F(TrackCtrlReleaseTest, ReleaseElsewhereLeavesTheMouseToItsHolder) {
    PutBar(bars, 4.0f);
    PressAt(bars, 4.0f);
    ReleaseAt(turns, 4.0f);
    EXPECT_EQ(CWnd::GetCapture(), &bars);
    EXPECT_NE(bars.dragKey, nullptr);
}

TEST_F(TrackCtrlReleaseTest, PressWhoseReleaseNeverCameIsEndedByTheNext) {
    CTrackKey* key = PutBar(bars, 4.0f);
    CTrackKey* other = PutBar(bars, 9.0f);
    PressAt(bars, 4.0f);
    DragTo(bars, 5.5f);
    PressAt(bars, 9.0f);
    EXPECT_EQ(bars.dragKey, other);
    EXPECT_EQ(bars.dragTime, 9.0f);
    EXPECT_EQ(key->time, 6.0f);
    ASSERT_NE(TheChange(), nullptr);
    EXPECT_EQ(TheChange()->key, key);
}

TEST_F(TrackCtrlReleaseTest, DoubleClickShowsTheAttributesAndDragsNothing) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    const CTrackKey* key = PutBar(bars, 4.0f);
    PressAt(bars, 4.0f);
    ReleaseAt(bars, 4.0f);
    bars.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(X(4.0f), kMiddle));
    DragTo(bars, 6.0f);
    ReleaseAt(bars, 6.0f);
    EXPECT_THAT(dialog.log, ElementsAre("SetKey key", "Show 5"));
    EXPECT_EQ(dialog.key, key);
    EXPECT_EQ(key->time, 4.0f);
    EXPECT_THAT(Edits(), IsEmpty());
}

TEST_F(TrackCtrlReleaseTest, CopiedKeyOutlivesAPressOnAKey) {
    CTrackKey* key = PutBar(bars, 4.0f);
    ASSERT_TRUE(timeline.keyDuplicator.Set(key, &bars, /*clone*/ false));
    PressAt(bars, 4.0f);
    HoverAt(bars, 5.5f);
    ReleaseAt(bars, 5.5f);
    EXPECT_EQ(timeline.keyDuplicator.sourceKey, key);
    EXPECT_EQ(timeline.keyDuplicator.sourceTime, 4.0f);
}

// Required: the release forgets the source whatever it was remembered for.
TEST_F(TrackCtrlReleaseTest, CopiedKeyIsForgottenByAClickBesideTheKeys) {
    CTrackKey* key = PutBar(bars, 4.0f);
    for (const int x : {X(8.0f), 60}) { // on empty time, and on the name
        timeline.keyDuplicator.Set(key, &bars, /*clone*/ false);
        StartWatching();
        Press(turns, x, kMiddle);
        EXPECT_TRUE(timeline.keyDuplicator.HasSource());
        Release(turns, x, kMiddle);
        EXPECT_FALSE(timeline.keyDuplicator.HasSource());
        EXPECT_TRUE(WantsPaint(turns));
    }
    EXPECT_THAT(TimesOf(bars), ElementsAre(4.0f));
}

TEST_F(TrackCtrlReleaseTest, CopiedKeyIsForgottenByTheSecondReleaseOfADoubleClick) {
    OpenFakeAttributes(plugin);
    CTrackKey* key = PutBar(bars, 4.0f);
    timeline.keyDuplicator.Set(key, &bars, /*clone*/ false);
    PressAt(bars, 4.0f);
    ReleaseAt(bars, 4.0f);
    bars.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(X(4.0f), kMiddle));
    EXPECT_TRUE(timeline.keyDuplicator.HasSource());
    ReleaseAt(bars, 4.0f);
    EXPECT_FALSE(timeline.keyDuplicator.HasSource());
}
