#include "timeline/AdjustTimeDlg.h"

#include "resources/resource.h"
#include "tests/support/CommaLocale.h"
#include "tests/timeline/CommandFixture.h"
#include "tests/timeline/ModalUser.h"

#include <gmock/gmock.h>
#include <QAbstractButton>
#include <QLineEdit>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr int kLength = 0;
constexpr int kFrom = 1;
constexpr int kTo = 2;
const char* const kInsert = "Insert";
const char* const kClose = "Close";
const char* const kEnd = "End";

/// A user at the dialog, which the menu beside the rows opens. The actor has position keys at 0, 4, 5 and 6,
/// the cursor stands at 5.
class AdjustTimeDlgTest : public CommandTest {
protected:
    AdjustTimeDlgTest() {
        for (const float time : {4.0f, 5.0f, 6.0f}) {
            Put(Row(KeyKind::Position), time);
        }
        MoveCursor(5.0f);
    }
    void MoveCursor(float time) { plugin.SetTime(time, /*fromWindow*/ false); }
    void Open(const std::function<void()>& user) {
        EXPECT_TRUE(ModalUser::Work([this] { RunAt(IDC_ADJUST_TIME, nullptr, 0.0f); }, user));
    }
    void OpenForRow(CTrackCtrl* row, const std::function<void()>& user) {
        EXPECT_TRUE(ModalUser::Work([=, this] { RunAt(IDC_ADJUST_TIME, row, 0.0f); }, user));
    }
    std::vector<float> Positions() { return TimesOf(*Row(KeyKind::Position)); }
    void ExpectUnchanged() {
        EXPECT_EQ(film->length, 10.0f);
        EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 5.0f, 6.0f));
    }
    static bool IsEnabled(int field) { return ModalUser::Field(field)->isEnabled(); }
    static bool IsEndChecked() { return ModalUser::Button(kEnd)->isChecked(); }
};

} // namespace

TEST_F(AdjustTimeDlgTest, OpensWithTheTimeOfTheCursorAndNoNumbers) {
    Open([] {
        EXPECT_EQ(ModalUser::Window()->windowTitle(), "Adjust time");
        EXPECT_TRUE(ModalUser::Says("Current time:"));
        EXPECT_TRUE(ModalUser::Says("5.000"));
        for (const int field : {kLength, kFrom, kTo}) {
            EXPECT_EQ(ModalUser::TextOf(field), "0.000");
            EXPECT_TRUE(IsEnabled(field));
        }
        EXPECT_FALSE(IsEndChecked());
        ModalUser::ExpectNeat();
        ModalUser::Key(Qt::Key_Escape);
    });
    ExpectUnchanged();
}

TEST_F(AdjustTimeDlgTest, InsertPutsTimeInFromTheCursorOn) {
    Open([] {
        ModalUser::Type(kLength, "2");
        ModalUser::Click(kInsert);
    });
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 7.0f, 8.0f));
    EXPECT_EQ(film->length, 12.0f);
    EXPECT_EQ(control->currentTime, 5.0f);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(AdjustTimeDlgTest, ANegativeLengthTakesTimeOut) {
    Open([] {
        ModalUser::Type(kLength, "-5.5");
        ModalUser::Click(kInsert);
    });
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 0.5f, 4.0f)); // the one at 5 fell out
    EXPECT_EQ(film->length, 4.5f);
}

TEST_F(AdjustTimeDlgTest, EnterInEachFieldInserts) {
    for (const int field : {kLength, kFrom, kTo}) {
        film->length = 10.0f;
        Open([field] {
            ModalUser::Type(kLength, "1");
            ModalUser::Type(field, field == kLength ? "1" : "0");
            ModalUser::Key(Qt::Key_Return);
        });
        EXPECT_EQ(film->length, 11.0f) << field;
    }
}

