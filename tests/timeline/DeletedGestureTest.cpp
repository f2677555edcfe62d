// A gesture under which something goes: the key, its row, its film, the level, the window.
#include "tests/support/MouseScript.h"
#include "tests/timeline/HeldGestureFixture.h"

#include <algorithm>

using ::testing::Contains;
using ::testing::Not;
using ::testing::UnorderedElementsAreArray;

namespace {

enum class Loss {
    Key,
    KindRow,
    RootRow,
    Actor,
    FilmDeleted,
    FilmSwitch,
    FilmClosed,
    NewLevel,
    Suspended,
    Rebuild
};

constexpr Loss kAllLosses[] = {Loss::Key,         Loss::KindRow,    Loss::RootRow,    Loss::Actor,
                               Loss::FilmDeleted, Loss::FilmSwitch, Loss::FilmClosed, Loss::NewLevel,
                               Loss::Suspended,   Loss::Rebuild};
constexpr const char* kLossNames[] = {"Key",        "KindRow",    "RootRow",  "Actor",     "FilmDeleted",
                                      "FilmSwitch", "FilmClosed", "NewLevel", "Suspended", "Rebuild"};

class DeletedGestureTest : public HeldGestureTest,
                           public ::testing::WithParamInterface<std::tuple<Gesture, Loss>> {
protected:
    void Lose(Loss loss) {
        CTrackCtrl* row = heldRow != nullptr ? heldRow : bars;
        CTrackKey* key = heldKey != nullptr ? heldKey : bars->keys.front();
        switch (loss) {
        case Loss::Key:
            return control->FindRowOfKeyView(key, false)
                ->RemoveKey(key, /*destroy*/ true, /*redraw*/ true,
                            /*noUndo*/ true);
        case Loss::KindRow:
            return control->RemoveTrackCtrl(row, true);
        case Loss::RootRow:
            return control->RemoveTrackCtrl(row->parent, true);
        case Loss::Actor:
            return editor.DeleteObjects({crate});
        case Loss::FilmDeleted:
            return plugin.DeleteFilm(film);
        case Loss::FilmSwitch:
            return plugin.SetCurrentFilm(NewFilm());
        case Loss::FilmClosed:
            return plugin.SetCurrentFilm(nullptr);
        case Loss::NewLevel:
            return plugin.OnNew();
        case Loss::Suspended:
            return Suspend();
        case Loss::Rebuild:
            return control->ShowFilm(film, true);
        }
    }
};

class EndedGestureTest : public HeldGestureTest, public ::testing::WithParamInterface<Gesture> {};

} // namespace

TEST_P(DeletedGestureTest, LeavesNothingHeld) {
    const auto [gesture, loss] = GetParam();
    Begin(gesture);
    Lose(loss);
    ExpectNothingDangles();
    MoveOnAndRelease();
    Settle();
    ExpectNothingHeld();
    EXPECT_THAT(boxes, Not(Contains("Do You want to delete this key?")));
}

INSTANTIATE_TEST_SUITE_P(All, DeletedGestureTest,
                         ::testing::Combine(::testing::ValuesIn(kAllGestures),
                                            ::testing::ValuesIn(kAllLosses)),
                         [](const auto& test) {
                             return NameOf(std::get<0>(test.param)) + "Without" +
                                    kLossNames[static_cast<int>(std::get<1>(test.param))];
                         });

TEST_P(EndedGestureTest, RebuiltRowsKeepEveryRecordAndTakeTheNextGesture) {
    const std::vector<IFilmKey*> before(track->keys.begin(), track->keys.end());
    Begin(GetParam());
    const float heldTime = heldKey != nullptr ? heldKey->record->time : 0.0f;
    const IFilmKey* heldRecord = heldKey != nullptr ? heldKey->record : nullptr;
    control->ShowFilm(film, true);
    MoveOnAndRelease();
    EXPECT_THAT(track->keys, UnorderedElementsAreArray(before)); // and no clone
    if (heldRecord != nullptr) {
        EXPECT_EQ(heldRecord->time, heldTime);
    }
    ExpectNextGestureWorks();
}

TEST_P(EndedGestureTest, WindowThatGoesTakesItsGestureAlong) {
    Begin(GetParam());
    holder.control = nullptr;
    plugin.scenarioDlg = nullptr;
    control.reset();
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_EQ(CurrentKey(), nullptr);
    EXPECT_EQ(TimelineOf(plugin), nullptr);
}

TEST_P(EndedGestureTest, HostThatGoesAwayLeavesItsMouseHarmless) {
    Begin(GetParam());
    EditorObject* selected = editor.level.selection.empty() ? nullptr : editor.level.selection.front();
    plugin.OnEvent(EventCode::HostGoesAway, nullptr);
    MoveOnAndRelease();
    ExpectNothingHeld();
    EXPECT_EQ(editor.level.selection.empty() ? nullptr : editor.level.selection.front(), selected);
}

INSTANTIATE_TEST_SUITE_P(All, EndedGestureTest, ::testing::ValuesIn(kAllGestures),
                         [](const auto& test) { return NameOf(test.param); });

TEST_F(HeldGestureTest, KeyThatGoesLeavesNoEditOfItsDrag) {
    Begin(Gesture::RightGrip);
    heldRow->RemoveKey(heldKey, /*destroy*/ true, /*redraw*/ true, /*noUndo*/ true);
    EXPECT_TRUE(control->undoMgr.retired.Actions().empty());
}

// The button went up over another program, which took no capture.
TEST_F(HeldGestureTest, MoveWithoutAButtonEndsTheDragWhereItIs) {
    ShowForMouse(frame);
    ShowRows();
    const auto atTwo = std::ranges::find(bars->keys, 2.0f, &CTrackKey::time);
    ASSERT_NE(atTwo, bars->keys.end());
    CTrackKey* key = *atTwo;
    constexpr int kKeyX = 150 + 2 * kSecond;
    MouseScript(*bars).Press(kKeyX, kMiddle).Move(kKeyX + kSecond, kMiddle);
    ASSERT_EQ(bars->dragKey, key);
    EXPECT_EQ(key->time, 3.0f);
    MouseScript(*bars).Move(kKeyX + 2 * kSecond, kMiddle);
    EXPECT_EQ(bars->dragKey, nullptr);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_EQ(key->time, 3.0f);
    EXPECT_EQ(control->undoMgr.retired.Actions().size(), 1U); // as if it had been released there
}
