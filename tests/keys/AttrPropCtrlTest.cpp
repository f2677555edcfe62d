#include "keys/attributes/AttrPropCtrl.h"

#include "framework/QtBridge.h"
#include "tests/keys/AttrListFixture.h"
#include "tests/support/DrawRecorder.h"
#include "tests/support/MouseScript.h"

#include <algorithm>
#include <limits>
#include <QComboBox>
#include <QTest>
#include <QWidget>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using AttrPropCtrlTest = AttrListTest;

std::function<void(AttrBrowseRequest&)> browser;
void Browse(AttrBrowseRequest* request) {
    browser(*request);
}

} // namespace

// The list is 201 wide: the names go to 100, the values from 101.

TEST_F(AttrPropCtrlTest, DrawsNameAndValueOfEachRow) {
    AddNumber("Frequency", 1.5f);
    AddText("Mesh element", "Head");
    ShowRows();
    DrawRecorder recorder;
    EXPECT_THAT(recorder.Paint(list),
                ElementsAre("rect 0,0,100,20 pen 0/0/000000 brush F0F0F0",
                            "rect 101,0,201,20 pen 0/0/FF0000 brush F0F0F0", "text 2,2 'Frequency'",
                            "text 103,2 '1.50000'", "rect 0,20,100,40 pen 0/0/000000 brush F0F0F0",
                            "rect 101,20,201,40 pen 0/0/FF0000 brush F0F0F0", "text 2,22 'Mesh element'",
                            "text 103,22 'Head'"));
}

TEST_F(AttrPropCtrlTest, SelectedRowIsGreyAndItsValueHasNoGround) {
    AddNumber("Frequency", 1.5f);
    ShowRows();
    list.SetCurSel(0);
    DrawRecorder recorder;
    EXPECT_THAT(recorder.Paint(list), ElementsAre("rect 0,0,100,20 pen 0/0/000000 brush C0C0C0",
                                                  "rect 101,0,201,20 pen 0/0/FF0000 brush none",
                                                  "text 2,2 'Frequency'", "text 103,2 '1.50000'"));
}

TEST_F(AttrPropCtrlTest, ValueUnderAnEditorIsNotDrawn) {
    AddNumber("Frequency", 1.5f);
    ShowRows();
    Click(0);
    ASSERT_EQ(list.activeEditor, &list.inPlaceEdit);
    DrawRecorder recorder;
    recorder.Paint(list);
    EXPECT_THAT(recorder.Lines(),
                ElementsAre("rect 0,0,100,20 pen 0/0/000000 brush C0C0C0",
                            "rect 101,0,201,20 pen 0/0/FF0000 brush none", "text 2,2 'Frequency'"));
}

TEST_F(AttrPropCtrlTest, ColorIsDrawnAsColor) {
    const float orange[] = {1.0f, 0.5f, 0.0f}; // 255, 127 and 0
    AddRow("Color", MemberType::Vector, orange);
    ShowRows();
    DrawRecorder recorder;
    EXPECT_THAT(recorder.Paint(list),
                ElementsAre("rect 0,0,100,20 pen 0/0/000000 brush F0F0F0",
                            "rect 101,0,201,20 pen 0/0/FF0000 brush F0F0F0", "text 2,2 'Color'",
                            "rect 101,0,201,20 pen 0/0/000000 brush 007FFF"));
}

TEST_F(AttrPropCtrlTest, ColorOutsideItsRangeWrapsRound) {
    // 1.01 is 257.55, cut to 257, its low byte 1; -0.01 is -2.55, cut to -2, its low byte 254; 2 is 510: 254.
    const float odd[] = {1.01f, -0.01f, 2.0f};
    AddRow("Color", MemberType::Vector, odd);
    ShowRows();
    DrawRecorder recorder;
    EXPECT_EQ(recorder.Paint(list).back(), "rect 101,0,201,20 pen 0/0/000000 brush FEFE01");
}

TEST_F(AttrPropCtrlTest, ColorThatIsNoNumberIsBlack) {
    const float none[] = {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                          -std::numeric_limits<float>::infinity()};
    AddRow("Color", MemberType::Vector, none);
    ShowRows();
    DrawRecorder recorder;
    EXPECT_EQ(recorder.Paint(list).back(), "rect 101,0,201,20 pen 0/0/000000 brush 000000");
}

