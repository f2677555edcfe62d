#pragma once

#include "host/stage/host/EditorHost.h"
#include "plugin/contract/EventCodes.h"
#include "tests/stage/FakeWindows.h"
#include "tests/stage/MockPlugin.h"

#include <gtest/gtest.h>

/// A host with an empty level and two plug-ins, numbers 1 and 2, both in both registration lists.
class HostFixture : public ::testing::Test {
protected:
    HostFixture() : host(windows, {"data", "data/helpers"}) {
        using ::testing::_;
        using ::testing::AnyNumber;
        using ::testing::Return;
        unsigned number = 1;
        for (MockPlugin* plugin : {&first, &second}) {
            plugin->id = PluginCommandId::FromPluginNumber(number++);
            host.plugins.Add("mock", plugin);
            host.AddListenerA(plugin);
            host.AddListenerB(plugin);
            ON_CALL(*plugin, CanDeleteObjects(_, _)).WillByDefault(Return(true));
            EXPECT_CALL(*plugin, OnEvent(_, _)).Times(AnyNumber());
            EXPECT_CALL(*plugin, OnViewRequest(_, _, _, _)).Times(AnyNumber());
        }
        host.StartPlugins();
        host.level.New("");
    }
    ~HostFixture() override {
        // What the shutdown calls is no test's business but its own.
        ::testing::Mock::VerifyAndClearExpectations(&first);
        ::testing::Mock::VerifyAndClearExpectations(&second);
        host.Shutdown();
    }

    engine::SceneObject* Make(const std::string& name, const char* className = ClassName::Mesh) {
        engine::ObjectSpec spec;
        spec.className = className;
        spec.name = name;
        return host.level.CreateObject(spec);
    }
    std::size_t Count() const { return host.level.Data()->Objects().size(); }

    FakeWindows windows;
    ::testing::NiceMock<MockPlugin> first;
    ::testing::NiceMock<MockPlugin> second;
    stage::EditorHost host;
};
