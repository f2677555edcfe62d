#include "tests/stage/WindowFixture.h"

#include "host/stage/windows/ImportFiles.h"
#include "host/stage/windows/ViewArea.h"
#include "tests/support/Answering.h"
#include "tests/support/Paths.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>

class ImportFilesTest : public WindowFixture {
protected:
    const QString model = QString::fromStdString(SampleFolder() + "/models/barrel.glb");
    std::size_t Count() const { return window.host.level.Data()->Objects().size(); }
    QString Sign() const {
        const auto* label = window.statusBar()->findChild<QLabel*>("OwnMode");
        return label->isVisible() ? label->text() : QString();
    }
    /// What the status bar says while these files are dragged over the view.
    std::string Dragged(const QStringList& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths) {
            urls.append(QUrl::fromLocalFile(path));
        }
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(40, 40), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(window.views, &enter);
        QDragMoveEvent move(QPoint(41, 40), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.views, &move);
        wasAccepted = move.isAccepted();
        return Sign().toStdString();
    }
    bool wasAccepted = false;
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
    EXPECT_EQ(Dragged({"/tmp/notes.txt"}),
              "Only models (.glb, .gltf) and sounds (.wav, .ogg, .flac) can be dropped here.");
    EXPECT_FALSE(wasAccepted);
    QDragLeaveEvent leave;
    QApplication::sendEvent(window.views, &leave);
    EXPECT_EQ(Sign(), "");
    QMimeData data;
    data.setText("words");
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(window.views, &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(ImportFilesTest, ADragOverAViewSaysWhatADropDoes) {
    EXPECT_EQ(Dragged({"/tmp/barrel.glb"}), "Drop to import barrel.glb here.");
    EXPECT_TRUE(wasAccepted);
    EXPECT_EQ(Dragged({"/tmp/a.glb", "/tmp/b.gltf"}), "Drop to import 2 models here.");
    EXPECT_EQ(Dragged({"/tmp/bell.wav"}),
              "Drop to import bell.wav into the level's folder; sounds can't stand in a view.");
    EXPECT_EQ(Dragged({"/tmp/bell.wav", "/tmp/b.ogg", "/tmp/c.flac"}),
              "Drop to import 3 sounds into the level's folder; sounds can't stand in a view.");
    EXPECT_EQ(Dragged({"/tmp/a.glb", "/tmp/b.ogg", "/tmp/c.txt"}),
              "Drop to import 1 model here, and 1 sound into the level's folder; 1 other file is left out.");
    EXPECT_EQ(Dragged({"/tmp/a.glb", "/tmp/b.txt", "/tmp/c.txt"}),
              "Drop to import a.glb here; 2 other files are left out.");
    QDragLeaveEvent leave;
    QApplication::sendEvent(window.views, &leave);
    EXPECT_EQ(Sign(), "");
    window.session.New();
    EXPECT_EQ(Dragged({"/tmp/a.glb"}), "Save the level first: what is imported goes into its folder.");
}

TEST_F(ImportFilesTest, TheSignOfADragGoesWithTheDrop) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/tmp/nothing.glb")});
    EXPECT_NE(Dragged({"/tmp/nothing.glb"}), "");
    QDropEvent drop(QPointF(40, 40), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.views, &drop);
    EXPECT_EQ(Sign(), "");
    QString told;
    Answering(
        [&told](QWidget& box) {
            told = dynamic_cast<QMessageBox&>(box).text();
            PressButton(box, QMessageBox::Ok);
        },
        [] { Settle(); });
    EXPECT_TRUE(told.startsWith("Not imported:")) << told.toStdString();
}

TEST_F(ImportFilesTest, ModelsComeNextToEachOtherBeforeWhatStandsInTheWay) {
    engine::SceneObject* crate = AddCrate("Crate", 0.0f, 0.0f, 0.0f);
    stage::StageView& view = *window.host.views.At(0);
    view.navigation.LookAt({0.0f, 40.0f, 1200.0f}, {0.0f, 40.0f, 0.0f});
    view.ApplyNavigation();
    Vector3 low;
    Vector3 high;
    crate->Mesh()->Bounds(low, high);
    ASSERT_GT(high.y, 45.0f) << "the middle of the view meets its side";
    const glm::vec3 side = window.views->picker.Meet({{0.0f, 40.0f, 1200.0f}, {0.0f, 0.0f, -1.0f}}).value();
    stage::ImportFiles& import = *window.findChild<stage::ImportFiles*>();
    const auto where = [this](const std::string& mesh) { return window.views->PlaceForNew(mesh); };
    ASSERT_EQ(import.Import({model, model}, where), 2);
    ASSERT_EQ(Count(), 3u);
    const auto place = [this](std::size_t i) {
        return window.host.level.Data()->Objects()[i]->World().Translation();
    };
    Vector3 barrelLow;
    Vector3 barrelHigh;
    window.host.level.Data()->Objects()[1]->Mesh()->Bounds(barrelLow, barrelHigh);
    EXPECT_NEAR(place(1).x, 0.0f, 1.5f);
    EXPECT_NEAR(place(1).y, 0.0f, 0.01f);
    EXPECT_NEAR(place(1).z, side.z - barrelLow.z + 1.0f, 0.5f) << "clear of the crate's side";
    EXPECT_NEAR(place(2).x - place(1).x, barrelHigh.x - barrelLow.x + 50.0f, 0.01f)
        << "half a metre between them";
    EXPECT_NEAR(place(2).z, place(1).z, 0.01f);
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
