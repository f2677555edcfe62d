#include "tests/stage/WindowFixture.h"

#include "host/stage/windows/ImportFiles.h"
#include "host/stage/windows/ViewArea.h"
#include "tests/support/Answering.h"
#include "tests/support/Paths.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

class ImportFilesTest : public WindowFixture {
protected:
    const QString model = QString::fromStdString(SampleFolder() + "/models/barrel.glb");
    std::size_t Count() const { return window.host.level.Data()->Objects().size(); }
};

TEST_F(ImportFilesTest, ADroppedModelStandsWhereItWasDropped) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(model)});
    const QPoint place = View()->mapTo(window.views, PixelOf(200.0f, 0.0f, 0.0f));
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.views, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(place), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.views, &drop);
    Settle();
    ASSERT_EQ(Count(), 1u);
    engine::SceneObject* object = window.host.level.Data()->Objects().front().get();
    EXPECT_EQ(object->meshName, "models/barrel.glb");
    EXPECT_NE(object->Mesh(), nullptr);
    EXPECT_NEAR(object->GetPosition(0)[0], 200.0f, 5.0f);
    EXPECT_TRUE(QFile::exists(folder.filePath("models/barrel.glb")));
    window.session.History().Note();
    EXPECT_EQ(window.session.History().Edits().UndoName(), "Import barrel");
}

TEST_F(ImportFilesTest, OtherFilesAreNotTakenFromADrag) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/tmp/notes.txt")});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(window.views, &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(ImportFilesTest, CopyAndPasteByTheMenu) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    window.host.Select({crate});
    Settle();
    window.session.History().Note();
    Action("EditCopy")->trigger();
    Action("EditPaste")->trigger();
    EXPECT_EQ(Count(), 2u);
    EXPECT_EQ(window.host.level.selection.front()->meshName, "meshes/crate.glb");
    window.session.History().Note();
    EXPECT_EQ(window.session.History().Edits().UndoName(), "Paste Crate1");
    QApplication::clipboard()->setText("words");
    Action("EditPaste")->trigger();
    EXPECT_EQ(Count(), 2u);
}
