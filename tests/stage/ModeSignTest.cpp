// What Stage says that it waits for.
#include "host/engine/ClassDatabase.h"
#include "host/stage/windows/ObjectTree.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewTool.h"
#include "host/stage/windows/ViewWidget.h"
#include "tests/stage/WindowFixture.h"

#include <QLabel>
#include <QStatusBar>
#include <QTest>

class ModeSignTest : public WindowFixture {
protected:
    /// What stands in the status bar, empty for nothing.
    std::string Sign() {
        window.repaint();
        View()->repaint();
        const auto* label = window.statusBar()->findChild<QLabel*>("OwnMode");
        return label->isVisible() ? label->text().toStdString() : "";
    }
    engine::SceneObject* AddCamera() {
        engine::ObjectSpec spec;
        spec.className = engine::kCameraClass;
        spec.name = "Camera";
        spec.matrix.SetTranslation({0, 100, 500});
        return window.commands.Create(spec);
    }
};

TEST_F(ModeSignTest, ARectangleTellsWhatItDoesUntilItIsLetGo) {
    AddCrate("Crate", 0, 50, 0);
    QTest::mousePress(View(), Qt::LeftButton, Qt::NoModifier, {20, 60});
    EXPECT_EQ(Sign(), "") << "a click is no rectangle";
    QTest::mouseMove(View(), {80, 120});
    EXPECT_EQ(Sign(),
              "Let go to select what the rectangle meets: Shift adds, Ctrl takes out. Escape gives up.");
    QTest::mouseRelease(View(), Qt::LeftButton, Qt::NoModifier, {80, 120});
    EXPECT_EQ(Sign(), "");
}

TEST_F(ModeSignTest, EscapeGivesUpARectangle) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 50, 0);
    const QPoint corner = View()->rect().bottomRight();
    QTest::mousePress(View(), Qt::LeftButton, Qt::NoModifier, {5, 50});
    QTest::mouseMove(View(), corner);
    QTest::keyClick(View(), Qt::Key_Escape);
    EXPECT_EQ(Sign(), "");
    QTest::mouseRelease(View(), Qt::LeftButton, Qt::NoModifier, corner);
    EXPECT_TRUE(window.host.level.selection.empty());
    Drag({5, 50}, corner);
    EXPECT_EQ(window.host.level.selection, (ObjectList{crate})) << "the same rectangle meets it";
}

TEST_F(ModeSignTest, AViewThroughACameraSaysSoAndEscapeLeaves) {
    engine::SceneObject* camera = AddCamera();
    window.statusBar()->clearMessage();
    window.views->SetKind(0, stage::ViewKind::Camera, camera->id);
    EXPECT_EQ(Sign(), "Through Camera, which goes along when you move. Escape leaves.");
    engine::ObjectNotes notes = camera->notes;
    notes.locked = true;
    window.commands.SetNotes(*camera, notes);
    EXPECT_EQ(Sign(), "Through Camera, which is locked and stays where it is. Escape leaves.");
    window.Report("Something has happened");
    EXPECT_EQ(Sign(), "") << "behind the line";
    window.statusBar()->clearMessage();
    EXPECT_NE(Sign(), "");
    QTest::keyClick(View(), Qt::Key_Escape);
    EXPECT_EQ(Sign(), "");
    EXPECT_EQ(window.host.views.At(0)->Kind(), stage::ViewKind::Perspective);
}

TEST_F(ModeSignTest, ADragOfTheHandlesTellsItsKeys) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 100, 0);
    window.host.Select({crate});
    window.views->tool->SetMode(stage::ToolMode::Move);
    Settle();
    Sign(); // the handles are placed when they are drawn
    QTest::mouseMove(View(), PixelOf(0, 100, 0));
    QTest::mousePress(View(), Qt::LeftButton, Qt::NoModifier, PixelOf(0, 100, 0));
    ASSERT_TRUE(window.views->IsDragging());
    EXPECT_EQ(Sign().rfind("Drag: with Ctrl in steps", 0), 0U);
    QTest::keyClick(View(), Qt::Key_Escape);
    EXPECT_EQ(Sign(), "");
    QTest::mouseRelease(View(), Qt::LeftButton, Qt::NoModifier, PixelOf(0, 100, 0));
}

TEST_F(ModeSignTest, ADragInTheListTellsWhereToDrop) {
    emit window.tree->tree->Dragged("Drop it");
    EXPECT_EQ(Sign(), "Drop it");
    emit window.tree->tree->Dragged({});
    EXPECT_EQ(Sign(), "");
}
