#include "tests/timeline/ControlFixture.h"

#include <gmock/gmock.h>
#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace {

constexpr int kRebuilds = 1000;
constexpr int kFirstRebuilds = 10; ///< after these nothing new is to be made any more
constexpr UINT kRebuildMessage = WM_USER + 7;

/// A window that rebuilds when a posted message tells it, as the command of a popup menu does.
class RebuildingWnd : public CWnd {
public:
    std::function<void()> rebuild;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == kRebuildMessage) {
            rebuild();
            return 0;
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

/// A film that plays until enough rebuilds have gone by, each frame a millisecond after the one before.
class PlayingRebuildTest : public ControlTest {
protected:
    PlayingRebuildTest() {
        film = OpenFilmWithActors(1);
        film->length = 1000.0f;
        Hooks().clock = [this] { return ++milliseconds; };
    }
    /// Shows the film anew and counts.
    void Rebuild() {
        acting = true;
        control->ShowFilm(film, true);
        acting = false;
        ++rebuilds;
        if (rebuilds == kFirstRebuilds) {
            early = Living();
        } else if (rebuilds == kRebuilds) {
            late = Living();
            plugin.StopPlaying();
        }
    }
    /// Runs at each frame of the film.
    void AtFrames(std::function<void()> action) {
        editor.onBroadcast = [this, action = std::move(action)](int code, void*) {
            if (code == EventCode::ObjectsMoved && plugin.isPlaying != 0 && !acting) {
                action();
            }
        };
    }
    void Play() {
        plugin.Play(0.0f);
        editor.onBroadcast = nullptr;
    }
    /// Plays from a handler of the ordinary loop, as the host's shortcut does.
    void PlayInLoop() {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            Play();
            loop.quit();
        });
        loop.exec();
    }
    void ExpectFlat() const {
        EXPECT_EQ(rebuilds, kRebuilds);
        EXPECT_EQ(late, early);
    }
    static qsizetype Living() { return QApplication::allWidgets().size(); }

    IFilm* film = nullptr;
    std::uint32_t milliseconds = 0;
    bool acting = false; ///< a film that is shown is posed, which is no frame
    int rebuilds = 0;
    qsizetype early = 0;
    qsizetype late = 0;
};

} // namespace

TEST_F(PlayingRebuildTest, RebuildsOfAFrameKeepTheWindowsFew) {
    AtFrames([this] { Rebuild(); });
    PlayInLoop();
    ExpectFlat();
}

TEST_F(PlayingRebuildTest, RebuildsOfAPostedMessageKeepTheWindowsFew) {
    RebuildingWnd window;
    window.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 5, 5), &frame, 2);
    window.rebuild = [this] { Rebuild(); };
    AtFrames([&window] { window.PostMessage(kRebuildMessage); });
    PlayInLoop();
    ExpectFlat();
}

TEST_F(PlayingRebuildTest, RebuildsOfATimerKeepTheWindowsFew) {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [this] { Rebuild(); });
    timer.start(0);
    PlayInLoop();
    ExpectFlat();
}

TEST_F(PlayingRebuildTest, FilmThatPlaysInsideAPlayingOneKeepsTheWindowsFew) {
    bool inner = false;
    AtFrames([&] {
        if (!std::exchange(inner, true)) {
            plugin.Play(0.0f); // as a ruler dragged in a playing film
        } else {
            Rebuild();
        }
    });
    PlayInLoop();
    ExpectFlat();
}

TEST_F(PlayingRebuildTest, FilmOutsideAnyLoopKeepsTheWindowsFew) {
    AtFrames([this] { Rebuild(); });
    Play();
    ExpectFlat();
}
