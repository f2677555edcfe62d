#include "tests/timeline/ControlFixture.h"

#include "keys/views/TrackKey.h"
#include "resources/resource.h"
#include "tests/support/FakeAttributes.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

class MainCtrlInputTest : public ControlTest {
protected:
    MainCtrlInputTest() {
        Hooks().cursorPos = [this] { return cursor; };
        Hooks().popupMenu = [this](const CMenu& menu, CPoint point) {
            menuPoint = point;
            for (const MenuItem& item : menu.Items()) {
                items.push_back(std::to_string(item.id) + ((item.flags & MF_GRAYED) != 0 ? " grey" : ""));
            }
            return UINT{0};
        };
        film = OpenFilmWithActors(1);
        RowOf("Actor100")->SetExpanded(true, true);
        row = RowOf("Actor100", KeyKind::Position);
        key = row->keys.front();
    }
    CFilmsKeyDescrWnd& Popup() { return *static_cast<CFilmsKeyDescrWnd*>(control->keyDescrWnd); }
    void KeyDown(UINT code, UINT flags = 0) {
        control->SendMessage(WM_KEYDOWN, code, static_cast<LPARAM>(static_cast<UINT_PTR>(flags) << 16 | 1));
    }
    void Tick(UINT_PTR id) { control->SendMessage(WM_TIMER, id); }
    /// Screen point of a time in a row's middle.
    CPoint PointAt(const CTrackCtrl* where, float time) {
        CRect client;
        where->GetClientRect(&client);
        const double scale = (client.Width() - 150) / static_cast<double>(where->viewEnd - where->viewStart);
        CPoint point(150 + static_cast<int>((time - where->viewStart) * scale), client.Height() / 2);
        where->ClientToScreen(&point);
        return point;
    }

    CPoint cursor{300, 300};
    CPoint menuPoint;
    std::vector<std::string> items;
    IFilm* film = nullptr;
    CTrackCtrl* row = nullptr;
    CTrackKey* key = nullptr;
};

} // namespace

TEST_F(MainCtrlInputTest, HoverShowsTheDescriptionAfterTheDelay) {
    control->ShowKeyDescription(key);
    EXPECT_EQ(control->hoverKey, key);
    EXPECT_FALSE(Popup().IsWindowVisible());
    cursor = CPoint(320, 310);
    Tick(0);
    EXPECT_TRUE(Popup().IsWindowVisible());
    CRect place;
    Popup().GetWindowRect(&place);
    EXPECT_EQ(place.TopLeft(), CPoint(340, 330));
}

TEST_F(MainCtrlInputTest, ShowingAndHidingWaitInTheirTimers) {
    constexpr UINT_PTR kShow = 0;
    constexpr UINT_PTR kHide = 1;
    const auto waits = [this](UINT_PTR id) { return control->KillTimer(id) != FALSE; };
    control->ShowKeyDescription(nullptr);
    EXPECT_TRUE(waits(kHide)) << "what is described stays the same: nothing";
    control->ShowKeyDescription(key);
    EXPECT_TRUE(waits(kShow));
    EXPECT_FALSE(waits(kHide));
    control->ShowKeyDescription(key);
    EXPECT_FALSE(waits(kShow));
    EXPECT_TRUE(waits(kHide));
    Tick(kShow);
    EXPECT_TRUE(waits(kHide));
    control->ShowKeyDescription(RowOf("Actor100", KeyKind::Rotation)->keys.front());
    EXPECT_FALSE(waits(kShow)) << "the popup shows already";
    EXPECT_TRUE(waits(kHide));
    control->SetTimer(kHide, 60000);
    control->ShowKeyDescription(nullptr);
    EXPECT_FALSE(waits(kHide));
    for (const UINT_PTR id : {kShow, kHide}) {
        control->SetTimer(id, 60000);
        Tick(id);
        EXPECT_FALSE(waits(id)) << "each runs down once";
    }
}

TEST_F(MainCtrlInputTest, AShownPopupIsPaintedAnewForTheNextKey) {
    control->ShowKeyDescription(key);
    Tick(0);
    Settle();
    CRect update;
    ASSERT_FALSE(Popup().GetUpdateRect(&update));
    control->ShowKeyDescription(RowOf("Actor100", KeyKind::Rotation)->keys.front());
    EXPECT_TRUE(Popup().GetUpdateRect(&update));
}

