#include "tests/support/FakeAttributes.h"
#include "tests/timeline/TrackCtrlFixture.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

/// A host that only notes what a press on a name tells it.
class NotingEditor final : public TestEditor {
public:
    void SelectObject(EditorObject*, int a, int b) override { Note("select", a, b); }
    void AddToSelection(EditorObject*, int a, int b) override { Note("add", a, b); }
    void DeselectObject(EditorObject*, int a, int b) override { Note("deselect", a, b); }
    void BroadcastEvent(int code, PluginCommandId sender, void*) override {
        notes.push_back("event " + std::to_string(code) + " " + std::to_string(sender.word));
    }

    std::vector<std::string> notes;

private:
    void Note(const std::string& what, int a, int b) {
        notes.push_back(what + " " + std::to_string(a) + " " + std::to_string(b));
    }
};

class TrackCtrlMouseTest : public TrackCtrlTest {
protected:
    TrackCtrlMouseTest() {
        Hooks().keyState = [this](int key) { return key == VK_CONTROL && ctrlDown; };
        timeline.infoWnd = &info;
        info.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(700, 0, 800, 20), &timeline, 30);
    }
    ~TrackCtrlMouseTest() override {
        ReleaseCapture();
        plugin.keyAttributesDlg.reset();
    }
    /// A row with a bar at 2 s (pixel 250) and one at 4 s (pixel 350), painted once.
    CTrackCtrl& RowWithBars() {
        CTrackCtrl& row = MakeRow(KeyKind::Position);
        first = AddBar(row, 2.0f);
        second = AddBar(row, 4.0f);
        CurrentKey() = nullptr;
        RenderRow(row);
        SettleAll();
        return row;
    }
    bool InvalidatedInfo() const {
        CRect rect;
        return info.GetUpdateRect(&rect) != FALSE;
    }

    CWnd info;
    bool ctrlDown = false;
    CNullTimeTrackKey* first = nullptr;
    CNullTimeTrackKey* second = nullptr;
    std::vector<std::string> dialogLog;
};

} // namespace

TEST_F(TrackCtrlMouseTest, PressOnKeySelectsItAlone) {
    CTrackCtrl& row = RowWithBars();
    timeline.selectedKeys = {first};
    first->SetSelected(true);
    Press(row, 350, 10);
    EXPECT_THAT(timeline.selectedKeys, ElementsAre(second));
    EXPECT_FALSE(first->selected);
    EXPECT_TRUE(second->selected);
    EXPECT_EQ(second->state, CTrackKey::kHighlighted);
    EXPECT_EQ(CurrentKey(), second);
    EXPECT_EQ(row.dragKey, second);
    EXPECT_EQ(row.lastPoint, CPoint(350, 10));
    EXPECT_EQ(row.dragTime, 4.0f);
    EXPECT_EQ(row.dragDuration, 0.0f);
    EXPECT_EQ(CWnd::GetCapture(), &row);
    EXPECT_EQ(timeline.activeKey, second);
}

TEST_F(TrackCtrlMouseTest, PressOnABoxNotesItsTimes) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTrackKey* key = AddBox(row, 1.0f, 2.0f);
    CurrentKey() = nullptr;
    Press(row, 250, 10);
    EXPECT_EQ(row.dragKey, key);
    EXPECT_EQ(row.dragTime, 1.0f);
    EXPECT_EQ(row.dragDuration, 2.0f);
}

TEST_F(TrackCtrlMouseTest, FirstSelectionRepaintsThisRowOnly) {
    CTrackCtrl& row = RowWithBars();
    Press(row, 250, 10);
    EXPECT_TRUE(WantsPaint(row));
    EXPECT_THAT(timeline.log, Not(Contains("ArrangeRows true false")));
}

TEST_F(TrackCtrlMouseTest, PressOnTheSelectedKeyRepaintsThisRowOnly) {
    CTrackCtrl& row = RowWithBars();
    Press(row, 250, 10);
    Release(row, 250, 10);
    timeline.log.clear();
    SettleAll();
    Press(row, 250, 10);
    EXPECT_TRUE(WantsPaint(row));
    // A bar's own press repaints the control, whose other rows may show marks.
    EXPECT_THAT(timeline.log, ElementsAre("SelectOnly", "InvalidateControl false"));
}

