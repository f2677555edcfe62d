#include "plugin/session/LevelWatch.h"

#include "files/CameraWatch.h"
#include "tests/plugin/PluginFixture.h"

namespace {

class LevelWatchTest : public PluginTest {};

} // namespace

TEST_F(LevelWatchTest, ALevelThatIsLeftOrOpenedIsAnother) {
    const LevelWatch first(plugin);
    EXPECT_TRUE(first.IsSameLevel());
    plugin.OnNew();
    EXPECT_FALSE(first.IsSameLevel());
    const LevelWatch second(plugin);
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    EXPECT_FALSE(second.IsSameLevel());
    EXPECT_TRUE(LevelWatch(plugin).IsSameLevel());
}

TEST_F(LevelWatchTest, FilmsAndSavesLeaveTheLevelAsItIs) {
    const LevelWatch watch(plugin);
    IFilm* film = OpenNewFilm();
    plugin.OnEvent(EventCode::Suspend, nullptr);
    plugin.OnEvent(EventCode::Resume, nullptr);
    plugin.DeleteFilm(film);
    EXPECT_TRUE(watch.IsSameLevel());
}

TEST_F(LevelWatchTest, AWatchOnNoLevelSeesAnother) {
    EXPECT_FALSE(LevelWatch().IsSameLevel());
}

TEST_F(LevelWatchTest, ACameraAtTheSameAddressInAnotherLevelIsNotTheWatchedOne) {
    IFilm* film = OpenNewFilm();
    CFilmTrack* camera = film->CreateCameraTrack();
    film->AddTrack(camera);
    AsCameraTrack(camera)->cameraName = "Main";
    CameraWatch watch(plugin);
    watch.Begin(camera);
    EXPECT_EQ(watch.Find(), camera);
    plugin.OnEvent(EventCode::LevelLoaded, nullptr); // with the same film, as far as addresses tell
    plugin.SetCurrentFilm(film);
    EXPECT_EQ(watch.Find(), nullptr);
    watch.Begin(camera);
    EXPECT_EQ(watch.Find(), camera);
}
