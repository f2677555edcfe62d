#include "keys/attributes/KeyAttributesDlg.h"

#include "framework/QtBridge.h"
#include "keys/views/TrackKey.h"
#include "resources/resource.h"
#include "tests/keys/AttributesWindowFixture.h"
#include "tests/support/MouseScript.h"

#include <QWidget>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class KeyAttributesDlgTest : public AttributesWindowTest {
protected:
    bool IsEnabled(UINT id) { return Dialog().GetDlgItem(static_cast<int>(id))->IsWindowEnabled() != FALSE; }
    void Click(UINT id) {
        CWnd* button = Dialog().GetDlgItem(static_cast<int>(id));
        MouseScript(*button).Press(5, 5).Release(5, 5);
        Settle();
    }
};

} // namespace

TEST_F(KeyAttributesDlgTest, StandsHiddenAfterTheFirstFilm) {
    ASSERT_NE(plugin.keyAttributesDlg, nullptr);
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_FALSE(Dialog().locked);
    EXPECT_EQ(Dialog().GetWindowText(), "Key attributes");
}

// 287 by 191 units of 6/4 and 13/8 pixels.
TEST_F(KeyAttributesDlgTest, LiesAsItsTemplateSays) {
    CRect client;
    Dialog().GetClientRect(&client);
    EXPECT_EQ(client.Size(), (CSize{430, 310}));
    CRect place;
    Dialog().list.GetWindowRect(&place);
    Dialog().ScreenToClient(&place);
    EXPECT_EQ(place, CRect(7, 8, 362, 300));
    Dialog().GetDlgItem(IDC_ATTR_NEXT)->GetWindowRect(&place);
    Dialog().ScreenToClient(&place);
    EXPECT_EQ(place, CRect(370, 11, 419, 33));
    EXPECT_EQ(Dialog().GetDlgItem(IDC_ATTR_NEXT)->GetWindowText(), "Next");
    EXPECT_EQ(Dialog().GetDlgItem(IDC_ATTR_PREV)->GetWindowText(), "Prev");
}

TEST_F(KeyAttributesDlgTest, DoubleClickShowsTheKey) {
    Open(PutPosition(2.0f, 1.5f));
    EXPECT_TRUE(Dialog().IsVisible());
    EXPECT_THAT(Lines(), ElementsAre("Pos X=1.50000", "Pos Y=0.00000", "Pos Z=0.00000", "In type=Smooth",
                                     "Out type=Smooth"));
}

TEST_F(KeyAttributesDlgTest, SelectingAnotherKeyShowsIt) {
    CFilmVectorKey* first = PutPosition(2.0f, 1.5f);
    CFilmVectorKey* second = PutPosition(3.0f, 7.0f);
    Open(first);
    control->SelectOnly(ViewOf(second));
    EXPECT_EQ(Dialog().GetRecord(), second);
    EXPECT_EQ(Lines().front(), "Pos X=7.00000");
}

TEST_F(KeyAttributesDlgTest, HiddenWindowDoesNotFollowTheSelection) {
    CFilmVectorKey* first = PutPosition(2.0f, 1.5f);
    CFilmVectorKey* second = PutPosition(3.0f, 7.0f);
    Open(first);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Dialog().IsVisible());
    control->SelectOnly(ViewOf(second));
    EXPECT_EQ(Dialog().GetRecord(), first);
}

TEST_F(KeyAttributesDlgTest, EditIsWrittenWhenAnotherKeyIsSelected) {
    CFilmVectorKey* first = PutPosition(2.0f, 1.5f);
    CFilmVectorKey* second = PutPosition(3.0f, 7.0f);
    Open(first);
    Edit("Pos X", "4.5");
    EXPECT_EQ(first->value.x, 1.5f);
    control->SelectOnly(ViewOf(second));
    EXPECT_EQ(first->value.x, 4.5f);
    EXPECT_EQ(second->value.x, 7.0f);
}

// Required: the record waits for the next stage.
TEST_F(KeyAttributesDlgTest, LossOfFocusDoesNotWriteTheRecord) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    Open(key);
    Edit("Pos X", "4.5");
    LeaveEditor();
    EXPECT_EQ(Dialog().FindMember("Pos X", "POSITION")->value[0].AsFloat(), 4.5f);
    EXPECT_EQ(key->value.x, 1.5f);
}

TEST_F(KeyAttributesDlgTest, EnterWritesAndHides) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    Open(key);
    Edit("Pos X", "4.5");
    Press(Qt::Key_Return);
    EXPECT_EQ(key->value.x, 4.5f);
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(Dialog().GetRecord(), key);
}