TEST_F(AttrPropCtrlTest, SelectedColorIsDrawnWhileNoEditorStandsOverIt) {
    const float red[] = {1.0f, 0.0f, 0.0f};
    AddRow("Color", MemberType::Vector, red);
    ShowRows();
    Click(0);
    EXPECT_EQ(list.activeRow, 0);
    EXPECT_EQ(list.activeEditor, nullptr);
    DrawRecorder recorder;
    EXPECT_EQ(recorder.Paint(list).back(), "rect 101,0,201,20 pen 0/0/000000 brush 0000FF");
}

TEST_F(AttrPropCtrlTest, ChoiceIsDrawnByItsItem) {
    AddChoice("In type", {"Smooth", "Linear"}, 1);
    AddChoice("Out type", {"Smooth", "Linear"}, -1);
    ShowRows();
    DrawRecorder recorder;
    const std::vector<std::string> lines = recorder.Paint(list);
    EXPECT_EQ(lines[3], "text 103,2 'Linear'");
    EXPECT_THAT(std::vector<std::string>(lines.begin() + 4, lines.end()),
                ElementsAre("rect 0,20,100,40 pen 0/0/000000 brush F0F0F0",
                            "rect 101,20,201,40 pen 0/0/FF0000 brush F0F0F0", "text 2,22 'Out type'",
                            "text 103,22 ''"));
}

TEST_F(AttrPropCtrlTest, PressOnANumberLaysTheEditOverItsValue) {
    AddNumber("Frequency", 1.5f);
    AddNumber("Delay", 2.0f);
    ShowRows();
    Click(1);
    EXPECT_EQ(list.activeRow, 1);
    EXPECT_EQ(list.activeEditor, &list.inPlaceEdit);
    EXPECT_TRUE(IsShown(list.inPlaceEdit));
    EXPECT_FALSE(IsShown(list.inPlaceButton));
    // The row 0,20 to 201,40 less 1 all round is 1,21 to 200,39; its middle is 100, the editor 3 beyond.
    EXPECT_EQ(PlaceOf(list.inPlaceEdit), CRect(103, 21, 200, 39));
    EXPECT_EQ(list.inPlaceEdit.GetWindowText(), "2.00000");
    EXPECT_EQ(CWnd::GetFocus(), &list.inPlaceEdit);
}

TEST_F(AttrPropCtrlTest, TypingReplacesTheWholeText) {
    AddNumber("Frequency", 1.5f);
    ShowRows();
    Click(0);
    Type("7");
    EXPECT_EQ(list.inPlaceEdit.GetWindowText(), "7");
}

TEST_F(AttrPropCtrlTest, RowThatBrowsesHasANarrowerEditAndAButton) {
    AddText("Camera", "Cam", &Browse);
    ShowRows();
    Click(0);
    EXPECT_EQ(PlaceOf(list.inPlaceEdit), CRect(103, 1, 169, 19));
    EXPECT_EQ(PlaceOf(list.inPlaceButton), CRect(170, 1, 200, 19));
    EXPECT_TRUE(IsShown(list.inPlaceButton));
    EXPECT_TRUE(list.RowHasBrowse());
    EXPECT_EQ(list.inPlaceButton.value, "Cam");
}

TEST_F(AttrPropCtrlTest, ChoiceOpensTheComboboxWithItsItems) {
    AddChoice("In type", {"Smooth", "Linear", "User"}, 1);
    ShowRows();
    Click(0);
    EXPECT_EQ(list.activeEditor, &list.inPlaceCombo);
    EXPECT_EQ(list.inPlaceCombo.GetCount(), 3);
    EXPECT_EQ(list.inPlaceCombo.GetWindowText(), "Linear");
    EXPECT_EQ(PlaceOf(list.inPlaceCombo).TopLeft(), CPoint(103, 1));
    EXPECT_EQ(PlaceOf(list.inPlaceCombo).right, 200);
}

TEST_F(AttrPropCtrlTest, BoolOpensTheComboboxWithFalseAndTrue) {
    const bool on = true;
    AddRow("Looped", MemberType::Bool, &on);
    ShowRows();
    Click(0);
    EXPECT_EQ(list.activeEditor, &list.inPlaceCombo);
    EXPECT_EQ(list.inPlaceCombo.GetLBText(0), "false");
    EXPECT_EQ(list.inPlaceCombo.GetLBText(1), "true");
    EXPECT_EQ(list.inPlaceCombo.GetWindowText(), "true");
}

