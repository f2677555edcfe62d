#pragma once

#include "host/stage/windows/MainWindow.h"
#include "plugin/contract/EventCodes.h"
#include "tests/stage/MockPlugin.h"
#include "tests/support/Answering.h"

#include <gtest/gtest.h>
#include <QTemporaryDir>
#include <QWidget>

/// The main window with a plug-in mock of number 1, an empty level and a folder with a crate's mesh. The
/// view looks from (0, 200, 1200) at (0, 100, 0).
class WindowFixture : public ::testing::Test {
protected:
    WindowFixture();
    ~WindowFixture() override;

    engine::SceneObject* AddCrate(const std::string& name, float x, float y, float z);
    engine::SceneObject* AddEmpty(const std::string& name, float x, float y, float z);
    /// Runs what is queued.
    static void Settle();
    QWidget* View(int number = 0) const;
    /// Pixel of a world point in the first view.
    QPoint PixelOf(float x, float y, float z) const;
    void Click(const QPoint& place, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               Qt::MouseButton button = Qt::LeftButton) const;
    void Drag(const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    QAction* Action(const char* name) const;
    std::string PathOf(const char* name) const { return (folder.path() + '/' + name).toStdString(); }

    QTemporaryDir folder;
    ::testing::NiceMock<MockPlugin> plugin;
    stage::MainWindow window;
};