TEST_F(MainCtrlInputTest, TheDelayRunsOnTheClock) {
    control->ShowKeyDescription(key);
    Settle(700);
    EXPECT_TRUE(Popup().IsWindowVisible());
}

TEST_F(MainCtrlInputTest, HoverFollowsTheCursorBeforeItShows) {
    control->ShowKeyDescription(key);
    cursor = CPoint(100, 50);
    control->ShowKeyDescription(key);
    CRect place;
    Popup().GetWindowRect(&place);
    EXPECT_EQ(place.TopLeft(), CPoint(120, 70));
    EXPECT_FALSE(Popup().IsWindowVisible());
}

TEST_F(MainCtrlInputTest, ThePopupHidesWhenItsTimeIsOver) {
    control->ShowKeyDescription(key);
    Tick(0);
    Tick(1);
    EXPECT_FALSE(Popup().IsWindowVisible());
    EXPECT_EQ(control->hoverKey, key);
}

TEST_F(MainCtrlInputTest, LeavingTheKeyHidesThePopup) {
    control->ShowKeyDescription(key);
    Tick(0);
    control->ShowKeyDescription(nullptr);
    EXPECT_FALSE(Popup().IsWindowVisible());
    EXPECT_EQ(control->hoverKey, nullptr);
}

TEST_F(MainCtrlInputTest, ADelayThatOutlivesTheHoverShowsNothing) {
    control->ShowKeyDescription(key);
    control->ShowKeyDescription(nullptr);
    Tick(0);
    EXPECT_FALSE(Popup().IsWindowVisible());
}

TEST_F(MainCtrlInputTest, MovingOverTheBackgroundEndsTheHover) {
    control->ShowKeyDescription(key);
    control->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(5, 395));
    EXPECT_EQ(control->hoverKey, nullptr);
}

TEST_F(MainCtrlInputTest, AShownPopupTakesTheTextOfTheNextKey) {
    control->ShowKeyDescription(key);
    Tick(0);
    CTrackKey* other = RowOf("Actor100", KeyKind::Rotation)->keys.front();
    const std::string first = Popup().text;
    control->ShowKeyDescription(other);
    EXPECT_TRUE(Popup().IsWindowVisible());
    EXPECT_NE(Popup().text, first);
    EXPECT_EQ(control->hoverKey, other);
}

TEST_F(MainCtrlInputTest, APositionKeyOfAnActorTellsDistanceAndSpeed) {
    auto* record = static_cast<CFilmVectorKey*>(key->record);
    const float place[3] = {3.0f, 4.0f, 0.0f};
    auto* later = static_cast<CFilmVectorKey*>(AddKey(row->track, KeyKind::Position, 2.0f));
    later->SetValue(place);
    row->track->NotifyKeysChanged(KeyKind::Position);
    control->ShowFilm(film, true);
    row = RowOf("Actor100", KeyKind::Position);
    CTrackKey* view = nullptr;
    for (CTrackKey* candidate : row->keys) {
        view = candidate->record == later ? candidate : view;
    }
    ASSERT_NE(view, nullptr);
    ASSERT_EQ(record->value.x, 0.0f);
    control->ShowKeyDescription(view);
    // 5 units away in 2 seconds.
    EXPECT_THAT(Popup().text, HasSubstr("Distance: 5.000\nSpeed: 2.500\n"));
    plugin.SetTime(2.0f, false);
    control->ShowKeyDescription(nullptr);
    control->ShowKeyDescription(view);
    EXPECT_THAT(Popup().text, HasSubstr("Distance: 0.000\nSpeed: 0.000\n"));
}

TEST_F(MainCtrlInputTest, OtherKeysTellNoDistance) {
    control->ShowKeyDescription(RowOf("Actor100", KeyKind::Rotation)->keys.front());
    EXPECT_THAT(Popup().text, Not(HasSubstr("Distance")));
    EXPECT_THAT(Popup().text, Not(IsEmpty()));
}

