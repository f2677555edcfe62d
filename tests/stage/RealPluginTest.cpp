#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"
#include "host/stage/host/ObjectCommands.h"
#include "tests/stage/FakeWindows.h"
#include "tests/support/Paths.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

/// The host with a plug-in from a shared library, which logs its calls into a file.
class RealPluginTest : public ::testing::Test {
protected:
    RealPluginTest() {
        std::filesystem::remove(log);
        setenv("TEST_PLUGIN_LOG", log.c_str(), 1);
    }
    ~RealPluginTest() override {
        unsetenv("TEST_PLUGIN_LOG");
        std::filesystem::remove(log);
    }
    std::vector<std::string> Lines() const {
        std::ifstream file(log);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    const std::filesystem::path log =
        std::filesystem::temp_directory_path() / ("stage_plugin_" + std::to_string(getpid()) + ".log");
    FakeWindows windows;
};

TEST_F(RealPluginTest, LivesFromLoadingToUnloadingInTheOrderItRelies) {
    {
        stage::EditorHost host(windows, {"data", "helpers"});
        stage::LevelSession session(host);
        stage::ObjectCommands commands(host, session);
        ASSERT_TRUE(host.LoadPlugin(BuiltLibrary("films_test_plugin.so")));
        host.StartPlugins();
        session.New();
        commands.Create({"MeshObject", "Crate", "", {}, nullptr, true});
        host.RunCommand(PluginCommandId::FromPluginNumber(1).WithLocal(1));
        host.Shutdown();
    }
    const std::vector<std::string> wanted = {
        "constructed", "InitializeMe",      "OnEditorReady",   "RegisterShortcuts", "OnNew",     "OnEvent 6",
        "OnEvent 20", // what the new level is, to tell changes from
        "OnEvent 2",   "OnEvent 3",         "OnCommand 1",     "OnEvent 19",        "OnEvent 4", "OnEvent 15",
        "OnNew",       "OnObjectDestroyed", "OnEditorClosing", "OnEvent 11",        "destroyed",
    };
    EXPECT_EQ(Lines(), wanted);
}

TEST_F(RealPluginTest, CanBeLoadedAgainAfterItsUnloading) {
    for (int round = 0; round < 2; ++round) {
        stage::EditorHost host(windows, {"data", "helpers"});
        ASSERT_TRUE(host.LoadPlugin(BuiltLibrary("films_test_plugin.so")));
        host.StartPlugins();
        EXPECT_EQ(host.CommandText(PluginCommandId::FromPluginNumber(1).WithLocal(1)), "Test command");
    }
    const std::vector<std::string> lines = Lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "destroyed"), 2);
}

TEST_F(RealPluginTest, ALibraryThatIsNoPluginIsReported) {
    stage::EditorHost host(windows, {"data", "helpers"});
    EXPECT_FALSE(host.LoadPlugin(BuiltLibrary("films_broken_plugin.so")));
    ASSERT_EQ(windows.errors.size(), 1u);
    EXPECT_NE(windows.errors[0].find("InitializeMe"), std::string::npos);
}