TEST_F(KeyAttributesDlgTest, RowsAreThoseOfTheRecordAfterEnter) {
    auto* camera = AddCamera(film, "Cam");
    auto* key = Put<CFilmScalarKey>(KeyKind::FieldOfView, 1.0f, camera);
    Open(key);
    Edit("FOV", "400");
    Press(Qt::Key_Return);
    EXPECT_EQ(key->value, 360.0f);
    EXPECT_EQ(Lines().front(), "FOV=360.00000");
}

TEST_F(KeyAttributesDlgTest, EscapeHidesAndWritesNothing) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    Open(key);
    Edit("Pos X", "4.5");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(key->value.x, 1.5f);
}

TEST_F(KeyAttributesDlgTest, CloseWritesTheOpenEditAndEmptiesTheWindow) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    Open(key);
    Edit("Pos X", "4.5");
    NativeWidget(Dialog())->close();
    Settle();
    EXPECT_EQ(key->value.x, 4.5f);
    EXPECT_FALSE(Dialog().IsVisible());
    ExpectEmpty();
}

TEST_F(KeyAttributesDlgTest, EmptyWindowCloses) {
    Dialog().Show(CFilmKeyAttributesDlg::kShow);
    NativeWidget(Dialog())->close();
    Settle();
    EXPECT_FALSE(Dialog().IsVisible());
    ExpectEmpty();
}

TEST_F(KeyAttributesDlgTest, DestroyedWindowLetsGoOfItsKeyAndWritesNothing) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    Open(key);
    Edit("Pos X", "4.5");
    Dialog().Destroy();
    EXPECT_EQ(Dialog().key, nullptr);
    EXPECT_EQ(Dialog().record, nullptr);
    EXPECT_TRUE(Dialog().rows.empty());
    EXPECT_EQ(key->value.x, 1.5f);
}

TEST_F(KeyAttributesDlgTest, RefreshKeepsTheKeyWhateverItIsGiven) {
    CFilmVectorKey* first = PutPosition(2.0f, 1.5f);
    CFilmVectorKey* second = PutPosition(3.0f, 7.0f);
    Open(first);
    first->value.x = 3.0f;
    Dialog().SetKey(ViewOf(second), /*refresh*/ true);
    EXPECT_EQ(Dialog().GetRecord(), first);
    EXPECT_EQ(Lines().front(), "Pos X=3.00000");
}

// Required: what was typed is dropped.
TEST_F(KeyAttributesDlgTest, RefreshDropsTheEdit) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    Open(key);
    Edit("Pos X", "4.5");
    Dialog().SetKey(nullptr, /*refresh*/ true);
    EXPECT_EQ(key->value.x, 1.5f);
    EXPECT_EQ(Lines().front(), "Pos X=1.50000");
    EXPECT_EQ(Dialog().list.activeRow, -1);
}

TEST_F(KeyAttributesDlgTest, NoKeyOnAnEmptyWindowLeavesItEmpty) {
    Dialog().SetKey(nullptr, /*refresh*/ false);
    ExpectEmpty();
    Dialog().SetKey(nullptr, /*refresh*/ true);
    ExpectEmpty();
}

TEST_F(KeyAttributesDlgTest, NoKeyWritesAndEmpties) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    Open(key);
    Edit("Pos X", "4.5");
    Dialog().SetKey(nullptr, /*refresh*/ false);
    EXPECT_EQ(key->value.x, 4.5f);
    ExpectEmpty();
}

TEST_F(KeyAttributesDlgTest, LockedWindowTakesNoKeyAndStaysHidden) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    Dialog().locked = true;
    CTrackKey* view = ViewOf(key);
    view->OnDoubleClick();
    EXPECT_FALSE(Dialog().IsVisible());
    Dialog().SetKey(view, /*refresh*/ false);
    ExpectEmpty();
    Dialog().Show(CFilmKeyAttributesDlg::kShow);
    EXPECT_FALSE(Dialog().IsVisible());
}

TEST_F(KeyAttributesDlgTest, ConditionsHideRowsAndKeepTheirValues) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    key->inMethod = BezierMethod::User;
    key->inHandle = {9.0f, 8.0f, 7.0f};
    Open(key);
    EXPECT_THAT(Lines(), ElementsAre("Pos X=1.50000", "Pos Y=0.00000", "Pos Z=0.00000", "In type=User",
                                     "In X=9.00000", "In Y=8.00000", "In Z=7.00000", "Out type=Smooth"));
    Dialog().FindMember("In type", "IN CONTROL POINT")->SetEnumIndex(BezierMethod::Linear);
    Dialog().UpdateRows();
    EXPECT_THAT(Lines(), ElementsAre("Pos X=1.50000", "Pos Y=0.00000", "Pos Z=0.00000", "In type=Linear",
                                     "Out type=Smooth"));
    EXPECT_EQ(Dialog().FindMember("In Y", "IN CONTROL POINT")->value[0].AsFloat(), 8.0f);
}