TEST_F(AdjustTimeDlgTest, EnterOnTheCheckBoxInsertsAndOnCloseCloses) {
    Open([] {
        ModalUser::Type(kLength, "1");
        ModalUser::Button(kEnd)->setFocus();
        ModalUser::Key(Qt::Key_Return);
    });
    EXPECT_EQ(film->length, 11.0f);
    Open([] {
        ModalUser::Button(kClose)->setFocus();
        ModalUser::Key(Qt::Key_Return);
    });
    EXPECT_EQ(film->length, 11.0f);
}

TEST_F(AdjustTimeDlgTest, EscapeAndCloseChangeNothingAndForgetWhatWasTyped) {
    for (const bool byKey : {true, false}) {
        Open([byKey] {
            EXPECT_EQ(ModalUser::TextOf(kLength), "0.000");
            EXPECT_EQ(ModalUser::TextOf(kFrom), "0.000");
            EXPECT_EQ(ModalUser::TextOf(kTo), "0.000");
            ModalUser::Type(kLength, "2");
            ModalUser::Type(kFrom, "1");
            ModalUser::Type(kTo, "3");
            if (byKey) {
                ModalUser::Key(Qt::Key_Escape);
            } else {
                ModalUser::Click(kClose);
            }
        });
        ExpectUnchanged();
    }
}

TEST_F(AdjustTimeDlgTest, NumbersOfTheLastInsertAreShownAgain) {
    Open([] {
        ModalUser::Type(kLength, "0.5");
        ModalUser::Type(kFrom, "1.25");
        ModalUser::Type(kTo, "2");
        ModalUser::Click(kInsert);
    });
    EXPECT_EQ(film->length, 11.25f); // 10 + 0.75 + 0.5
    MoveCursor(2.0f);
    Open([] {
        EXPECT_TRUE(ModalUser::Says("2.000"));
        EXPECT_EQ(ModalUser::TextOf(kLength), "0.500");
        EXPECT_EQ(ModalUser::TextOf(kFrom), "1.250");
        EXPECT_EQ(ModalUser::TextOf(kTo), "2.000");
        ModalUser::Key(Qt::Key_Return);
    });
    EXPECT_EQ(film->length, 12.5f);
}

TEST_F(AdjustTimeDlgTest, WhatIsNoNumberCountsAsNothing) {
    for (const char* text : {"abc", "", "nan", "inf", "1e99"}) {
        Open([text] {
            ModalUser::Type(kLength, text);
            ModalUser::Type(kFrom, text);
            ModalUser::Type(kTo, text);
            ModalUser::Click(kInsert);
        });
        ExpectUnchanged();
    }
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(AdjustTimeDlgTest, ANumberEndsWhereTheTextIsNone) {
    Open([] {
        ModalUser::Type(kLength, " 2.5s");
        ModalUser::Click(kInsert);
    });
    EXPECT_EQ(film->length, 12.5f);
}

TEST_F(AdjustTimeDlgTest, NumbersHaveAPointInAnyLocale) {
    const CommaLocale comma;
    ASSERT_TRUE(comma.IsInForce());
    Open([] {
        EXPECT_TRUE(ModalUser::Says("5.000"));
        EXPECT_EQ(ModalUser::TextOf(kLength), "0.000");
        ModalUser::Type(kLength, "2.5");
        ModalUser::Click(kInsert);
    });
    EXPECT_EQ(film->length, 12.5f);
}

TEST_F(AdjustTimeDlgTest, StaticStretchesFromTheCursorOn) {
    MoveCursor(4.0f);
    Open([] {
        ModalUser::Type(kFrom, "2");
        ModalUser::Type(kTo, "3");
        ModalUser::Click(kInsert);
    });
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 5.5f, 7.0f));
    EXPECT_EQ(film->length, 11.0f);
}

TEST_F(AdjustTimeDlgTest, StaticComesBeforeInsert) {
    MoveCursor(4.0f);
    Open([] {
        ModalUser::Type(kLength, "1");
        ModalUser::Type(kFrom, "2");
        ModalUser::Type(kTo, "3");
        ModalUser::Click(kInsert);
    });
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 5.0f, 6.5f, 8.0f));
    EXPECT_EQ(film->length, 12.0f);
}

