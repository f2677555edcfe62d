#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LowLevelFiles.h"
#include "host/stage/windows/QuietMoments.h"
#include "host/stage/windows/RecoverDialog.h"
#include "host/stage/windows/UndoCommands.h"
#include "host/stage/windows/WorkKeeper.h"
#include "tests/stage/WindowFixture.h"
#include "tests/support/TempFolder.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>

using stage::FoundWork;
using stage::WorkFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The main window with a saved level, and what happens to work that is not saved.
class MainWindowKeepTest : public WindowFixture {
protected:
    MainWindowKeepTest() { EXPECT_TRUE(window.SaveLevelAs(QString::fromStdString(path))); }
    ~MainWindowKeepTest() override { engine::LowLevel() = files; }

    void Edit() { Action("CreateEmpty")->trigger(); }
    bool HasEdit() const { return !window.host.level.Data()->Objects().empty(); }
    /// Answers every box that comes up while `run` runs; gives their names in order.
    static std::vector<std::string> Answered(const std::function<void(QWidget&)>& answer,
                                             const std::function<void()>& run) {
        std::vector<std::string> names;
        QTimer poll;
        QWidget* last = nullptr;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            QWidget* top = QApplication::activeModalWidget();
            if (top != nullptr && top != last) {
                last = top;
                names.push_back(top->objectName().toStdString());
                answer(*top);
                last = nullptr;
            }
        });
        poll.start(10);
        run();
        return names;
    }
    static void Reject(QWidget& box) { qobject_cast<QDialog*>(&box)->reject(); }
    static void Accept(QWidget& box) { qobject_cast<QDialog*>(&box)->accept(); }
    /// Presses a button of the closing question; everything else is accepted.
    static std::function<void(QWidget&)> Closing(QMessageBox::StandardButton button) {
        return [button](QWidget& box) {
            if (box.objectName() == "LoseChanges") {
                PressButton(box, button);
            } else {
                Accept(box);
            }
        };
    }
    void TriggerRecent() {
        for (QMenu* menu : window.findChildren<QMenu*>()) {
            if (menu->title() == "Open &recent") {
                emit menu->aboutToShow();
                ASSERT_FALSE(menu->actions().isEmpty());
                menu->actions().front()->trigger();
            }
        }
    }
    std::string State() const { return folder.filePath("state").toStdString(); }
    static void FailWrites() {
        engine::LowLevel().write = [](int, const void*, std::size_t) -> ssize_t {
            errno = ENOSPC;
            return -1;
        };
    }
    /// As another Stage leaves its work that was killed.
    void LeaveWork() {
        WorkFolder other(State());
        std::string error;
        ASSERT_TRUE(other.Keep(window.session.TakeWork(), error)) << error;
    }

    const engine::LowLevelFiles files = engine::LowLevel();
    const std::string path = PathOf("a.level");
};

TEST_F(MainWindowKeepTest, OpenAsksBeforeUnsavedChangesAreLost) {
    Edit();
    EXPECT_THAT(Answered(Reject, [&] { Action("FileOpen")->trigger(); }), ElementsAre("LoseChanges"));
    EXPECT_TRUE(HasEdit());
}

TEST_F(MainWindowKeepTest, OpenRecentAsksBeforeUnsavedChangesAreLost) {
    Edit();
    EXPECT_THAT(Answered(Reject, [&] { TriggerRecent(); }), ElementsAre("LoseChanges"));
    EXPECT_TRUE(HasEdit());
    EXPECT_THAT(Answered(Closing(QMessageBox::Discard), [&] { TriggerRecent(); }),
                ElementsAre("LoseChanges"));
    EXPECT_FALSE(HasEdit());
}

TEST_F(MainWindowKeepTest, AFailedSaveInTheClosingQuestionLeavesTheWindowOpenAndTheWorkInIt) {
    Edit();
    FailWrites();
    EXPECT_THAT(Answered(Closing(QMessageBox::Save), [&] { EXPECT_FALSE(window.close()); }),
                ElementsAre("LoseChanges", "ReportError"));
    EXPECT_THAT(Answered(Closing(QMessageBox::Save), [&] { Action("FileNew")->trigger(); }),
                ElementsAre("LoseChanges", "ReportError"));
    EXPECT_TRUE(HasEdit());
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(MainWindowKeepTest, ChangesThatNobodyToldAreAskedAbout) {
    IFilmManager& films = *window.host.level.Data()->filmManager;
    ASSERT_NE(films.GetFilm(films.AllocateFilm()), nullptr);
    EXPECT_THAT(Answered(Reject, [&] { EXPECT_FALSE(window.close()); }), ElementsAre("LoseChanges"));
}

TEST_F(MainWindowKeepTest, TheTitleShowsAChangeThatNobodyToldOnceTheUserPauses) {
    IFilmManager& films = *window.host.level.Data()->filmManager;
    ASSERT_NE(films.GetFilm(films.AllocateFilm()), nullptr);
    EXPECT_FALSE(window.isWindowModified());
    QTest::keyClick(View(), Qt::Key_Shift);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.isWindowModified(); }));
    films.DeleteFilm(0);
    QTest::keyClick(View(), Qt::Key_Shift);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isWindowModified(); }));
}