TEST_F(MainCtrlInputTest, AKeyWithoutARecordIsOnlyNoted) {
    IFilmKey* record = std::exchange(key->record, nullptr);
    Popup().text = "before";
    control->ShowKeyDescription(key);
    EXPECT_EQ(control->hoverKey, key);
    EXPECT_EQ(Popup().text, "before");
    key->record = record;
}

TEST_F(MainCtrlInputTest, F2TurnsTheMarkOfTheOldestSelectedKey) {
    control->SelectOnly(key);
    holder.pressed.clear();
    KeyDown(VK_F1 + 1);
    EXPECT_TRUE(key->marked);
    KeyDown(VK_F1 + 1);
    EXPECT_FALSE(key->marked);
    EXPECT_THAT(holder.pressed, ElementsAre("36864 true", "36864 false")); // required: not 36865
}

TEST_F(MainCtrlInputTest, F2WithoutASelectionDoesNothing) {
    control->ClearSelection();
    KeyDown(VK_F1 + 1);
    EXPECT_THAT(holder.pressed, IsEmpty());
}

TEST_F(MainCtrlInputTest, HomeAndEndGoToTheKeyUnderTheMouse) {
    key->SetPosition(2.0f, false);
    Settle();
    cursor = PointAt(row, 2.0f);
    KeyDown(VK_HOME);
    EXPECT_EQ(plugin.currentTime, 2.0f);
    plugin.SetTime(0.0f, false);
    KeyDown(VK_END); // it has no duration
    EXPECT_EQ(plugin.currentTime, 2.0f);
    plugin.SetTime(0.0f, false);
    cursor = PointAt(row, 7.0f);
    KeyDown(VK_HOME);
    EXPECT_EQ(plugin.currentTime, 0.0f);
}

TEST_F(MainCtrlInputTest, EndGoesBehindTheDurationOfTheKeyUnderTheMouse) {
    IFilmKey* record = AddKey(row->track, KeyKind::Speech, 2.0f);
    record->SetEndTime(5.0f);
    control->ShowFilm(film, true);
    RowOf("Actor100")->SetExpanded(true, true);
    Settle();
    cursor = PointAt(RowOf("Actor100", KeyKind::Speech), 4.0f);
    KeyDown(VK_END);
    EXPECT_EQ(plugin.currentTime, 5.0f);
    KeyDown(VK_HOME);
    EXPECT_EQ(plugin.currentTime, 2.0f);
}

TEST_F(MainCtrlInputTest, BackgroundMenuGreysWhatCannotBe) {
    control->ShowContextMenu(40, 50, nullptr, nullptr);
    EXPECT_EQ(menuPoint, CPoint(40, 50));
    EXPECT_THAT(items, ElementsAre("36797", "36799", "36801", "36802", "36818", "36820", "36821 grey",
                                   "36822", "36830", "36831", "36842", "36877"));
    items.clear();
    plugin.isPlaying = 1;
    control->ShowContextMenu(40, 50, nullptr, nullptr);
    plugin.isPlaying = 0;
    EXPECT_THAT(items, ::testing::Contains("36820 grey"));
    EXPECT_THAT(items, ::testing::Contains("36821"));
}

TEST_F(MainCtrlInputTest, RightClickOnTheBackgroundOpensTheMenuThere) {
    control->SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 390));
    CPoint expected(10, 390);
    control->ClientToScreen(&expected);
    EXPECT_EQ(menuPoint, expected);
    EXPECT_EQ(control->menuRow, nullptr);
}

TEST_F(MainCtrlInputTest, RowAndKeyMenusAreNoted) {
    control->ShowContextMenu(0, 0, row, nullptr);
    EXPECT_EQ(control->menuRow, row);
    EXPECT_EQ(control->menuKey, nullptr);
    EXPECT_THAT(items, ::testing::Contains("36827"));
    items.clear();
    control->ShowContextMenu(0, 0, row, key);
    EXPECT_EQ(control->menuKey, key);
    EXPECT_THAT(items, ::testing::Contains("36814"));
    EXPECT_THAT(items, Not(::testing::Contains("36827")));
}

TEST_F(MainCtrlInputTest, AMenuStopsAPendingHover) {
    control->ShowKeyDescription(key);
    control->ShowContextMenu(0, 0, row, key);
    Settle(700);
    EXPECT_FALSE(Popup().IsWindowVisible());
}