TEST_F(AttrPropCtrlTest, ListOfChoicesOpensLongerThanThatOfTruths) {
    const bool on = true;
    AddChoice("In type", {"Smooth", "Linear", "User"}, 1);
    AddRow("Looped", MemberType::Bool, &on);
    ShowRows();
    const auto* combo = qobject_cast<QComboBox*>(NativeWidget(list.inPlaceCombo));
    ASSERT_NE(combo, nullptr);
    const int lineHeight = combo->fontMetrics().height() + 2;
    Click(0);
    const int room = 18 + 200 - PlaceOf(list.inPlaceCombo).Height();
    EXPECT_EQ(combo->maxVisibleItems(), room / lineHeight);
    Click(1);
    EXPECT_EQ(combo->maxVisibleItems(), std::max(4, (room - 100) / lineHeight));
}

TEST_F(AttrPropCtrlTest, TypesWithoutAnEditorOnlySelectTheirRow) {
    AddRow("Nothing", 7, nullptr);
    AddRow("Behind the last", 30, nullptr);
    ShowRows();
    Click(1);
    EXPECT_EQ(list.activeRow, 1);
    EXPECT_EQ(list.activeEditor, nullptr);
    EXPECT_FALSE(IsShown(list.inPlaceEdit));
}

TEST_F(AttrPropCtrlTest, PressBelowTheLastRowEndsTheEdit) {
    CMember& number = AddNumber("Frequency", 1.5f);
    ShowRows();
    Click(0);
    Type("4");
    ClickAt(40, 90);
    EXPECT_EQ(list.activeRow, -1);
    EXPECT_EQ(list.activeEditor, nullptr);
    EXPECT_FALSE(IsShown(list.inPlaceEdit));
    EXPECT_EQ(number.value[0].AsFloat(), 4.0f);
}

TEST_F(AttrPropCtrlTest, LossOfFocusTakesTheTextIntoTheMember) {
    CMember& number = AddNumber("Frequency", 1.5f);
    ShowRows();
    Click(0);
    Type("2.25");
    EXPECT_EQ(number.value[0].AsFloat(), 1.5f);
    around.log.clear();
    LeaveEditor();
    EXPECT_EQ(number.value[0].AsFloat(), 2.25f);
    EXPECT_THAT(around.log, ElementsAre("RowEdited", "UpdateRows"));
    EXPECT_EQ(list.activeRow, 0);
    EXPECT_TRUE(IsShown(list.inPlaceEdit));
}

TEST_F(AttrPropCtrlTest, VisitWithoutAChangeIsNoEdit) {
    AddText("Text", "Ahoy");
    ShowRows();
    Click(0);
    around.log.clear();
    LeaveEditor();
    EXPECT_THAT(around.log, ElementsAre("UpdateRows"));
}

// Required: the value passes through its text.
TEST_F(AttrPropCtrlTest, VisitOfANumberRoundsItToFiveDecimals) {
    CMember& number = AddNumber("Frequency", 0.123456789f);
    ShowRows();
    Click(0);
    LeaveEditor();
    EXPECT_EQ(number.value[0].AsFloat(), 0.12346f);
}