TEST_F(MainWindowKeepTest, LookingAroundIsNoChange) {
    Drag(QPoint(200, 200), QPoint(260, 220), Qt::RightButton);
    EXPECT_FALSE(window.session.IsChanged());
}

TEST_F(MainWindowKeepTest, KeepingLeavesTheLevelAndItsStarAsTheyAre) {
    const std::string before = ReadWholeFile(path);
    Edit();
    ASSERT_TRUE(window.keeper->Keep());
    EXPECT_TRUE(window.keeper->folder.HasKept());
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_TRUE(ReadWholeFile(path) == before);
}

TEST_F(MainWindowKeepTest, NothingIsKeptOfALevelThatIsSaved) {
    ASSERT_TRUE(window.keeper->Keep());
    EXPECT_FALSE(window.keeper->folder.HasKept());
    Edit();
    ASSERT_TRUE(window.keeper->Keep());
    ASSERT_TRUE(window.SaveLevelAs(QString::fromStdString(path)));
    EXPECT_FALSE(window.keeper->folder.HasKept());
}

TEST_F(MainWindowKeepTest, KeepingWaitsForTheEndOfAGestureABoxAndAFilm) {
    Edit();
    QTest::mousePress(View(), Qt::LeftButton, {}, QPoint(100, 100));
    window.keeper->MakeDue();
    EXPECT_FALSE(window.quiet->IsQuiet());
    QTest::mouseRelease(View(), Qt::LeftButton, {}, QPoint(100, 100));
    EXPECT_TRUE(window.quiet->IsQuiet());
    Answered(
        [&](QWidget& box) {
            EXPECT_FALSE(window.quiet->IsQuiet());
            Reject(box);
        },
        [&] { window.close(); });
    IFilmManager& films = *window.host.level.Data()->filmManager;
    IFilm* film = films.GetFilm(films.AllocateFilm());
    films.currentFilm = film;
    film->Activate();
    film->SetTime(0.1f, 0.0f);
    EXPECT_FALSE(window.quiet->IsQuiet());
    film->Stop();
    EXPECT_TRUE(window.quiet->IsQuiet());
    film->Deactivate();
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.keeper->folder.HasKept(); }));
}

TEST_F(MainWindowKeepTest, DiscardedWorkComesBackFromTheMenuAsTheLevelItWas) {
    Edit();
    Answered(Closing(QMessageBox::Discard), [&] { Action("FileNew")->trigger(); });
    EXPECT_FALSE(HasEdit());
    EXPECT_FALSE(window.OfferKeptWork(/*onlyAfterCrash*/ true)) << "it is not offered unasked";
    EXPECT_THAT(Answered(Accept, [&] { Action("FileRecover")->trigger(); }), ElementsAre("RecoverWork"));
    EXPECT_TRUE(HasEdit());
    EXPECT_EQ(window.session.Path(), path);
    EXPECT_TRUE(window.isWindowModified());
}

TEST_F(MainWindowKeepTest, DiscardingAtTheEndOfTheProgramKeepsToo) {
    Edit();
    Answered(Closing(QMessageBox::Discard), [&] { EXPECT_TRUE(window.close()); });
    WorkFolder later(State());
    const std::vector<FoundWork> found = later.Find();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(found.front().work.discarded);
    EXPECT_EQ(found.front().work.path, path);
}

TEST_F(MainWindowKeepTest, DiscardingWithoutRoomForTheWorkAsksOnceMore) {
    Edit();
    FailWrites();
    EXPECT_THAT(Answered(
                    [](QWidget& box) {
                        PressButton(box, box.objectName() == "LoseChanges" ? QMessageBox::Discard
                                                                           : QMessageBox::Cancel);
                    },
                    [&] { EXPECT_FALSE(window.close()); }),
                ElementsAre("LoseChanges", "CantKeep"));
    EXPECT_TRUE(HasEdit());
}

TEST_F(MainWindowKeepTest, WorkOfAStageThatWasKilledIsOfferedAndTakenOver) {
    Edit();
    LeaveWork();
    Answered(Closing(QMessageBox::Discard), [&] { Action("FileNew")->trigger(); });
    EXPECT_THAT(Answered(Accept, [&] { EXPECT_TRUE(window.OfferKeptWork(/*onlyAfterCrash*/ true)); }),
                ElementsAre("RecoverWork"));
    EXPECT_TRUE(HasEdit());
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_TRUE(window.keeper->folder.HasKept()) << "a crash now loses nothing";
    const std::vector<FoundWork> found = WorkFolder(State()).Find();
    EXPECT_TRUE(std::ranges::none_of(found, WorkFolder::IsLeftover));
}

