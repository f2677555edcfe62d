#include "plugin/parts/Player.h"

#include "tests/plugin/PartFixture.h"

#include <algorithm>
#include <deque>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

/// The film is open; the clock tells the given milliseconds one after the other, the first for the origin,
/// each further one for a frame.
class PlayerTest : public PartTest {
protected:
    PlayerTest() {
        session.currentFilm = &film;
        Hooks().clock = [this] {
            const std::uint32_t now = clock.front();
            if (clock.size() > 1) {
                clock.pop_front();
            }
            return now;
        };
    }

    std::deque<std::uint32_t> clock{0};
    float origin = -1.0f;
    Player player{session, origin};
};

TEST_F(PlayerTest, FramesFollowTheClockUntilTheFilmIsOver) {
    clock = {4000, 4000, 4500, 5000, 14001};
    session.currentTime = 0.0f;
    player.Play();
    EXPECT_EQ(origin, 4000.0f);
    EXPECT_THAT(session.times, ElementsAre(0.0f, 0.5f, 1.0f));
    EXPECT_EQ(session.isPlaying, 0);
    EXPECT_THAT(calls, ElementsAre("Stop"));
    EXPECT_NE(film.validated, 0);
}

TEST_F(PlayerTest, PlayingGoesOnFromTheCurrentTime) {
    session.currentTime = 2.0f;
    clock = {4000, 4500, 20000};
    player.Play();
    EXPECT_EQ(origin, 2000.0f);
    EXPECT_THAT(session.times, ElementsAre(2.5f));
}

TEST_F(PlayerTest, NoFilmPlaysNothing) {
    session.currentFilm = nullptr;
    player.Play();
    EXPECT_EQ(session.isPlaying, 0);
    EXPECT_EQ(origin, -1.0f);
}

TEST_F(PlayerTest, AFilmThatGoesInAFrameEndsIt) {
    clock = {1000, 1000, 1000};
    session.onTime = [this] { session.currentFilm = nullptr; };
    player.Play();
    EXPECT_THAT(session.times, SizeIs(1));
    EXPECT_EQ(session.isPlaying, 0);
    EXPECT_THAT(calls, IsEmpty()) << "a film that went is not told";
}

TEST_F(PlayerTest, APlayInsideAFrameStopsTheFilmAndPlaysItToItsEnd) {
    clock = {1000, 1000, 1000, 1500, 20000};
    session.onTime = [this] {
        if (session.times.size() == 1) {
            player.Play();
        }
    };
    player.Play();
    EXPECT_THAT(session.times, ElementsAre(0.0f, 0.5f));
    EXPECT_THAT(calls, ElementsAre("Stop", "Stop")) << "by the inner play, and at the end";
    EXPECT_EQ(session.isPlaying, 0);
}

TEST_F(PlayerTest, FromThirtyTwoLoopsOnTheInnermostGoesOn) {
    int depth = 0;
    int deepest = 0;
    session.onTime = [&] {
        deepest = std::max(deepest, ++depth);
        if (session.times.size() <= 40) {
            player.Play();
        }
        --depth;
    };
    clock = std::deque<std::uint32_t>(200, 1000u);
    clock.push_back(20000);
    player.Play();
    EXPECT_EQ(deepest, 32);
    EXPECT_THAT(session.times, SizeIs(159)) << "200 readings less 41 for origins";
    EXPECT_EQ(session.isPlaying, 0);
}

} // namespace
