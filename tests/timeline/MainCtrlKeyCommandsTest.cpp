#include "tests/timeline/CommandFixture.h"

#include "files/base/Log.h"
#include "framework/UserNote.h"
#include "keys/views/LooseKey.h"
#include "resources/resource.h"
#include "undo/KeyActions.h"

#include <gmock/gmock.h>
#include <limits>
#include <set>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<std::string> debugLines;

/// The commands of the menu of a key.
class KeyCommandsTest : public CommandTest {
protected:
    KeyCommandsTest() {
        debugLines.clear();
        SetLogListener([](const char* text) { debugLines.emplace_back(text); });
    }
    ~KeyCommandsTest() override { SetLogListener(nullptr); }

    static constexpr float kInfinity = std::numeric_limits<float>::infinity();
    static constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
};

float SixSeconds(const std::string&) {
    return 6.0f;
}

float NoSeconds(const std::string&) {
    return 0.0f;
}

float EndlessSeconds(const std::string&) {
    return std::numeric_limits<float>::infinity();
}

int MethodOf(const IFilmKey& record, bool in) {
    if (record.kind == KeyKind::Roll || record.kind == KeyKind::FieldOfView) {
        const auto& key = static_cast<const CFilmScalarKey&>(record);
        return in ? key.inMethod : key.outMethod;
    }
    const auto& key = static_cast<const CFilmVectorKey&>(record);
    return in ? key.inMethod : key.outMethod;
}

} // namespace

TEST_F(KeyCommandsTest, RemoveKeyTakesItOutOfRowAndTrack) {
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* key = Put(row, 4.0f);
    RunOn(IDC_REMOVE_KEY, row, key);
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f));
    EXPECT_EQ(KeysOf(*track, KeyKind::Position).size(), 1u);
    Run(IDC_REMOVE_KEY); // of a key that is in no row any more
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f));
}

TEST_F(KeyCommandsTest, RemovedKeyIsKeptForUndoAndItsRowPainted) {
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* key = Put(row, 4.0f);
    const IFilmKey* record = key->record;
    Settle();
    ASSERT_FALSE(WantsPaint(*row));
    RunOn(IDC_REMOVE_KEY, row, key);
    EXPECT_TRUE(WantsPaint(*row));
    const std::vector<CFilmsUndoAction*>& actions = control->undoMgr.retired.Actions();
    ASSERT_FALSE(actions.empty());
    const auto* action = dynamic_cast<const CFUADeleteKey*>(actions.back());
    ASSERT_NE(action, nullptr);
    EXPECT_EQ(action->key, key);
    EXPECT_EQ(action->trackCtrl, row);
    EXPECT_EQ(key->record, record);
    EXPECT_EQ(record->track, nullptr);
}

TEST_F(KeyCommandsTest, RemoveKeyNeedsKeyAndRow) {
    CTrackCtrl* row = Row(KeyKind::Position);
    RunOn(IDC_REMOVE_KEY, row, nullptr);
    RunOn(IDC_REMOVE_KEY, nullptr, *row->keys.begin());
    EXPECT_THAT(TimesOf(*row), ElementsAre(0.0f));
}

TEST_F(KeyCommandsTest, SetPositionAsksAndMoves) {
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* key = Put(row, 4.0f);
    UserTypes(6.5f);
    Settle();
    RunOn(IDC_SET_POSITION, row, key);
    EXPECT_THAT(questions, ElementsAre("Key position|Position :"));
    EXPECT_EQ(offered, 4.0f);
    EXPECT_EQ(key->time, 6.5f);
    EXPECT_EQ(key->record->time, 6.5f);
    EXPECT_TRUE(WantsPaint(*row));
}

