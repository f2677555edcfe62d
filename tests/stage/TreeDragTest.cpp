// What is dropped in the list of objects. tests/desktop drags with the mouse.
#include "host/stage/host/history/LevelHistory.h"
#include "host/stage/windows/ObjectTree.h"
#include "tests/stage/WindowFixture.h"

#include <memory>
#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QStatusBar>
#include <QTest>

/// Reaches what the toolkit calls.
struct Hand : stage::ObjectTreeWidget {
    using ObjectTreeWidget::dropEvent;
};

class TreeDragTest : public WindowFixture {
protected:
    TreeDragTest() { window.tree->tree->setFixedHeight(400); }

    stage::ObjectTreeWidget& Tree() const { return *window.tree->tree; }
    QPoint RowOf(const EditorObject* object) const {
        return Tree().visualItemRect(Tree().ItemOf(object)).center();
    }
    QPoint Beside() const { return {Tree().viewport()->width() / 2, Tree().viewport()->height() - 5}; }

    /// What is dragged is what is selected; the press before a drag selects the row.
    void DragTo(EditorObject* object, const QPoint& to) {
        if (!window.host.level.IsSelected(object)) {
            QTest::mouseClick(Tree().viewport(), Qt::LeftButton, Qt::NoModifier, RowOf(object));
        }
        const std::unique_ptr<QMimeData> data(
            Tree().model()->mimeData(Tree().selectionModel()->selectedIndexes()));
        QDropEvent drop(QPointF(to), Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        (Tree().*(&Hand::dropEvent))(&drop); // the toolkit hands on drops of its own drags alone
        EXPECT_EQ(drop.dropAction(), Qt::IgnoreAction) << "the list would take the rows away itself";
        Settle();
    }
    std::string Word() const { return window.statusBar()->currentMessage().toStdString(); }
    const stage::EditHistory& Edits() { return window.session.History().Edits(); }
};

TEST_F(TreeDragTest, WhatIsDroppedOnAnObjectHangsOnItWhereItStands) {
    engine::SceneObject* cart = AddEmpty("Cart", 100, 0, 0);
    engine::SceneObject* crate = AddCrate("Crate", 30, 20, 10);
    DragTo(crate, RowOf(cart));
    EXPECT_EQ(crate->Parent(), cart);
    EXPECT_FLOAT_EQ(crate->World().Translation().x, 30.0f);
    EXPECT_EQ(Tree().ItemOf(crate)->parent(), Tree().ItemOf(cart));
    EXPECT_EQ(Word(), "Crate on Cart");
    DragTo(crate, Beside());
    EXPECT_EQ(crate->Parent(), nullptr);
    EXPECT_FLOAT_EQ(crate->World().Translation().x, 30.0f);
}

TEST_F(TreeDragTest, AllSelectedOnesAreDraggedAndThoseBelowThemStayThere) {
    engine::SceneObject* cart = AddEmpty("Cart", 100, 0, 0);
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    engine::SceneObject* lid = AddCrate("Lid", 0, 100, 0);
    engine::SceneObject* barrel = AddCrate("Barrel", 200, 0, 0);
    window.commands.SetParent({lid}, crate);
    window.host.Select({crate, lid, barrel});
    Settle();
    EXPECT_CALL(plugin, OnEvent(EventCode::ObjectSetChanged, nullptr)).Times(1);
    DragTo(barrel, RowOf(cart));
    EXPECT_EQ(crate->Parent(), cart);
    EXPECT_EQ(barrel->Parent(), cart);
    EXPECT_EQ(lid->Parent(), crate);
    EXPECT_EQ(window.host.level.selection, (ObjectList{crate, lid, barrel}));
}

TEST_F(TreeDragTest, ADropOnAChildIsRefusedWithAWordAndChangesNothing) {
    engine::SceneObject* cart = AddEmpty("Cart", 100, 0, 0);
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    engine::SceneObject* barrel = AddCrate("Barrel", 200, 0, 0);
    window.commands.SetParent({crate}, cart);
    Settle();
    window.host.Select({cart, barrel});
    Settle();
    DragTo(cart, RowOf(crate));
    EXPECT_EQ(cart->Parent(), nullptr);
    EXPECT_EQ(barrel->Parent(), nullptr) << "none of them, as one can't";
    EXPECT_EQ(Word(), "Crate hangs on Cart: it can't be its parent too");
}

TEST_F(TreeDragTest, ADropOnOneOfTheDraggedIsRefusedWithAWord) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    engine::SceneObject* barrel = AddCrate("Barrel", 200, 0, 0);
    window.host.Select({crate, barrel});
    Settle();
    DragTo(crate, RowOf(barrel));
    EXPECT_EQ(crate->Parent(), nullptr);
    EXPECT_EQ(barrel->Parent(), nullptr);
    EXPECT_EQ(Word(), "Barrel can't be its own parent");
}

TEST_F(TreeDragTest, OneUndoTakesTheDragBack) {
    engine::SceneObject* cart = AddEmpty("Cart", 100, 0, 0);
    AddCrate("Barrel", 200, 0, 0);
    const int crate = AddCrate("Crate", 30, 20, 10)->id;
    window.session.History().Note();
    window.host.Select({window.host.level.FindObject(crate), window.host.level.FindObject("Barrel")});
    Settle();
    DragTo(window.host.level.FindObject(crate), RowOf(cart));
    window.session.History().Note();
    EXPECT_EQ(Edits().UndoName(), "Attach Barrel and 1 other");
    window.session.History().Undo();
    Settle();
    const engine::SceneObject* after = window.host.level.FindObject(crate);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->Parent(), nullptr);
    EXPECT_FLOAT_EQ(after->World().Translation().x, 30.0f);
    EXPECT_EQ(window.host.level.FindObject("Barrel")->Parent(), nullptr);
}

TEST_F(TreeDragTest, HelpersHaveRowsWhenAskedForAndStayWhereTheyAre) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    engine::SceneObject* eye = AddEmpty("Eye", 0, 100, 0);
    eye->transient = true;
    window.ObjectsChanged();
    Settle();
    EXPECT_EQ(Tree().ItemOf(eye), nullptr);
    Action("ViewHelperObjects")->trigger();
    ASSERT_NE(Tree().ItemOf(eye), nullptr);
    const Qt::ItemFlags never = Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled | Qt::ItemIsEditable;
    EXPECT_EQ(Tree().ItemOf(eye)->flags() & never, Qt::ItemFlags());
    EXPECT_EQ(Tree().ItemOf(crate)->flags() & never, never);
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, Qt::NoModifier, RowOf(eye));
    EXPECT_EQ(window.host.level.selection, (ObjectList{eye})) << "a row selects it, as a click in a view";
    EXPECT_EQ(window.commands.SetParent({crate}, eye),
              "Eye is a helper of a film: it has neither parent nor children");
    Action("ViewHelperObjects")->trigger();
    EXPECT_EQ(Tree().ItemOf(eye), nullptr);
}