TEST_F(KeyAttributesDlgTest, ShowingAWindowThatIsOpenLeavesTheKeyboardWhereItIs) {
    Open(PutPosition(2.0f, 1.5f));
    LeaveEditor();
    Dialog().Show(CFilmKeyAttributesDlg::kShow);
    Settle();
    EXPECT_EQ(CWnd::GetFocus(), control.get());
    EXPECT_TRUE(Dialog().IsVisible());
}

TEST_F(KeyAttributesDlgTest, HidingKeepsKeyAndRows) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    Open(key);
    Dialog().Show(CFilmKeyAttributesDlg::kHide);
    EXPECT_FALSE(Dialog().IsVisible());
    Dialog().Show(CFilmKeyAttributesDlg::kHide); // hidden already
    EXPECT_FALSE(Dialog().IsVisible());
    EXPECT_EQ(Dialog().GetRecord(), key);
    EXPECT_EQ(Dialog().list.GetCount(), 5);
}

TEST_F(KeyAttributesDlgTest, RebuiltListKeepsItsFirstRowSelected) {
    Open(PutPosition(2.0f, 1.5f));
    Dialog().list.SetCurSel(0);
    Dialog().RebuildList();
    EXPECT_EQ(Dialog().list.GetCurSel(), 0);
    Dialog().list.SetCurSel(-1);
    Dialog().RebuildList();
    EXPECT_EQ(Dialog().list.GetCurSel(), -1) << "and none where none was";
}

TEST_F(KeyAttributesDlgTest, RebuiltListStaysWhereItWasScrolledTo) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    key->SetInMethod(BezierMethod::User);
    key->SetOutMethod(BezierMethod::User);
    Open(key);
    Dialog().list.MoveWindow(7, 8, 300, 60); // three rows of eleven
    Dialog().list.SetTopIndex(4);
    ASSERT_EQ(Dialog().list.GetTopIndex(), 4);
    Dialog().UpdateRows();
    EXPECT_EQ(Dialog().list.GetTopIndex(), 4);
}

TEST_F(KeyAttributesDlgTest, RebuiltListKeepsItsSelection) {
    Open(PutPosition(2.0f, 1.5f));
    Dialog().list.SetCurSel(1);
    Dialog().RebuildList();
    EXPECT_EQ(Dialog().list.GetCurSel(), 1);
    EXPECT_EQ(Dialog().list.GetText(1), "Pos Y");
}

TEST_F(KeyAttributesDlgTest, NextAndPrevWalkTheRow) {
    CFilmVectorKey* middle = PutPosition(2.0f, 2.0f);
    CFilmVectorKey* last = PutPosition(3.0f, 3.0f);
    CFilmVectorKey* first = PutPosition(1.0f, 1.0f);
    Open(middle);
    EXPECT_TRUE(IsEnabled(IDC_ATTR_NEXT));
    EXPECT_TRUE(IsEnabled(IDC_ATTR_PREV));
    Click(IDC_ATTR_NEXT);
    EXPECT_EQ(Dialog().GetRecord(), last);
    EXPECT_THAT(control->selectedKeys, ElementsAre(ViewOf(last)));
    EXPECT_FALSE(IsEnabled(IDC_ATTR_NEXT));
    Click(IDC_ATTR_PREV);
    Click(IDC_ATTR_PREV);
    EXPECT_EQ(Dialog().GetRecord(), first);
    EXPECT_FALSE(IsEnabled(IDC_ATTR_PREV));
    EXPECT_TRUE(IsEnabled(IDC_ATTR_NEXT));
}

TEST_F(KeyAttributesDlgTest, KeyThatACommandMovesPastItsNeighbourHasItOnItsOtherSide) {
    CFilmVectorKey* key = PutPosition(1.0f, 1.0f);
    CFilmVectorKey* other = PutPosition(2.0f, 2.0f);
    Open(key);
    ASSERT_FALSE(IsEnabled(IDC_ATTR_PREV));
    editor.onInputNumber = [](float& value, const std::string&, const std::string&) {
        value = 3.0f;
        return true;
    };
    control->menuKey = ViewOf(key);
    control->menuRow = control->FindRowOfKey(key);
    control->OnCmdMsg(IDC_SET_POSITION, 0, nullptr, nullptr);
    EXPECT_EQ(key->time, 3.0f);
    EXPECT_FALSE(IsEnabled(IDC_ATTR_NEXT));
    ASSERT_TRUE(IsEnabled(IDC_ATTR_PREV));
    Click(IDC_ATTR_PREV);
    EXPECT_EQ(Dialog().GetRecord(), other);
}

