#include "tests/stage/WindowFixture.h"

#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewTool.h"

#include <QAction>
#include <QSettings>
#include <QTest>

using stage::ViewKind;
using ::testing::_;

/// A top view of 1000 units height around the origin, and a crate that is dragged along x by its handle. The
/// handles reach 120 units far.
class SnapTest : public WindowFixture {
protected:
    SnapTest() {
        window.views->SetKind(0, ViewKind::Top);
        stage::StageView& view = *window.host.views.At(0);
        view.navigation.pivot = {0.0f, 0.0f, 0.0f};
        view.navigation.distance = 500.0f / std::tan(view.navigation.fieldOfView * 0.5f);
        view.ApplyNavigation();
        crate = AddCrate("Crate", 3, 0, 0);
        window.host.Select({crate});
        Settle();
    }
    ~SnapTest() override { QSettings().remove("snap"); }

    stage::SnapSettings& Snap() { return window.views->tool->snap; }
    /// Pulls the handle of x so far.
    void Pull(float units, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        Drag(PixelOf(73.0f, 0.0f, 0.0f), PixelOf(73.0f + units, 0.0f, 0.0f), Qt::LeftButton, modifiers);
    }

    /// 200 to 400 along x, -100 to 100 along z, 75 high.
    void AddTable() {
        engine::ObjectSpec spec;
        spec.className = ClassName::Mesh;
        spec.name = "Table";
        spec.meshName = "shape:box 200 75 200 #ffffff";
        spec.matrix.SetTranslation({300.0f, 0.0f, 0.0f});
        window.host.level.CreateObject(spec);
    }

    engine::SceneObject* crate;
};

TEST_F(SnapTest, WithoutSnappingAnObjectGoesWhereItIsPulled) {
    Pull(110.0f);
    EXPECT_NEAR(crate->GetPosition(0)[0], 113.0f, 2.0f);
}

TEST_F(SnapTest, TheGridTakesPlacesAndNotDistances) {
    Action("SnapGrid")->setChecked(true);
    Pull(120.0f);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 125.0f) << "from 3 by 120, to the nearest 25";
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[2], 0.0f);
}

TEST_F(SnapTest, ControlTurnsTheGridAround) {
    Pull(120.0f, Qt::ControlModifier);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 125.0f);
    const float back[3] = {3.0f, 0.0f, 0.0f};
    crate->SetPosition(back, 0);
    Settle();
    Action("SnapGrid")->setChecked(true);
    Pull(120.0f, Qt::ControlModifier);
    EXPECT_NEAR(crate->GetPosition(0)[0], 123.0f, 2.0f);
}

TEST_F(SnapTest, TheStepIsTheUsersAndRemembered) {
    Action("SnapGrid")->setChecked(true);
    Action("SnapStep100")->trigger();
    Pull(110.0f);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 100.0f);
    EXPECT_FLOAT_EQ(QSettings().value("snap/step").toFloat(), 100.0f);
    EXPECT_TRUE(QSettings().value("snap/SnapGrid").toBool());
}

TEST_F(SnapTest, SurfacesCarryWhatIsPulledOntoThem) {
    AddTable();
    Action("SnapSurface")->setChecked(true);
    Pull(227.0f); // the mouse comes to x = 300
    EXPECT_NEAR(crate->GetPosition(0)[0], 300.0f, 3.0f);
    EXPECT_NEAR(crate->GetPosition(0)[1], 75.0f, 0.1f);
}

TEST_F(SnapTest, ShiftInADragPutsThingsOntoSurfacesToo) {
    AddTable();
    Pull(227.0f, Qt::ShiftModifier);
    EXPECT_NEAR(crate->GetPosition(0)[1], 75.0f, 0.1f);
}

TEST_F(SnapTest, VerticesTakeWhatComesNear) {
    AddTable();
    Action("SnapVertex")->setChecked(true);
    Drag(PixelOf(73.0f, 0.0f, 0.0f), PixelOf(205.0f, 0.0f, 106.0f));
    // The corner (200, 75, 100) of the table is the nearest that is in front.
    EXPECT_NEAR(crate->GetPosition(0)[0], 200.0f, 0.01f);
    EXPECT_NEAR(crate->GetPosition(0)[1], 75.0f, 0.01f);
    EXPECT_NEAR(crate->GetPosition(0)[2], 100.0f, 0.01f);
}

TEST_F(SnapTest, EscapeTakesASnappedDragBack) {
    Snap().grid = true;
    QTest::mousePress(View(), Qt::LeftButton, Qt::NoModifier, PixelOf(73.0f, 0.0f, 0.0f));
    QTest::mouseMove(View(), PixelOf(183.0f, 0.0f, 0.0f));
    QTest::keyClick(View(), Qt::Key_Escape);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 3.0f);
    QTest::mouseRelease(View(), Qt::LeftButton, Qt::NoModifier, PixelOf(183.0f, 0.0f, 0.0f));
}