TEST_F(TrackCtrlMouseTest, SelectionFromAnotherRowRepaintsAllRows) {
    CTrackCtrl& row = RowWithBars();
    CTrackCtrl& other = MakeRow(KeyKind::Rotation);
    timeline.SelectOnly(AddBar(other, 1.0f));
    timeline.log.clear();
    CurrentKey() = nullptr;
    Press(row, 250, 10);
    EXPECT_THAT(timeline.log, ElementsAre("SelectOnly", "InvalidateControl false", "ArrangeRows true false"));
}

TEST_F(TrackCtrlMouseTest, SeveralSelectedKeysRepaintAllRowsEvenForOneOfThem) {
    CTrackCtrl& row = RowWithBars();
    timeline.selectedKeys = {first, second};
    first->SetSelected(true);
    second->SetSelected(true);
    Press(row, 250, 10);
    EXPECT_THAT(timeline.log, Contains("ArrangeRows true false"));
}

TEST_F(TrackCtrlMouseTest, GripOfTheCurrentKeyIsLiveInAnyRowAtAnyHeight) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTrackKey* key = AddBox(row, 1.0f, 2.0f); // 200 to 300, grips 182 to 197 and 303 to 318
    CTrackCtrl& other = MakeRow(KeyKind::Position);
    RenderRow(other);
    CurrentKey() = key;
    Press(other, 190, 19);
    EXPECT_EQ(other.dragKey, key);
    EXPECT_EQ(row.dragKey, nullptr);
    EXPECT_EQ(other.dragTime, 1.0f);
    EXPECT_EQ(other.dragDuration, 2.0f);
    Release(other, 190, 19);
    Press(other, 181, 19); // beside it
    EXPECT_EQ(other.dragKey, nullptr);
    EXPECT_EQ(CurrentKey(), nullptr);
}

// Required: a hidden key's grips are live as long as it is the current one, and the press shows it.
TEST_F(TrackCtrlMouseTest, HiddenKeyIsShownByAPressOnItsGrip) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    auto* key = static_cast<CTimedTrackKey*>(AddBox(row, 1.0f, 2.0f)); // grips 182 to 197 and 303 to 318
    RenderRow(row);
    CurrentKey() = key;
    key->state = CTrackKey::kHidden;
    Press(row, 190, 10);
    EXPECT_EQ(row.dragKey, key);
    EXPECT_EQ(key->state, CTrackKey::kHighlighted);
    EXPECT_TRUE(key->selected);
    EXPECT_EQ(key->dragMode, CTimedTrackKey::kDragNone) << "a hidden key takes no press itself";
    Release(row, 190, 10);
}

TEST_F(TrackCtrlMouseTest, RemovedKeyCannotBeGripped) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTrackKey* key = AddBox(row, 1.0f, 2.0f); // grips 182 to 197 and 303 to 318
    RenderRow(row);
    row.RemoveKey(key, /*destroy*/ true, /*redraw*/ false, /*noUndo*/ false);
    CurrentKey() = key; // an action keeps it
    Press(row, 190, 10);
    EXPECT_EQ(row.dragKey, nullptr);
    EXPECT_EQ(CurrentKey(), nullptr);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(TrackCtrlMouseTest, GripGoesBeforeTheKeyUnderTheMouse) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTrackKey* key = AddBox(row, 3.0f, 2.0f); // from 300, its left grip from 282 to 297
    AddBox(row, 1.0f, 1.9f);                  // 200 to 295
    RenderRow(row);
    CurrentKey() = key;
    Press(row, 290, 10);
    EXPECT_EQ(row.dragKey, key);
}

TEST_F(TrackCtrlMouseTest, GripsRestWithoutAView) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTrackKey* key = AddBox(row, 1.0f, 2.0f);
    RenderRow(row);
    CurrentKey() = key;
    row.SetView(5.0f, 5.0f);
    Press(row, 190, 10);
    EXPECT_EQ(row.dragKey, nullptr);
}

