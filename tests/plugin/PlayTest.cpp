#include "tests/plugin/PluginFixture.h"

#include <cmath>
#include <deque>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A film at a host whose clock tells the given milliseconds one after the other; the first is read for the
/// origin, each further one for a frame.
class PlayTest : public PluginTest {
protected:
    PlayTest() : film(filmCalls) {
        Hooks().clock = [this] {
            const std::uint32_t now = clock.front();
            if (clock.size() > 1) {
                clock.pop_front();
            }
            return now;
        };
        film.validated = 1;
        film.length = 10.0f;
        plugin.SetCurrentFilm(&film);
        Forget();
    }
    ~PlayTest() override { plugin.SetCurrentFilm(nullptr); }

    void Forget() {
        film.times.clear();
        film.previousTimes.clear();
        filmCalls.clear();
        editor.broadcasts.clear();
    }

    /// Plays and ends after the last clock value, which must lie behind the film's end.
    void PlayClock(std::deque<std::uint32_t> values) {
        clock = std::move(values);
        plugin.Play(0.0f);
    }

    /// Runs code once, inside the event of the frame with this number (from 0).
    void AtFrame(int number, std::function<void()> action) {
        editor.onBroadcast = [this, number, action = std::move(action)](int code, void*) {
            if (code == EventCode::ObjectsMoved && static_cast<int>(film.times.size()) == number + 1 &&
                !acted) {
                acted = true;
                action();
            }
        };
    }

    std::deque<std::uint32_t> clock{0};
    std::vector<std::string> filmCalls;
    LoggingFilm film;
    bool acted = false;
};

} // namespace

TEST_F(PlayTest, TimesAreClockMinusOriginTimesTheFloatThousandth) {
    PlayClock({5000, 5000, 5016, 5033, 5100, 6000, 20000});
    EXPECT_THAT(film.times, ElementsAre(0.0f, 0.016f, 0.033f, 0.1f, 1.0f));
    EXPECT_THAT(film.previousTimes, ElementsAre(0.0f, 0.0f, 0.016f, 0.033f, 0.1f));
    EXPECT_EQ(plugin.currentTime, 1.0f); // the last frame shown stays
    EXPECT_EQ(plugin.isPlaying, 0);
}

TEST_F(PlayTest, TheFloatThousandthIsALittleMoreThanAMillisecond) {
    // 10 times 0.0010000000475 lies nearer to the float above 0.01.
    PlayClock({5000, 5010, 20000});
    EXPECT_THAT(film.times, ElementsAre(std::nextafter(0.01f, 1.0f)));
}

TEST_F(PlayTest, OriginLosesPrecisionAsAFloat) {
    // 20000001 lies between two floats; the even one is 20000000, so the first frame is a millisecond late.
    PlayClock({20000001, 20000001, 20000003, 20020000});
    EXPECT_EQ(plugin.playOrigin, 20000000.0f);
    EXPECT_THAT(film.times, ElementsAre(0.001f, 0.003f));
}

TEST_F(PlayTest, ClockWithTheTopBitSetCountsAsUnsigned) {
    // 4294967290 rounds to 4294967296: the first frames come before the origin and give 0.
    clock = {4294967290u, 4294967290u, 4294967295u, 5, 6};
    int frames = 0;
    editor.onBroadcast = [&](int, void*) {
        if (++frames == 4) {
            plugin.StopPlaying();
        }
    };
    plugin.Play(0.0f);
    EXPECT_EQ(plugin.playOrigin, 4294967296.0f);
    EXPECT_THAT(film.times, ElementsAre(0.0f, 0.0f, 0.0f, 0.0f)); // the wrap freezes the film at 0
}

TEST_F(PlayTest, FilmThatPlaysFromItsEndEndsAtOnce) {
    // 10 s from the origin are 10000 * 0.0010000000475 s, which is above 10.
    plugin.SetTime(10.0f, true);
    Forget();
    PlayClock({1000, 1000});
    EXPECT_THAT(film.times, IsEmpty());
    EXPECT_THAT(filmCalls, ElementsAre("Stop"));
    EXPECT_EQ(plugin.currentTime, 10.0f);
}

TEST_F(PlayTest, TimeEqualToTheLengthStillShows) {
    film.length = 1.024f; // 1024 times the float thousandth is exactly this float
    PlayClock({1000, 2024, 2025});
    EXPECT_THAT(film.times, ElementsAre(1.024f));
}

TEST_F(PlayTest, FilmOfNoLengthShowsOnlyTimeZero) {
    film.length = 0.0f;
    PlayClock({1000, 1000, 1000, 1001});
    EXPECT_THAT(film.times, ElementsAre(0.0f, 0.0f));
}

TEST_F(PlayTest, StartBeyondTheEndShowsNoFrame) {
    plugin.SetTime(11.0f, true);
    Forget();
    PlayClock({1000, 1000});
    EXPECT_THAT(film.times, IsEmpty());
}

TEST_F(PlayTest, PlayStartsAtTheCurrentTimeWhateverIsPassed) {
    plugin.SetTime(2.0f, true);
    Forget();
    clock = {8000, 8000, 90000};
    plugin.Play(7.0f);
    EXPECT_EQ(plugin.playOrigin, 6000.0f);
    EXPECT_THAT(film.times, ElementsAre(2.0f));
}

TEST_F(PlayTest, PlayValidatesTheFilm) {
    film.validated = 0;
    PlayClock({0, 20000});
    EXPECT_EQ(film.validated, 1);
}

