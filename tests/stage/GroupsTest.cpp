// Groups in the views and in the list.
#include "host/stage/host/history/LevelHistory.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewTool.h"
#include "tests/stage/WindowFixture.h"

#include <QTest>

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
        Settle();
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