TEST_F(TrackCtrlMouseTest, PressOnEmptyTimeDropsTheSelection) {
    OpenFakeAttributes(plugin, dialogLog);
    CTrackCtrl& row = RowWithBars();
    timeline.SelectOnly(first);
    timeline.activeKey = first;
    timeline.log.clear();
    Press(row, 300, 10);
    EXPECT_FALSE(first->selected);
    EXPECT_EQ(timeline.activeKey, nullptr);
    EXPECT_EQ(CurrentKey(), nullptr);
    EXPECT_THAT(timeline.log, ElementsAre("ClearSelection", "ArrangeRows true false"));
    EXPECT_THAT(dialogLog, ElementsAre("SetKey null"));
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(TrackCtrlMouseTest, PressOnEmptyTimeWithoutASelectionDoesNothing) {
    OpenFakeAttributes(plugin, dialogLog);
    CTrackCtrl& row = RowWithBars();
    Press(row, 150, 10);
    EXPECT_THAT(timeline.log, IsEmpty());
    EXPECT_THAT(dialogLog, IsEmpty());
    EXPECT_FALSE(WantsPaint(row));
}

TEST_F(TrackCtrlMouseTest, NameCellSelectsTheObject) {
    EditorObject* other = editor.Create("Other");
    editor.Select({other});
    CTrackCtrl& row = MakeRow(KeyKind::None, boxTrack);
    editor.calls.clear();
    Press(row, 149, 10);
    EXPECT_THAT(editor.level.selection, ElementsAre(box));
    EXPECT_THAT(editor.broadcasts, Contains(2));
    EXPECT_THAT(editor.calls, Contains("RedrawViews"));
    EXPECT_THAT(timeline.log, ElementsAre("InvalidateControl true"));
}

TEST_F(TrackCtrlMouseTest, CtrlOnTheNameCellFlipsTheObjectsSelection) {
    EditorObject* other = editor.Create("Other");
    editor.Select({other});
    CTrackCtrl& row = MakeRow(KeyKind::Position, boxTrack);
    ctrlDown = true;
    Press(row, 60, 10);
    EXPECT_THAT(editor.level.selection, ElementsAre(other, box));
    Press(row, 60, 10);
    EXPECT_THAT(editor.level.selection, ElementsAre(other));
}

TEST_F(TrackCtrlMouseTest, NameCellTellsTheHostHowToSelect) {
    NotingEditor host;
    CTrackCtrl& row = MakeRow(KeyKind::Position, boxTrack);
    plugin.editor = &host;
    const std::string told = "event 2 " + std::to_string(plugin.pluginId.word);
    Press(row, 60, 10);
    EXPECT_THAT(host.notes, ElementsAre("select 1 0", told));
    host.notes.clear();
    ctrlDown = true;
    box->GetInfo()->flags &= ~EditorObjectInfo::kSelected;
    Press(row, 60, 10);
    EXPECT_THAT(host.notes, ElementsAre("add 1 0", told));
    host.notes.clear();
    box->GetInfo()->flags |= EditorObjectInfo::kSelected;
    Press(row, 60, 10);
    EXPECT_THAT(host.notes, ElementsAre("deselect 0 0", told));
    plugin.editor = &editor;
}

TEST_F(TrackCtrlMouseTest, NameCellKeepsTheKeysSelection) {
    CTrackCtrl& row = RowWithBars();
    timeline.SelectOnly(first);
    Press(row, 60, 10);
    EXPECT_TRUE(first->selected);
}

TEST_F(TrackCtrlMouseTest, NameCellDoesntStopHits) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain, boxTrack);
    row.SetView(10.0f, 20.0f);
    CTrackKey* key = AddBox(row, 8.0f, 4.0f);
    editor.Select({});
    Press(row, 60, 10);
    EXPECT_EQ(row.dragKey, key);
    EXPECT_THAT(editor.level.selection, IsEmpty());
}

TEST_F(TrackCtrlMouseTest, NameCellOfACameraShowsAndHidesItsPath) {
    CFilmTrack* camera = AddCamera(film, "Camera");
    CTrackCtrl& row = MakeRow(KeyKind::None, camera);
    editor.calls.clear();
    Press(row, 60, 10);
    EXPECT_EQ(plugin.trackVisualizer.renderTrack, camera);
    EXPECT_THAT(editor.calls, Contains("RedrawViews"));
    EXPECT_THAT(timeline.log, ElementsAre("InvalidateControl true"));
    Press(row, 60, 10);
    EXPECT_EQ(plugin.trackVisualizer.renderTrack, nullptr);
}

