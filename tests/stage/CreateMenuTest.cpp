#include "tests/stage/WindowFixture.h"

#include "host/engine/ClassDatabase.h"
#include "host/engine/Shape.h"
#include "host/stage/windows/BodyFields.h"
#include "host/stage/windows/EntryField.h"
#include "host/stage/windows/ObjectPanel.h"
#include "host/stage/windows/ViewArea.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>

using ::testing::_;

class CreateMenuTest : public WindowFixture {
protected:
    engine::SceneObject* Create(const char* action) {
        Action(action)->trigger();
        Settle();
        EXPECT_EQ(window.host.level.selection.size(), 1u);
        return static_cast<engine::SceneObject*>(window.host.level.selection.front());
    }
    /// How far a pixel's colours with the object and without it are apart, 0 to 255, in the channel where
    /// they are most.
    int Contrast(engine::SceneObject& object, const QPoint& pixel) {
        const auto colorThere = [&](bool isShown) {
            object.visible = isShown ? 1 : 0;
            return View()->grab().toImage().pixelColor(pixel);
        };
        const QColor with = colorThere(true);
        const QColor without = colorThere(false);
        return std::max({std::abs(with.red() - without.red()), std::abs(with.green() - without.green()),
                         std::abs(with.blue() - without.blue())});
    }
    std::size_t Count() const { return window.host.level.Data()->Objects().size(); }
};

TEST_F(CreateMenuTest, EachShapeHasABodyThatCanBePicked) {
    for (const char* action :
         {"CreateBox", "CreatePlane", "CreateSphere", "CreateCylinder", "CreateCone", "CreateCapsule"}) {
        engine::SceneObject* object = Create(action);
        ASSERT_NE(object->Mesh(), nullptr) << action;
        EXPECT_EQ(object->Info().className, ClassName::Mesh);
        const float place[3] = {0.0f, 0.0f, 0.0f};
        object->SetPosition(place, 0);
        window.host.Select({});
        Click(PixelOf(0.0f, 10.0f, 0.0f));
        EXPECT_EQ(window.host.level.selection, (ObjectList{object})) << action;
        window.commands.DeleteSelected();
    }
}

TEST_F(CreateMenuTest, NewShapesStandOutAgainstSkyAndFog) {
    constexpr int kClear = 40;       // of 255, in one channel at least
    constexpr float kFar = -6000.0f; // 72 m from the view, where the fog is thick
    for (const char* action :
         {"CreateBox", "CreateSphere", "CreateCylinder", "CreateCone", "CreateCapsule"}) {
        engine::SceneObject* object = Create(action);
        for (const float z : {0.0f, kFar}) {
            const float size = z == 0.0f ? 1.0f : 10.0f;
            engine::Matrix4 matrix;
            matrix.m[0] = matrix.m[5] = matrix.m[10] = size;
            matrix.SetTranslation({0.0f, 0.0f, z});
            object->SetMatrix(matrix.m, 0);
            const QPoint pixel = PixelOf(0.0f, 40.0f * size, z);
            window.host.Select({});
            EXPECT_GE(Contrast(*object, pixel), kClear) << action << " at " << z;
        }
        window.host.Select({object});
        window.commands.DeleteSelected();
    }
}

TEST_F(CreateMenuTest, ANewPlaneStandsOutFromAboveAtALowAngleAndFromBelow) {
    constexpr int kClear = 60; // of 255, in one channel at least
    engine::SceneObject* plane = Create("CreatePlane");
    const float origin[3] = {0.0f, 0.0f, 0.0f};
    plane->SetPosition(origin, 0);
    window.host.Select({});
    for (const float height : {1500.0f, 600.0f, 150.0f, -150.0f, -600.0f, -1500.0f}) {
        stage::StageView& view = *window.host.views.At(0);
        view.navigation.LookAt({0.0f, height, 1200.0f}, {0.0f, 0.0f, 0.0f});
        view.ApplyNavigation();
        const QPoint pixel = PixelOf(30.0f, 0.0f, 50.0f); // on no line of the grid
        EXPECT_GE(Contrast(*plane, pixel), kClear) << height;
    }
}

TEST_F(CreateMenuTest, ANewBoxStandsWhereTheViewLooks) {
    // The view looks from (0, 200, 1200) at (0, 100, 0), which leads to the ground 1200 units behind that.
    engine::SceneObject* box = Create("CreateBox");
    EXPECT_NEAR(box->GetPosition(0)[0], 0.0f, 2.0f);
    EXPECT_NEAR(box->GetPosition(0)[1], 0.0f, 0.1f);
    EXPECT_NEAR(box->GetPosition(0)[2], -1200.0f, 20.0f);
}

TEST_F(CreateMenuTest, TheSizeFieldsMakeAnotherBody) {
    engine::SceneObject* box = Create("CreateBox");
    EXPECT_CALL(plugin, OnEvent(EventCode::ObjectSetChanged, _)).Times(1);
    stage::EntryField& height = *window.panel->shape->sides[1];
    height.setFocus();
    height.selectAll();
    QTest::keyClicks(&height, "2m + 50");
    QTest::keyClick(&height, Qt::Key_Return);
    const std::optional<engine::Shape> shape = engine::ShapeOf(box->meshName);
    ASSERT_TRUE(shape.has_value()) << box->meshName;
    EXPECT_FLOAT_EQ(shape->size.y, 250.0f);
    EXPECT_FLOAT_EQ(shape->size.x, 100.0f);
    Vector3 low;
    Vector3 high;
    box->Mesh()->Bounds(low, high);
    EXPECT_FLOAT_EQ(high.y, 250.0f);
}

