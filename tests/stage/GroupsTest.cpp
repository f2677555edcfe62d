// Groups in the views and in the list.
#include "host/stage/host/history/LevelHistory.h"
#include "host/stage/host/ObjectCopies.h"
#include "host/stage/windows/ObjectTree.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewTool.h"
#include "tests/stage/WindowFixture.h"

#include <memory>
#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QStatusBar>
#include <QTest>

/// Reaches what the toolkit calls.
struct GroupHand : stage::ObjectTreeWidget {
    using ObjectTreeWidget::dropEvent;
};

/// Two crates 400 units apart in a group, and one between them in none.
class GroupsTest : public WindowFixture {
protected:
    GroupsTest() {
        left = AddCrate("Left", -200, 0, 0);
        right = AddCrate("Right", 200, 0, 0);
        other = AddCrate("Other", 0, 0, 0);
        window.host.Select({left, right});
        window.commands.GroupSelected();
        window.host.Select({});
        window.views->tool->SetMode(stage::ToolMode::Select);
        window.tree->tree->setFixedHeight(400);
        Settle();
        window.session.History().NoteAll();
    }
    const ObjectList& Selection() { return window.host.level.selection; }
    void DoubleClick(const QPoint& place, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::mouseClick(View(), Qt::LeftButton, modifiers, place);
        QTest::mouseDClick(View(), Qt::LeftButton, modifiers, place);
        QTest::mouseRelease(View(), Qt::LeftButton, modifiers, place);
        Settle();
    }
    QPoint Of(const engine::SceneObject* object) const {
        return PixelOf(object->World().Translation().x, 40.0f, 0.0f);
    }

    // The list

    stage::ObjectTreeWidget& Tree() const { return *window.tree->tree; }
    engine::LevelData& Data() { return *window.host.level.Data(); }
    engine::Group& Group() { return *Data().Groups().at(0); }
    QTreeWidgetItem* GroupRow() { return Tree().ItemOf(Group()); }
    void ClickRow(const QTreeWidgetItem* item, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                  int column = stage::ObjectTreeWidget::kNameColumn) const {
        const QModelIndex row = Tree().indexAt(Tree().visualItemRect(item).center());
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, modifiers,
                          Tree().visualRect(row.siblingAtColumn(column)).center());
        Settle();
    }
    /// What is dragged is what is selected.
    void DropSelectedAt(const QPoint& place) const {
        const std::unique_ptr<QMimeData> data(
            Tree().model()->mimeData(Tree().selectionModel()->selectedIndexes()));
        QDropEvent drop(QPointF(place), Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        (Tree().*(&GroupHand::dropEvent))(&drop);
        Settle();
    }
    QPoint MiddleOf(const QTreeWidgetItem* item) const { return Tree().visualItemRect(item).center(); }
    QPoint Beside() const { return {Tree().viewport()->width() / 2, Tree().viewport()->height() - 5}; }
    std::string Word() const { return window.statusBar()->currentMessage().toStdString(); }
    std::string Noted() {
        window.session.History().Note();
        return window.session.History().Edits().UndoName();
    }
    std::vector<std::string> Members() {
        std::vector<std::string> names;
        for (const engine::SceneObject* member :
             Data().Groups().empty() ? std::vector<engine::SceneObject*>() : Group().members) {
            names.push_back(member->name);
        }
        return names;
    }
    using Names = std::vector<std::string>;

    engine::SceneObject* left = nullptr;
    engine::SceneObject* right = nullptr;
    engine::SceneObject* other = nullptr;
};

TEST_F(GroupsTest, AClickSelectsTheGroupADoubleClickOneOfIt) {
    Click(Of(left));
    EXPECT_EQ(Selection(), (ObjectList{left, right}));
    DoubleClick(Of(right));
    EXPECT_EQ(Selection(), (ObjectList{right}));
    DoubleClick(Of(other));
    EXPECT_EQ(Selection(), (ObjectList{other}));
    DoubleClick({5, View()->height() / 4});
    EXPECT_TRUE(Selection().empty());
}