TEST_F(TrackCtrlMouseTest, NameCellOfTheLevelDoesNothing) {
    CTrackCtrl& row = MakeRow(KeyKind::None, film->mainTrack);
    editor.calls.clear();
    Press(row, 60, 10);
    EXPECT_THAT(editor.calls, IsEmpty());
    EXPECT_THAT(timeline.log, IsEmpty());
}

TEST_F(TrackCtrlMouseTest, RowWithoutAnAreaTakesNoPress) {
    CTrackCtrl& row = MakeRow(KeyKind::None, boxTrack);
    row.MoveWindow(0, 0, 0, 20);
    CNullTimeTrackKey key;
    timeline.activeKey = &key;
    editor.Select({});
    Press(row, 60, 10);
    EXPECT_EQ(timeline.activeKey, nullptr);
    EXPECT_THAT(editor.level.selection, IsEmpty());
}

TEST_F(TrackCtrlMouseTest, RowsRebuiltWhileAKeyIsPressedEndThePress) {
    CTrackCtrl& row = RowWithBars();
    timeline.onSelect = [this] { timeline.rows.clear(); }; // as the attributes window may do
    Press(row, 250, 10);
    EXPECT_THAT(timeline.rows, IsEmpty());
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(TrackCtrlMouseTest, RowsRebuiltByTheHostsSelectionEndThePress) {
    CTrackCtrl& row = MakeRow(KeyKind::None, boxTrack);
    editor.onBroadcast = [this](int, void*) { timeline.rows.clear(); };
    Press(row, 60, 10);
    EXPECT_THAT(timeline.rows, IsEmpty());
    EXPECT_THAT(timeline.log, Contains("InvalidateControl true"));
}

TEST_F(TrackCtrlMouseTest, MouseTimeIsTheFrameUnderTheMouse) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    info.ValidateRect();
    Move(row, 400, 10);
    EXPECT_EQ(timeline.mouseTime, 5.0f);
    EXPECT_TRUE(InvalidatedInfo());
    Move(row, 401, 10); // 5.02 seconds: 0.6 of a frame
    EXPECT_NEAR(timeline.mouseTime, 5.0f + 1.0f / 30.0f, 1e-5f);
}

TEST_F(TrackCtrlMouseTest, HoverTellsTheKeyUnderTheMouse) {
    CTrackCtrl& row = RowWithBars();
    Move(row, 250, 10);
    EXPECT_THAT(timeline.log, IsEmpty()); // no description window
    timeline.keyDescrWnd = &info;
    Move(row, 250, 10);
    EXPECT_THAT(timeline.log, ElementsAre("ShowKeyDescription"));
    EXPECT_EQ(timeline.described, first);
    Move(row, 300, 10);
    EXPECT_EQ(timeline.described, nullptr);
}

TEST_F(TrackCtrlMouseTest, HeldKeyIsNotDescribed) {
    CTrackCtrl& row = RowWithBars();
    timeline.keyDescrWnd = &info;
    Press(row, 250, 10);
    timeline.log.clear();
    Move(row, 260, 11, MK_LBUTTON);
    EXPECT_THAT(timeline.log, IsEmpty());
    EXPECT_EQ(row.lastPoint, CPoint(260, 11));
    EXPECT_NEAR(timeline.mouseTime, 2.2f, 1e-5f);
    EXPECT_TRUE(InvalidatedInfo());
}

TEST_F(TrackCtrlMouseTest, PressTakesTheDescriptionAway) {
    CTrackCtrl& row = RowWithBars();
    timeline.keyDescrWnd = &info;
    Move(row, 250, 10);
    EXPECT_EQ(timeline.described, first);
    Press(row, 250, 10);
    EXPECT_EQ(timeline.described, nullptr);
}