TEST_F(AdjustTimeDlgTest, StaticToNothingOrFromNothingAloneCountsToo) {
    MoveCursor(4.0f);
    Open([] {
        ModalUser::Type(kTo, "1"); // from 0: what lies at the cursor and behind it moves
        ModalUser::Click(kInsert);
    });
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 5.0f, 6.0f, 7.0f));
    EXPECT_EQ(film->length, 11.0f);
    Open([] {
        ModalUser::Type(kFrom, "1.5");
        ModalUser::Type(kTo, "0");
        ModalUser::Click(kInsert);
    });
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 4.5f, 5.5f));
    EXPECT_EQ(film->length, 11.0f);
}

TEST_F(AdjustTimeDlgTest, EndTakesTheIntervalToTheEndOfTheFilm) {
    plugin.filmViewSettings[static_cast<std::size_t>(film->index)].movieEnd = 20.0f;
    film->length = 20.0f;
    Put(Row(KeyKind::Position), 16.0f);
    control->ShowFilm(film, true);
    MoveCursor(4.0f);
    Open([] {
        ModalUser::Click(kEnd);
        EXPECT_FALSE(IsEnabled(kFrom));
        ModalUser::Type(kTo, "8");
        ModalUser::Click(kInsert);
    });
    // 16 seconds became 8; the film isn't shorter.
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 4.5f, 5.0f, 10.0f));
    EXPECT_EQ(film->length, 20.0f);
    Open([] {
        EXPECT_TRUE(IsEndChecked());
        EXPECT_FALSE(IsEnabled(kFrom));
        EXPECT_EQ(ModalUser::TextOf(kFrom), "16.000");
        ModalUser::Click(kEnd);
        EXPECT_TRUE(IsEnabled(kFrom));
        EXPECT_EQ(ModalUser::TextOf(kFrom), "16.000");
        ModalUser::Key(Qt::Key_Escape);
    });
}

TEST_F(AdjustTimeDlgTest, EndIsThatOfTheAxisWhereTheFilmIsShorter) {
    Put(Row(KeyKind::Position), 9.0f);
    control->SetMovieRange(0.0f, 20.0f);
    MoveCursor(4.0f);
    Open([] {
        ModalUser::Click(kEnd);
        ModalUser::Type(kTo, "8");
        ModalUser::Click(kInsert);
    });
    // 16 seconds became 8, not the film's 6.
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 4.5f, 5.0f, 6.5f));
}

TEST_F(AdjustTimeDlgTest, EndStaysCheckedThoughTheDialogIsClosed) {
    Open([] {
        ModalUser::Click(kEnd);
        ModalUser::Key(Qt::Key_Escape);
    });
    Open([] {
        EXPECT_TRUE(IsEndChecked());
        EXPECT_FALSE(IsEnabled(kFrom));
        ModalUser::Click(kEnd);
        ModalUser::Click(kClose);
    });
    Open([] {
        EXPECT_FALSE(IsEndChecked());
        EXPECT_TRUE(IsEnabled(kFrom));
        ModalUser::Key(Qt::Key_Escape);
    });
    ExpectUnchanged();
}

TEST_F(AdjustTimeDlgTest, TheTimeThatIsShownCountsNotTheCursorsOwn) {
    // Required: 1 2/3 is shown as 1.667, which lies behind the key at the cursor.
    constexpr float kTime = 5.0f / 3.0f;
    Put(Row(KeyKind::Position), kTime);
    MoveCursor(kTime);
    Open([] {
        EXPECT_TRUE(ModalUser::Says("1.667"));
        ModalUser::Type(kLength, "1");
        ModalUser::Click(kInsert);
    });
    EXPECT_THAT(Positions(), ElementsAre(0.0f, kTime, 5.0f, 6.0f, 7.0f));
}

