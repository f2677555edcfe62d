#include "files/MovieFrameDlg.h"

#include "framework/Resource.h"
#include "framework/UserNote.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"
#include "tests/timeline/CommandFixture.h"
#include "tests/timeline/ModalUser.h"

#include <gmock/gmock.h>
#include <QLineEdit>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const char* const kRangeText = "Frame is not in film range, insert proper value.";

/// A user at the dialog; the film has 300 frames, the cursor stands at frame 150.
class MovieFrameDlgTest : public CommandTest {
protected:
    MovieFrameDlgTest() { MoveCursor(5.0f); }
    void MoveCursor(float time) { plugin.SetTime(time, /*fromWindow*/ false); }
    void Open(const std::function<void()>& user) {
        EXPECT_TRUE(ModalUser::Work([this] { Run(IDC_SET_MOVIE_FRAME); }, user));
    }
    /// What the dialog says first with the cursor at a time. The user cancels.
    std::string NumberAt(float time) {
        std::string text;
        control->SetCurrentTime(time, false);
        Open([&text] {
            text = ModalUser::TextOf(0);
            ModalUser::Key(Qt::Key_Escape);
        });
        return text;
    }
    void ExpectTime(float seconds) const {
        EXPECT_EQ(control->currentTime, seconds);
        EXPECT_EQ(plugin.currentTime, seconds);
        EXPECT_EQ(control->grid->cursorMark->time, seconds);
    }
};

} // namespace