TEST_F(TrackCtrlMouseTest, ReleaseLetsGoOfTheKeyAndTheMouse) {
    CTrackCtrl& row = RowWithBars();
    Press(row, 250, 10);
    SettleAll();
    Release(row, 250, 10);
    EXPECT_EQ(row.dragKey, nullptr);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_TRUE(WantsPaint(row));
    EXPECT_TRUE(first->selected);
    EXPECT_EQ(CurrentKey(), first);
}

TEST_F(TrackCtrlMouseTest, ReleaseWithoutAKeyDoesNothing) {
    CTrackCtrl& row = RowWithBars();
    Release(row, 250, 10);
    EXPECT_FALSE(WantsPaint(row));
}

TEST_F(TrackCtrlMouseTest, DoubleClickOpensTheKeysAttributes) {
    OpenFakeAttributes(plugin, dialogLog);
    CTrackCtrl& row = RowWithBars();
    row.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(300, 10));
    EXPECT_THAT(dialogLog, IsEmpty());
    row.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(250, 10));
    EXPECT_THAT(dialogLog, ElementsAre("SetKey key", "Show 5"));
}

TEST_F(TrackCtrlMouseTest, RightButtonAsksForTheMenuAtTheScreenPoint) {
    CTrackCtrl& row = RowWithBars();
    CPoint screen(250, 10);
    row.ClientToScreen(&screen);
    row.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(250, 10));
    EXPECT_THAT(timeline.log,
                ElementsAre("ShowContextMenu " + std::to_string(screen.x) + " " + std::to_string(screen.y)));
    EXPECT_EQ(timeline.menuRow, &row);
    EXPECT_EQ(timeline.menuKey, first);
    row.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(300, 10));
    EXPECT_EQ(timeline.menuKey, nullptr);
}

TEST_F(TrackCtrlMouseTest, HomeAndEndGoToTheEndsOfTheKeyUnderTheMouse) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    AddBox(row, 1.0f, 2.0f);
    CPoint mouse(250, 10);
    row.ClientToScreen(&mouse);
    Hooks().cursorPos = [&mouse] { return mouse; };
    row.SendMessage(WM_KEYDOWN, VK_HOME);
    EXPECT_EQ(timeline.currentTime, 1.0f);
    row.SendMessage(WM_KEYDOWN, VK_END);
    EXPECT_EQ(timeline.currentTime, 3.0f);
    EXPECT_THAT(timeline.log, ElementsAre("SetCurrentFrame true", "SetCurrentFrame true"));
}

TEST_F(TrackCtrlMouseTest, OtherKeysAndEmptyPlacesMoveNothing) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    AddBox(row, 1.0f, 2.0f);
    CPoint mouse(250, 10);
    row.ClientToScreen(&mouse);
    Hooks().cursorPos = [&mouse] { return mouse; };
    row.SendMessage(WM_KEYDOWN, VK_DELETE);
    row.SendMessage(WM_KEYDOWN, VK_LEFT);
    mouse.x += 100;
    row.SendMessage(WM_KEYDOWN, VK_HOME);
    EXPECT_THAT(timeline.log, IsEmpty());
    EXPECT_EQ(row.keys.size(), 1U);
}

TEST_F(TrackCtrlMouseTest, RowWithoutAMainControlIgnoresTheMouse) {
    CWnd plain;
    plain.Create(nullptr, nullptr, WS_POPUP, CRect(0, 0, 800, 100), nullptr, 0);
    CTrackCtrl row;
    row.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 650, 20), &plain, 55);
    row.SetTimeRange(0.0f, 100.0f);
    row.SetView(0.0f, 10.0f);
    row.kind = KeyKind::Position;
    AddBar(row, 2.0f);
    EXPECT_EQ(row.GetLeftWidth(), -1);
    CTrackKey* current = CurrentKey();
    Press(row, 100, 10);
    Move(row, 100, 10);
    Release(row, 100, 10);
    row.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(100, 10));
    row.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(100, 10));
    row.SendMessage(WM_KEYDOWN, VK_HOME);
    EXPECT_EQ(row.dragKey, nullptr);
    EXPECT_EQ(CurrentKey(), current);
    EXPECT_EQ(timeline.mouseTime, 0.0f);
    EXPECT_THAT(timeline.log, IsEmpty());
}