TEST_F(GroupsTest, AltClickSelectsOneOfAGroupAndAddsAndTakesOut) {
    Click(Of(left), Qt::AltModifier);
    EXPECT_EQ(Selection(), (ObjectList{left}));
    Click(Of(other), Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(Selection(), (ObjectList{left, other}));
    Click(Of(left), Qt::AltModifier | Qt::ControlModifier);
    EXPECT_EQ(Selection(), (ObjectList{other}));
    Click(Of(right), Qt::ShiftModifier);
    EXPECT_EQ(Selection(), (ObjectList{other, right, left})) << "without Alt the whole group";
}

TEST_F(GroupsTest, ADragWithAltTurnsTheViewAndSelectsNothing) {
    window.host.Select({other});
    Settle();
    const float before = window.host.views.At(0)->navigation.yaw;
    Drag(Of(left), Of(left) + QPoint(40, 0), Qt::LeftButton, Qt::AltModifier);
    EXPECT_EQ(Selection(), (ObjectList{other}));
    EXPECT_NE(window.host.views.At(0)->navigation.yaw, before);
}

TEST_F(GroupsTest, OneOfAGroupMovesAlone) {
    DoubleClick(Of(left));
    ASSERT_EQ(Selection(), (ObjectList{left}));
    engine::Matrix4 matrix;
    matrix.SetTranslation({-200, 50, 0});
    window.commands.Move({{left, matrix}});
    EXPECT_FLOAT_EQ(left->World().Translation().y, 50.0f);
    EXPECT_FLOAT_EQ(right->World().Translation().y, 0.0f);
    EXPECT_NE(window.host.level.Data()->GroupOf(left), nullptr) << "it is still of the group";
}

TEST_F(GroupsTest, AGroupHasARowOverItsObjectsWhichStandsForAllOfThem) {
    QTreeWidgetItem* row = GroupRow();
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->text(0), "Group");
    EXPECT_EQ(Tree().ItemOf(left)->parent(), row);
    EXPECT_EQ(Tree().ItemOf(right)->parent(), row);
    EXPECT_EQ(Tree().ItemOf(other)->parent(), nullptr);
    ClickRow(row);
    EXPECT_EQ(Selection(), (ObjectList{left, right}));
    EXPECT_TRUE(Tree().ItemOf(left)->isSelected());
    ClickRow(row);
    EXPECT_EQ(Selection(), (ObjectList{left, right})) << "once more";
    EXPECT_TRUE(Tree().ItemOf(left)->isSelected());
    ClickRow(Tree().ItemOf(left));
    EXPECT_EQ(Selection(), (ObjectList{left})) << "a row of one chooses it alone";
    EXPECT_FALSE(GroupRow()->isSelected());
    window.host.Select({right, left, other});
    EXPECT_TRUE(GroupRow()->isSelected()) << "all of it was chosen elsewhere";
}

TEST_F(GroupsTest, CtrlTakesTheGroupOrOneOfItOutOfTheSelection) {
    ClickRow(Tree().ItemOf(other));
    ClickRow(GroupRow(), Qt::ControlModifier);
    EXPECT_EQ(Selection(), (ObjectList{other, left, right}));
    EXPECT_TRUE(Tree().ItemOf(left)->isSelected());
    EXPECT_TRUE(GroupRow()->isSelected());
    ClickRow(Tree().ItemOf(left), Qt::ControlModifier);
    EXPECT_EQ(Selection(), (ObjectList{other, right}));
    ClickRow(GroupRow(), Qt::ControlModifier);
    EXPECT_EQ(Selection().size(), 3u);
    ClickRow(GroupRow(), Qt::ControlModifier);
    EXPECT_EQ(Selection(), (ObjectList{other}));
}

TEST_F(GroupsTest, AFoldedRowStaysFoldedWhenTheGroupIsChosen) {
    GroupRow()->setExpanded(false);
    Click(Of(left));
    EXPECT_EQ(Selection().size(), 2u);
    EXPECT_FALSE(GroupRow()->isExpanded());
    window.ObjectsChanged();
    Settle();
    EXPECT_FALSE(GroupRow()->isExpanded());
}

