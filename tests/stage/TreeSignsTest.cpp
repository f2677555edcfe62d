#include "tests/stage/WindowFixture.h"

#include "host/stage/windows/ObjectTree.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTest>

class TreeSignsTest : public WindowFixture {
protected:
    stage::ObjectTreeWidget& Tree() const { return *window.tree->tree; }
    void Press(const EditorObject* object, int column) const {
        const QModelIndex row = Tree().indexAt(Tree().visualItemRect(Tree().ItemOf(object)).center());
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, Qt::NoModifier,
                          Tree().visualRect(row.siblingAtColumn(column)).center());
        Settle();
    }
};

TEST_F(TreeSignsTest, TheEyeHidesAndShowsWithoutSelecting) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    Press(crate, stage::ObjectTreeWidget::kEyeColumn);
    EXPECT_EQ(crate->visible, 0);
    EXPECT_TRUE(window.host.level.selection.empty());
    EXPECT_TRUE(window.session.IsChanged());
    Press(crate, stage::ObjectTreeWidget::kEyeColumn);
    EXPECT_EQ(crate->visible, 1);
}

TEST_F(TreeSignsTest, TheLockKeepsClicksAway) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 50, 0);
    Press(crate, stage::ObjectTreeWidget::kLockColumn);
    EXPECT_TRUE(crate->notes.locked);
    Click(PixelOf(0, 60, 0));
    EXPECT_TRUE(window.host.level.selection.empty());
    Press(crate, stage::ObjectTreeWidget::kNameColumn);
    EXPECT_EQ(window.host.level.selection, (ObjectList{crate})) << "the list still selects it";
    Press(crate, stage::ObjectTreeWidget::kLockColumn);
    EXPECT_FALSE(crate->notes.locked);
}

TEST_F(TreeSignsTest, OnASelectedObjectTheyCountForTheSelection) {
    engine::SceneObject* left = AddCrate("Left", -100, 0, 0);
    engine::SceneObject* right = AddCrate("Right", 100, 0, 0);
    engine::SceneObject* other = AddCrate("Other", 300, 0, 0);
    window.host.Select({left, right});
    Settle();
    Press(left, stage::ObjectTreeWidget::kEyeColumn);
    EXPECT_EQ(left->visible, 0);
    EXPECT_EQ(right->visible, 0);
    EXPECT_EQ(other->visible, 1);
    Press(other, stage::ObjectTreeWidget::kEyeColumn);
    EXPECT_EQ(other->visible, 0);
    EXPECT_EQ(window.host.level.selection, (ObjectList{left, right}));
}

TEST_F(TreeSignsTest, RenameOpensTheFieldInTheRow) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    window.host.Select({crate});
    Settle();
    Action("EditRename")->trigger();
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    EXPECT_TRUE(Tree().isAncestorOf(field));
    field->selectAll();
    QTest::keyClicks(field, "Barrel");
    QTest::keyClick(field, Qt::Key_Return);
    Settle();
    EXPECT_EQ(crate->name, "Barrel");
}

TEST_F(TreeSignsTest, SameKindSelectsByClass) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    engine::SceneObject* second = AddCrate("Second", 100, 0, 0);
    AddEmpty("Empty", 0, 0, 0);
    window.host.Select({crate});
    Settle();
    Action("EditSelectKind")->trigger();
    EXPECT_EQ(window.host.level.selection, (ObjectList{crate, second}));
}
