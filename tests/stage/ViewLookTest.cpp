#include "tests/stage/WindowFixture.h"

#include "host/engine/ClassDatabase.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewHeader.h"
#include "host/stage/windows/ViewWidget.h"

#include <QAction>
#include <QMenu>
#include <QSettings>
#include <QTest>
#include <QWheelEvent>

using stage::ViewKind;
using stage::ViewShading;
using ::testing::_;

class ViewLookTest : public WindowFixture {
protected:
    stage::StageView& Stage() { return *window.host.views.At(0); }
    void Show(ViewKind kind, int camera = 0) {
        window.views->SetKind(0, kind, camera);
        Settle();
    }
    /// Puts the middle of a flat view on a point and makes its height 1000 units.
    void Aim(const glm::vec3& place) {
        Stage().navigation.pivot = place;
        Stage().navigation.distance = 500.0f / std::tan(Stage().navigation.fieldOfView * 0.5f);
        Stage().ApplyNavigation();
        Settle();
    }
    engine::SceneObject* AddCamera(float x, float y, float z) {
        engine::ObjectSpec spec;
        spec.className = engine::kCameraClass;
        spec.name = "Camera";
        spec.matrix.SetTranslation({x, y, z});
        spec.notes.fieldOfView = 0.8f;
        return window.host.level.CreateObject(spec);
    }
};

TEST_F(ViewLookTest, AFlatViewShowsLengthsAsTheyAre) {
    Show(ViewKind::Top);
    Aim({0.0f, 0.0f, 0.0f});
    const int tenth = View()->height() / 10;
    const QPoint middle = PixelOf(0.0f, 0.0f, 0.0f);
    EXPECT_NEAR(PixelOf(100.0f, 0.0f, 0.0f).x() - middle.x(), tenth, 1) << "100 of 1000 units to the right";
    EXPECT_NEAR(PixelOf(100.0f, 5000.0f, 0.0f).x() - middle.x(), tenth, 1) << "at any height";
    EXPECT_NEAR(PixelOf(0.0f, 0.0f, 100.0f).y() - middle.y(), tenth, 1) << "z comes down";
}

TEST_F(ViewLookTest, FrontAndSideShowTheHeight) {
    Show(ViewKind::Front);
    Aim({0.0f, 0.0f, 0.0f});
    EXPECT_GT(PixelOf(100.0f, 0.0f, 0.0f).x(), PixelOf(0.0f, 0.0f, 0.0f).x());
    EXPECT_LT(PixelOf(0.0f, 100.0f, 0.0f).y(), PixelOf(0.0f, 0.0f, 0.0f).y());
    EXPECT_EQ(PixelOf(0.0f, 0.0f, 300.0f), PixelOf(0.0f, 0.0f, 0.0f));
    Show(ViewKind::Side);
    Aim({0.0f, 0.0f, 0.0f});
    EXPECT_LT(PixelOf(0.0f, 0.0f, 100.0f).x(), PixelOf(0.0f, 0.0f, 0.0f).x()) << "seen from the right";
    EXPECT_NEAR(PixelOf(300.0f, 0.0f, 0.0f).x(), PixelOf(0.0f, 0.0f, 0.0f).x(), 1);
}

TEST_F(ViewLookTest, AClickInATopViewTakesWhatLiesHighest) {
    AddCrate("Low", 0, 0, 0);
    engine::SceneObject* high = AddCrate("High", 0, 4000, 0);
    Show(ViewKind::Top);
    Aim({0.0f, 0.0f, 0.0f});
    Click(PixelOf(10.0f, 0.0f, 10.0f));
    EXPECT_EQ(window.host.level.selection, (ObjectList{high}));
}

