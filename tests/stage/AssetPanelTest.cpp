#include "tests/stage/WindowFixture.h"

#include "host/stage/windows/assets/AssetPanel.h"
#include "host/stage/windows/assets/AssetPictures.h"
#include "host/stage/windows/assets/AssetPlayer.h"
#include "host/stage/windows/assets/Assets.h"
#include "host/stage/windows/ObjectTree.h"
#include "host/stage/windows/UndoCommands.h"
#include "host/stage/windows/ViewArea.h"
#include "tests/support/Answering.h"
#include "tests/support/Paths.h"

#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

/// The level's folder has a crate, a barrel, a bell and a broken model.
class AssetPanelTest : public WindowFixture {
protected:
    AssetPanelTest() {
        QDir(folder.path()).mkdir("models");
        QDir(folder.path()).mkdir("sounds");
        CopySample("models/barrel.glb");
        CopySample("sounds/bell.wav");
        QFile broken(folder.filePath("models/broken.glb"));
        EXPECT_TRUE(broken.open(QIODevice::WriteOnly));
        broken.write("glTF");
        broken.close();
        window.assets->Rescan();
        window.assets->dock->show();
        window.assets->dock->raise();
        Settle();
    }
    void CopySample(const char* name) const {
        EXPECT_TRUE(QFile::copy(QString::fromStdString(SampleFolder() + "/" + name), folder.filePath(name)));
    }
    stage::AssetPanel& Panel() const { return *window.assets->panel; }
    QAbstractItemModel& Rows() const { return *Panel().list->model(); }
    QStringList Names() const {
        QStringList names;
        for (int row = 0; row < Rows().rowCount(); ++row) {
            names << Rows().index(row, 0).data().toString();
        }
        return names;
    }
    QModelIndex Row(const QString& name) const {
        return Rows().index(static_cast<int>(Names().indexOf(name)), 0);
    }
    void ChooseKind(const char* button) const { Panel().findChild<QToolButton*>(button)->click(); }
    std::size_t Count() const { return window.host.level.Data()->Objects().size(); }
    /// What the status bar says of a drag.
    QString Sign() const {
        const auto* label = window.statusBar()->findChild<QLabel*>("OwnMode");
        return label->isVisible() ? label->text() : QString();
    }
    /// Drops the model of that name onto a pixel of the first view, as the list's drag does.
    void Drop(const QString& name, const QPoint& pixel) {
        const std::unique_ptr<QMimeData> data(Rows().mimeData({Row(name)}));
        ASSERT_NE(data, nullptr);
        const QPoint place = View()->mapTo(window.views, pixel);
        QDragEnterEvent enter(place, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.views, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(QPointF(place), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.views, &drop);
        Settle();
    }
};

} // namespace

/// They share a place: docks below could not be pulled up any more.
TEST_F(AssetPanelTest, ItMayBeAsLowAsTheListOfObjects) {
    EXPECT_LE(Panel().minimumSizeHint().height(), window.tree->minimumSizeHint().height());
}

TEST_F(AssetPanelTest, ItListsTheFilesOfTheLevelsFolderByKind) {
    ChooseKind("AssetsModels");
    EXPECT_EQ(Names(), (QStringList{"crate", "barrel", "broken"})); // by the whole names: meshes/, models/
    ChooseKind("AssetsSounds");
    EXPECT_EQ(Names(), QStringList{"bell"});
    ChooseKind("AssetsEffects");
    EXPECT_FALSE(Names().isEmpty()); // those that come with the program
    EXPECT_FALSE(Names().contains("bell"));
    ChooseKind("AssetsAll");
    EXPECT_TRUE(Names().contains("bell") && Names().contains("crate"));
}

TEST_F(AssetPanelTest, TheSearchTakesAllWordsOfANameInAnyOrder) {
    ChooseKind("AssetsModels");
    Panel().search->setText("BARR mod");
    EXPECT_EQ(Names(), QStringList{"barrel"});
    Panel().search->setText("nowhere");
    EXPECT_TRUE(Names().isEmpty());
    EXPECT_TRUE(Panel().hint->isVisible());
}

TEST_F(AssetPanelTest, ALevelWithoutAFolderSaysWhatToDo) {
    EXPECT_FALSE(Panel().hint->isVisible());
    window.session.New();
    Settle();
    EXPECT_TRUE(Panel().hint->isVisible());
    EXPECT_TRUE(Panel().hint->text().contains("Save the level first"));
    EXPECT_FALSE(Names().contains("crate"));
    ASSERT_TRUE(window.session.Open(PathOf("start.level")));
    EXPECT_TRUE(Names().contains("crate"));
    EXPECT_FALSE(Panel().hint->isVisible());
}