TEST_F(MainCtrlInputTest, NoDescriptionLiesUnderAMenu) {
    control->ShowKeyDescription(key);
    Tick(0);
    ASSERT_TRUE(Popup().IsWindowVisible());
    control->ShowContextMenu(0, 0, row, key);
    EXPECT_FALSE(Popup().IsWindowVisible());
    EXPECT_EQ(control->hoverKey, nullptr);
}

TEST_F(MainCtrlInputTest, ADraggedKeyIsDescribedAnew) {
    const CPoint onKey(control->leftWidth + 1, control->rowHeight / 2); // the key stands at 0 seconds
    row->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(onKey.x, onKey.y));
    Tick(0);
    ASSERT_TRUE(Popup().IsWindowVisible());
    const std::string before = Popup().text;
    row->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(onKey.x, onKey.y));
    EXPECT_FALSE(Popup().IsWindowVisible());
    key->SetPosition(2.0f, /*viewOnly*/ false);
    Tick(0);
    EXPECT_FALSE(Popup().IsWindowVisible());
    row->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(onKey.x, onKey.y));
    control->ShowKeyDescription(key);
    EXPECT_NE(Popup().text, before);
}

TEST_F(MainCtrlInputTest, EveryPlainCommandIsAnswered) {
    EXPECT_TRUE(control->OnCmdMsg(36999, 0, nullptr, nullptr));
    AFX_CMDHANDLERINFO asked;
    EXPECT_FALSE(control->OnCmdMsg(36999, 0, nullptr, &asked));
    EXPECT_FALSE(control->OnCmdMsg(36999, 5, nullptr, nullptr));
}

TEST_F(MainCtrlInputTest, MenuValidatesTheFilm) {
    film->validated = 0;
    control->OnCmdMsg(IDC_VALIDATE_MOVIE, 0, nullptr, nullptr);
    EXPECT_EQ(film->validated, 1);
}

TEST_F(MainCtrlInputTest, MenuPlaysFromTheCursorAndStops) {
    std::uint32_t milliseconds = 0;
    Hooks().clock = [&milliseconds] { return milliseconds += 100; };
    std::vector<float> times;
    editor.onBroadcast = [&](int code, void*) {
        if (code == EventCode::ObjectsMoved && plugin.isPlaying != 0) {
            times.push_back(plugin.currentTime);
            control->OnCmdMsg(IDC_STOP_MOVIE, 0, nullptr, nullptr);
        }
    };
    plugin.SetTime(4.0f, /*fromWindow*/ false);
    control->OnCmdMsg(IDC_PLAY_MOVIE, 0, nullptr, nullptr);
    editor.onBroadcast = nullptr;
    ASSERT_EQ(times.size(), 1u); // the first frame stopped it
    EXPECT_GE(times.front(), 4.0f);
    EXPECT_LT(times.front(), 10.0f);
    EXPECT_EQ(plugin.isPlaying, 0);
    plugin.SetCurrentFilm(nullptr);
    control->OnCmdMsg(IDC_PLAY_MOVIE, 0, nullptr, nullptr); // comes back at once
    EXPECT_EQ(plugin.isPlaying, 0);
}

TEST_F(MainCtrlInputTest, EditsUnderWayAreWrittenBeforeEachCommandButAddKey) {
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    int written = 0;
    attributes.onApplyPending = [&written] { ++written; };
    control->OnCmdMsg(IDC_VALIDATE_MOVIE, 0, nullptr, nullptr);
    EXPECT_EQ(written, 1);
    control->menuRow = row;
    control->mouseTime = 4.0f;
    control->OnCmdMsg(IDC_ADD_KEY, 0, nullptr, nullptr); // Required: takes the pose as the film has it.
    EXPECT_EQ(row->keys.size(), 2u);
    EXPECT_EQ(written, 1);
}

