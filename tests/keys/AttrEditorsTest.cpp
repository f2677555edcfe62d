// What the editors of the property list take and leave, and what a browser is given.
#include "framework/QtBridge.h"
#include "keys/attributes/AttrPropCtrl.h"
#include "tests/keys/AttrListFixture.h"
#include "tests/support/DrawRecorder.h"

#include <QTest>
#include <QWidget>

using ::testing::Contains;
using ::testing::ElementsAre;

namespace {

AttrBrowseRequest given;
void TakeDown(AttrBrowseRequest* request) {
    given = *request;
}

class AttrEditorsTest : public AttrListTest {
protected:
    AttrEditorsTest() { given = {}; }

    void PressInCombobox(int key) {
        QTest::keyClick(NativeWidget(list.inPlaceCombo), static_cast<Qt::Key>(key));
    }
    /// The user browses for the value of the first row, which is of this record.
    const AttrBrowseRequest& BrowseFor(IFilmKey* record) {
        around.record = record;
        Click(0);
        ClickAt(185, 10); // on the button
        LeaveEditor();
        list.ResetRows();
        ShowRows();
        return given;
    }
};

} // namespace

TEST_F(AttrEditorsTest, FirstItemIsAnItemToo) {
    CMember& choice = AddChoice("In type", {"Smooth", "Linear"}, 1);
    ShowRows();
    Click(0);
    PressInCombobox(Qt::Key_Up);
    LeaveEditor();
    EXPECT_EQ(choice.value[0].AsInteger(), 0);
}

TEST_F(AttrEditorsTest, BoolCanBeTurnedOff) {
    const bool on = true;
    CMember& looped = AddRow("Looped", MemberType::Bool, &on);
    ShowRows();
    Click(0);
    PressInCombobox(Qt::Key_Up);
    LeaveEditor();
    EXPECT_FALSE(looped.value[0].AsBool());
}

TEST_F(AttrEditorsTest, BoolKeepsItsValueWhereNothingIsChosen) {
    for (const bool flag : {true, false}) {
        CMember& looped = AddRow("Looped", MemberType::Bool, &flag);
        ShowRows();
        Click(list.GetCount() - 1);
        list.inPlaceCombo.SetCurSel(-1);
        LeaveEditor();
        EXPECT_EQ(looped.value[0].AsBool(), flag);
    }
}

TEST_F(AttrEditorsTest, ComboboxHasTheItemsOfItsRowOnly) {
    const bool on = true;
    AddChoice("In type", {"Smooth", "Linear", "User"}, 1);
    AddChoice("Side", {"Left", "Right", "Both", "None"}, 0);
    AddRow("Looped", MemberType::Bool, &on);
    ShowRows();
    Click(0);
    EXPECT_EQ(list.inPlaceCombo.GetCount(), 3);
    Click(1);
    EXPECT_EQ(list.inPlaceCombo.GetCount(), 4);
    EXPECT_EQ(list.inPlaceCombo.GetLBText(0), "Left");
    Click(2);
    EXPECT_EQ(list.inPlaceCombo.GetCount(), 2);
}

TEST_F(AttrEditorsTest, TypingStopsAt256CharactersAndALongerTextStays) {
    CMember& text = AddText("Text", "");
    const std::string speech(300, 'a');
    CMember& longer = AddText("Speech", speech.c_str());
    ShowRows();
    Click(0);
    Type(std::string(300, 'b'));
    Click(1);
    EXPECT_EQ(TextOf(text), std::string(256, 'b'));
    LeaveEditor();
    EXPECT_EQ(TextOf(longer), speech);
}

TEST_F(AttrEditorsTest, RowsWithoutAnEditorAreLeftAlone) {
    const float red[] = {1.0f, 0.0f, 0.0f};
    CMember& color = AddRow("Color", MemberType::Vector, red);
    AddText("Text", "0.5 , 0.5 , 0.5");
    ShowRows();
    Click(1);
    Click(0);
    ASSERT_EQ(list.activeRow, 0);
    around.log.clear();
    list.Commit();
    EXPECT_EQ(TextOf(color), "1.0000 , 0.0000 , 0.0000") << "the edit holds another row's text";
    EXPECT_THAT(around.log, ElementsAre("UpdateRows"));
}

TEST_F(AttrEditorsTest, RowsThatAreNotSelectedShowTheirValuesBesideAnEditor) {
    AddNumber("Frequency", 1.5f);
    AddNumber("Delay", 2.0f);
    ShowRows();
    Click(0);
    ASSERT_NE(list.activeEditor, nullptr);
    DrawRecorder recorder;
    recorder.Paint(list);
    EXPECT_THAT(recorder.Lines(), Contains("text 103,22 '2.00000'"));
}

