#include "files/FilmWatch.h"

#include "tests/plugin/PluginFixture.h"

namespace {

class FilmWatchTest : public PluginTest {};

} // namespace

TEST_F(FilmWatchTest, AnotherFilmIsNotTheWatchedOneUntilThatIsCurrentAgain) {
    IFilm* film = OpenNewFilm();
    const FilmWatch watch(plugin);
    EXPECT_TRUE(watch.IsCurrent());
    OpenNewFilm();
    EXPECT_FALSE(watch.IsCurrent());
    plugin.SetCurrentFilm(film);
    EXPECT_TRUE(watch.IsCurrent());
}

TEST_F(FilmWatchTest, NoFilmIsWatchedToo) {
    const FilmWatch watch(plugin);
    EXPECT_TRUE(watch.IsCurrent());
    OpenNewFilm();
    EXPECT_FALSE(watch.IsCurrent());
    plugin.SetCurrentFilm(nullptr);
    EXPECT_TRUE(watch.IsCurrent());
}

TEST_F(FilmWatchTest, AFilmAtTheSameAddressInAnotherLevelIsAnother) {
    IFilm* film = OpenNewFilm();
    const FilmWatch watch(plugin);
    plugin.OnEvent(EventCode::LevelLoaded, nullptr); // with the same film, as far as addresses tell
    plugin.SetCurrentFilm(film);
    EXPECT_FALSE(watch.IsCurrent());
    EXPECT_TRUE(FilmWatch(plugin).IsCurrent());
}
