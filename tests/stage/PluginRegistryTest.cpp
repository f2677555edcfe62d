#include "host/stage/host/PluginRegistry.h"

#include "plugin/contract/EventCodes.h"
#include "tests/stage/MockPlugin.h"
#include "tests/support/Paths.h"

#include <gtest/gtest.h>
#include <stdexcept>

using ::testing::_;
using ::testing::InSequence;
using ::testing::NiceMock;
using ::testing::Throw;

class PluginRegistryTest : public ::testing::Test {
protected:
    std::vector<std::string> reports;
    stage::PluginRegistry registry{[this](const std::string& text) { reports.push_back(text); }};
    NiceMock<MockPlugin> first;
    NiceMock<MockPlugin> second;

    PluginRegistryTest() {
        for (MockPlugin* plugin : {&first, &second}) {
            EXPECT_CALL(*plugin, OnEvent(EventCode::HostGoesAway, _)).Times(::testing::AnyNumber());
        }
    }
    ~PluginRegistryTest() override { registry.Shutdown({}); }
};

TEST_F(PluginRegistryTest, NumbersStartAtOneAndFillGaps) {
    EXPECT_EQ(registry.Add("a", &first)->number, 1u);
    EXPECT_EQ(registry.Add("b", &second)->number, 2u);
    EXPECT_EQ(registry.Find(2u)->plugin, &second);
    EXPECT_EQ(registry.Find(3u), nullptr);
    EXPECT_EQ(registry.Find(&first)->name, "a");
}

TEST_F(PluginRegistryTest, TheSixtyFourthPluginIsRefused) {
    for (unsigned number = 1; number <= 63; ++number) {
        ASSERT_NE(registry.Add("many", &first), nullptr);
    }
    EXPECT_EQ(registry.Add("one too many", &second), nullptr);
}

TEST_F(PluginRegistryTest, StartCallsReadyThenShortcutsOnce) {
    registry.Add("a", &first);
    {
        InSequence order;
        EXPECT_CALL(first, OnEditorReady()).Times(1);
        EXPECT_CALL(first, RegisterShortcuts()).Times(1);
    }
    registry.Start();
    registry.Start();
}

TEST_F(PluginRegistryTest, ShutdownClosesAllBeforeTheLastEvent) {
    registry.Add("a", &first);
    registry.Add("b", &second);
    registry.Start();
    InSequence order;
    EXPECT_CALL(second, OnEditorClosing());
    EXPECT_CALL(first, OnEditorClosing());
    EXPECT_CALL(second, OnEvent(EventCode::HostGoesAway, nullptr));
    EXPECT_CALL(first, OnEvent(EventCode::HostGoesAway, nullptr));
    registry.Shutdown({});
    EXPECT_TRUE(registry.Entries().empty());
}

TEST_F(PluginRegistryTest, EventsGoToListAAndRenderCallsToListB) {
    registry.Add("a", &first);
    registry.Add("b", &second);
    registry.listenersA.Add(&first);
    registry.listenersB.Add(&second);
    EXPECT_CALL(first, OnEvent(2, nullptr)).Times(1);
    EXPECT_CALL(first, OnRender()).Times(0);
    EXPECT_CALL(second, OnEvent(2, _)).Times(0);
    EXPECT_CALL(second, OnRender()).Times(1);
    registry.SendEvent(2, nullptr);
    registry.Render();
}

TEST_F(PluginRegistryTest, TheExceptedPluginGetsNoEvent) {
    registry.Add("a", &first);
    registry.Add("b", &second);
    registry.listenersA.Add(&first);
    registry.listenersA.Add(&second);
    EXPECT_CALL(first, OnEvent(14, _)).Times(0);
    EXPECT_CALL(second, OnEvent(14, _)).Times(1);
    registry.SendEvent(14, nullptr, 1);
}

TEST_F(PluginRegistryTest, APluginThatLeavesDuringDeliveryIsNotCalledAnyMore) {
    registry.Add("a", &first);
    registry.Add("b", &second);
    registry.listenersA.Add(&first);
    registry.listenersA.Add(&second);
    EXPECT_CALL(first, OnEvent(2, _)).WillOnce([this](int, void*) {
        registry.listenersA.Remove(&first);
        registry.listenersA.Remove(&second);
    });
    EXPECT_CALL(second, OnEvent(2, _)).Times(0);
    registry.SendEvent(2, nullptr);
}

TEST_F(PluginRegistryTest, APluginThatEntersDuringDeliveryWaitsForTheNextOne) {
    registry.Add("a", &first);
    registry.Add("b", &second);
    registry.listenersA.Add(&first);
    EXPECT_CALL(first, OnEvent(2, _)).Times(2).WillRepeatedly([this](int, void*) {
        registry.listenersA.Add(&second);
    });
    EXPECT_CALL(second, OnEvent(2, _)).Times(1);
    registry.SendEvent(2, nullptr);
    registry.SendEvent(2, nullptr);
}

TEST_F(PluginRegistryTest, EnteringTwiceDeliversOnce) {
    registry.Add("a", &first);
    registry.listenersA.Add(&first);
    registry.listenersA.Add(&first);
    EXPECT_CALL(first, OnEvent(2, _)).Times(1);
    registry.SendEvent(2, nullptr);
}

TEST_F(PluginRegistryTest, AnExceptionOfOnePluginIsReportedAndTheOthersAreCalled) {
    registry.Add("a", &first);
    registry.Add("b", &second);
    registry.listenersA.Add(&first);
    registry.listenersA.Add(&second);
    EXPECT_CALL(first, OnEvent(2, _)).WillOnce(Throw(std::runtime_error("out of ink")));
    EXPECT_CALL(second, OnEvent(2, _)).Times(1);
    registry.SendEvent(2, nullptr);
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_NE(reports[0].find("out of ink"), std::string::npos);
    EXPECT_NE(reports[0].find("OnEvent"), std::string::npos);
}

TEST_F(PluginRegistryTest, AMissingLibraryGivesAReason) {
    std::string error;
    EXPECT_EQ(registry.Load("no_such_plugin.so", nullptr, nullptr, error), nullptr);
    EXPECT_NE(error.find("no_such_plugin.so"), std::string::npos);
}

TEST_F(PluginRegistryTest, ALibraryWithoutTheEntryPointIsRefused) {
    std::string error;
    EXPECT_EQ(registry.Load(BuiltLibrary("films_broken_plugin.so"), nullptr, nullptr, error), nullptr);
    EXPECT_NE(error.find("InitializeMe"), std::string::npos);
    EXPECT_TRUE(registry.Entries().empty());
}