TEST_F(CreateMenuTest, AnotherUnitInFrontOfTheFieldsOwn) {
    const engine::SceneObject* box = Create("CreateBox");
    stage::EntryField& width = *window.panel->shape->sides[0];
    width.setFocus();
    QTest::keyClick(&width, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&width, "6m");
    EXPECT_EQ(width.text(), "6m cm");
    QTest::keyClick(&width, Qt::Key_Return);
    EXPECT_FLOAT_EQ(engine::ShapeOf(box->meshName)->size.x, 600.0f);
    EXPECT_EQ(width.text(), "600.0 cm");
}

TEST_F(CreateMenuTest, WhatIsNoNumberLeavesTheSize) {
    engine::SceneObject* box = Create("CreateBox");
    const std::string before = box->meshName;
    stage::EntryField& width = *window.panel->shape->sides[0];
    width.setFocus();
    width.selectAll();
    QTest::keyClicks(&width, "wide");
    QTest::keyClick(&width, Qt::Key_Return);
    EXPECT_EQ(box->meshName, before);
    EXPECT_EQ(width.text(), "100.0 cm");
}

TEST_F(CreateMenuTest, ShapesOutliveSaveElsewhereAndReload) {
    engine::SceneObject* box = Create("CreateCone");
    const std::string name = box->name;
    const std::string meshName = box->meshName;
    QDir(folder.path()).mkdir("elsewhere");
    ASSERT_TRUE(window.session.Save(PathOf("elsewhere/second.level")));
    EXPECT_EQ(box->meshName, meshName);
    EXPECT_NE(box->Mesh(), nullptr);
    ASSERT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("elsewhere/second.level"))));
    engine::SceneObject* read = window.host.level.FindObject(name);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->meshName, meshName);
    EXPECT_NE(read->Mesh(), nullptr);
    EXPECT_FALSE(window.session.IsChanged());
}

TEST_F(CreateMenuTest, ACopyHasTheBodyAndTheNotes) {
    engine::SceneObject* label = Create("CreateLabel");
    window.commands.SetNotes(*label, {true, 0.0f, "Door"});
    window.commands.Duplicate();
    const auto* copy = static_cast<engine::SceneObject*>(window.host.level.selection.front());
    ASSERT_NE(copy, label);
    EXPECT_EQ(copy->notes.text, "Door");
    EXPECT_TRUE(copy->notes.locked);
}

TEST_F(CreateMenuTest, ALabelSaysWhatIsTyped) {
    engine::SceneObject* label = Create("CreateLabel");
    EXPECT_EQ(label->Info().className, engine::kLabelClass);
    QLineEdit& text = *window.panel->label->text;
    text.setFocus();
    text.selectAll();
    QTest::keyClicks(&text, "Door");
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(label->notes.text, "Door");
    EXPECT_TRUE(window.session.IsChanged());
}

TEST_F(CreateMenuTest, ACameraFromTheViewStandsAndLooksAsTheView) {
    engine::SceneObject* camera = Create("CreateCameraFromView");
    EXPECT_EQ(camera->Info().className, engine::kCameraClass);
    EXPECT_NEAR(camera->GetPosition(0)[1], 200.0f, 0.01f);
    EXPECT_NEAR(camera->GetPosition(0)[2], 1200.0f, 0.01f);
    // It looks along its row 2 backwards: from (0, 200, 1200) to (0, 100, 0), 1204.16 long.
    EXPECT_NEAR(camera->GetMatrix(0)[9], 100.0f / 1204.16f, 1e-4f);
    EXPECT_NEAR(camera->GetMatrix(0)[10], 1200.0f / 1204.16f, 1e-4f);
    EXPECT_NEAR(camera->notes.fieldOfView, 1.0471976f, 1e-5f);
    window.panel->camera->angle->setValue(40.0);
    EXPECT_NEAR(camera->notes.fieldOfView, 0.6981317f, 1e-5f) << "40 degrees";
}

TEST_F(CreateMenuTest, AddHereInAViewsMenuPutsAThingWhereTheClickWas) {
    const QPoint place = PixelOf(300.0f, 0.0f, 0.0f);
    QTimer::singleShot(0, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions()) {
            if (action->text() == "Add here") {
                action->menu()->actions().front()->trigger();
            }
        }
        menu->close();
    });
    Click(place, Qt::NoModifier, Qt::RightButton);
    ASSERT_EQ(Count(), 1u);
    const float* stands = window.host.level.Data()->Objects().front()->GetPosition(0);
    EXPECT_NEAR(stands[0], 300.0f, 5.0f);
    EXPECT_NEAR(stands[1], 0.0f, 0.1f);
    EXPECT_NEAR(stands[2], 0.0f, 20.0f);
}

TEST_F(CreateMenuTest, SeveralBoxesTakeOneEntryAndKeepWhatDiffers) {
    engine::SceneObject* first = Create("CreateBox");
    engine::SceneObject* second = Create("CreateBox");
    window.commands.SetMesh(*second, "shape:box 100 300 100 #112233");
    window.host.Select({first, second});
    Settle();
    EXPECT_FALSE(window.panel->shape->sides[0]->IsMixed());
    EXPECT_TRUE(window.panel->shape->sides[1]->IsMixed());
    window.panel->shape->sides[0]->setValue(40.0);
    EXPECT_EQ(first->meshName, "shape:box 40 100 100 #c67b4f");
    EXPECT_EQ(second->meshName, "shape:box 40 300 100 #112233");
}