TEST_F(AdjustTimeDlgTest, ALongTimeIsCutToTenCharacters) {
    Put(Row(KeyKind::Position), 1234567.75f);
    control->SetCurrentTime(1234567.875f, true); // 1234567.875 as a text
    Open([] {
        EXPECT_TRUE(ModalUser::Says("1234567.87"));
        ModalUser::Type(kLength, "1");
        ModalUser::Click(kInsert);
    });
    // The key at 1234567.75 lies before 1234567.87, which is 1234567.875 as a float32.
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 5.0f, 6.0f, 1234567.75f));
    EXPECT_EQ(film->length, 11.0f);
}

TEST_F(AdjustTimeDlgTest, OpenedFromARowItWorksOnThatRow) {
    const IFilmKey* rotation = Put(Row(KeyKind::Rotation), 6.0f)->record;
    OpenForRow(Row(KeyKind::Position), [] {
        ModalUser::Type(kLength, "2");
        ModalUser::Click(kInsert);
    });
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 7.0f, 8.0f));
    EXPECT_EQ(rotation->time, 6.0f);
    EXPECT_EQ(film->length, 12.0f);
}

TEST_F(AdjustTimeDlgTest, SecondTimeFromTheMenuBesideTheRowsIsForAllRows) {
    const IFilmKey* rotation = Put(Row(KeyKind::Rotation), 6.0f)->record;
    const auto insertOne = [] {
        ModalUser::Type(kLength, "1");
        ModalUser::Click(kInsert);
    };
    OpenForRow(Row(KeyKind::Position), insertOne);
    Open(insertOne);
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 7.0f, 8.0f));
    EXPECT_EQ(rotation->time, 7.0f);
}

TEST_F(AdjustTimeDlgTest, NothingOpensWithoutAFilm) {
    plugin.SetCurrentFilm(nullptr);
    EXPECT_FALSE(ModalUser::Work([this] { Run(IDC_ADJUST_TIME); }, [] {}));
}

TEST_F(AdjustTimeDlgTest, CommandWhileItIsOpenChangesNothing) {
    Open([this] {
        ModalUser::Type(kLength, "2");
        Run(IDC_ADJUST_TIME);
        ASSERT_NE(ModalUser::Window(), nullptr);
        EXPECT_EQ(ModalUser::TextOf(kLength), "2");
        ModalUser::Click(kInsert);
    });
    EXPECT_EQ(film->length, 12.0f);
}

TEST_F(AdjustTimeDlgTest, ItClosesWithItsFilm) {
    IFilm* other = NewFilm();
    const std::function<void()> leaves[] = {[this] { plugin.SetCurrentFilm(nullptr); },
                                            [this, other] { plugin.SetCurrentFilm(other); }};
    for (const std::function<void()>& leave : leaves) {
        plugin.SetCurrentFilm(film);
        Open([&] {
            ModalUser::Type(kLength, "2");
            leave();
            EXPECT_EQ(ModalUser::Window(), nullptr);
        });
        EXPECT_EQ(film->length, 10.0f);
        EXPECT_EQ(other->length, 10.0f);
    }
}

TEST_F(AdjustTimeDlgTest, ItClosesWithAFilmThatIsDeletedAndWithTheLevel) {
    Open([this] {
        plugin.DeleteFilm(film);
        EXPECT_EQ(ModalUser::Window(), nullptr);
    });
    IFilm* next = OpenNewFilm();
    ASSERT_NE(next, nullptr);
    Open([this] {
        plugin.OnNew();
        EXPECT_EQ(ModalUser::Window(), nullptr);
    });
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
}

TEST_F(AdjustTimeDlgTest, RowThatWasMadeAnewMeanwhileIsFoundAgain) {
    const IFilmKey* rotation = Put(Row(KeyKind::Rotation), 6.0f)->record;
    OpenForRow(Row(KeyKind::Position), [this] {
        ModalUser::Type(kLength, "2");
        control->ShowFilm(film, true);
        EXPECT_EQ(control->menuRow, nullptr);
        ModalUser::Click(kInsert);
    });
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 7.0f, 8.0f));
    EXPECT_EQ(rotation->time, 6.0f);
}