TEST_F(GroupsTest, ANewGroupsRowIsInSight) {
    window.host.Select({left, right});
    window.commands.UngroupSelected();
    for (int i = 0; i < 40; ++i) {
        AddEmpty("Empty", 0, 0, 0);
    }
    Tree().scrollToTop();
    Settle();
    window.host.Select({left, right});
    window.commands.GroupSelected();
    Settle();
    EXPECT_TRUE(Tree().viewport()->rect().contains(MiddleOf(GroupRow())));
}

TEST_F(GroupsTest, AGroupIsRenamedInItsRowAndTheNameIsSavedAndUndone) {
    ClickRow(GroupRow());
    Action("EditRename")->trigger();
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    field->selectAll();
    QTest::keyClicks(field, "Boats");
    QTest::keyClick(field, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Group().name, "Boats");
    EXPECT_EQ(Noted(), "Rename group to Boats");
    EXPECT_TRUE(window.session.History().Undo());
    EXPECT_EQ(Group().name, "Group");
    EXPECT_TRUE(window.session.History().Redo());
    ASSERT_TRUE(window.session.Save(PathOf("start.level")));
    ASSERT_TRUE(window.session.Open(PathOf("start.level")));
    Settle();
    EXPECT_EQ(Group().name, "Boats");
    EXPECT_EQ(GroupRow()->text(0), "Boats");
}

TEST_F(GroupsTest, EyeAndLockOfTheRowCountForTheWholeGroup) {
    ClickRow(GroupRow(), Qt::NoModifier, stage::ObjectTreeWidget::kEyeColumn);
    EXPECT_EQ(left->visible, 0);
    EXPECT_EQ(right->visible, 0);
    EXPECT_EQ(other->visible, 1);
    EXPECT_EQ(Noted(), "Hide Left and 1 other");
    window.commands.SetVisible(*left, true);
    Settle();
    ClickRow(GroupRow(), Qt::NoModifier, stage::ObjectTreeWidget::kEyeColumn);
    EXPECT_EQ(left->visible, 0) << "as long as one is shown, the eye hides";
    ClickRow(GroupRow(), Qt::NoModifier, stage::ObjectTreeWidget::kEyeColumn);
    EXPECT_EQ(right->visible, 1);
    ClickRow(GroupRow(), Qt::NoModifier, stage::ObjectTreeWidget::kLockColumn);
    EXPECT_TRUE(left->notes.locked && right->notes.locked);
    EXPECT_FALSE(other->notes.locked);
    ClickRow(GroupRow(), Qt::NoModifier, stage::ObjectTreeWidget::kLockColumn);
    EXPECT_FALSE(left->notes.locked || right->notes.locked);
    EXPECT_TRUE(Selection().empty()) << "the signs select nothing";
}

TEST_F(GroupsTest, TheLockOfAGroupIsOneStepThatComesBackAndGoesAgain) {
    right->notes.locked = true; // one of them was locked before: it stays so when the step is taken back
    window.session.History().NoteAll();
    ClickRow(GroupRow(), Qt::NoModifier, stage::ObjectTreeWidget::kLockColumn);
    ASSERT_TRUE(left->notes.locked && right->notes.locked);
    window.session.History().Note();
    EXPECT_TRUE(window.session.History().Undo());
    Settle();
    EXPECT_FALSE(left->notes.locked);
    EXPECT_TRUE(right->notes.locked);
    EXPECT_TRUE(GroupRow()->icon(stage::ObjectTreeWidget::kLockColumn).isNull());
    EXPECT_TRUE(window.session.History().Redo());
    Settle();
    EXPECT_TRUE(left->notes.locked && right->notes.locked);
    EXPECT_FALSE(other->notes.locked);
    EXPECT_FALSE(GroupRow()->icon(stage::ObjectTreeWidget::kLockColumn).isNull());
    EXPECT_EQ(Group().members, (std::vector<engine::SceneObject*>{left, right}));
}