TEST_F(MainCtrlInputTest, MenuRemovesAnActorAndPutsItBack) {
    EditorObject* actor = AsObjectTrack(row->track)->actor;
    MoveTo(*actor, 5.0f, 0.0f, 0.0f);
    control->menuRow = RowOf("Actor100");
    control->OnCmdMsg(IDC_REMOVE_ACTOR, 0, nullptr, nullptr);
    EXPECT_EQ(RowOf("Actor100"), nullptr);
    EXPECT_EQ(PositionOf(*actor).x, 0.0f);
    EXPECT_EQ(control->menuRow, nullptr);
}

TEST_F(MainCtrlInputTest, TheLevelTrackAndItsRowsCannotBeRemoved) {
    CFilmTrack* main = film->mainTrack;
    for (const UINT command : {IDC_REMOVE_ACTOR, IDC_REMOVE_TRACK}) {
        control->menuRow = RowOf("Level");
        control->OnCmdMsg(command, 0, nullptr, nullptr);
        EXPECT_NE(RowOf("Level"), nullptr);
        EXPECT_EQ(film->mainTrack, main);
    }
}

TEST_F(MainCtrlInputTest, MenuRemovesTheSelectedActors) {
    editor.Select({AsObjectTrack(row->track)->actor});
    control->OnCmdMsg(IDC_REMOVE_ACTORS, 0, nullptr, nullptr);
    EXPECT_EQ(RowOf("Actor100"), nullptr);
}

TEST_F(MainCtrlInputTest, MenuAddsTheSelectedActors) {
    editor.Select({editor.Create("Newcomer")});
    control->OnCmdMsg(IDC_ADD_ACTORS, 0, nullptr, nullptr);
    EXPECT_NE(RowOf("Newcomer"), nullptr);
}

TEST_F(MainCtrlInputTest, ChangeActorTakesTheNextSelection) {
    EditorObject* other = editor.Create("Other");
    control->menuRow = RowOf("Actor100");
    control->OnCmdMsg(IDC_CHANGE_ACTOR, 0, nullptr, nullptr);
    EXPECT_TRUE(control->IsChangingActor());
    editor.Select({other});
    EXPECT_TRUE(control->ChangeActor());
    EXPECT_FALSE(control->IsChangingActor());
    EXPECT_NE(RowOf("Other"), nullptr);
    EXPECT_EQ(RowOf("Actor100"), nullptr);
}

TEST_F(MainCtrlInputTest, ANewLevelEndsChangeActor) {
    control->menuRow = RowOf("Actor100");
    control->OnCmdMsg(IDC_CHANGE_ACTOR, 0, nullptr, nullptr);
    plugin.OnNew();
    EXPECT_FALSE(control->IsChangingActor());
}

TEST_F(MainCtrlInputTest, ChangeActorIsAnnouncedUntilTheNextSelection) {
    control->menuRow = RowOf("Actor100");
    control->OnCmdMsg(IDC_CHANGE_ACTOR, 0, nullptr, nullptr);
    ASSERT_NE(PickMode::Present(), nullptr);
    EXPECT_EQ(PickMode::Present()->Text(),
              "Change actor: click the object that takes the place of \"Actor100\". Esc gives up.");
    EXPECT_EQ(PickMode::Present()->ChosenBy(), PickMode::By::Click);
    editor.Select({editor.Create("Other")});
    EXPECT_TRUE(control->ChangeActor());
    EXPECT_EQ(PickMode::Present(), nullptr);
}

TEST_F(MainCtrlInputTest, GivingUpEndsChangeActorAndLeavesTheActor) {
    control->menuRow = RowOf("Actor100");
    control->OnCmdMsg(IDC_CHANGE_ACTOR, 0, nullptr, nullptr);
    EXPECT_TRUE(PickMode::GiveUp());
    EXPECT_FALSE(control->IsChangingActor());
    editor.Select({editor.Create("Other")});
    plugin.OnEvent(EventCode::SelectionChanged, nullptr);
    EXPECT_NE(RowOf("Actor100"), nullptr);
    EXPECT_EQ(RowOf("Other"), nullptr);
}

TEST_F(MainCtrlInputTest, ChangeActorForAnotherTrackEndsTheFirst) {
    control->menuRow = RowOf("Actor100");
    control->OnCmdMsg(IDC_CHANGE_ACTOR, 0, nullptr, nullptr);
    control->menuRow = RowOf("Level");
    control->OnCmdMsg(IDC_CHANGE_ACTOR, 0, nullptr, nullptr);
    EXPECT_EQ(PickMode::Present(), nullptr);
}