TEST_F(AssetPanelTest, PicturesAreMadeOfModelsSoundsAndEffectsAndReasonsOfBrokenFiles) {
    Panel().search->setText("b");
    for (const char* name : {"barrel", "bell"}) {
        ASSERT_TRUE(QTest::qWaitFor([&] {
            const auto picture = Row(name).data(Qt::DecorationRole).value<QIcon>();
            return picture.availableSizes() == QList<QSize>{QSize(72, 72)};
        })) << name;
    }
    // The barrel stands in front of a plain ground: its picture has more than one colour.
    const QImage barrel = Row("barrel").data(Qt::DecorationRole).value<QIcon>().pixmap(72, 72).toImage();
    EXPECT_NE(barrel.pixel(36, 36), barrel.pixel(1, 1));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return Row("broken").data(Qt::ToolTipRole).toString().contains("broken.glb: "); }));
}

TEST_F(AssetPanelTest, PicturesWaitWhileAButtonIsHeldOrAFilmPlays) {
    bool may = false;
    const stage::Asset asset{stage::AssetKind::Model, "models/barrel.glb", PathOf("models/barrel.glb")};
    stage::AssetPictures pictures(nullptr);
    pictures.mayWork = [&may] { return may; };
    EXPECT_TRUE(pictures.Get(asset, "").isNull());
    QTest::qWait(50);
    EXPECT_FALSE(pictures.IsIdle());
    may = true;
    EXPECT_TRUE(QTest::qWaitFor([&] { return pictures.IsIdle(); }));
    EXPECT_FALSE(pictures.Get(asset, "").isNull());
}

TEST_F(AssetPanelTest, ADoubleClickPlacesAModelBeforeTheView) {
    ChooseKind("AssetsModels");
    Panel().Activate(Row("barrel"));
    ASSERT_EQ(Count(), 1u);
    EXPECT_EQ(window.host.level.selection.front()->meshName, "models/barrel.glb");
    window.undo->Undo();
    EXPECT_EQ(window.session.History().Edits().RedoName(), "Place barrel");
    EXPECT_EQ(Count(), 0u);
    window.undo->Redo();
    EXPECT_EQ(Count(), 1u);
}

TEST_F(AssetPanelTest, ADroppedModelStandsOnWhatIsUnderTheMouse) {
    ChooseKind("AssetsModels");
    Drop("barrel", PixelOf(200.0f, 0.0f, 0.0f));
    ASSERT_EQ(Count(), 1u);
    const float* ground = window.host.level.selection.front()->GetPosition(0);
    EXPECT_NEAR(ground[0], 200.0f, 5.0f);
    EXPECT_NEAR(ground[1], 0.0f, 0.5f);
    // The crate's top is above the ground; a pixel in its upper face is met there.
    engine::SceneObject* crate = AddCrate("Crate", -300.0f, 0.0f, 0.0f);
    window.session.History().NoteAll();
    Vector3 low;
    Vector3 high;
    crate->Mesh()->Bounds(low, high);
    Drop("barrel", PixelOf(-300.0f, high.y, 0.0f));
    ASSERT_EQ(Count(), 3u);
    EXPECT_NEAR(window.host.level.selection.front()->GetPosition(0)[1], high.y, 3.0f);
    window.undo->Undo();
    EXPECT_EQ(Count(), 2u);
}

TEST_F(AssetPanelTest, AModelOfAnotherLevelIsNotTaken) {
    QMimeData data;
    data.setData(stage::AssetModel::kMime, "/elsewhere/models/barrel.glb");
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(window.views, &enter);
    EXPECT_EQ(enter.dropAction(), Qt::IgnoreAction);
    EXPECT_EQ(Sign(), "This model is in another level's folder: Create > Import brings it here.");
}