TEST_F(KeyAttributesDlgTest, KeyThatAMarkTakesPastItsNeighbourHasItOnItsOtherSide) {
    CFilmVectorKey* key = PutPosition(1.0f, 1.0f);
    PutPosition(2.0f, 2.0f);
    CTrackCtrl* root = RowOf("Crate");
    root->SetExpanded(true, /*redraw*/ true);
    Open(key);
    ASSERT_FALSE(IsEnabled(IDC_ATTR_PREV));
    Edit("Pos X", "4.5");
    control->SaveKeyTimes(); // a mark at 1 second is taken, and dropped at 3
    control->ShiftKeysAtMark(1.0f, 3.0f);
    control->RestoreKeyTimes(/*keep*/ true);
    EXPECT_EQ(key->time, 3.0f);
    EXPECT_EQ(key->value.x, 4.5f) << "what was typed is not lost by the window's reading the key anew";
    EXPECT_TRUE(IsEnabled(IDC_ATTR_PREV));
    EXPECT_FALSE(IsEnabled(IDC_ATTR_NEXT));
}

TEST_F(KeyAttributesDlgTest, NextWritesTheOpenEdit) {
    CFilmVectorKey* first = PutPosition(1.0f, 1.0f);
    CFilmVectorKey* second = PutPosition(2.0f, 2.0f);
    Open(first);
    Edit("Pos X", "4.5");
    Click(IDC_ATTR_NEXT);
    EXPECT_EQ(first->value.x, 4.5f);
    EXPECT_EQ(second->value.x, 2.0f);
}

TEST_F(KeyAttributesDlgTest, KeyWithoutARowHasNoNeighbour) {
    PutPosition(1.0f, 1.0f);
    CFilmVectorKey* key = PutPosition(2.0f, 2.0f);
    Open(key);
    plugin.scenarioDlg = nullptr;
    Dialog().GoToNeighbour(/*forward*/ false);
    Dialog().UpdateNeighbourButtons();
    EXPECT_EQ(Dialog().GetRecord(), key);
    EXPECT_TRUE(IsEnabled(IDC_ATTR_PREV));
    EXPECT_FALSE(IsEnabled(IDC_ATTR_NEXT));
    plugin.scenarioDlg = &holder;
}

TEST_F(KeyAttributesDlgTest, WheelMovesTheObjectAtOnce) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    plugin.SetTime(2.0f, /*fromWindow*/ false);
    Open(key);
    Edit("Pos X", "");
    Wheel(120);
    EXPECT_EQ(key->value.x, 2.5f);
    EXPECT_EQ(PositionOf(*crate).x, 2.5f);
}

TEST_F(KeyAttributesDlgTest, PressOnAnotherRowTakesTheEditOfTheFirst) {
    Open(PutPosition(2.0f, 1.5f));
    Edit("Pos X", "4.5");
    Edit("Pos Y", "2");
    Dialog().list.Commit();
    EXPECT_EQ(Lines()[0], "Pos X=4.50000");
    EXPECT_EQ(Lines()[1], "Pos Y=2.00000");
}

TEST_F(KeyAttributesDlgTest, ChosenMethodShowsTheHandleBelowIt) {
    Open(PutPosition(2.0f, 1.5f));
    Edit("In type", "");
    Dialog().list.inPlaceCombo.SetCurSel(4);
    Edit("Out type", ""); // hit where it stands now, three rows lower
    EXPECT_THAT(Lines(), ElementsAre("Pos X=1.50000", "Pos Y=0.00000", "Pos Z=0.00000", "In type=User",
                                     "In X=0.00000", "In Y=0.00000", "In Z=0.00000", "Out type=Smooth"));
}

TEST_F(KeyAttributesDlgTest, MethodFromTheMenuIsShown) {
    CFilmVectorKey* key = PutPosition(2.0f, 1.5f);
    Open(key);
    control->menuKey = ViewOf(key);
    control->menuRow = control->FindRowOfKey(key);
    control->OnCmdMsg(IDC_IN_LINEAR, 0, nullptr, nullptr);
    EXPECT_EQ(Lines()[3], "In type=Linear");
}

TEST_F(KeyAttributesDlgTest, EmptyWindowForAKindWithoutAttributes) {
    EXPECT_THAT(Lines(), IsEmpty());
    Dialog().ApplyChanges();
    Dialog().GoToNeighbour(/*forward*/ true);
    ExpectEmpty();
}