TEST_F(PlayTest, PlayWithoutAFilmReturns) {
    plugin.SetCurrentFilm(nullptr);
    plugin.Play(0.0f);
    EXPECT_EQ(plugin.isPlaying, 0);
}

TEST_F(PlayTest, EachFrameTellsTheScenarioWindowAndOtherPlugins) {
    std::vector<std::string> calls;
    LoggingWindow window(calls);
    plugin.scenarioDlg = &window;
    PlayClock({1000, 1100, 1200, 99000});
    plugin.scenarioDlg = nullptr;
    EXPECT_THAT(window.times, ElementsAre(0.1f, 0.2f));
    EXPECT_THAT(editor.broadcasts, ElementsAre(EventCode::ObjectsMoved, EventCode::ObjectsMoved));
}

TEST_F(PlayTest, SeekingFiresNoKeys) {
    plugin.SetTime(1.0f, true);
    EXPECT_EQ(film.previousTimes.back(), -1.0f);
}

TEST_F(PlayTest, JumpBackwardsFiresNoKeysWhilePlaying) {
    plugin.isPlaying = 1;
    plugin.SetFrame(1.0f, 2.0f);
    EXPECT_EQ(film.previousTimes.back(), -1.0f);
    plugin.SetFrame(2.0f, 1.0f);
    EXPECT_EQ(film.previousTimes.back(), 1.0f);
    plugin.isPlaying = 0;
}

TEST_F(PlayTest, StoppingFromInsideAFrameEndsTheLoop) {
    AtFrame(1, [this] { plugin.StopPlaying(); });
    PlayClock({0, 16, 33, 50});
    EXPECT_THAT(film.times, ElementsAre(0.016f, 0.033f));
}

TEST_F(PlayTest, SecondPlayFromInsideRestartsAndEndsBoth) {
    AtFrame(0, [this] { plugin.Play(0.0f); });
    PlayClock({0, 100, 5000, 5200, 99000});
    // The inner loop goes on from 0.1 with a new origin of 4900; the outer finds the film stopped.
    EXPECT_THAT(film.times, ElementsAre(0.1f, 0.3f));
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_THAT(filmCalls, ElementsAre("SetTime", "Stop", "SetTime", "Stop"));
}

TEST_F(PlayTest, FilmSwitchFromInsideEndsTheLoop) {
    std::vector<std::string> otherCalls;
    LoggingFilm other(otherCalls);
    AtFrame(0, [&] { plugin.SetCurrentFilm(&other); });
    PlayClock({0, 100, 200});
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_EQ(plugin.GetCurrentFilm(), &other);
    EXPECT_EQ(film.times.size(), 1u);
    plugin.SetCurrentFilm(nullptr);
}

TEST_F(PlayTest, NewLevelFromInsideDropsTheFilmWithoutStoppingIt) {
    AtFrame(0, [this] { plugin.OnNew(); });
    PlayClock({0, 100, 200});
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_THAT(filmCalls, ElementsAre("SetTime"));
    EXPECT_EQ(plugin.currentTime, 0.0f);
}

TEST_F(PlayTest, HostGoingAwayFromInsideEndsTheLoop) {
    AtFrame(0, [this] {
        plugin.OnEditorClosing();
        plugin.OnEvent(EventCode::HostGoesAway, nullptr);
    });
    PlayClock({0, 100, 200});
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_EQ(plugin.editor, nullptr);
    plugin.Initialize(&editor, kPluginNumber, &editor);
}

TEST_F(PlayTest, SuspendFromInsideEndsTheLoopAndKeepsTheState) {
    AtFrame(0, [this] { Suspend(); });
    PlayClock({0, 100, 200});
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_EQ(plugin.suspendedFilm, &film);
    EXPECT_EQ(plugin.suspendedTime, 0.1f);
    EXPECT_EQ(plugin.suspendedPlaying, 1);
    EXPECT_THAT(filmCalls, ElementsAre("SetTime", "Stop", "Stop", "Deactivate"));
}

TEST_F(PlayTest, ShortcutZeroTogglesAndOthersDoNothing) {
    clock = {0, 100, 99000};
    plugin.OnShortcut(0, 1, 0);
    EXPECT_THAT(film.times, IsEmpty());
    plugin.OnShortcut(0, 0, 0);
    EXPECT_THAT(film.times, ElementsAre(0.1f));
    AtFrame(1, [this] { plugin.OnShortcut(0, 0, 0); });
    clock = {0, 100, 200, 300};
    plugin.OnShortcut(0, 0, 0);
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_EQ(film.times.size(), 2u);
}

TEST_F(PlayTest, ShortcutWithoutAFilmDoesNothing) {
    plugin.SetCurrentFilm(nullptr);
    plugin.OnShortcut(0, 0, 0);
    EXPECT_EQ(plugin.isPlaying, 0);
}

TEST_F(PlayTest, ValidateMarksTheFilmAndRefusesNone) {
    film.validated = 0;
    EXPECT_FALSE(plugin.ValidateFilm(nullptr));
    EXPECT_TRUE(plugin.ValidateFilm(&film));
    EXPECT_EQ(film.validated, 1);
}

TEST_F(PlayTest, AnimateObjectsStaysAsItIsWhilePlaying) {
    plugin.OnCommand(kPluginNumber, 50);
    PlayClock({0, 100, 99000});
    EXPECT_EQ(plugin.animateObjects, 1);
}