TEST_F(GroupsTest, WhatIsDroppedOnTheRowJoinsTheGroup) {
    ClickRow(Tree().ItemOf(other));
    DropSelectedAt(MiddleOf(GroupRow()));
    EXPECT_EQ(Members(), (Names{"Left", "Right", "Other"}));
    EXPECT_EQ(Tree().ItemOf(other)->parent(), GroupRow());
    EXPECT_EQ(Word(), "Other added to Group");
    EXPECT_EQ(Noted(), "Add Other to Group");
    EXPECT_TRUE(window.session.History().Undo());
    EXPECT_EQ(Members(), (Names{"Left", "Right"}));
    EXPECT_TRUE(window.session.History().Redo());
    ASSERT_TRUE(window.session.Save(PathOf("start.level")));
    ASSERT_TRUE(window.session.Open(PathOf("start.level")));
    EXPECT_EQ(Members(), (Names{"Left", "Right", "Other"}));
}

TEST_F(GroupsTest, AChildThatJoinsHangsOnNothingAndStaysWhereItStands) {
    engine::SceneObject* lid = AddCrate("Lid", 10, 90, 0);
    window.commands.SetParent({lid}, other);
    Settle();
    window.session.History().Note();
    ClickRow(Tree().ItemOf(lid));
    DropSelectedAt(MiddleOf(GroupRow()));
    EXPECT_EQ(lid->Parent(), nullptr);
    EXPECT_FLOAT_EQ(lid->World().Translation().y, 90.0f);
    EXPECT_EQ(Members(), (Names{"Left", "Right", "Lid"}));
    EXPECT_EQ(Noted(), "Add Lid to Group") << "one step";
    EXPECT_TRUE(window.session.History().Undo());
    EXPECT_EQ(window.host.level.FindObject("Lid")->Parent(), window.host.level.FindObject("Other"));
    EXPECT_EQ(Members(), (Names{"Left", "Right"}));
}

TEST_F(GroupsTest, WhatIsDraggedElsewhereLeavesTheGroup) {
    ClickRow(Tree().ItemOf(other));
    DropSelectedAt(MiddleOf(GroupRow()));
    Noted();
    ClickRow(Tree().ItemOf(left));
    DropSelectedAt(Beside());
    EXPECT_EQ(Members(), (Names{"Right", "Other"}));
    EXPECT_EQ(Word(), "Left is in no group any more");
    EXPECT_EQ(Noted(), "Take Left out of a group");
    ClickRow(Tree().ItemOf(right));
    DropSelectedAt(MiddleOf(Tree().ItemOf(left)));
    EXPECT_EQ(right->Parent(), left);
    EXPECT_TRUE(Data().Groups().empty()) << "one is no group";
    EXPECT_EQ(Noted(), "Attach Right");
    EXPECT_TRUE(window.session.History().Undo());
    EXPECT_EQ(Members(), (Names{"Right", "Other"}));
    EXPECT_TRUE(window.session.History().Undo());
    EXPECT_EQ(Members(), (Names{"Left", "Right", "Other"}));
}

TEST_F(GroupsTest, AGroupThatIsDraggedWholeStaysAGroup) {
    ClickRow(GroupRow());
    DropSelectedAt(MiddleOf(Tree().ItemOf(other)));
    EXPECT_EQ(left->Parent(), other);
    EXPECT_EQ(right->Parent(), other);
    EXPECT_EQ(Members(), (Names{"Left", "Right"}));
    ASSERT_NE(GroupRow(), nullptr) << "also where all of it hangs on others";
    ClickRow(GroupRow());
    EXPECT_EQ(Selection(), (ObjectList{left, right}));
}