TEST_F(AttrPropCtrlTest, VisitKeepsALongText) {
    const std::string speech(10'000, 'a');
    const std::string rightToLeft = "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d \xe2\x80\x94 \xc5\xbb\xc3\xb3\xc5\x82w";
    CMember& text = AddText("Text", speech.c_str());
    CMember& foreign = AddText("Foreign", rightToLeft.c_str());
    ShowRows();
    Click(0);
    Click(1);
    LeaveEditor();
    EXPECT_TRUE(TextOf(text) == speech);
    EXPECT_EQ(TextOf(foreign), rightToLeft);
}

TEST_F(AttrPropCtrlTest, TextThatIsNoNumberGivesWhatTheConversionMakesOfIt) {
    CMember& number = AddNumber("Frequency", 1.5f);
    const std::int32_t seven = 7;
    CMember& count = AddRow("Repeats", MemberType::Int, &seven);
    ShowRows();
    Click(0);
    Type("abc");
    Click(1);
    Type("12x");
    LeaveEditor();
    EXPECT_EQ(number.value[0].AsFloat(), 0.0f);
    EXPECT_EQ(count.value[0].AsInteger(), 12);
}

TEST_F(AttrPropCtrlTest, NumberBeyondFloatBecomesInfinite) {
    CMember& number = AddNumber("Frequency", 1.5f);
    ShowRows();
    Click(0);
    Type("1e39");
    LeaveEditor();
    EXPECT_EQ(number.value[0].AsFloat(), std::numeric_limits<float>::infinity());
    EXPECT_EQ(TextOf(number), "  inf"); // at least five characters wide
}

TEST_F(AttrPropCtrlTest, ItemThatTheUserPicksIsTaken) {
    CMember& choice = AddChoice("In type", {"Smooth", "Linear", "User"}, 1);
    ShowRows();
    Click(0);
    QTest::keyClick(NativeWidget(list.inPlaceCombo), Qt::Key_Down);
    LeaveEditor();
    EXPECT_EQ(choice.value[0].AsInteger(), 2);
    EXPECT_EQ(TextOf(choice), "User");
}

// Required: only an item of the list counts.
TEST_F(AttrPropCtrlTest, TextTypedIntoTheComboboxChangesNothing) {
    CMember& choice = AddChoice("In type", {"Smooth", "Linear", "User"}, 1);
    ShowRows();
    Click(0);
    list.inPlaceCombo.SetCurSel(-1);
    list.inPlaceCombo.SetWindowText("User");
    LeaveEditor();
    EXPECT_EQ(choice.value[0].AsInteger(), 1);
}

TEST_F(AttrPropCtrlTest, BoolIsTakenFromTheList) {
    const bool off = false;
    CMember& looped = AddRow("Looped", MemberType::Bool, &off);
    ShowRows();
    Click(0);
    QTest::keyClick(NativeWidget(list.inPlaceCombo), Qt::Key_Down);
    LeaveEditor();
    EXPECT_TRUE(looped.value[0].AsBool());
}

TEST_F(AttrPropCtrlTest, AnotherObjectIdIsAppliedAtOnceAndEndsTheEdit) {
    const std::int32_t id = 17;
    CMember& object = AddRow("Object ID", MemberType::ObjectId, &id);
    ShowRows();
    Click(0);
    Type("18");
    around.log.clear();
    LeaveEditor();
    EXPECT_EQ(object.value[0].AsInteger(), 18);
    EXPECT_THAT(around.log, ElementsAre("ApplyChanges", "Refresh", "UpdateRows"));
    EXPECT_EQ(list.activeRow, -1);
    EXPECT_FALSE(IsShown(list.inPlaceEdit));
}

TEST_F(AttrPropCtrlTest, SameObjectIdIsNotApplied) {
    const std::int32_t id = 17;
    AddRow("Object ID", MemberType::ObjectId, &id);
    ShowRows();
    Click(0);
    around.log.clear();
    LeaveEditor();
    EXPECT_THAT(around.log, ElementsAre("UpdateRows"));
}

TEST_F(AttrPropCtrlTest, ResetDropsTheEdit) {
    CMember& number = AddNumber("Frequency", 1.5f);
    ShowRows();
    Click(0);
    Type("9");
    around.log.clear();
    list.ResetRows();
    EXPECT_THAT(around.log, IsEmpty());
    EXPECT_EQ(number.value[0].AsFloat(), 1.5f);
    EXPECT_EQ(list.activeRow, -1);
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_FALSE(IsShown(list.inPlaceEdit));
    EXPECT_FALSE(IsShown(list.inPlaceButton));
}

TEST_F(AttrPropCtrlTest, CommitWithoutARowOnlyUpdates) {
    ShowRows();
    list.Commit();
    EXPECT_THAT(around.log, ElementsAre("UpdateRows"));
    list.activeRow = 40; // rows have gone since
    list.Commit();
    EXPECT_THAT(around.log, ElementsAre("UpdateRows", "UpdateRows"));
}

TEST_F(AttrPropCtrlTest, WheelStepsByOneAndAppliesAtOnce) {
    CMember& number = AddNumber("Pos X", 1.5f);
    ShowRows();
    Click(0);
    around.log.clear();
    Wheel(120);
    EXPECT_EQ(list.inPlaceEdit.GetWindowText(), "2.500");
    EXPECT_EQ(number.value[0].AsFloat(), 2.5f);
    EXPECT_THAT(around.log, ElementsAre("RowEdited", "UpdateRows", "ApplyChanges", "PoseFilm"));
    Wheel(-120);
    Wheel(-120);
    EXPECT_EQ(number.value[0].AsFloat(), 0.5f);
    EXPECT_TRUE(IsShown(list.inPlaceEdit));
}

// Required: the number that the wheel turns is the one from when the field got the focus.
TEST_F(AttrPropCtrlTest, WheelGoesOnFromWhereTheVisitBegan) {
    CMember& number = AddNumber("Pos X", 1.5f);
    ShowRows();
    Click(0);
    Type("50");
    Wheel(120);
    EXPECT_EQ(number.value[0].AsFloat(), 2.5f);
}

// Required: also a text gives way to the number.
TEST_F(AttrPropCtrlTest, WheelReplacesATextByANumber) {
    CMember& text = AddText("Name", "Ahoy");
    ShowRows();
    Click(0);
    Wheel(120);
    EXPECT_EQ(TextOf(text), "1.000");
}

TEST_F(AttrPropCtrlTest, WheelOverARowThatBrowsesDoesNothing) {
    CMember& text = AddText("Camera", "Cam", &Browse);
    ShowRows();
    Click(0);
    around.log.clear();
    Wheel(120);
    EXPECT_EQ(TextOf(text), "Cam");
    EXPECT_THAT(around.log, IsEmpty());
}

TEST_F(AttrPropCtrlTest, LimitsStopOrWrapTheWheel) {
    AddNumber("Pos X", 1.0f);
    ShowRows();
    Click(0);
    list.inPlaceEdit.hasMaximum = true;
    list.inPlaceEdit.maximum = 1.5f;
    Wheel(120); // 2 is beyond 1.5
    EXPECT_EQ(list.inPlaceEdit.current, 1.5f);
    list.inPlaceEdit.wrap = true;
    Wheel(120); // without a minimum there is nothing to wrap to
    EXPECT_EQ(list.inPlaceEdit.current, 1.5f);
    list.inPlaceEdit.hasMinimum = true;
    list.inPlaceEdit.minimum = -3.0f;
    Wheel(120);
    EXPECT_EQ(list.inPlaceEdit.current, -3.0f);
    Wheel(-120);
    EXPECT_EQ(list.inPlaceEdit.current, 1.5f);
    list.inPlaceEdit.wrap = false;
    list.inPlaceEdit.current = -2.5f;
    Wheel(-120);
    EXPECT_EQ(list.inPlaceEdit.current, -3.0f);
    list.inPlaceEdit.wrap = true;
    list.inPlaceEdit.hasMaximum = false;
    Wheel(-120); // without a maximum there is nothing to wrap to
    EXPECT_EQ(list.inPlaceEdit.current, -3.0f);
}

TEST_F(AttrPropCtrlTest, BrowserGetsTheTextAndItsAnswerStandsInTheEditor) {
    CMember& camera = AddText("Camera", "Cam", &Browse);
    ShowRows();
    Click(0);
    std::string asked;
    browser = [&](AttrBrowseRequest& request) {
        asked = request.value;
        request.value = "Other";
    };
    around.log.clear();
    ClickAt(185, 10);
    EXPECT_EQ(asked, "Cam");
    EXPECT_EQ(list.inPlaceEdit.GetWindowText(), "Other");
    EXPECT_EQ(CWnd::GetFocus(), &list.inPlaceEdit);
    EXPECT_TRUE(IsShown(list.inPlaceButton));
    EXPECT_EQ(TextOf(camera), "Cam"); // until the editor is left
    LeaveEditor();
    EXPECT_EQ(TextOf(camera), "Other");
}

TEST_F(AttrPropCtrlTest, KeyOnShowIsCurrentBeforeAndAfterABrowser) {
    AddText("Camera", "Cam", &Browse);
    ShowRows();
    Click(0);
    browser = [&](AttrBrowseRequest&) { around.log.push_back("browse"); };
    around.log.clear();
    MouseScript(list.inPlaceButton).Press(5, 5);
    // The press takes the focus from the edit, whose text is committed.
    EXPECT_THAT(around.log,
                ElementsAre("UpdateRows", "ApplyPending", "MakeKeyCurrent", "browse", "MakeKeyCurrent"));
}

TEST_F(AttrPropCtrlTest, BrowserOfAColorWritesTheMember) {
    const float red[] = {1.0f, 0.0f, 0.0f};
    CMember& color = AddRow("Color", MemberType::Vector, red, &Browse);
    ShowRows();
    Click(0);
    EXPECT_EQ(list.activeEditor, nullptr);
    EXPECT_TRUE(IsShown(list.inPlaceButton));
    browser = [&](AttrBrowseRequest& request) {
        EXPECT_EQ(request.value, "1.0000 , 0.0000 , 0.0000");
        request.value = " 0.000 , 0.502 , 1.000";
    };
    ClickAt(185, 10);
    EXPECT_EQ(TextOf(color), "0.0000 , 0.5020 , 1.0000");
}

TEST_F(AttrPropCtrlTest, AnswerForRowsThatWentIsDropped) {
    AddText("Camera", "Cam", &Browse);
    ShowRows();
    Click(0);
    browser = [&](AttrBrowseRequest& request) {
        list.ResetRows();
        around.rows.DeleteAll();
        request.value = "Other";
    };
    ClickAt(185, 10);
    EXPECT_EQ(list.activeRow, -1);
    EXPECT_FALSE(IsShown(list.inPlaceEdit));
}

TEST_F(AttrPropCtrlTest, LinkIsOfferedWhileAnObjectIdIsUnderEdit) {
    EditorObject* boat = editor.Create("Boat");
    const std::int32_t none = 0;
    AddNumber("X", 1.0f);
    AddRow("Object ID", MemberType::ObjectId, &none);
    ShowRows();
    std::string text = "old";
    EXPECT_FALSE(list.GetLinkObjectText(boat, text));
    EXPECT_EQ(text, "");
    Click(0);
    EXPECT_FALSE(list.GetLinkObjectText(boat, text));
    Click(1);
    EXPECT_FALSE(list.GetLinkObjectText(nullptr, text));
    EXPECT_TRUE(list.GetLinkObjectText(boat, text));
    EXPECT_EQ(text, "Link camera to object Boat(" + std::to_string(boat->id) + ")");
    list.SetCurSel(-1);
    EXPECT_FALSE(list.GetLinkObjectText(boat, text));
    EXPECT_EQ(text, "");
}

TEST_F(AttrPropCtrlTest, ObjectIsNotLinkedThroughAnotherRow) {
    EditorObject* boat = editor.Create("Boat");
    const std::int32_t none = 0;
    CMember& x = AddNumber("X", 1.0f);
    CMember& id = AddRow("Object ID", MemberType::ObjectId, &none);
    ShowRows();
    Click(0);
    around.log.clear();
    list.SetLinkObject(boat);
    list.SetCurSel(-1);
    list.SetLinkObject(boat);
    EXPECT_THAT(around.log, IsEmpty());
    EXPECT_EQ(x.value[0].AsFloat(), 1.0f);
    EXPECT_EQ(id.value[0].AsInteger(), 0);
}

TEST_F(AttrPropCtrlTest, LinkedObjectIsAppliedAndTheRowsAreMadeAnew) {
    EditorObject* boat = editor.Create("Boat");
    const std::int32_t none = 0;
    CMember& id = AddRow("Object ID", MemberType::ObjectId, &none);
    ShowRows();
    Click(0);
    around.log.clear();
    list.SetLinkObject(nullptr);
    EXPECT_THAT(around.log, IsEmpty());
    list.SetLinkObject(boat);
    EXPECT_EQ(id.value[0].AsInteger(), boat->id);
    EXPECT_THAT(around.log, ElementsAre("ApplyChanges", "Refresh"));
}

TEST_F(AttrPropCtrlTest, EditorFollowsTheRowWhenTheListScrolls) {
    for (int i = 0; i < 20; ++i) {
        AddNumber("Row", static_cast<float>(i));
    }
    ShowRows();
    Click(5);
    ASSERT_EQ(PlaceOf(list.inPlaceEdit).top, 101);
    list.SetTopIndex(3);
    NativeWidget(list)->grab();
    EXPECT_EQ(PlaceOf(list.inPlaceEdit).top, 41);
}