TEST_F(AdjustTimeDlgTest, CameraRowIsFoundAgainByItsIndex) {
    const IFilmKey* cuts[] = {AddCut(film, "", 6.0f, 7.0f, 0), AddCut(film, "", 6.0f, 7.0f, 1)};
    control->ShowFilm(film, true);
    const auto insert = [this] {
        ModalUser::Type(kLength, "2");
        control->ShowFilm(film, true);
        ModalUser::Click(kInsert);
    };
    OpenForRow(RowOf("Level", KeyKind::Camera, 1), insert);
    EXPECT_EQ(cuts[0]->time, 6.0f);
    EXPECT_EQ(cuts[1]->time, 8.0f);
}

TEST_F(AdjustTimeDlgTest, ElementRowThatIsGoneIsNotTakenForTheWholeObjects) {
    const IFilmKey* whole = Put(Row(KeyKind::Animation), 6.0f, 1.0f)->record;
    CTrackCtrl* row = control->AddTrackCtrl(/*redraw*/ false);
    row->kind = KeyKind::Animation;
    row->name = "Hips";
    row->track = track;
    row->parent = RowOf("Crate");
    row->parent->InsertBeforeLastAnimationRow(row);
    OpenForRow(row, [this] {
        ModalUser::Type(kLength, "2");
        control->ShowFilm(film, true); // no key names the element, so its row doesn't come back
        ModalUser::Click(kInsert);
    });
    EXPECT_EQ(whole->time, 6.0f);
    EXPECT_EQ(film->length, 10.0f);
}

TEST_F(AdjustTimeDlgTest, RowThatWentMeanwhileTakesTheEditAlong) {
    const IFilmKey* cut = PutTimed(LevelRow(KeyKind::Camera), 6.0f, 2.0f)->record;
    OpenForRow(Row(KeyKind::Position), [this] {
        ModalUser::Type(kLength, "2");
        control->RemoveTrackCtrl(RowOf("Crate"), true);
        ModalUser::Click(kInsert);
        EXPECT_EQ(ModalUser::Window(), nullptr);
    });
    EXPECT_EQ(cut->time, 6.0f);
    EXPECT_EQ(film->length, 10.0f);
}

TEST_F(AdjustTimeDlgTest, KeysThatWentMeanwhileDontMatter) {
    Open([this] {
        ModalUser::Type(kLength, "2");
        Row(KeyKind::Position)->DeleteAllKeys(true);
        ModalUser::Click(kInsert);
    });
    EXPECT_THAT(Positions(), IsEmpty());
    EXPECT_EQ(film->length, 12.0f);
}

TEST_F(AdjustTimeDlgTest, ControlThatGoesTakesTheDialogAlong) {
    Open([this] {
        ModalUser::Type(kLength, "2");
        holder.control = nullptr;
        control.reset();
        EXPECT_EQ(ModalUser::Window(), nullptr);
    });
    EXPECT_EQ(film->length, 10.0f);
}

TEST_F(AdjustTimeDlgTest, WhileTheFilmPlays) {
    std::uint32_t milliseconds = 0;
    Hooks().clock = [&milliseconds] { return milliseconds += 100; };
    bool isOver = false;
    editor.onBroadcast = [&](int code, void*) {
        if (code == EventCode::ObjectsMoved && plugin.isPlaying != 0 && !isOver) {
            isOver = true;
            MoveCursor(5.0f);
            Open([] {
                ModalUser::Type(kLength, "2");
                ModalUser::Click(kInsert);
            });
        }
    };
    plugin.Play(0.0f);
    editor.onBroadcast = nullptr;
    EXPECT_TRUE(isOver);
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_THAT(Positions(), ElementsAre(0.0f, 4.0f, 7.0f, 8.0f));
    EXPECT_EQ(film->length, 12.0f);
    ExpectNothingDangles();
}