TEST_F(KeyCommandsTest, SetPositionOntoAnotherKeyOrOffTheAxisIsRefusedWithoutAWord) {
    CTrackCtrl* row = Row(KeyKind::Position); // has a key at 0
    CTrackKey* key = Put(row, 4.0f);
    for (const float time : {0.0f, -1.0f, 10.5f, kNaN, kInfinity, -kInfinity}) {
        UserTypes(time);
        RunOn(IDC_SET_POSITION, row, key);
        EXPECT_EQ(key->time, 4.0f) << time;
        EXPECT_EQ(key->record->time, 4.0f) << time;
    }
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(KeyCommandsTest, CopiedKeysAndPlacesWithoutRoomAreToldInTheStatusBar) {
    std::vector<std::string> notes;
    SetUserNoteSink([&notes](const std::string& text) { notes.push_back(text); });
    CTrackCtrl* row = Row(KeyKind::Position); // has a key at 0
    CTrackKey* key = Put(row, 4.0f);
    RunOn(IDC_COPY_ATTRIBUTES, row, nullptr);
    EXPECT_THAT(notes, IsEmpty()) << "no key was copied";
    RunOn(IDC_COPY_ATTRIBUTES, row, key);
    UserTypes(0.0f);
    RunOn(IDC_SET_POSITION, row, key);
    UserTypes(5.0f);
    RunOn(IDC_SET_POSITION, row, key);
    SetUserNoteSink(nullptr);
    EXPECT_THAT(notes,
                ElementsAre("The key is copied. \"Paste attributes\" on a key of its kind takes what it "
                            "says, \"Paste key\" on a row makes another.",
                            "There is no room for the key at that time: it stays where it is."));
}

TEST_F(KeyCommandsTest, CancelledNumberChangesNothing) {
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTrackKey* key = Put(row, 4.0f, 2.0f);
    editor.onInputNumber = [](float& value, const std::string&, const std::string&) {
        value = 1.0f;
        return false;
    };
    RunOn(IDC_SET_POSITION, row, key);
    RunOn(IDC_SET_DURATION, row, key);
    EXPECT_EQ(key->time, 4.0f);
    EXPECT_EQ(key->GetDuration(), 2.0f);
}

TEST_F(KeyCommandsTest, SetPositionShortensATimedKeyThatWouldReachTheNext) {
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTimedTrackKey* key = PutTimed(row, 0.0f, 2.0f);
    Put(row, 6.0f, 1.0f);
    UserTypes(5.0f);
    RunOn(IDC_SET_POSITION, row, key);
    EXPECT_EQ(key->time, 5.0f);
    EXPECT_EQ(key->duration, 1.0f);
    EXPECT_EQ(key->record->endTime, 6.0f);
}

TEST_F(KeyCommandsTest, SetDurationAsksAndTakesIt) {
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTimedTrackKey* key = PutTimed(row, 1.0f, 2.0f);
    UserTypes(3.0f);
    RunOn(IDC_SET_DURATION, row, key);
    EXPECT_THAT(questions, ElementsAre("Key duration|Duration :"));
    EXPECT_EQ(offered, 2.0f);
    EXPECT_EQ(key->duration, 3.0f);
    EXPECT_EQ(key->record->endTime, 4.0f);
}

TEST_F(KeyCommandsTest, SetDurationIsCutToTheRoomWithoutAWord) {
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTimedTrackKey* key = PutTimed(row, 1.0f, 2.0f);
    UserTypes(1.0e30f);
    RunOn(IDC_SET_DURATION, row, key);
    EXPECT_EQ(key->duration, 9.0f); // to the end of the axis
    Put(row, 10.0f, 1.0f);
    key->SetDuration(2.0f, false);
    UserTypes(20.0f);
    RunOn(IDC_SET_DURATION, row, key);
    EXPECT_EQ(key->duration, 9.0f); // to the next key
    EXPECT_EQ(key->record->endTime, 10.0f);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(KeyCommandsTest, DurationsThatAreNoneAreIgnored) {
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTimedTrackKey* key = PutTimed(row, 1.0f, 2.0f);
    for (const float duration : {0.0f, 0.001f, -3.0f, kNaN, kInfinity}) {
        UserTypes(duration);
        RunOn(IDC_SET_DURATION, row, key);
        EXPECT_EQ(key->duration, 2.0f) << duration;
    }
}

TEST_F(KeyCommandsTest, RowIsPaintedAlsoWhereTheDurationStays) {
    editor.level.SetSoundDuration(NoSeconds);
    Put(Row(KeyKind::Sound), 1.0f, 2.0f);
    control->ShowFilm(film, true); // the row shows, now that it has a key
    RowOf("Crate")->SetExpanded(true, true);
    CTrackCtrl* row = Row(KeyKind::Sound);
    UserTypes(0.0f);
    for (const UINT command : {IDC_SET_DURATION, IDC_CALC_KEY_DURATION}) {
        Settle();
        ASSERT_FALSE(WantsPaint(*row));
        RunOn(command, row, row->keys.front());
        EXPECT_TRUE(WantsPaint(*row)) << command;
    }
}

TEST_F(KeyCommandsTest, KeysWithoutADurationAreNotAskedForOne) {
    UserTypes(3.0f);
    CTrackCtrl* row = Row(KeyKind::Position);
    RunOn(IDC_SET_DURATION, row, *row->keys.begin());
    RunOn(IDC_CALC_KEY_DURATION, row, *row->keys.begin());
    EXPECT_THAT(questions, IsEmpty());
}

TEST_F(KeyCommandsTest, WhatGoesWhileTheUserIsAskedIsNotTouched) {
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTrackKey* key = Put(row, 4.0f, 2.0f);
    const IFilmKey* record = key->record;
    editor.onInputNumber = [this](float& value, const std::string&, const std::string&) {
        value = 1.0f;
        control->ShowFilm(film, true);
        return true;
    };
    RunOn(IDC_SET_POSITION, row, key);
    EXPECT_EQ(record->time, 4.0f);
    row = Row(KeyKind::Sound);
    RunOn(IDC_SET_DURATION, row, *row->keys.begin());
    EXPECT_EQ(record->endTime, 6.0f);
}

TEST_F(KeyCommandsTest, AControlThatGoesWhileTheUserIsAskedIsNotTouched) {
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTrackKey* key = Put(row, 4.0f, 2.0f);
    const IFilmKey* record = key->record;
    editor.onInputNumber = [this](float& value, const std::string&, const std::string&) {
        value = 1.0f;
        plugin.scenarioDlg = nullptr;
        control.reset();
        return true;
    };
    RunOn(IDC_SET_POSITION, row, key);
    EXPECT_EQ(record->time, 4.0f);
}

TEST_F(KeyCommandsTest, CalcDurationTakesTheNaturalLength) {
    editor.level.SetSoundDuration(SixSeconds);
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTimedTrackKey* key = PutTimed(row, 1.0f, 2.0f);
    RunOn(IDC_CALC_KEY_DURATION, row, key);
    EXPECT_EQ(key->duration, 6.0f);
    EXPECT_EQ(key->record->endTime, 7.0f);
}

TEST_F(KeyCommandsTest, CalcDurationIsCutToTheRoom) {
    editor.level.SetSoundDuration(SixSeconds);
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTimedTrackKey* key = PutTimed(row, 1.0f, 2.0f);
    Put(row, 4.0f, 1.0f);
    RunOn(IDC_CALC_KEY_DURATION, row, key);
    EXPECT_EQ(key->duration, 3.0f);
}

TEST_F(KeyCommandsTest, CalcDurationPutsTheOldOneBackWhereTheKeyHasNoPlace) {
    editor.level.SetSoundDuration(SixSeconds);
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTimedTrackKey* key = PutTimed(row, 1.0f, 2.0f);
    Put(row, 0.5f, 3.0f); // lies over its start
    RunOn(IDC_CALC_KEY_DURATION, row, key);
    EXPECT_EQ(key->duration, 2.0f);
    EXPECT_EQ(key->record->endTime, 3.0f);
}

TEST_F(KeyCommandsTest, CalcDurationNeedsALengthAboveNothing) {
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTimedTrackKey* key = PutTimed(row, 1.0f, 2.0f);
    PutTimed(row, 2.5f, 1.0f); // the key reaches into this one, and is not cut either
    for (const auto length : {NoSeconds, EndlessSeconds}) {
        editor.level.SetSoundDuration(length);
        RunOn(IDC_CALC_KEY_DURATION, row, key);
        EXPECT_EQ(key->duration, 2.0f);
    }
    CTimedTrackKey* rain = PutTimed(LevelRow(KeyKind::FxRain), 1.0f, 2.0f); // -1
    RunOn(IDC_CALC_KEY_DURATION, LevelRow(KeyKind::FxRain), rain);
    EXPECT_EQ(rain->duration, 2.0f);
}

TEST_F(KeyCommandsTest, EveryMethodCommandSetsItsSideOfTheKey) {
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* key = *row->keys.begin();
    const UINT in[] = {36854, 36855, 36856, 36857, 36858, 36867};
    const UINT out[] = {36859, 36860, 36861, 36862, 36863, 36868};
    editor.calls.clear();
    for (int method = 0; method < 6; ++method) {
        const int before = MethodOf(*key->record, /*in*/ false);
        RunOn(in[method], row, key);
        EXPECT_EQ(MethodOf(*key->record, /*in*/ true), method);
        EXPECT_EQ(MethodOf(*key->record, /*in*/ false), before);
        RunOn(out[method], row, key);
        EXPECT_EQ(MethodOf(*key->record, /*in*/ false), method);
    }
    EXPECT_EQ(editor.Count("RedrawViews"), 12);
}

TEST_F(KeyCommandsTest, MethodsBelongToTheKindsWithCurves) {
    const std::set<int> curves{10, 11, 12, 14, 16, 17, 18, 19};
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        CTrackKey* view = control->CreateKeyView(kind);
        const LooseKey owner(view);
        editor.calls.clear();
        debugLines.clear();
        RunOn(IDC_IN_USER, nullptr, view);
        control->menuKey = nullptr;
        if (curves.contains(kind)) {
            EXPECT_EQ(editor.Count("RedrawViews"), 1) << kind;
            EXPECT_EQ(MethodOf(*view->record, /*in*/ true), BezierMethod::User) << kind;
            EXPECT_THAT(debugLines, IsEmpty()) << kind;
        } else {
            EXPECT_EQ(editor.Count("RedrawViews"), 0) << kind;
            EXPECT_THAT(debugLines,
                        ElementsAre("[CFilmsMainCtrl::OnMenuChangeBezierMethod] not Bezier key\n"))
                << kind;
        }
    }
}

TEST_F(KeyCommandsTest, MethodOfTheKeyOnShowIsReadAnew) {
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* key = *row->keys.begin();
    RunOn(IDC_OUT_LINEAR, row, key);
    EXPECT_THAT(dialog.log, IsEmpty());
    dialog.SetKey(key, false);
    dialog.log.clear();
    RunOn(IDC_OUT_LINEAR, row, key);
    EXPECT_THAT(dialog.log, ElementsAre("Refresh"));
}

TEST_F(KeyCommandsTest, TimesOfTheKeyOnShowAreReadAnew) {
    editor.level.SetSoundDuration(SixSeconds);
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    CTrackCtrl* row = Row(KeyKind::Sound);
    CTimedTrackKey* key = PutTimed(row, 1.0f, 2.0f);
    dialog.SetKey(key, false);
    UserTypes(3.0f);
    for (const UINT command : {IDC_SET_POSITION, IDC_SET_DURATION, IDC_CALC_KEY_DURATION}) {
        dialog.log.clear();
        RunOn(command, row, key);
        EXPECT_THAT(dialog.log, ElementsAre("Refresh")) << command;
    }
}

TEST_F(KeyCommandsTest, HideTrackHidesTheRow) {
    CTrackCtrl* row = Row(KeyKind::Rotation);
    RunOn(IDC_HIDE_TRACK, row, nullptr);
    EXPECT_THAT(VisibleNames(), ElementsAre("Level", "Crate", "Position keys", "Scale keys"));
    RunOn(IDC_HIDE_TRACK, nullptr, nullptr);
    EXPECT_THAT(VisibleNames(), ElementsAre("Level", "Crate", "Position keys", "Scale keys"));
}

TEST_F(KeyCommandsTest, UnknownCommandsAreAnswered) {
    for (const UINT id : {UINT{0}, UINT{36798}, UINT{36866}, UINT{36853}, UINT{0xFFFFFFFF}}) {
        EXPECT_TRUE(control->OnCmdMsg(id, 0, nullptr, nullptr));
    }
}
