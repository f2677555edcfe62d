#include "host/stage/windows/films/ScenarioKeys.h"
#include "framework/QtBridge.h"
#include "framework/Wnd.h"
#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/stage/windows/films/CameraCuts.h"
#include "host/stage/windows/films/FilmsIds.h"
#include "host/stage/windows/films/TimelineAxis.h"
#include "host/stage/windows/films/TimelineHand.h"
#include "host/stage/windows/ToolWindows.h"
#include "resources/resource.h"
#include "tests/whole/StageFixture.h"

#include <cmath>
#include <QAction>
#include <QCursor>
#include <QSettings>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

namespace {

using stage::TimelineHand;

/// Stage's own keys in the scenario window of the sample's film, whose level track has the first rows.
class ScenarioKeysTest : public StageTest {
protected:
    struct Place {
        CWnd* row = nullptr;
        CPoint point;
        const IFilmKey* key = nullptr;
    };

    void SetUp() override {
        QSettings().clear();
        OpenScenario("Intro");
        film = static_cast<engine::Film*>(Film("Intro"));
        UnfoldLevel();
    }
    ~ScenarioKeysTest() override { QSettings().clear(); }

    /// Presses the plus of the first row if its kinds aren't shown.
    void UnfoldLevel() {
        if (!PlaceOfKey().key) {
            CWnd* button = hand->Rows().front()->GetWindowChild(0);
            ASSERT_NE(button, nullptr);
            QTest::mouseClick(NativeWidget(*button), Qt::LeftButton);
            Settle();
        }
    }
    /// The first key that can be seen, from the top.
    Place PlaceOfKey(const IFilmKey* wanted = nullptr) const {
        return FindPlace([wanted](const IFilmKey* key) { return wanted == nullptr || key == wanted; });
    }
    Place PlaceOfKeyBut(const IFilmKey* left) const {
        return FindPlace([left](const IFilmKey* key) { return key->kind == left->kind && key != left; });
    }
    Place FindPlace(const std::function<bool(const IFilmKey*)>& isWanted) const {
        for (CWnd* row : hand->Rows()) {
            CRect area;
            row->GetClientRect(&area);
            for (int x = 160; x < area.Width() - 30; x += 2) {
                const CPoint point(x, area.Height() / 2);
                const IFilmKey* key = hand->KeyAt(*row, point);
                if (key != nullptr && isWanted(key)) {
                    return {row, point, key};
                }
            }
        }
        return {};
    }
    std::size_t CountKeys() const {
        std::size_t count = 0;
        for (const CFilmTrack* track : film->tracks) {
            count += track->keys.size();
        }
        return count;
    }
    bool HasKey(const IFilmKey* key) const {
        for (const CFilmTrack* track : film->tracks) {
            if (std::ranges::find(track->keys, key) != track->keys.end()) {
                return true;
            }
        }
        return false;
    }
    void ClickOn(const Place& place, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(NativeWidget(*place.row), Qt::LeftButton, modifiers,
                          QPoint(place.point.x, place.point.y));
        Settle();
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        hand->Timeline()->SetFocus();
        QTest::keyClick(window->windowHandle(), key, modifiers);
        Settle();
        Settle();
    }
    void Turn(int notches, Qt::KeyboardModifiers modifiers) {
        QWidget* ruler = NativeWidget(*hand->Ruler());
        const QPointF middle(ruler->width() / 2.0, ruler->height() / 2.0);
        QWheelEvent event(middle, ruler->mapToGlobal(middle), {}, {0, 120 * notches}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(ruler, &event);
        Settle();
    }
    double Shown() const {
        const auto state = stage::TimelineAxis(*hand, film->length, 30).Read();
        return state ? state->shown : -1.0;
    }
    float FrameTime(int frame) const { return static_cast<float>(frame) / 30.0f; }

    std::unique_ptr<TimelineHand> hand = std::make_unique<TimelineHand>(*window->toolWindows);
    engine::Film* film = nullptr;
};

} // namespace

TEST(FilmsIdsTest, AreThoseOfThePluginsResources) {
    using namespace stage::films_id;
    EXPECT_EQ(kSettings, IDC_SETTINGS);
    EXPECT_EQ(kRemoveKey, IDC_REMOVE_KEY);
    EXPECT_EQ(kSetMovieFrame, IDC_SET_MOVIE_FRAME);
    EXPECT_EQ(kPlay, IDC_PLAY_MOVIE);
    EXPECT_EQ(kStop, IDC_STOP_MOVIE);
    EXPECT_EQ(kAddKey, IDC_ADD_KEY);
    EXPECT_EQ(kToBegin, IDC_MOVE_TO_BEGIN);
    EXPECT_EQ(kCopyKey, IDC_COPY_ATTRIBUTES);
    EXPECT_EQ(kFrameBack, IDC_FRAME_BACK);
    EXPECT_EQ(kFrameForward, IDC_FRAME_FORWARD);
    EXPECT_EQ(kAddCamera, IDC_ADD_CAMERA);
    EXPECT_EQ(kKeyBack, IDC_KEY_FRAME_BACK);
    EXPECT_EQ(kKeyForward, IDC_KEY_FRAME_FORWARD);
    EXPECT_EQ(kPasteKey, IDC_PASTE_KEY);
    EXPECT_EQ(kAxisBegin, IDC_RANGE_BEGIN);
    EXPECT_EQ(kAxisEnd, IDC_RANGE_END);
    EXPECT_EQ(kAxisShown, IDC_DRAW_INTERVAL);
    EXPECT_EQ(kTicFrames, IDC_TICS_DISTANCE);
    EXPECT_EQ(kFrameNumber, IDC_MOVIE_FRAME);
    EXPECT_EQ(kFilmList, IDC_MOVIE_LIST);
    EXPECT_EQ(kFilmAdd, IDC_MOVIE_ADD);
    EXPECT_EQ(kFilmDelete, IDC_MOVIE_DELETE);
}

TEST_F(ScenarioKeysTest, DeleteRemovesTheKeyThatWasPressed) {
    const Place place = PlaceOfKey();
    ASSERT_NE(place.key, nullptr);
    const std::size_t before = CountKeys();
    ClickOn(place);
    Press(Qt::Key_Delete);
    EXPECT_EQ(CountKeys(), before - 1);
    EXPECT_FALSE(HasKey(place.key));
    Press(Qt::Key_Delete); // nothing is pressed any more
    EXPECT_EQ(CountKeys(), before - 1);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(ScenarioKeysTest, DeleteAfterAPressBesideKeysRemovesNothing) {
    const Place place = PlaceOfKey();
    ASSERT_NE(place.key, nullptr);
    const std::size_t before = CountKeys();
    ClickOn(place);
    ClickOn({place.row, {20, place.point.y}, nullptr}); // the name
    Press(Qt::Key_Delete);
    EXPECT_EQ(CountKeys(), before);
}

TEST_F(ScenarioKeysTest, DeleteFindsTheKeyAfterScrollingAndZooming) {
    const Place place = PlaceOfKey();
    ASSERT_NE(place.key, nullptr);
    const std::size_t before = CountKeys();
    ClickOn(place);
    Turn(1, Qt::ControlModifier);
    const bool isSeen = PlaceOfKey(place.key).key != nullptr;
    Press(Qt::Key_Delete);
    EXPECT_EQ(CountKeys(), isSeen ? before - 1 : before);
    EXPECT_EQ(HasKey(place.key), !isSeen);
}

TEST_F(ScenarioKeysTest, CopyAndPastePutAKeyAtTheMouse) {
    const Place place = PlaceOfKey();
    ASSERT_NE(place.key, nullptr);
    const int kind = place.key->kind;
    const std::size_t before = CountKeys();
    ClickOn(place);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(CountKeys(), before);
    // Camera keys fill their row: another one makes room.
    const Place other = PlaceOfKeyBut(place.key);
    ASSERT_NE(other.key, nullptr);
    ClickOn(other);
    Press(Qt::Key_Delete);
    ASSERT_EQ(CountKeys(), before - 1);
    QCursor::setPos(NativeWidget(*other.row)->mapToGlobal(QPoint(other.point.x + 2, other.point.y)));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(CountKeys(), before);
    const IFilmKey* pasted = hand->KeyAt(*other.row, {other.point.x + 4, other.point.y});
    ASSERT_NE(pasted, nullptr);
    EXPECT_EQ(pasted->kind, kind);
}

TEST_F(ScenarioKeysTest, ArrowsStepFrames) {
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_NEAR(film->PosedTime(), FrameTime(2), 1e-4);
    Press(Qt::Key_Left);
    EXPECT_NEAR(film->PosedTime(), FrameTime(1), 1e-4);
}

TEST_F(ScenarioKeysTest, CommaAndPeriodGoToTheCutsOfCameras) {
    std::vector<int> frames;
    for (const float cut : stage::CameraCuts(*film)) {
        if (cut > 0.0f) {
            frames.push_back(stage::FrameOfCut(cut, 30));
        }
    }
    ASSERT_GE(frames.size(), 2u);
    Press(Qt::Key_Period);
    EXPECT_NEAR(film->PosedTime(), FrameTime(frames[0]), 1e-4);
    Press(Qt::Key_Period);
    EXPECT_NEAR(film->PosedTime(), FrameTime(frames[1]), 1e-4);
    Press(Qt::Key_Comma);
    EXPECT_NEAR(film->PosedTime(), FrameTime(frames[0]), 1e-4);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(ScenarioKeysTest, WheelZoomsAndPansAndFShowsAllWithoutChangingTheLength) {
    const float length = film->length;
    Press(Qt::Key_F);
    EXPECT_NEAR(Shown(), length, 1e-3);
    Turn(1, Qt::ControlModifier);
    EXPECT_NEAR(Shown(), length * 0.8, length * 1e-4);
    Turn(-1, Qt::ShiftModifier);
    EXPECT_NEAR(Shown(), length * 0.8, length * 1e-4);
    Turn(-1, Qt::ControlModifier);
    EXPECT_NEAR(Shown(), length, length * 1e-4); // also where the part that is shown met the film's end
    Turn(3, Qt::ControlModifier);
    Turn(-8, Qt::ShiftModifier);
    Press(Qt::Key_F);
    EXPECT_NEAR(Shown(), length, 1e-3);
    EXPECT_EQ(film->length, length);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(ScenarioKeysTest, SwitchedOffTheKeysAreThePluginsAlone) {
    const Place place = PlaceOfKey();
    ASSERT_NE(place.key, nullptr);
    const std::size_t before = CountKeys();
    window->findChild<QAction*>("FilmsExtraKeys")->setChecked(false);
    ClickOn(place);
    Press(Qt::Key_Delete);
    Press(Qt::Key_Right);
    EXPECT_EQ(CountKeys(), before);
    EXPECT_EQ(film->PosedTime(), 0.0f);
    const double shown = Shown();
    Turn(1, Qt::ControlModifier);
    EXPECT_EQ(Shown(), shown);
}

TEST_F(ScenarioKeysTest, WithoutAFilmTheKeysSayWhy) {
    ChooseFilm("<none>");
    for (const stage::ScenarioKey& entry : stage::ScenarioKeyTable()) {
        if (entry.action != stage::ScenarioAction::Loop) {
            window->statusBar()->clearMessage();
            Press(static_cast<Qt::Key>(entry.key), entry.modifiers);
            EXPECT_EQ(window->statusBar()->currentMessage(), "No film is open.") << entry.keys;
        }
    }
    EXPECT_TRUE(boxes.empty());
}

TEST_F(ScenarioKeysTest, LoopingPlaysAnewAfterTheEndUntilItIsSwitchedOff) {
    film->length = 0.5f;
    window->scenarioKeys->SetLooping(true);
    int rounds = 0;
    float last = 0.0f;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (film->PosedTime() < last) {
            ++rounds;
        }
        last = film->PosedTime();
        if (rounds == 2) { // in the middle of the third
            window->scenarioKeys->SetLooping(false);
        }
    });
    watch.start(1);
    Hooks().clock = [this] { return clock += 20; };
    QTest::keyClick(window->windowHandle(), Qt::Key_Return, Qt::ControlModifier);
    QTRY_COMPARE_WITH_TIMEOUT(rounds, 2, 60000);
    Hooks().clock = nullptr;
    EXPECT_FALSE(film->IsPlaying());
    EXPECT_GT(film->PosedTime(), film->length - 0.25f);
}

TEST_F(ScenarioKeysTest, OpenFilmStandingAtItsEndIsNotPlayedByAnotherChoice) {
    window->scenarioKeys->SetLooping(true);
    hand->PressButton(IDC_MOVE_TO_END);
    Settle();
    ChooseFilm("<none>");
    ChooseFilm("Intro");
    Settle();
    EXPECT_FALSE(film->IsPlaying());
    EXPECT_EQ(film->PosedTime(), 0.0f);
}