TEST_F(ViewLookTest, TheGizmoMovesInTheViewsPlane) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    window.host.Select({crate});
    Show(ViewKind::Top);
    Aim({0.0f, 0.0f, 0.0f});
    // The handles reach over 0.24 of the half height, 120 units; the plane's square stands from 30 to 60.
    Drag(PixelOf(70.0f, 0.0f, 0.0f), PixelOf(170.0f, 0.0f, 40.0f));
    EXPECT_NEAR(crate->GetPosition(0)[0], 100.0f, 3.0f);
    EXPECT_NEAR(crate->GetPosition(0)[2], 0.0f, 1e-3f) << "along x alone";
    const float back[3] = {0.0f, 0.0f, 0.0f};
    crate->SetPosition(back, 0);
    Settle();
    Drag(PixelOf(45.0f, 0.0f, 45.0f), PixelOf(145.0f, 0.0f, 5.0f));
    EXPECT_NEAR(crate->GetPosition(0)[0], 100.0f, 3.0f);
    EXPECT_NEAR(crate->GetPosition(0)[2], -40.0f, 3.0f);
    EXPECT_NEAR(crate->GetPosition(0)[1], 0.0f, 1e-3f);
}

TEST_F(ViewLookTest, AFlatViewMovesAndZoomsAndNeverTurns) {
    Show(ViewKind::Front);
    Aim({0.0f, 0.0f, 0.0f});
    const QPoint before = PixelOf(0.0f, 0.0f, 0.0f);
    Drag(QPoint(300, 300), QPoint(340, 310), Qt::MiddleButton);
    EXPECT_EQ(PixelOf(0.0f, 0.0f, 0.0f) - before, QPoint(40, 10));
    EXPECT_EQ(PixelOf(0.0f, 0.0f, 500.0f), PixelOf(0.0f, 0.0f, 0.0f));
    const QPoint corner = PixelOf(200.0f, 100.0f, 0.0f);
    QWheelEvent wheel(QPointF(corner), View()->mapToGlobal(QPointF(corner)), {}, {0, 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(View(), &wheel);
    EXPECT_NEAR(PixelOf(200.0f, 100.0f, 0.0f).x(), corner.x(), 1) << "what is under the mouse stays there";
    EXPECT_NEAR(PixelOf(200.0f, 100.0f, 0.0f).y(), corner.y(), 1);
}

TEST_F(ViewLookTest, BackInPerspectiveTheCameraStandsWhereItWas) {
    const glm::vec3 eye = Stage().navigation.Eye();
    Show(ViewKind::Top);
    Aim({5000.0f, 0.0f, 0.0f});
    Show(ViewKind::Side);
    Show(ViewKind::Perspective);
    EXPECT_NEAR(glm::distance(Stage().navigation.Eye(), eye), 0.0f, 0.01f);
}

TEST_F(ViewLookTest, WhoAsksAFlatViewGetsACameraThatSeesTheSame) {
    Show(ViewKind::Top);
    Aim({300.0f, 0.0f, 0.0f});
    const float* matrix = window.host.GetViewMatrix(0);
    EXPECT_NEAR(matrix[12], 300.0f, 0.01f);
    EXPECT_NEAR(matrix[13], 500.0f / std::tan(0.5235988f), 0.1f) << "where 60 degrees span 1000 units";
    EXPECT_NEAR(matrix[9], 1.0f, 1e-4f) << "looking down";
    EXPECT_NEAR(window.host.level.Views().At(0)->GetFieldOfView(), 1.0471976f, 1e-5f);
}

TEST_F(ViewLookTest, APluginThatTakesAFlatViewGetsAPerspectiveOne) {
    Show(ViewKind::Top);
    ASSERT_TRUE(window.host.AttachViewToPlugin(0, plugin.id));
    EXPECT_FALSE(Stage().IsFlatNow());
    EXPECT_NEAR(Stage().ProjectionMatrix()[3][3], 0.0f, 1e-6f);
    window.host.DetachViewFromPlugin(0, plugin.id);
    EXPECT_TRUE(Stage().IsFlatNow());
    Show(ViewKind::Perspective);
}

TEST_F(ViewLookTest, AViewThroughACameraFollowsIt) {
    engine::SceneObject* camera = AddCamera(0, 150, 700);
    Show(ViewKind::Camera, camera->id);
    View()->grab();
    EXPECT_NEAR(window.host.GetViewMatrix(0)[14], 700.0f, 0.01f);
    EXPECT_NEAR(window.host.level.Views().At(0)->GetFieldOfView(), 0.8f, 1e-6f);
    const float moved[3] = {0, 150, 900};
    camera->SetPosition(moved, 0);
    View()->grab();
    EXPECT_NEAR(window.host.GetViewMatrix(0)[14], 900.0f, 0.01f);
}

TEST_F(ViewLookTest, FlyingAViewThroughACameraMovesTheCamera) {
    engine::SceneObject* camera = AddCamera(0, 150, 700);
    Show(ViewKind::Camera, camera->id);
    View()->grab();
    const float before = camera->GetPosition(0)[0];
    Drag(QPoint(300, 300), QPoint(340, 300), Qt::MiddleButton, Qt::ShiftModifier);
    EXPECT_LT(camera->GetPosition(0)[0], before) << "the picture goes right, the camera left";
    EXPECT_TRUE(window.session.IsChanged());
    window.commands.SetNotes(*camera, {true, 0.8f, ""});
    const float held = camera->GetPosition(0)[0];
    Drag(QPoint(300, 300), QPoint(340, 300), Qt::MiddleButton, Qt::ShiftModifier);
    EXPECT_FLOAT_EQ(camera->GetPosition(0)[0], held) << "it is locked";
}

TEST_F(ViewLookTest, AViewWhoseCameraGoesIsTheUsersOwnAgain) {
    engine::SceneObject* camera = AddCamera(0, 150, 700);
    Show(ViewKind::Camera, camera->id);
    View()->grab();
    window.host.Select({camera});
    window.commands.DeleteSelected();
    View()->grab();
    EXPECT_EQ(Stage().Kind(), ViewKind::Perspective);
    EXPECT_NEAR(window.host.GetViewMatrix(0)[14], 1200.0f, 0.1f);
}

TEST_F(ViewLookTest, TheHeaderOffersKindsCamerasAndShading) {
    engine::SceneObject* camera = AddCamera(0, 150, 700);
    QMenu menu;
    stage::ViewHeader::Fill(menu, *window.views, 0);
    QStringList texts;
    for (QAction* action : menu.actions()) {
        if (!action->isSeparator()) {
            texts.append(action->text());
        }
    }
    EXPECT_EQ(texts.join('|').toStdString(),
              "Perspective|Top|Front|Side|Through Camera|Lit|Flat colours|Wireframe");
    menu.actions()[5]->trigger();
    EXPECT_EQ(Stage().CameraId(), camera->id);
    menu.actions().back()->trigger();
    EXPECT_EQ(Stage().shading, ViewShading::Wireframe);
    View()->grab();
    EXPECT_EQ(window.findChild<stage::ViewHeader*>("ViewHeader0")->text(),
              QString("Camera \u00b7 Wireframe \u25be"));
}

TEST_F(ViewLookTest, ThePictureDiffersWithTheShading) {
    AddCrate("Crate", 0, 0, 0);
    Settle();
    const QImage lit = View()->grab().toImage();
    window.views->SetShading(0, ViewShading::Flat);
    const QImage flat = View()->grab().toImage();
    window.views->SetShading(0, ViewShading::Wireframe);
    const QImage wires = View()->grab().toImage();
    EXPECT_NE(lit, flat);
    EXPECT_NE(flat, wires);
    // Between the edges of a wireframe stands the background: a corner of the picture's middle row has its
    // colour.
    EXPECT_EQ(wires.pixel(4, wires.height() / 4), wires.pixel(wires.width() - 4, wires.height() / 4));
}

TEST_F(ViewLookTest, LooksAreRememberedPerUser) {
    window.views->SetViewCount(3);
    window.views->SetKind(1, ViewKind::Front);
    window.views->SetShading(2, ViewShading::Wireframe);
    window.views->SetKind(0, ViewKind::Camera, AddCamera(0, 0, 0)->id);
    window.views->SaveLooks();
    window.views->SetViewCount(1);
    window.views->SetKind(0, ViewKind::Perspective);
    window.views->RestoreLooks();
    EXPECT_EQ(window.host.views.Count(), 3);
    EXPECT_EQ(window.host.views.At(0)->Kind(), ViewKind::Perspective);
    EXPECT_EQ(window.host.views.At(1)->Kind(), ViewKind::Front);
    EXPECT_EQ(window.host.views.At(2)->shading, ViewShading::Wireframe);
    QSettings().remove("views");
}