TEST_F(AssetPanelTest, ADragOverAViewSaysWhatADropDoes) {
    ChooseKind("AssetsAll");
    const QString film = "brings them into a film.";
    const auto dragged = [&](const QString& name) {
        const std::unique_ptr<QMimeData> data(Rows().mimeData({Row(name)}));
        QDragEnterEvent enter(QPoint(40, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(window.views, &enter);
        QDragMoveEvent move(QPoint(41, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.views, &move);
        return std::pair(Sign(), move.isAccepted());
    };
    const auto leave = [this] {
        QDragLeaveEvent left;
        QApplication::sendEvent(window.views, &left);
        return Sign();
    };
    EXPECT_EQ(
        dragged("barrel"),
        std::pair(QString("Drop to place barrel here, on what is under the mouse. Escape gives up."), true));
    EXPECT_EQ(leave(), "");
    EXPECT_EQ(dragged("bell"),
              std::pair("Sounds can't stand in a view: Films > Add key at the cursor " + film, false));
    EXPECT_EQ(leave(), "");
    ChooseKind("AssetsEffects");
    EXPECT_EQ(dragged(Names().front()),
              std::pair("Effects can't stand in a view: Films > Add key at the cursor " + film, false));
    EXPECT_EQ(leave(), "");
    EXPECT_EQ(Count(), 0u);
    ChooseKind("AssetsModels");
    Drop("crate", PixelOf(0.0f, 0.0f, 0.0f));
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(Sign(), "") << "it was let go";
}

TEST_F(AssetPanelTest, SoundsAndEffectsPlayBelowTheListUntilTheyAreStopped) {
    ChooseKind("AssetsSounds");
    EXPECT_FALSE(Panel().player->isVisible());
    Panel().Activate(Row("bell"));
    EXPECT_TRUE(Panel().player->isVisible());
    EXPECT_EQ(Panel().player->Name(), "sounds/bell.wav");
    ChooseKind("AssetsEffects");
    const QString effect = Names().front();
    Panel().Activate(Row(effect));
    EXPECT_EQ(Panel().player->Name(), effect);
    Panel().player->findChild<QToolButton*>("AssetPlayerStop")->click();
    EXPECT_FALSE(Panel().player->isVisible());
    EXPECT_EQ(Count(), 0u);
}

TEST_F(AssetPanelTest, FilesThatComeAndGoOnTheDiskAreFollowed) {
    ChooseKind("AssetsModels");
    CopySample("models/buoy.glb");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Names().contains("buoy"); }));
    QFile::remove(folder.filePath("models/buoy.glb"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Names().contains("buoy"); }));
    QDir(folder.path()).mkpath("models/boats");
    ASSERT_TRUE(QTest::qWaitFor([this] {
        QFile::copy(QString::fromStdString(SampleFolder() + "/models/row_boat.glb"),
                    folder.filePath("models/boats/row_boat.glb"));
        return Names().contains("row_boat");
    }));
}

TEST_F(AssetPanelTest, TheUsesOfAModelAreToldAndItsObjectsSelected) {
    AddCrate("Second crate", 0, 0, 0);
    AddCrate("First crate", 100, 0, 0);
    AddEmpty("Empty", 0, 0, 0);
    QString told;
    QTimer::singleShot(0, qApp, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        told = box->informativeText();
        for (QAbstractButton* button : box->buttons()) {
            if (button->text().contains("Select")) {
                button->click();
                return;
            }
        }
        box->reject();
    });
    window.assets->ShowUses({stage::AssetKind::Model, "meshes/crate.glb", PathOf("meshes/crate.glb")});
    EXPECT_EQ(told, "Second crate\nFirst crate");
    EXPECT_EQ(window.host.level.selection.size(), 2u);
}

TEST_F(AssetPanelTest, TheMenuShowsTheFolderAndPlaces) {
    ChooseKind("AssetsModels");
    QString opened;
    Panel().openFolder = [&](const QString& path) { opened = path; };
    const auto choose = [&](int entry) {
        QTimer::singleShot(0, qApp, [entry] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            menu->setActiveAction(menu->actions()[entry]);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        emit Panel().list->customContextMenuRequested(Panel().list->visualRect(Row("barrel")).center());
        Settle();
    };
    choose(1);
    EXPECT_EQ(opened, QFileInfo(folder.filePath("models")).absoluteFilePath());
    choose(0);
    EXPECT_EQ(Count(), 1u);
}

TEST_F(AssetPanelTest, ThousandsOfFilesAreListedAndOnlyWhatIsSeenGetsPictures) {
    QDir(folder.path()).mkdir("many");
    for (int i = 0; i < 3000; ++i) {
        QFile file(folder.filePath(QString("many/m%1.glb").arg(i)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    int made = 0;
    QObject::connect(&Panel().Pictures(), &stage::AssetPictures::Made, &Panel(), [&made] { ++made; });
    window.assets->Rescan();
    ChooseKind("AssetsModels");
    EXPECT_EQ(Names().size(), 3003);
    ASSERT_TRUE(QTest::qWaitFor([&] { return made > 0 && Panel().Pictures().IsIdle(); }));
    EXPECT_LT(made, 300);
}