TEST_F(MainCtrlInputTest, AFailedChangeActorEndsBeforeItsMessage) {
    control->menuRow = RowOf("Actor100");
    control->OnCmdMsg(IDC_CHANGE_ACTOR, 0, nullptr, nullptr);
    editor.Select({});
    bool announced = true;
    Hooks().messageBox = [&](const std::string&, UINT) {
        announced = PickMode::Present() != nullptr;
        return IDOK;
    };
    plugin.OnEvent(EventCode::SelectionChanged, nullptr);
    EXPECT_FALSE(announced);
}

TEST_F(MainCtrlInputTest, ChangeActorNeedsAnActorTrack) {
    control->menuRow = RowOf("Level");
    control->OnCmdMsg(IDC_CHANGE_ACTOR, 0, nullptr, nullptr);
    EXPECT_THAT(boxes, ElementsAre("Cannot perform action for track this type!"));
    EXPECT_FALSE(control->IsChangingActor());
}

TEST_F(MainCtrlInputTest, ChangeActorRefusesTwoObjects) {
    control->menuRow = RowOf("Actor100");
    control->OnCmdMsg(IDC_CHANGE_ACTOR, 0, nullptr, nullptr);
    editor.Select({editor.Create("A"), editor.Create("B")});
    EXPECT_FALSE(control->ChangeActor());
    EXPECT_THAT(boxes, ElementsAre("Cannot perform action for such selection!"));
    EXPECT_FALSE(control->IsChangingActor());
    EXPECT_NE(RowOf("Actor100"), nullptr);
}

TEST_F(MainCtrlInputTest, ChangeActorRefusesAHelper) {
    control->menuRow = RowOf("Actor100");
    editor.Select({editor.CreateOfClass("HelperEditorObject", "Helper")});
    EXPECT_FALSE(control->ChangeActor());
    EXPECT_THAT(boxes, ElementsAre("Cannot change actor to that object!"));
}

TEST_F(MainCtrlInputTest, ChangeActorNeedsTheMeshElementsOfTheKeys) {
    auto* animation = static_cast<CFilmAnimationKey*>(AddKey(row->track, KeyKind::Animation, 1.0f));
    animation->meshElement = "Bip01 Head";
    control->menuRow = RowOf("Actor100");
    editor.Select({editor.Create("Plain")});
    EXPECT_FALSE(control->ChangeActor());
    EXPECT_THAT(boxes, ElementsAre("Cannot find mesh element for animation key!"));
    boxes.clear();
    row->track->RemoveKey(animation, true);
    static_cast<CFilmFxKey*>(AddKey(row->track, KeyKind::FxTrace, 1.0f))->linkElement = "Bip01 Head";
    EXPECT_FALSE(control->ChangeActor());
    EXPECT_THAT(boxes, ElementsAre("Cannot find mesh element for FX key!"));
}

TEST_F(MainCtrlInputTest, ChangeActorTakesKeysOfTheWholeObject) {
    AddKey(row->track, KeyKind::Animation, 1.0f); // no mesh element
    AddKey(row->track, KeyKind::FxTrace, 1.0f);
    control->menuRow = RowOf("Actor100");
    const CFilmObjectTrack* track = AsObjectTrack(row->track); // the rows are made anew
    EditorObject* plain = editor.Create("Plain");
    editor.Select({plain});
    EXPECT_TRUE(control->ChangeActor());
    EXPECT_THAT(boxes, ::testing::IsEmpty());
    EXPECT_EQ(track->actor, plain);
}

TEST_F(MainCtrlInputTest, ChangeActorAfterAFilmChangeOnlyEndsTheMode) {
    control->menuRow = RowOf("Actor100");
    control->OnCmdMsg(IDC_CHANGE_ACTOR, 0, nullptr, nullptr);
    control->ShowFilm(film, true); // the row under the menu is gone
    editor.Select({editor.Create("Other")});
    EXPECT_FALSE(control->ChangeActor());
    EXPECT_FALSE(control->IsChangingActor());
}
