#include "tests/stage/WindowFixture.h"

#include "host/stage/windows/assets/Assets.h"
#include "host/stage/windows/assets/MissingDialog.h"
#include "host/stage/windows/Notice.h"
#include "host/stage/windows/UndoCommands.h"
#include "tests/support/Paths.h"

#include <filesystem>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

namespace {

namespace stdfs = std::filesystem;

/// Two objects with a model that is not there, a crate that is, and a film "Intro" with a sound that is not.
class MissingFilesDialogTest : public WindowFixture {
protected:
    MissingFilesDialogTest() {
        first = AddCrate("First", 0, 0, 0);
        first->SetMeshName("lost/barrel.glb");
        second = AddCrate("Second", 0, 0, 0);
        second->SetMeshName("lost/barrel.glb");
        AddCrate("Crate", 0, 0, 0);
        IFilmManager* films = window.host.level.Data()->filmManager;
        film = films->GetFilm(films->AllocateFilm());
        film->SetName("Intro");
        CFilmTrack* track = film->CreateObjectTrack();
        film->AddTrack(track);
        AsObjectTrack(track)->SetActor(first, /*isVirtual*/ false);
        sound = static_cast<CFilmSoundKey*>(films->keyFactory->CreateKey(KeyKind::Sound));
        sound->wavPath = "lost\\bell.wav";
        sound->SetTime(2.5f);
        EXPECT_TRUE(track->AddKey(sound));
        EXPECT_TRUE(window.session.Save(PathOf("start.level")));
        QDir(folder.path()).mkdir("elsewhere");
        QDir(folder.path()).mkdir("elsewhere/deep");
        stdfs::copy_file(SampleFolder() + "/models/barrel.glb", PathOf("elsewhere/deep/Barrel.glb"));
        stdfs::copy_file(SampleFolder() + "/sounds/bell.wav", PathOf("elsewhere/bell.wav"));
    }

    engine::SceneObject* first;
    engine::SceneObject* second;
    IFilm* film;
    CFilmSoundKey* sound;
};

} // namespace

TEST_F(MissingFilesDialogTest, EachFileIsListedOnceWithWhoNeedsIt) {
    const stage::MissingDialog dialog(window.host, window.session, &window);
    ASSERT_EQ(dialog.list->topLevelItemCount(), 2);
    EXPECT_EQ(dialog.list->topLevelItem(0)->text(0), "lost/barrel.glb");
    EXPECT_EQ(dialog.list->topLevelItem(0)->text(1), "First, Second");
    EXPECT_TRUE(dialog.list->topLevelItem(0)->toolTip(0).contains("no such file"));
    EXPECT_EQ(dialog.list->topLevelItem(1)->text(0), "lost\\bell.wav");
    EXPECT_EQ(dialog.list->topLevelItem(1)->text(1), "Intro: First at 2.50 s");
}

TEST_F(MissingFilesDialogTest, AFolderGivesAllFilesOfTheSameNamesInOneStep) {
    window.session.History().NoteAll();
    stage::MissingDialog dialog(window.host, window.session, &window);
    dialog.askFolder = [this](const QString&) { return folder.filePath("elsewhere"); };
    dialog.FindInFolder();
    EXPECT_EQ(dialog.list->topLevelItemCount(), 0);
    EXPECT_EQ(dialog.result->text(), "All files are found.");
    EXPECT_EQ(first->meshName, "elsewhere/deep/Barrel.glb");
    EXPECT_EQ(second->meshName, "elsewhere/deep/Barrel.glb");
    EXPECT_NE(second->Mesh(), nullptr);
    EXPECT_EQ(sound->wavPath, "elsewhere/bell.wav");
    EXPECT_TRUE(window.session.IsChanged());
    window.undo->Undo();
    EXPECT_EQ(window.host.level.FindObject("First")->meshName, "lost/barrel.glb");
    EXPECT_EQ(window.host.level.FindObject("Second")->meshName, "lost/barrel.glb");
    EXPECT_FALSE(window.session.IsChanged());
    window.undo->Redo();
    EXPECT_EQ(window.host.level.FindObject("Second")->meshName, "elsewhere/deep/Barrel.glb");
}

TEST_F(MissingFilesDialogTest, OneFileIsPointedAtAndOthersStayMissing) {
    stage::MissingDialog dialog(window.host, window.session, &window);
    dialog.askFile = [this](const QString& title, const QString& filter) {
        EXPECT_TRUE(title.contains("lost/barrel.glb"));
        EXPECT_TRUE(filter.contains("*.glb"));
        return folder.filePath("elsewhere/deep/Barrel.glb");
    };
    dialog.Find();
    EXPECT_EQ(first->meshName, "elsewhere/deep/Barrel.glb");
    EXPECT_EQ(sound->wavPath, "lost\\bell.wav");
    EXPECT_EQ(dialog.list->topLevelItemCount(), 1);
    EXPECT_EQ(dialog.result->text(), "Found: 1. Still missing: 1.");
    dialog.askFile = [](const QString&, const QString&) { return QString(); };
    dialog.Find();
    EXPECT_EQ(sound->wavPath, "lost\\bell.wav");
}

TEST_F(MissingFilesDialogTest, AFileOutsideTheLevelsFolderIsNamedByItsPath) {
    stage::MissingDialog dialog(window.host, window.session, &window);
    const std::string outside = stdfs::canonical(SampleFolder() + "/models/barrel.glb").string();
    dialog.askFile = [&](const QString&, const QString&) { return QString::fromStdString(outside); };
    dialog.Find();
    EXPECT_EQ(first->meshName, outside);
    EXPECT_NE(first->Mesh(), nullptr);
}

TEST_F(MissingFilesDialogTest, AModelThatIsStillShownIsMissingWhenItsFileIsGone) {
    stdfs::remove(PathOf("meshes/crate.glb"));
    const stage::MissingDialog dialog(window.host, window.session, &window);
    ASSERT_EQ(dialog.list->topLevelItemCount(), 3);
    EXPECT_EQ(dialog.list->topLevelItem(1)->text(0), "meshes/crate.glb");
}

TEST_F(MissingFilesDialogTest, AFolderWithoutThemChangesNothing) {
    stage::MissingDialog dialog(window.host, window.session, &window);
    dialog.askFolder = [this](const QString&) { return folder.filePath("meshes"); };
    dialog.FindInFolder();
    EXPECT_EQ(dialog.list->topLevelItemCount(), 2);
    EXPECT_EQ(dialog.result->text(), "No file there is called so.");
    EXPECT_EQ(first->meshName, "lost/barrel.glb");
}

TEST_F(MissingFilesDialogTest, OpeningALevelOffersTheListWithoutABox) {
    ASSERT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("start.level"))));
    EXPECT_EQ(window.notice->Text(), "2 files of this level are missing.");
    EXPECT_TRUE(window.notice->isVisible());
    int shown = 0;
    QTimer::singleShot(0, qApp, [&] {
        auto* dialog = qobject_cast<stage::MissingDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        shown = dialog->list->topLevelItemCount();
        dialog->reject();
    });
    window.notice->findChild<QToolButton*>("NoticeAction")->click();
    EXPECT_EQ(shown, 2);
    EXPECT_FALSE(window.notice->isVisible());
}

TEST_F(MissingFilesDialogTest, ALevelThatHasAllIsToldSoByTheMenuAlone) {
    window.session.New();
    Action("FileMissing")->trigger();
    EXPECT_EQ(window.statusBar()->currentMessage(), "All files that the level names are there");
    EXPECT_FALSE(window.notice->isVisible());
}
