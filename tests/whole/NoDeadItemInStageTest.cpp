// No item of a menu or bar of Stage is dead: whatever can be chosen changes something that the user sees, or
// asks or tells him something.
#include "tests/whole/NoDeadItemFixture.h"

#include "host/stage/windows/ObjectTree.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewWidget.h"

#include <QStatusBar>
#include <QTest>

using ::testing::IsEmpty;

TEST_F(NoDeadItemInStageTest, EmptyLevel) {
    const auto prepare = [this] {
        Begin();
        window->session.New();
        Settle();
    };
    EXPECT_THAT(Dead(prepare, Any), IsEmpty());
    EXPECT_GT(walked, 35);
}

TEST_F(NoDeadItemInStageTest, LevelWithNothingSelected) {
    EXPECT_THAT(Dead([this] { Begin(); }, DependsOnSelection), IsEmpty());
}

TEST_F(NoDeadItemInStageTest, OneObjectSelected) {
    const auto prepare = [this] {
        Begin();
        Select({"Barrel"});
    };
    EXPECT_THAT(Dead(prepare, Any), IsEmpty());
    EXPECT_GT(walked, 45);
}

TEST_F(NoDeadItemInStageTest, EveryOtherSelection) {
    const std::vector<std::vector<std::string>> selections{
        {"Crate", "Barrel"}, {"Lamp"}, {"Chest"}, {torch}, {"Chest", torch, "Barrel"}};
    for (const std::vector<std::string>& names : selections) {
        const auto prepare = [&] {
            Begin();
            Select(names);
        };
        EXPECT_THAT(Dead(prepare, DependsOnSelection), IsEmpty()) << names.front();
    }
}

TEST_F(NoDeadItemInStageTest, FilmOpen) {
    for (const std::string& name : {std::string(), std::string("Crate"), torch}) {
        const auto prepare = [&] {
            Begin();
            OpenFilm();
            if (!name.empty()) {
                Select({name});
            }
        };
        EXPECT_THAT(Dead(prepare, DependsOnSelection), IsEmpty()) << name;
    }
}

TEST_F(NoDeadItemInStageTest, FilmPlaying) {
    EXPECT_THAT(DeadWhilePlaying(), IsEmpty());
    EXPECT_GT(walked, 30);
}

TEST_F(NoDeadItemInStageTest, MenuOfAnObjectInTheTree) {
    const auto dead = [this](const std::string& name, bool isFilmOpen) {
        const auto prepare = [&] {
            Begin();
            if (isFilmOpen) {
                OpenFilm();
            }
        };
        return DeadInMenu(prepare, [&] {
            auto* tree = window->tree->tree;
            emit tree->customContextMenuRequested(tree->visualItemRect(tree->ItemOf(Object(name))).center());
        });
    };
    EXPECT_THAT(dead("Barrel", false), IsEmpty());
    EXPECT_THAT(dead("Chest", false), IsEmpty());
    EXPECT_THAT(dead(torch, false), IsEmpty());
    EXPECT_THAT(dead("Crate", true), IsEmpty());
    EXPECT_GE(walked, 4 * 6);
}

TEST_F(NoDeadItemInStageTest, MenuOfAView) {
    window->views->show();
    const auto rightClick = [this] {
        QTest::mouseClick(window->views->Widget(0), Qt::RightButton, {}, {3, 3});
    };
    const auto attached = [this] {
        Begin();
        OpenFilm();
        window->host.RunCommand(PluginCommandId::FromPluginNumber(1).WithLocal(60));
        Settle();
    };
    EXPECT_THAT(DeadInMenu([this] { Begin(); }, rightClick), IsEmpty());
    EXPECT_THAT(DeadInMenu(attached, rightClick), IsEmpty());
}

TEST_F(NoDeadItemInStageTest, WhatFindsNothingToDoSaysSo) {
    const auto told = [this](const std::string& item) {
        window->statusBar()->clearMessage();
        Choose(item);
        return window->statusBar()->currentMessage().toStdString();
    };
    Begin();
    EXPECT_EQ(told("Films/Animate object"), "\"Animate object\" finds nothing to do");
    EXPECT_EQ(told("Plug-ins/Convert to normal object"), "\"Convert to normal object\" finds nothing to do");
    EXPECT_EQ(told("Plug-ins/Start / stop playing movie"),
              "\"Start / stop playing movie\" finds nothing to do");
    OpenFilm();
    EXPECT_EQ(told("Films/Animate object"), "");
    Select({"Chest"});
    EXPECT_EQ(told("Films/Convert to normal object"), "");
}

TEST_F(NoDeadItemInStageTest, WhatIsKeptWithTheFilmsIsNotDuplicatedWhichIsTold) {
    Begin();
    Select({"Chest", torch});
    Choose("Edit/Duplicate");
    EXPECT_EQ(window->statusBar()->currentMessage(),
              "0 of 2 selected objects duplicated; what is kept with the films isn't");
    Select({"Chest", "Barrel"});
    Choose("Edit/Duplicate");
    EXPECT_EQ(window->statusBar()->currentMessage(),
              "1 of 2 selected objects duplicated; what is kept with the films isn't");
    window->statusBar()->clearMessage();
    Select({"Barrel"});
    Choose("Edit/Duplicate");
    EXPECT_EQ(window->statusBar()->currentMessage(), "");
}
