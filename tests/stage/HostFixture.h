#pragma once

#include "host/stage/host/EditorHost.h"
#include "plugin/contract/EventCodes.h"
#include "tests/stage/FakeWindows.h"
#include "tests/stage/MockPlugin.h"

#include <gtest/gtest.h>

/// A host with an empty level and two plug-ins, numbers 1 and 2, both in both registration lists.
class HostFixture : public ::testing::Test {
protected:
    HostFixture();
    ~HostFixture() override;

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