TEST_F(AttrEditorsTest, ButtonGoesWithItsEdit) {
    AddText("Camera", "Cam", &TakeDown);
    AddNumber("Delay", 2.0f);
    ShowRows();
    Click(0);
    ASSERT_TRUE(IsShown(list.inPlaceButton));
    list.Commit();
    EXPECT_FALSE(IsShown(list.inPlaceButton));
    Click(0);
    ASSERT_TRUE(IsShown(list.inPlaceButton));
    list.ResetRows();
    EXPECT_FALSE(IsShown(list.inPlaceButton));
}

TEST_F(AttrEditorsTest, SecondPressOfADoubleClickOpensTheEditorToo) {
    AddNumber("Frequency", 1.5f);
    AddNumber("Delay", 2.0f);
    ShowRows();
    list.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(40, 30));
    EXPECT_EQ(list.activeRow, 1);
    EXPECT_EQ(list.inPlaceEdit.GetWindowText(), "2.00000");
}

TEST_F(AttrEditorsTest, BrowsedColorIsAnEdit) {
    const float red[] = {1.0f, 0.0f, 0.0f};
    AddRow("Color", MemberType::Vector, red, &TakeDown);
    ShowRows();
    Click(0);
    around.log.clear();
    ClickAt(185, 10);
    EXPECT_THAT(around.log, Contains("RowEdited"));
}

TEST_F(AttrEditorsTest, BrowserGetsTheActorOfItsTrack) {
    EditorObject* actor = editor.Create("Actor");
    EditorObject* other = editor.Create("Other");
    IFilm* film = OpenFilmWith({actor});
    AddText("Mesh element", "Head", &TakeDown);
    AddRow("Object ID", MemberType::ObjectId, &other->id);
    ShowRows();
    EXPECT_EQ(BrowseFor(AddKey(film->FindObjectTrack(actor), KeyKind::Animation, 1.0f)).object, actor)
        << "and not the one that the id names";
}

TEST_F(AttrEditorsTest, WithoutAnActorBrowserGetsTheObjectThatTheIdNames) {
    EditorObject* named = editor.Create("Named");
    const IFilm* film = OpenFilmWith({});
    IFilmKey* record = AddKey(film->mainTrack, KeyKind::FxSequence, 1.0f);
    AddText("Mesh element name", "Head", &TakeDown);
    ShowRows();
    EXPECT_EQ(BrowseFor(record).object, nullptr) << "no row of an id";
    CMember& id = AddRow("Object ID", MemberType::ObjectId, &named->id);
    ShowRows();
    EXPECT_EQ(BrowseFor(record).object, named);
    id.value[0].SetByValue(std::int32_t{987654});
    EXPECT_EQ(BrowseFor(record).object, nullptr) << "no such object";
}

TEST_F(AttrEditorsTest, BrowserGetsTheKindOfEffects) {
    const IFilm* film = OpenFilmWith({});
    AddText("FX name", "Fire", &TakeDown);
    ShowRows();
    const std::pair<int, int> kinds[] = {
        {KeyKind::FxSequence, 1}, {KeyKind::FxParticle, 2}, {KeyKind::FxTrace, 3}, {KeyKind::FxFlare, 4},
        {KeyKind::FxRain, 5},     {KeyKind::FxBlind, 6},    {KeyKind::Camera, 0},  {KeyKind::Sound, 0}};
    float time = 0.0f;
    for (const auto& [kind, code] : kinds) {
        given.fxKind = -1;
        EXPECT_EQ(BrowseFor(AddKey(film->mainTrack, kind, time += 0.5f)).fxKind, code) << kind;
    }
    EXPECT_EQ(BrowseFor(nullptr).fxKind, 0);
}

TEST(AttrRowsTest, RowIsFoundByNameAndCategory) {
    AttrRows rows;
    const float one = 1.0f;
    const float two = 2.0f;
    rows.Append(AttrRows::Make("Position X", MemberType::Float, &one, "POSITION", 0, nullptr));
    rows.Append(AttrRows::Make("Position X", MemberType::Float, &two, "ADDITIONAL DATA", 0, nullptr));
    ASSERT_NE(rows.FindMember("Position X", "ADDITIONAL DATA"), nullptr);
    EXPECT_EQ(rows.FindMember("Position X", "ADDITIONAL DATA")->value[0].AsFloat(), 2.0f);
    EXPECT_EQ(rows.FindMember("Position X", "POSITION")->value[0].AsFloat(), 1.0f);
    EXPECT_EQ(rows.FindMember("Position x", "POSITION"), nullptr) << "exactly this name";
    EXPECT_EQ(rows.FindMember("Position X", "Position"), nullptr);
    EXPECT_EQ(rows.FindMember(nullptr, "POSITION"), nullptr);
    EXPECT_EQ(rows.FindMember("Position X", nullptr), nullptr);
}
