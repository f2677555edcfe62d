#include "host/stage/windows/app/HeadlessStage.h"

#include "host/stage/windows/app/StageApp.h"
#include "plugin/contract/FilmManager.h"
#include "tests/support/Paths.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

class HeadlessStageTest : public ::testing::Test {
protected:
    QTemporaryDir folder;
    stage::HeadlessStage stage{{folder.path().toStdString(), folder.path().toStdString()},
                               {BuiltLibrary("films.so")}};
    const std::string sample = SampleFolder() + "/harbour.level";

    EditorObject* FirstLight(IFilm& film) {
        for (CFilmTrack* track : film.tracks) {
            const CFilmGLLightTrack* light = AsGLLightTrack(track);
            if (light != nullptr && light->isSun == 0) {
                return light->lightObject;
            }
        }
        return nullptr;
    }
};

TEST_F(HeadlessStageTest, TheLightsOfAFilmComeFromThePluginsChunkAndShineWhileItIsShown) {
    stage.Open(sample);
    IFilm* film = stage.Level().Data()->filmManager->GetFilm(0);
    ASSERT_NE(film, nullptr);
    EditorObject* light = FirstLight(*film);
    ASSERT_NE(light, nullptr);
    stage.Begin(*film);
    EXPECT_TRUE(static_cast<engine::SceneObject*>(light)->IsShown());
    EXPECT_EQ(stage.Level().Data()->filmManager->currentFilm, film);
    stage.End(*film);
    EXPECT_FALSE(static_cast<engine::SceneObject*>(light)->IsShown());
    EXPECT_EQ(stage.Level().Data()->filmManager->currentFilm, nullptr);
}

TEST_F(HeadlessStageTest, AFileThatIsNoLevelIsThrownAndNoWindowAsks) {
    EXPECT_THROW(stage.Open(folder.filePath("missing.level").toStdString()), engine::LevelFileError);
    EXPECT_EQ(stage.windows.BrowseFx(1, "x"), std::nullopt);
    EXPECT_EQ(stage.windows.InputNumber(1.0f, "", ""), std::nullopt);
    EXPECT_NE(stage.Level().GetLevelData(), nullptr);
}

TEST_F(HeadlessStageTest, APluginThatIsMissingOrCanNotBeUsedIsToldOnce) {
    EXPECT_TRUE(stage.TakeTroubles().empty());
    stage::HeadlessStage bare{{folder.path().toStdString(), folder.path().toStdString()}, {}};
    const std::vector<std::string> troubles = bare.TakeTroubles();
    ASSERT_EQ(troubles.size(), 1u);
    EXPECT_NE(troubles[0].find("no plug-in was found"), std::string::npos) << troubles[0];
    EXPECT_TRUE(bare.TakeTroubles().empty());
    stage::HeadlessStage wrong{{folder.path().toStdString(), folder.path().toStdString()},
                               {"/nowhere/films.so"}};
    const std::vector<std::string> why = wrong.TakeTroubles();
    ASSERT_EQ(why.size(), 1u);
    EXPECT_NE(why[0].find("The plug-in can't be used: "), std::string::npos) << why[0];
}

TEST(StageAppTest, PluginsAreFoundBesideTheProgramInOrderOfTheirNames) {
    QTemporaryDir folder;
    QDir(folder.path()).mkpath("bin/plugins");
    for (const char* name : {"b.so", "a.so", "c.txt"}) {
        QFile file(folder.filePath(QString("bin/plugins/") + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    EXPECT_EQ(stage::FindPlugins(folder.filePath("bin")),
              (QStringList{folder.filePath("bin/plugins/a.so"), folder.filePath("bin/plugins/b.so")}));
    EXPECT_TRUE(stage::FindPlugins(folder.filePath("nowhere")).isEmpty());
}