TEST_F(SnapTest, LocalAxesTurnWithTheObject) {
    engine::Matrix4 turned = engine::Compose({0, 0, 0}, {0, 90, 0}, {1, 1, 1});
    crate->SetMatrix(turned.m, 0);
    Action("LocalAxes")->setChecked(true);
    Settle();
    // A quarter turn about y takes its x axis to -z, which is up in the picture.
    Drag(PixelOf(0.0f, 0.0f, -70.0f), PixelOf(0.0f, 0.0f, -170.0f));
    EXPECT_NEAR(crate->GetPosition(0)[2], -100.0f, 3.0f);
    EXPECT_NEAR(crate->GetPosition(0)[0], 0.0f, 0.1f);
}

TEST_F(SnapTest, ThePivotMayBeTheLastObjects) {
    engine::SceneObject* other = AddCrate("Other", 203, 0, 0);
    window.host.Select({crate, other});
    Action("PivotOfLast")->setChecked(true);
    Settle();
    Drag(PixelOf(273.0f, 0.0f, 0.0f), PixelOf(323.0f, 0.0f, 0.0f));
    EXPECT_NEAR(crate->GetPosition(0)[0], 53.0f, 2.0f) << "the handle stands at 203, not at 103";
}

TEST_F(SnapTest, ARectangleAddsWithShiftAndTakesOutWithControl) {
    engine::SceneObject* other = AddCrate("Other", 203, 0, 0);
    const auto around = [&](float x, Qt::KeyboardModifiers modifiers) {
        Drag(PixelOf(x - 40, 0, -200), PixelOf(x + 40, 0, 200), Qt::LeftButton, modifiers);
    };
    window.host.Select({});
    around(3, Qt::NoModifier);
    EXPECT_EQ(window.host.level.selection, (ObjectList{crate}));
    around(203, Qt::ShiftModifier);
    EXPECT_EQ(window.host.level.selection, (ObjectList{crate, other}));
    around(3, Qt::ControlModifier);
    EXPECT_EQ(window.host.level.selection, (ObjectList{other}));
    around(3, Qt::ControlModifier);
    EXPECT_EQ(window.host.level.selection, (ObjectList{other})) << "what is not selected stays so";
}

TEST_F(SnapTest, LockedObjectsArePassedOver) {
    window.commands.SetNotes(*crate, {true, 0.0f, ""});
    window.host.Select({});
    Click(PixelOf(3.0f, 0.0f, 0.0f));
    EXPECT_TRUE(window.host.level.selection.empty());
    Drag(PixelOf(-60, 0, -200), PixelOf(60, 0, 200));
    EXPECT_TRUE(window.host.level.selection.empty());
}

class ViewPlacesTest : public WindowFixture {
protected:
    stage::StageView& Stage() { return *window.host.views.At(0); }
};

TEST_F(ViewPlacesTest, HomeShowsTheLevelAndFTheSelection) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    AddCrate("Far", 4000, 0, 0);
    window.host.Select({crate});
    View()->setFocus();
    QTest::keyClick(View(), Qt::Key_Home);
    EXPECT_NEAR(Stage().navigation.pivot.x, 2000.0f, 100.0f);
    QTest::keyClick(View(), Qt::Key_F);
    EXPECT_NEAR(Stage().navigation.pivot.x, 0.0f, 60.0f);
}

TEST_F(ViewPlacesTest, AnOrbitLeavesTheSelectionInItsPlaceInThePicture) {
    engine::SceneObject* crate = AddCrate("Crate", 200, 0, 100);
    window.host.Select({crate});
    const glm::vec3 middle = window.views->picker.BoundsOf(*crate).center;
    const QPoint before = PixelOf(middle.x, middle.y, middle.z);
    const glm::vec3 eye = Stage().navigation.Eye();
    Drag(QPoint(300, 300), QPoint(380, 320), Qt::MiddleButton);
    const QPoint after = PixelOf(middle.x, middle.y, middle.z);
    EXPECT_NEAR(after.x(), before.x(), 1);
    EXPECT_NEAR(after.y(), before.y(), 1);
    EXPECT_GT(glm::distance(Stage().navigation.Eye(), eye), 100.0f);
}

TEST_F(ViewPlacesTest, ABookmarkBringsTheViewBackAlsoAfterAReload) {
    Action("BookmarkSet3")->trigger();
    const glm::vec3 eye = Stage().navigation.Eye();
    EXPECT_FALSE(window.session.IsChanged()) << "looking around is no change";
    window.views->SetKind(0, ViewKind::Top);
    Stage().navigation.pivot = {9000, 0, 0};
    ASSERT_TRUE(window.session.Save(PathOf("marked.level")));
    ASSERT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("marked.level"))));
    View()->setFocus();
    QTest::keyClick(View(), Qt::Key_3);
    EXPECT_EQ(Stage().Kind(), ViewKind::Perspective);
    EXPECT_NEAR(glm::distance(Stage().navigation.Eye(), eye), 0.0f, 0.05f);
    EXPECT_FALSE(window.views->GoToBookmark(4));
}