TEST_F(MainWindowKeepTest, WorkThatIsNotWantedNowIsOfferedAgain) {
    Edit();
    LeaveWork();
    for (int start = 0; start < 2; ++start) {
        EXPECT_THAT(Answered(Reject, [&] { EXPECT_FALSE(window.OfferKeptWork(/*onlyAfterCrash*/ true)); }),
                    ElementsAre("RecoverWork"));
    }
    Answered(
        [](QWidget& box) {
            auto* dialog = qobject_cast<stage::RecoverDialog*>(&box);
            if (dialog != nullptr && dialog->list->count() > 0) {
                // From the event loop: the question it asks must be answered too.
                QTimer::singleShot(0, dialog->remove, &QPushButton::click);
            } else if (dialog != nullptr) {
                dialog->reject();
            } else {
                PressButton(box, QMessageBox::Yes);
            }
        },
        [&] { window.OfferKeptWork(/*onlyAfterCrash*/ true); });
    EXPECT_THAT(WorkFolder(State()).Find(), IsEmpty());
}

TEST_F(MainWindowKeepTest, WhatIsKeptFollowsStepsBackAndForth) {
    Edit();
    ASSERT_TRUE(window.keeper->Keep());
    EXPECT_TRUE(window.keeper->folder.HasKept());
    window.undo->Undo();
    ASSERT_FALSE(HasEdit());
    EXPECT_FALSE(window.session.IsChanged());
    EXPECT_FALSE(window.keeper->folder.HasKept()) << "as saved again: nothing is to be kept";
    window.undo->Redo();
    ASSERT_TRUE(HasEdit());
    EXPECT_TRUE(window.session.IsChanged());
    ASSERT_TRUE(window.keeper->Keep());
    EXPECT_TRUE(window.keeper->folder.HasKept());
}

TEST_F(MainWindowKeepTest, WorkOfAnUndoIsRecoveredAsItWasThenAndHasNoSteps) {
    Edit();
    ASSERT_TRUE(window.SaveLevelAs(QString::fromStdString(path)));
    Edit();
    ASSERT_EQ(window.host.level.Data()->Objects().size(), 2u);
    window.undo->Undo();
    window.undo->Undo();
    ASSERT_FALSE(HasEdit());
    EXPECT_TRUE(window.session.IsChanged()) << "the file has one";
    LeaveWork();
    Answered(Closing(QMessageBox::Discard), [&] { Action("FileNew")->trigger(); });
    EXPECT_THAT(Answered(Accept, [&] { EXPECT_TRUE(window.OfferKeptWork(/*onlyAfterCrash*/ true)); }),
                ElementsAre("RecoverWork"));
    EXPECT_EQ(window.session.Path(), path);
    EXPECT_FALSE(HasEdit());
    EXPECT_TRUE(window.session.IsChanged());
    window.undo->Undo();
    window.undo->Redo();
    EXPECT_FALSE(HasEdit()) << "the steps went with the Stage that made them";
    EXPECT_TRUE(window.session.IsChanged());
}

TEST_F(MainWindowKeepTest, RecoveringAsksBeforeItReplacesOtherUnsavedWork) {
    Edit();
    LeaveWork();
    EXPECT_THAT(Answered(
                    [](QWidget& box) {
                        if (box.objectName() == "LoseChanges") {
                            Reject(box);
                        } else {
                            Accept(box);
                        }
                    },
                    [&] { EXPECT_FALSE(window.OfferKeptWork(/*onlyAfterCrash*/ true)); }),
                ElementsAre("RecoverWork", "LoseChanges"));
    EXPECT_EQ(WorkFolder(State()).Find().size(), 1u);
}

TEST_F(MainWindowKeepTest, DamagedWorkIsToldWithItsFileAndLosesNothing) {
    Edit();
    LeaveWork();
    const std::string file = WorkFolder(State()).Find().front().file;
    WriteWholeFile(file, ReadWholeFile(file).substr(0, 100));
    QString told;
    EXPECT_THAT(Answered(
                    [&](QWidget& box) {
                        if (const auto* message = qobject_cast<QMessageBox*>(&box)) {
                            told = message->text();
                        }
                        Accept(box);
                    },
                    [&] { EXPECT_FALSE(window.OfferKeptWork(/*onlyAfterCrash*/ true)); }),
                ElementsAre("RecoverWork", "ReportError"));
    EXPECT_TRUE(told.contains(QString::fromStdString(file))) << told.toStdString();
    EXPECT_TRUE(HasEdit());
    EXPECT_FALSE(ReadWholeFile(file).empty());
}

TEST_F(MainWindowKeepTest, TheIntervalIsASettingWithBounds) {
    EXPECT_EQ(stage::WorkKeeper::Minutes(), 2);
    window.keeper->SetMinutes(5);
    EXPECT_EQ(QSettings().value("autosave/minutes").toInt(), 5);
    EXPECT_EQ(stage::WorkKeeper::Minutes(), 5);
    QSettings().setValue("autosave/minutes", 100000);
    EXPECT_EQ(stage::WorkKeeper::Minutes(), 60);
    QSettings().setValue("autosave/minutes", "often");
    EXPECT_EQ(stage::WorkKeeper::Minutes(), 2);
}