TEST_F(GroupsTest, OneOfAGroupHangsOnAnotherAndStaysInIt) {
    ClickRow(Tree().ItemOf(right));
    DropSelectedAt(MiddleOf(Tree().ItemOf(left)));
    EXPECT_EQ(right->Parent(), left);
    EXPECT_EQ(Members(), (Names{"Left", "Right"}));
    EXPECT_EQ(Tree().ItemOf(right)->parent(), Tree().ItemOf(left));
}

TEST_F(GroupsTest, RowsGoWithTheirObjectsAndTheLevel) {
    window.host.Select({left, right});
    window.commands.DeleteSelected();
    Settle();
    EXPECT_TRUE(Data().Groups().empty());
    EXPECT_EQ(Tree().topLevelItemCount(), 1);
    Noted();
    EXPECT_TRUE(window.session.History().Undo());
    Settle();
    EXPECT_EQ(Members(), (Names{"Left", "Right"}));
    EXPECT_EQ(GroupRow()->childCount(), 2);
    window.session.New();
    Settle();
    EXPECT_EQ(Tree().topLevelItemCount(), 0);
}

TEST_F(GroupsTest, ADuplicatedGroupIsAGroupOfItsOwn) {
    window.host.Select({left, right, other});
    EXPECT_EQ(window.commands.Duplicate(), 3);
    ASSERT_EQ(Data().Groups().size(), 2u);
    const engine::Group& copy = *Data().Groups()[1];
    EXPECT_EQ(copy.name, "Group 2");
    EXPECT_EQ(Members(), (Names{"Left", "Right"}));
    ASSERT_EQ(copy.members.size(), 2u);
    EXPECT_EQ(copy.members[0]->name, "Left1");
    EXPECT_EQ(copy.members[1]->name, "Right1");
    EXPECT_EQ(Noted(), "Duplicate Left1 and 2 others");
    EXPECT_TRUE(window.session.History().Undo());
    EXPECT_EQ(Data().Groups().size(), 1u);
    EXPECT_TRUE(window.session.History().Redo());
    ASSERT_TRUE(window.session.Save(PathOf("start.level")));
    ASSERT_TRUE(window.session.Open(PathOf("start.level")));
    ASSERT_EQ(Data().Groups().size(), 2u);
    EXPECT_EQ(Data().Groups()[1]->name, "Group 2");
}

TEST_F(GroupsTest, ACopyOfOneOfAGroupIsInNone) {
    window.host.Select({left});
    EXPECT_EQ(window.commands.Duplicate(), 1);
    EXPECT_EQ(Data().Groups().size(), 1u);
    const std::string bytes = stage::CopyObjects(window.host.level, {right, other});
    EXPECT_EQ(stage::PasteObjects(window.host, window.session, bytes), 2);
    EXPECT_EQ(Data().Groups().size(), 1u);
    EXPECT_EQ(Members(), (Names{"Left", "Right"}));
}

TEST_F(GroupsTest, APastedGroupIsAGroupOfItsOwnAlsoInAnotherLevel) {
    window.commands.RenameGroup(Group(), "Boats");
    Noted();
    const std::string bytes = stage::CopyObjects(window.host.level, {other, right, left});
    EXPECT_EQ(stage::PasteObjects(window.host, window.session, bytes), 3);
    ASSERT_EQ(Data().Groups().size(), 2u);
    EXPECT_EQ(Data().Groups()[1]->name, "Boats 2");
    EXPECT_EQ(Data().Groups()[1]->members.size(), 2u);
    EXPECT_EQ(Data().GroupOf(Data().Objects()[3].get()), nullptr) << "the copy of what is in none";
    EXPECT_EQ(Noted(), "Paste Other1 and 2 others");
    EXPECT_TRUE(window.session.History().Undo());
    EXPECT_EQ(Data().Groups().size(), 1u);
    EXPECT_TRUE(window.session.History().Redo());
    EXPECT_EQ(Data().Groups().size(), 2u);
    window.session.New();
    EXPECT_EQ(stage::PasteObjects(window.host, window.session, bytes), 3);
    EXPECT_EQ(Group().name, "Boats");
    EXPECT_EQ(Members(), (Names{"Right", "Left"}));
}