TEST_F(MovieFrameDlgTest, OpensWithTheFrameOfTheCursor) {
    Open([] {
        EXPECT_EQ(ModalUser::Window()->windowTitle(), "Set movie frame");
        EXPECT_EQ(ModalUser::TextOf(0), "150");
        ModalUser::ExpectNeat();
        ModalUser::Key(Qt::Key_Escape);
    });
    ExpectTime(5.0f);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(MovieFrameDlgTest, NumberIsThatOfTheNearestFrame) {
    EXPECT_EQ(NumberAt(0.0f), "0");
    EXPECT_EQ(NumberAt(0.1f), "3");
    EXPECT_EQ(NumberAt(0.115f), "3"); // 3.45 frames
    EXPECT_EQ(NumberAt(0.119f), "4"); // 3.57 frames
    EXPECT_EQ(NumberAt(5.0f / 3.0f), "50");
    EXPECT_EQ(NumberAt(10.0f), "300");
}

TEST_F(MovieFrameDlgTest, OkGoesToTheFrame) {
    Open([] {
        ModalUser::Type(0, "45");
        ModalUser::Click("OK");
    });
    ExpectTime(1.5f);
}

TEST_F(MovieFrameDlgTest, RowsAreToShowTheNewTime) {
    Settle();
    Hooks().modalDialog = [](CDialog&) { return IDCANCEL; };
    Run(IDC_SET_MOVIE_FRAME);
    for (const CTrackCtrl* row : control->visibleTracks) {
        EXPECT_TRUE(WantsPaint(*row)) << row->name;
    }
}

TEST_F(MovieFrameDlgTest, EnterInTheFieldIsOk) {
    Open([] {
        ModalUser::Type(0, "100");
        ModalUser::Key(Qt::Key_Return);
    });
    ExpectTime(10.0f / 3.0f);
}

TEST_F(MovieFrameDlgTest, CancelAndEscapeKeepTheOldFrame) {
    for (const bool byKey : {true, false}) {
        Open([byKey] {
            ModalUser::Type(0, "45");
            if (byKey) {
                ModalUser::Key(Qt::Key_Escape);
            } else {
                ModalUser::Click("Cancel");
            }
        });
        ExpectTime(5.0f);
    }
}

TEST_F(MovieFrameDlgTest, CancelTakesACursorBetweenTwoFramesOntoOne) {
    MoveCursor(5.01f); // 150.3 frames
    Open([] { ModalUser::Key(Qt::Key_Escape); });
    ExpectTime(5.0f);
}

TEST_F(MovieFrameDlgTest, ARefusalTellsTheFilmsFramesInTheStatusBar) {
    std::vector<std::string> notes;
    SetUserNoteSink([&notes](const std::string& text) { notes.push_back(text); });
    Open([] {
        ModalUser::Type(0, "301");
        ModalUser::Click("OK");
        ModalUser::Key(Qt::Key_Escape);
    });
    SetUserNoteSink(nullptr);
    EXPECT_THAT(notes, ElementsAre("The film has the frames 0 to 300."));
}

TEST_F(MovieFrameDlgTest, LastFrameIsTakenAndTheNextRefused) {
    Open([this] {
        ModalUser::Type(0, "301");
        ModalUser::Click("OK");
        ASSERT_NE(ModalUser::Window(), nullptr);
        EXPECT_THAT(boxes, ElementsAre(kRangeText));
        EXPECT_EQ(ModalUser::TextOf(0), "301"); // to be corrected
        ModalUser::Type(0, "300");
        ModalUser::Key(Qt::Key_Return);
    });
    ExpectTime(10.0f);
    EXPECT_EQ(boxes.size(), 1u);
}

TEST_F(MovieFrameDlgTest, FrameBehindABrokenEndIsAcceptedAndNotReached) {
    film->length = 5.125f; // 153.75 frames
    Open([this] {
        ModalUser::Type(0, "155");
        ModalUser::Click("OK");
        EXPECT_EQ(boxes.size(), 1u);
        ModalUser::Type(0, "154");
        ModalUser::Click("OK");
    });
    ExpectTime(5.0f); // the cursor doesn't leave the film
    EXPECT_EQ(boxes.size(), 1u);
}

TEST_F(MovieFrameDlgTest, NegativeAndHugeNumbersAreRefused) {
    for (const char* text : {"-1", "99999999999999999999", "-99999999999999999999"}) {
        boxes.clear();
        Open([this, text] {
            ModalUser::Type(0, text);
            ModalUser::Click("OK");
            ASSERT_NE(ModalUser::Window(), nullptr);
            EXPECT_THAT(boxes, ElementsAre(kRangeText));
            ModalUser::Key(Qt::Key_Escape);
        });
        ExpectTime(5.0f);
    }
}

TEST_F(MovieFrameDlgTest, WhatBeginsWithNoNumberIsFrameZero) {
    for (const char* text : {"abc", ""}) {
        MoveCursor(5.0f);
        Open([text] {
            ModalUser::Type(0, text);
            ModalUser::Click("OK");
        });
        ExpectTime(0.0f);
    }
    Open([] {
        ModalUser::Type(0, "30x");
        ModalUser::Click("OK");
    });
    ExpectTime(1.0f);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(MovieFrameDlgTest, SecondTimeBeginsAtTheFrameThatWasSet) {
    Open([] {
        ModalUser::Type(0, "45");
        ModalUser::Click("OK");
    });
    Open([] {
        EXPECT_EQ(ModalUser::TextOf(0), "45");
        ModalUser::Type(0, "46");
        ModalUser::Click("OK");
    });
    ExpectTime(46.0f / 30.0f);
}

TEST_F(MovieFrameDlgTest, WithoutAFilmItSaysSoAndDoesntOpen) {
    plugin.SetCurrentFilm(nullptr);
    EXPECT_FALSE(ModalUser::Work([this] { Run(IDC_SET_MOVIE_FRAME); }, [] {}));
    EXPECT_THAT(boxes, ElementsAre("Cannot find film."));
}

TEST_F(MovieFrameDlgTest, CancelLeavesANumberThatCouldBeTakenInTheText) {
    const ResourceScope resources(PluginResources());
    CMovieFrameDlg dialog{plugin};
    const auto textAfter = [&dialog](const char* typed) {
        dialog.text = "150";
        ModalUser::Work([&dialog] { EXPECT_EQ(dialog.DoModal(), IDCANCEL); },
                        [typed] {
                            ModalUser::Type(0, typed);
                            ModalUser::Key(Qt::Key_Escape);
                        });
        return dialog.text;
    };
    EXPECT_EQ(textAfter("45"), "45"); // Required: it is the caller who doesn't use it.
    EXPECT_EQ(textAfter("301"), "150");
    EXPECT_EQ(textAfter("-1"), "150");
    EXPECT_EQ(dialog.fps, 30);
    EXPECT_EQ(dialog.film, film);
    EXPECT_EQ(dialog.length, 10.0f);
    EXPECT_EQ(dialog.oldText, "150");
}

TEST_F(MovieFrameDlgTest, FilmThatIsLeftMeanwhileLeavesTheCursorAlone) {
    IFilm* other = NewFilm();
    const std::function<void()> leaves[] = {[this, other] { plugin.SetCurrentFilm(other); },
                                            [this] { plugin.DeleteFilm(film); }, [this] { plugin.OnNew(); }};
    for (const std::function<void()>& leave : leaves) {
        if (plugin.GetCurrentFilm() != film) {
            plugin.SetCurrentFilm(film = NewFilm());
        }
        MoveCursor(5.0f);
        Open([&] {
            leave();
            ModalUser::Type(0, "45");
            ModalUser::Click("OK");
        });
        EXPECT_NE(plugin.currentTime, 1.5f);
    }
}

TEST_F(MovieFrameDlgTest, ControlThatGoesMeanwhileIsNotTouched) {
    Open([this] {
        holder.control = nullptr;
        control.reset();
        if (ModalUser::Window() != nullptr) {
            ModalUser::Type(0, "45");
            ModalUser::Click("OK");
        }
    });
    EXPECT_EQ(plugin.currentTime, 5.0f);
}

TEST_F(MovieFrameDlgTest, APlayingFilmGoesOnFromTheFrame) {
    std::uint32_t milliseconds = 0;
    Hooks().clock = [&milliseconds] { return milliseconds += 100; };
    bool isOver = false;
    std::vector<float> times;
    editor.onBroadcast = [&](int code, void*) {
        if (code != EventCode::ObjectsMoved || plugin.isPlaying == 0) {
            return;
        }
        if (!isOver) {
            isOver = true;
            Open([] {
                ModalUser::Type(0, "270");
                ModalUser::Click("OK");
            });
        } else {
            times.push_back(plugin.currentTime);
        }
    };
    MoveCursor(1.0f);
    plugin.Play(0.0f);
    editor.onBroadcast = nullptr;
    ASSERT_TRUE(isOver);
    ASSERT_FALSE(times.empty());
    EXPECT_GE(times.front(), 9.0f);
    EXPECT_EQ(plugin.isPlaying, 0);
}
