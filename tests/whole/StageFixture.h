#pragma once

#include "framework/TestHooks.h"
#include "host/stage/windows/MainWindow.h"
#include "tests/support/TempFolder.h"

#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <QListWidget>
#include <string>
#include <vector>

class CWnd;

/// Stage with films.so loaded from its file and a copy of the sample level open, driven through its windows.
class StageTest : public ::testing::Test {
protected:
    StageTest();
    ~StageTest() override;

    /// Opens the plug-in's panel with its toolbar command.
    void ShowPanel();
    QListWidget* FilmList() const;
    std::vector<std::string> FilmLines() const;
    /// Clicks a line of the film list.
    void ChooseFilm(const std::string& name);
    /// Double-clicks a line of the film list, which shows the scenario window with that film.
    void OpenScenario(const std::string& film);
    /// The rows that the scenario window shows, from the top; none without the window.
    std::vector<CWnd*> ScenarioRows() const;
    IFilmManager& Films() const { return *window->host.level.GetLevelData()->filmManager; }
    IFilm* Film(const std::string& name) const;
    engine::SceneObject* Object(const std::string& name) const;
    EditorObject* FirstActor(IFilm* film) const;
    static std::vector<float> MatrixOf(const EditorObject& object);
    /// Presses the plug-in's shortcut, which plays until the film stops. The clock goes on by `stepMs` each
    /// time it is read.
    void PlayWithShortcut(std::uint32_t stepMs);
    /// Runs once inside the playing film's message pump.
    void InsidePump(std::function<void()> action);
    void PressKey(int key);
    /// A move as the gizmo makes it.
    void Move(EditorObject* object, float x, float y, float z);
    /// Selects the object and turns the first view to it, from some ten metres.
    void LookAt(engine::SceneObject& object);
    static void Settle();

    HookScope hooks;
    TempFolder folder;
    std::string levelPath;
    std::vector<std::string> boxes;
    std::uint32_t clock = 1000;
    std::unique_ptr<stage::MainWindow> window;
};
